// The settings file in the real user data folder: saves make missing folders,
// rotate two backups and end lines in CR LF on disk; a full disk is a failed
// write.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "base/file_io.h"
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

TEST(UserSettingsFile, SavesMakeFoldersAndKeepTheTwoEarlierStates) {
    clearUserData();
    for (const std::string& folder :
         {getUserHeralderPath("images\\"), getUserHeralderPath(""), getUserDataPath("")})
        RemoveDirectoryA(folder.c_str());
    std::string states[3];
    for (uint32_t i = 0; i < 3; ++i) {
        Settings record;
        record.NoiseType = i + 1;
        writeSettings(record);
        states[i] = settingsFiles()[kSettingsFileName];
        EXPECT_NE(states[i].find("\r\nNoiseType = " + std::to_string(i + 1) + "\r\n"),
                  std::string::npos);
        if (i == 0) EXPECT_EQ(settingsFiles().size(), 1u) << "a backup of a file not there";
    }
    EXPECT_TRUE(std::filesystem::is_directory(getUserHeralderPath("")));
    EXPECT_EQ(settingsFiles(), (std::map<std::string, std::string>{
                                   {"Heralder17.ini", states[2]},
                                   {"Backup of Heralder17.ini", states[1]},
                                   {"Backup of Backup of Heralder17.ini", states[0]}}));
    EXPECT_EQ(std::count(states[2].begin(), states[2].end(), '\r'),
              std::count(states[2].begin(), states[2].end(), '\n'))
        << "line ends other than CR LF";
    Settings read;
    readSettings(read);
    EXPECT_EQ(read.NoiseType, 3u);
    clearUserData();

    // Wine's C runtime reports success from fclose after a write that found no
    // room; the checked flush must not. /dev/full stands for the full disk.
    EXPECT_FALSE(writeFileBytes("Z:\\dev\\full", {"BeNoisy = 0\r\n"}));
    EXPECT_FALSE(appendFileBytes("Z:\\dev\\full", "41\r\n"));
}

}  // namespace
