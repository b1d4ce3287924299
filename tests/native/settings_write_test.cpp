// Writing settings files: the exact file text, the round trip through a save
// and a read, backup naming and the two-generation rotation on disk.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "base/crt_text.h"
#include "settings/settings_file.h"

namespace fs = std::filesystem;

namespace {

// The file times below are given in UTC.
class SettingsWrite : public testing::Test {
  protected:
    void SetUp() override {
        if (const char* tz = std::getenv("TZ")) savedTz = tz, hadTz = true;
        setenv("TZ", "UTC0", 1);
        tzset();
    }
    void TearDown() override {
        if (hadTz)
            setenv("TZ", savedTz.c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }
    std::string savedTz;
    bool hadTz = false;
};

const char defaultLines[] =
    "AlertBackgroundColor = 16777215\r\n"
    "AlertFontAntialias = 1\r\n"
    "AlertFontBold = 0\r\n"
    "AlertFontItal = 0\r\n"
    "AlertFontName = Georgia\r\n"
    "AlertFontSize = 16\r\n"
    "AlertTextColor = 0\r\n"
    "AllowGraphicUpdates = 1\r\n"
    "AllowINIUpdates = 1\r\n"
    "ApplicationPath = \r\n"
    "BeNoisy = 1\r\n"
    "BuildDate = Sep 17 2025\r\n"
    "ChangeFolderSound = ~~~DEFAULT~~~\r\n"
    "ColourTableFile = HERALDER.CCL\r\n"
    "CurrentTransactionDate = \r\n"
    "DocumentBrowserFlags = 127\r\n"
    "DocumentBrowserPath = \r\n"
    "DoNoticationsAutomatically = 1\r\n"
    "DownloadGraphics = 1\r\n"
    "InitConfigDone = 0\r\n"
    "OnlyShowNewItems = 1\r\n"
    "NoiseType = 64\r\n"
    "PatchLevel = 1\r\n"
    "PromptMultipleCount = 4\r\n"
    "PromptMultipleItems = 1\r\n"
    "SetupAlertPopup = 0\r\n"
    "SetupAlertReport = 0\r\n"
    "SetupNoticePopup = 0\r\n"
    "SetupNoticeReport = 0\r\n"
    "SetupOfftopicPopup = 0\r\n"
    "SetupOfftopicReport = 0\r\n"
    "SetupTipPopup = 0\r\n"
    "SetupTipReport = 0\r\n"
    "SetupVersionPopup = 2\r\n"
    "SetupVersionReport = 1\r\n"
    "SoftButtons = 1\r\n"
    "StartMaximized = 0\r\n"
    "StartupOptions = 101\r\n"
    "StickyWindowBottom = 2147483647\r\n"
    "StickyWindowLeft = 2147483647\r\n"
    "StickyWindowRight = 2147483647\r\n"
    "StickyWindowTop = 2147483647\r\n"
    "VersionNumber = 544\r\n";

std::string header(const char* when) {
    return std::string(
               ";Quenmark Heralder configuration file\r\n"
               ";Edit this at your own risk\r\n"
               ";Quenmark Heralder\r\n"
               ";Last updated ") +
           when + "\r\n;\r\n[HERALDER]\r\n";
}

std::string fileText(const fs::path& path) {
    return readFileBytes(path.string()).value_or("<missing>");
}

std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
    return names;
}

struct ScratchFolder {
    fs::path path;
    explicit ScratchFolder(const char* name) {
        path = fs::temp_directory_path() /
               ("heralder-" + std::string(name) + "-" + std::to_string(getpid()));
        fs::remove_all(path);
        fs::create_directories(path);
    }
    ~ScratchFolder() { fs::remove_all(path); }
};

}  // namespace

TEST_F(SettingsWrite, DefaultsGiveTheWholeFile) {
    struct Case {
        std::time_t now;
        const char* when;
    } cases[] = {
        {1758099903, "Wed Sep 17 09:05:03 2025"},
        {1707004741, "Sat Feb  3 23:59:01 2024"},
        {0, "Thu Jan  1 00:00:00 1970"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(formatSettingsFile(Settings{}, c.now), header(c.when) + defaultLines) << c.when;
}

TEST_F(SettingsWrite, ValuesAreWrittenAsTheyAre) {
    Settings record;
    record.AlertTextColor = 4294967295u;
    record.AlertFontName = "Times New Roman  ";
    record.CurrentTransactionDate = "a\nb";  // text mode makes CR LF of it on disk
    std::string file = formatSettingsFile(record, 0);
    EXPECT_NE(file.find("\r\nAlertTextColor = 4294967295\r\n"), std::string::npos);
    EXPECT_NE(file.find("\r\nAlertFontName = Times New Roman  \r\n"), std::string::npos);
    EXPECT_NE(file.find("\r\nCurrentTransactionDate = a\r\nb\r\n"), std::string::npos);
}

TEST_F(SettingsWrite, EveryReadableValueSurvivesASaveAndARead) {
    Settings written;
    uint32_t n = 4294967000u;
    for (const SettingDef& def : SettingsTable) {
        if (uint32_t* number = settingNumber(written, def)) *number = n += 1000003u;
        if (std::string* text = settingText(written, def)) *text = std::string("= v ") + def.key;
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
        std::string path;
        std::string want;
    } cases[] = {
        {"C:\\Users\\me\\AppData\\Roaming\\Quenmark\\Heralder17.ini",
         "C:\\Users\\me\\AppData\\Roaming\\Quenmark\\Backup of Heralder17.ini"},
        {"/tmp/q/Backup of Heralder17.ini", "/tmp/q/Backup of Backup of Heralder17.ini"},
        {"Heralder17.ini", "Backup of Heralder17.ini"},
        {"C:Heralder17.ini", "C:Backup of Heralder17.ini"},
        {"C:\\a/b\\c.d\\name", "C:\\a/b\\c.d\\Backup of name"},
        {"D:\\x\\name.tar.gz", "D:\\x\\Backup of name.tar.gz"},
        {"D:\\x\\.ini", "D:\\x\\Backup of .ini"},
        {"D:\\" + std::string(300, 'n') + ".ini",
         "D:\\Backup of " + std::string(250, 'n') + ".ini"},
    };
    for (const Case& c : cases) EXPECT_EQ(backupPathFor(c.path), c.want) << c.path;
}

TEST_F(SettingsWrite, TwoSavesKeepTwoOlderGenerations) {
    ScratchFolder scratch("rotation");
    const fs::path file = scratch.path / "Heralder17.ini";
    std::ofstream(file, std::ios::binary) << "BeNoisy = 0\r\n";

    Settings record;
    record.NoiseType = 1;
    ASSERT_TRUE(writeSettingsFile(record, file.string(), 1758099903));
    record.NoiseType = 2;
    ASSERT_TRUE(writeSettingsFile(record, file.string(), 1758099904));

    EXPECT_EQ(namesIn(scratch.path),
              (std::set<std::string>{"Heralder17.ini", "Backup of Heralder17.ini",
                                     "Backup of Backup of Heralder17.ini"}));
    Settings first = record;
    first.NoiseType = 1;
    EXPECT_EQ(fileText(file), formatSettingsFile(record, 1758099904));
    EXPECT_EQ(fileText(scratch.path / "Backup of Heralder17.ini"),
              formatSettingsFile(first, 1758099903));
    EXPECT_EQ(fileText(scratch.path / "Backup of Backup of Heralder17.ini"), "BeNoisy = 0\r\n");
}

TEST_F(SettingsWrite, FirstSaveMakesNoBackupAndAMissingFolderNothing) {
    ScratchFolder scratch("first");
    const fs::path file = scratch.path / "Heralder17.ini";
    ASSERT_TRUE(writeSettingsFile(Settings{}, file.string(), 0));
    EXPECT_EQ(namesIn(scratch.path), std::set<std::string>{"Heralder17.ini"});
    EXPECT_EQ(fileText(file), header("Thu Jan  1 00:00:00 1970") + defaultLines);

    EXPECT_FALSE(writeSettingsFile(Settings{}, (scratch.path / "no" / "Heralder17.ini").string()));
    EXPECT_FALSE(writeSettingsFile(Settings{}, ""));
    EXPECT_EQ(namesIn(scratch.path), std::set<std::string>{"Heralder17.ini"});
}
