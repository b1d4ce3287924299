// The shell's special folders and the data file locations built on them, as a
// real profile gives them. The expected folders come from SHGetFolderPathA, a
// different shell call from the one the program uses.
#include <gtest/gtest.h>

#include "base/win_headers.h"
#include "settings/file_locations.h"

namespace {

std::string folderFromShell(int csidl) {
    char path[MAX_PATH] = "";
    if (FAILED(SHGetFolderPathA(nullptr, csidl, nullptr, SHGFP_TYPE_CURRENT, path))) return "?";
    return path;
}

}  // namespace

TEST(SpecialFolder, AppDataAndCommonAppDataAreDistinctExistingFolders) {
    auto user = getSpecialFolderPath(CSIDL_APPDATA);
    auto common = getSpecialFolderPath(CSIDL_COMMON_APPDATA);
    ASSERT_TRUE(user && common);
    EXPECT_EQ(*user, folderFromShell(CSIDL_APPDATA));
    EXPECT_NE(*user, *common);
    for (const std::string& path : {*user, *common}) {
        DWORD attr = GetFileAttributesA(path.c_str());
        EXPECT_NE(attr, INVALID_FILE_ATTRIBUTES) << path;
        EXPECT_TRUE(attr & FILE_ATTRIBUTE_DIRECTORY) << path;
    }
}

TEST(DataFileLocations, AreUnderQuenmarkInApplicationData) {
    const std::string appData = folderFromShell(CSIDL_APPDATA);
    ASSERT_FALSE(appData.empty());
    ASSERT_NE(appData.back(), '\\');
    struct Case {
        std::string got;
        std::string want;
    } cases[] = {
        {getUserDataPath("Heralder17.ini"), appData + "\\Quenmark\\Heralder17.ini"},
        {getUserDataPath("QMKHRLDR.INI"), appData + "\\Quenmark\\QMKHRLDR.INI"},
        {getUserHeralderPath("Heralder.lst"), appData + "\\Quenmark\\Heralder\\Heralder.lst"},
        {getUserHeralderPath("images\\a.png"), appData + "\\Quenmark\\Heralder\\images\\a.png"},
    };
    for (const Case& c : cases) EXPECT_EQ(c.got, c.want);

    std::string longPath = getUserHeralderPath(std::string(400, 'n'));
    EXPECT_EQ(longPath.size(), kMaxPathChars);
    EXPECT_EQ(longPath.rfind(appData + "\\Quenmark\\Heralder\\n", 0), 0u);
}
