// The data file locations as a real profile gives them. The expected folder
// comes from SHGetFolderPathA, a different shell call from the one the program
// uses.
#include <gtest/gtest.h>

#include "base/win_headers.h"
#include "settings/file_locations_win.h"

TEST(DataFileLocations, AreUnderQuenmarkInApplicationData) {
    char path[MAX_PATH] = "";
    ASSERT_TRUE(
        SUCCEEDED(SHGetFolderPathA(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, path)));
    const std::string appData = path;
    ASSERT_TRUE(!appData.empty() && appData.back() != '\\');
    EXPECT_EQ(getUserDataPath("Heralder17.ini"), appData + "\\Quenmark\\Heralder17.ini");
    EXPECT_EQ(getUserHeralderPath("Heralder.lst"), appData + "\\Quenmark\\Heralder\\Heralder.lst");
    // Machine-wide data lives elsewhere.
    EXPECT_NE(getSpecialFolderPath(CSIDL_COMMON_APPDATA).value_or(appData), appData);
}
