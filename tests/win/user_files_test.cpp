// The user's files where a real profile puts them, and other products' INI
// files read by the platform's profile reader. The data folders are checked
// against SHGetFolderPathA, another shell call than the program's.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <vector>

#include "base/file_io.h"
#include "base/win_handles.h"
#include "feed/installed_product.h"
#include "settings/file_locations_win.h"
#include "settings/settings_file.h"
#include "tests/win/dialog_driver.h"

namespace {

// Every file named like the settings file or one of its backups, with its bytes.
std::map<std::string, std::string> settingsFiles() {
    std::map<std::string, std::string> files;
    std::error_code noFolder;
    for (const auto& entry : std::filesystem::directory_iterator(getUserDataPath(""), noFolder))
        if (const std::string name = entry.path().filename().string();
            name.ends_with(kSettingsFileName))
            files[name] = readFileBytes(getUserDataPath(name)).value_or("<unreadable>");
    return files;
}

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

TEST(UserSettingsFile, SavesMakeFoldersAndKeepTheTwoEarlierStates) {
    clearUserData();
    for (const std::string& folder :
         {getUserHeralderPath("images\\"), getUserHeralderPath(""), getUserDataPath("")})
        RemoveDirectoryA(folder.c_str());
    // The file a save replaces becomes the first backup itself, not a copy.
    const auto fileId = [](const std::string& path) {
        UniqueKernelHandle file(
            CreateFileA(path.c_str(), 0, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        BY_HANDLE_FILE_INFORMATION info{};
        GetFileInformationByHandle(file.get(), &info);
        return uint64_t{info.nFileIndexHigh} << 32 | info.nFileIndexLow;
    };
    std::string states[3];
    for (uint32_t i = 0; i < 3; ++i) {
        Settings record;
        record.NoiseType = i + 1;
        const uint64_t before = i ? fileId(getUserDataPath(kSettingsFileName)) : 0;
        writeSettings(record);
        if (i) EXPECT_EQ(fileId(getUserDataPath("Backup of Heralder17.ini")), before);
        states[i] = settingsFiles()[kSettingsFileName];
        // CR LF as written, not doubled by a text-mode write.
        EXPECT_NE(states[i].find("\r\nNoiseType = " + std::to_string(i + 1) + "\r\n"),
                  std::string::npos);
        if (i == 0) EXPECT_EQ(settingsFiles().size(), 1u) << "a backup of a file not there";
    }
    EXPECT_TRUE(std::filesystem::is_directory(getUserHeralderPath("")));
    EXPECT_EQ(settingsFiles(), (std::map<std::string, std::string>{
                                   {"Heralder17.ini", states[2]},
                                   {"Backup of Heralder17.ini", states[1]},
                                   {"Backup of Backup of Heralder17.ini", states[0]}}));
    clearUserData();

    // Wine's C runtime reports success from fclose after a write that found no
    // room; the checked flush must not. /dev/full stands for the full disk.
    EXPECT_FALSE(writeFileBytes("Z:\\dev\\full", {"BeNoisy = 0\r\n"}));
    EXPECT_FALSE(appendFileBytes("Z:\\dev\\full", "41\r\n"));
}

// Any case, "-1" and "2x" as the profile reader gives them. Each file is
// written into the folder itself, not where the lookup says, so that a lookup
// in the wrong folder fails.
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

}  // namespace
