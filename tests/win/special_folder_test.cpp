// The shell's special folders as the prefix gives them.
#include <gtest/gtest.h>

#include "base/win_headers.h"
#include "settings/file_locations.h"

TEST(SpecialFolder, AppDataAndCommonAppDataAreDistinctExistingFolders) {
    auto user = getSpecialFolderPath(CSIDL_APPDATA);
    auto common = getSpecialFolderPath(CSIDL_COMMON_APPDATA);
    ASSERT_TRUE(user && common);
    EXPECT_NE(*user, *common);
    for (const std::string& path : {*user, *common}) {
        DWORD attr = GetFileAttributesA(path.c_str());
        EXPECT_NE(attr, INVALID_FILE_ATTRIBUTES) << path;
        EXPECT_TRUE(attr & FILE_ATTRIBUTE_DIRECTORY) << path;
    }
}
