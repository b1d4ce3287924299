// Writing settings files: the exact file text, the round trip through a save
// and a read, and backup naming. The rotation of backups on disk is tested
// under Wine in the real user data folder.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>

#include <unistd.h>

#include "base/crt_text.h"
#include "settings/settings_file.h"

namespace fs = std::filesystem;

namespace {

// The file times below are given in UTC.
class SettingsWrite : public testing::Test {
  protected:
    void SetUp() override {
        if (const char* tz = std::getenv("TZ")) savedTz = tz;
        setenv("TZ", "UTC0", 1);
        tzset();
    }
    void TearDown() override {
        if (savedTz)
            setenv("TZ", savedTz->c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }
    std::optional<std::string> savedTz;
};

// The whole file for the default record: the header, then the key lines that
// the tool's kept case gives for a file without keys, in CR LF.
std::string defaultFile(const char* when) {
    std::string text =
        ";Quenmark Heralder configuration file\n;Edit this at your own risk\n"
        ";Quenmark Heralder\n;Last updated " +
        std::string(when) + "\n;\n[HERALDER]\n" +
        readFileBytes(HERALDER_SOURCE_DIR "/tests/tool/cases/settings/empty_file.out")
            .value_or("<missing>");
    std::string crlf;
    for (char c : text) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return crlf;
}

}  // namespace

TEST_F(SettingsWrite, FirstSaveWritesTheWholeFileAndNoBackup) {
    const fs::path folder =
        fs::temp_directory_path() / ("heralder-first-" + std::to_string(getpid()));
    fs::remove_all(folder);
    fs::create_directories(folder);
    const fs::path file = folder / "Heralder17.ini";
    EXPECT_TRUE(writeSettingsFile(Settings{}, file.string(), 1707004741));
    EXPECT_EQ(readFileBytes(file.string()), defaultFile("Sat Feb  3 23:59:01 2024"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
    EXPECT_FALSE(writeSettingsFile(Settings{}, (folder / "no" / "Heralder17.ini").string(), 0));
    fs::remove_all(folder);
}

TEST_F(SettingsWrite, EveryReadableValueSurvivesASaveAndARead) {
    Settings written;
    uint32_t n = 4294967000u;
    for (const SettingDef& def : SettingsTable) {
        if (uint32_t* number = settingNumber(written, def)) *number = n += 1000003u;
        if (std::string* text = settingText(written, def))
            *text = std::string("= v ") + def.key + "  ";
    }
    Settings read;
    readSettingsText(read, formatSettingsFile(written, 0));
    for (const SettingDef& def : SettingsTable) {
        bool kept = !(def.readFlags & kSettingSkipOnRead);
        EXPECT_EQ(settingValueText(read, def), settingValueText(kept ? written : Settings{}, def))
            << def.key;
    }
}

TEST(SettingsBackupName, PutsBackupOfBeforeTheBaseName) {
    struct Case {
        std::string path, want;
    } cases[] = {
        {"C:\\Users\\me\\AppData\\Roaming\\Quenmark\\Heralder17.ini",
         "C:\\Users\\me\\AppData\\Roaming\\Quenmark\\Backup of Heralder17.ini"},
        {"/tmp/q/Backup of Heralder17.ini", "/tmp/q/Backup of Backup of Heralder17.ini"},
        {"C:Heralder17.ini", "C:Backup of Heralder17.ini"},
        {"C:\\a/b\\c.d\\name", "C:\\a/b\\c.d\\Backup of name"},
        {"D:\\x\\name.tar.gz", "D:\\x\\Backup of name.tar.gz"},
        {"D:\\" + std::string(300, 'n') + ".ini",
         "D:\\Backup of " + std::string(250, 'n') + ".ini"},
    };
    for (const Case& c : cases) EXPECT_EQ(backupPathFor(c.path), c.want) << c.path;
}
