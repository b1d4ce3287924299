// Installed product lookup against real INI files in the prefix's per-user,
// all-users and Windows folders, read by the platform's profile reader: any
// case, "-1" and "2x" as it gives them. Each file is written into the folder
// itself, not where the lookup says, so that a lookup in the wrong folder fails.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "base/win_headers.h"
#include "feed/installed_product.h"
#include "settings/file_locations_win.h"

TEST(InstalledProduct, FindsTheFileWhereTheAnnouncedVersionSaysElseInWindows) {
    const std::string name = "HeralderTest-" + std::to_string(GetCurrentProcessId()) + ".ini";
    std::vector<std::string> made;  // files and folders, in order of creation
    const auto write = [&](std::string folder, const std::string& content) {
        if (folder.back() != '\\') folder += '\\';
        if (CreateDirectoryA(folder.c_str(), nullptr)) made.push_back(folder);
        std::ofstream(folder + name, std::ios::binary) << content;
        made.push_back(folder + name);
    };
    const auto found = [&](int32_t announced, const char* section = "Prod") {
        UpdateItem item;
        item.version = announced;
        item.iniFile = name;
        item.section = section;
        const auto version = lookupInstalledVersion(item);
        return version ? version->text : "(nothing)";
    };
    char windows[MAX_PATH];
    write(std::string(windows, GetWindowsDirectoryA(windows, MAX_PATH)),
          "[prod]\r\nversionnumber=544\r\nPatchLevel=-1\r\nBetaLevel=2x\r\n");
    EXPECT_EQ(found(3, "PROD"), "17.0a (revision -1) (beta 2)");
    EXPECT_EQ(found(5, "PROD"), "17.0a (revision -1) (beta 2)");
    EXPECT_EQ(found(5, "Absent"), "0.0a");

    write(makerFolderPath(*getSpecialFolderPath(CSIDL_APPDATA)), "[Prod]\r\nVersionNumber=160\r\n");
    write(makerFolderPath(*getSpecialFolderPath(CSIDL_COMMON_APPDATA)),
          "[Prod]\r\nVersionNumber=1120\r\nPatchLevel=2\r\n");
    // Installed at 5.0 but announced as 3: still the per-user file.
    EXPECT_EQ(found(3), "5.0a");
    EXPECT_EQ(found(4), "3.1a (revision 2)");
    for (auto it = made.rbegin(); it != made.rend(); ++it)
        if (!DeleteFileA(it->c_str())) RemoveDirectoryA(it->c_str());
}
