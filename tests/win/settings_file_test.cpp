// The settings file in the real user data folder: saves rotate two backups,
// lines end in CR LF on disk, and missing folders are made. The user's files and
// folders as they were before, and the process-wide record, are put back after
// each test, since other tests in the same prefix use the Quenmark folders.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "base/crt_text.h"
#include "base/win_headers.h"
#include "settings/file_locations.h"
#include "settings/settings_file.h"

namespace {

const char* const kFileNames[] = {"Heralder17.ini", "Backup of Heralder17.ini",
                                  "Backup of Backup of Heralder17.ini"};

bool isFolder(const std::string& path) {
    DWORD attr = GetFileAttributesA(path.c_str());
    return attr != INVALID_FILE_ATTRIBUTES && (attr & FILE_ATTRIBUTE_DIRECTORY);
}

bool writeBytes(const std::string& path, const std::string& bytes) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return false;
    bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
    return std::fclose(f) == 0 && ok;
}

std::set<std::string> settingsFilesIn(const std::string& folder) {
    std::set<std::string> names;
    WIN32_FIND_DATAA fd;
    HANDLE find = FindFirstFileA((folder + "*Heralder17.ini").c_str(), &fd);
    if (find == INVALID_HANDLE_VALUE) return names;
    do names.insert(fd.cFileName);
    while (FindNextFileA(find, &fd));
    FindClose(find);
    return names;
}

class UserSettingsFile : public testing::Test {
  protected:
    void SetUp() override {
        savedRecord = settings();
        folder = getUserDataPath("");
        productFolder = getUserHeralderPath("");
        ASSERT_FALSE(folder.empty());
        hadFolder = isFolder(folder);
        hadProductFolder = isFolder(productFolder);
        for (const char* name : kFileNames) {
            savedFiles[name] = readFileBytes(folder + name);
            DeleteFileA((folder + name).c_str());
        }
    }

    void TearDown() override {
        for (const char* name : kFileNames) {
            DeleteFileA((folder + name).c_str());
            if (savedFiles[name]) writeBytes(folder + name, *savedFiles[name]);
        }
        if (!hadProductFolder) RemoveDirectoryA(productFolder.c_str());
        if (!hadFolder) RemoveDirectoryA(folder.c_str());
        settings() = savedRecord;
    }

    std::string bytesOf(const char* name) {
        return readFileBytes(folder + name).value_or("<missing>");
    }

    Settings savedRecord;
    std::string folder, productFolder;
    bool hadFolder = false, hadProductFolder = false;
    std::map<std::string, std::optional<std::string>> savedFiles;
};

}  // namespace

TEST_F(UserSettingsFile, TwoSavesKeepTheTwoEarlierStates) {
    ASSERT_TRUE(ensureDataFolders());
    const std::string beforeFirst = "; before the first save\r\nBeNoisy = 0\r\n";
    ASSERT_TRUE(writeBytes(folder + "Heralder17.ini", beforeFirst));

    settings().NoiseType = 1;
    writeSettings();
    const std::string beforeSecond = bytesOf("Heralder17.ini");
    settings().NoiseType = 2;
    writeSettings();

    EXPECT_EQ(settingsFilesIn(folder),
              (std::set<std::string>(std::begin(kFileNames), std::end(kFileNames))));
    EXPECT_EQ(bytesOf("Backup of Backup of Heralder17.ini"), beforeFirst);
    EXPECT_EQ(bytesOf("Backup of Heralder17.ini"), beforeSecond);
    EXPECT_NE(beforeSecond.find("\r\nNoiseType = 1\r\n"), std::string::npos);

    const std::string saved = bytesOf("Heralder17.ini");
    EXPECT_EQ(saved.rfind(";Quenmark Heralder configuration file\r\n", 0), 0u);
    EXPECT_NE(saved.find("\r\nNoiseType = 2\r\n"), std::string::npos);
    std::size_t crLf = 0;
    for (std::size_t i = saved.find("\r\n"); i != std::string::npos; i = saved.find("\r\n", i + 2))
        ++crLf;
    EXPECT_EQ(static_cast<std::size_t>(std::count(saved.begin(), saved.end(), '\n')), crLf)
        << "a bare LF on disk";
}

TEST_F(UserSettingsFile, SaveMakesMissingFoldersAndReadGivesItBack) {
    // Only empty folders can go; others' files keep them, and then this test
    // shows only that a save into existing folders works.
    RemoveDirectoryA(productFolder.c_str());
    RemoveDirectoryA(folder.c_str());

    settings().AlertFontName = "Palatino Linotype";
    settings().StickyWindowLeft = 4294967196u;
    writeSettings();
    EXPECT_TRUE(isFolder(folder));
    EXPECT_TRUE(isFolder(productFolder));
    EXPECT_EQ(settingsFilesIn(folder), std::set<std::string>{"Heralder17.ini"});

    settings() = Settings{};
    readSettings();
    EXPECT_EQ(settings().AlertFontName, "Palatino Linotype");
    EXPECT_EQ(settings().StickyWindowLeft, 4294967196u);
}
