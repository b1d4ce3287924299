// The settings file in the real user data folder: saves make missing folders,
// rotate two backups and end lines in CR LF on disk; a full disk is a failed
// write. Other tests in the same prefix use the Quenmark folders, so the files
// and folders as they were, and the process-wide record, are put back.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

#include "base/file_io.h"
#include "base/win_headers.h"
#include "settings/file_locations_win.h"
#include "settings/settings_file.h"

namespace {

namespace fs = std::filesystem;

class UserSettingsFile : public testing::Test {
  protected:
    void SetUp() override {
        for (const auto& [name, bytes] : savedFiles) DeleteFileA((folder + name).c_str());
    }
    void TearDown() override {
        for (const auto& [name, bytes] : settingsFiles()) DeleteFileA((folder + name).c_str());
        for (const auto& [name, bytes] : savedFiles)
            std::ofstream(folder + name, std::ios::binary) << bytes;
        if (!hadProductFolder) RemoveDirectoryA(productFolder.c_str());
        if (!hadFolder) RemoveDirectoryA(folder.c_str());
    }

    // Every file named like the settings file or one of its backups, with its bytes.
    std::map<std::string, std::string> settingsFiles() {
        std::map<std::string, std::string> files;
        std::error_code noFolder;
        for (const auto& entry : fs::directory_iterator(folder, noFolder)) {
            const std::string name = entry.path().filename().string();
            if (name.ends_with(kSettingsFileName))
                files[name] = readFileBytes(folder + name).value_or("<unreadable>");
        }
        return files;
    }

    const std::string folder = getUserDataPath(""), productFolder = getUserHeralderPath("");
    const bool hadFolder = fs::is_directory(folder),
               hadProductFolder = fs::is_directory(productFolder);
    const std::map<std::string, std::string> savedFiles = settingsFiles();
};

TEST_F(UserSettingsFile, SavesMakeFoldersAndKeepTheTwoEarlierStates) {
    // Only empty folders can go; when others' files keep them, the first save
    // shows only that saving into existing folders works.
    RemoveDirectoryA(productFolder.c_str());
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
    EXPECT_TRUE(fs::is_directory(productFolder));
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

    // Wine's C runtime reports success from fclose after a write that found no
    // room; the checked flush must not. /dev/full stands for the full disk.
    EXPECT_FALSE(writeFileBytes("Z:\\dev\\full", {"BeNoisy = 0\r\n"}));
    EXPECT_FALSE(appendFileBytes("Z:\\dev\\full", "41\r\n"));
}

}  // namespace
