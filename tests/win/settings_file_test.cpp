// The settings file in the real user data folder: saves make missing folders,
// rotate two backups and end lines in CR LF on disk. Other tests in the same
// prefix use the Quenmark folders, so the files and folders as they were, and
// the process-wide record, are put back afterwards.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <vector>

#include "base/crt_text.h"
#include "base/win_headers.h"
#include "settings/file_locations.h"
#include "settings/settings_file.h"

namespace {

namespace fs = std::filesystem;

const char* const kFileNames[] = {"Heralder17.ini", "Backup of Heralder17.ini",
                                  "Backup of Backup of Heralder17.ini"};

class UserSettingsFile : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_FALSE(folder.empty());
        for (const char* name : kFileNames) {
            savedFiles.push_back(readFileBytes(folder + name));
            DeleteFileA((folder + name).c_str());
        }
    }

    void TearDown() override {
        for (std::size_t i = 0; i < savedFiles.size(); ++i) {
            DeleteFileA((folder + kFileNames[i]).c_str());
            if (savedFiles[i])
                std::ofstream(folder + kFileNames[i], std::ios::binary) << *savedFiles[i];
        }
        if (!hadProductFolder) RemoveDirectoryA(productFolder.c_str());
        if (!hadFolder) RemoveDirectoryA(folder.c_str());
        settings() = savedRecord;
    }

    std::string bytesOf(const char* name) {
        return readFileBytes(folder + name).value_or("<missing>");
    }

    std::set<std::string> settingsFiles() {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder)) {
            const std::string name = entry.path().filename().string();
            if (name.ends_with(kSettingsFileName)) names.insert(name);
        }
        return names;
    }

    const Settings savedRecord = settings();
    const std::string folder = getUserDataPath(""), productFolder = getUserHeralderPath("");
    const bool hadFolder = fs::is_directory(folder),
               hadProductFolder = fs::is_directory(productFolder);
    std::vector<std::optional<std::string>> savedFiles;
};

TEST_F(UserSettingsFile, SavesMakeFoldersAndKeepTheTwoEarlierStates) {
    // Only empty folders can go; when others' files keep them, the first save
    // shows only that saving into existing folders works.
    RemoveDirectoryA(productFolder.c_str());
    RemoveDirectoryA(folder.c_str());

    std::string states[3];
    for (uint32_t i = 0; i < 3; ++i) {
        settings().NoiseType = i + 1;
        writeSettings();
        states[i] = bytesOf(kFileNames[0]);
        EXPECT_NE(states[i].find("\r\nNoiseType = " + std::to_string(i + 1) + "\r\n"),
                  std::string::npos);
        if (i == 0) EXPECT_EQ(settingsFiles(), std::set<std::string>{kFileNames[0]});
    }
    EXPECT_TRUE(fs::is_directory(productFolder));
    EXPECT_EQ(settingsFiles(), std::set<std::string>(std::begin(kFileNames), std::end(kFileNames)));
    EXPECT_EQ(bytesOf(kFileNames[1]), states[1]);
    EXPECT_EQ(bytesOf(kFileNames[2]), states[0]);
    for (std::size_t i = states[2].find('\n'); i != std::string::npos;
         i = states[2].find('\n', i + 1))
        EXPECT_EQ(states[2][i - 1], '\r') << "a bare LF at " << i;

    settings() = Settings{};
    readSettings();
    EXPECT_EQ(settings().NoiseType, 3u);
}

}  // namespace
