// Settings files: the text written, what a read gives back, backups and file
// names, and the dates and versions settings hold.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#include <tuple>

#include "base/file_io.h"
#include "feed/feed_date.h"
#include "settings/file_locations.h"
#include "settings/settings_file.h"
#include "tests/native/feed_test_support.h"

namespace {

// Local time is the process's: set TZ for one test, then put it back.
struct TimeZone {
    const std::string saved = std::getenv("TZ") ? std::getenv("TZ") : "";
    explicit TimeZone(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
    ~TimeZone() {
        saved.empty() ? unsetenv("TZ") : setenv("TZ", saved.c_str(), 1);
        tzset();
    }
};

// A distinct value in every key: numbers near the top of the range, texts with
// '=' and blanks at their edges.
Settings filled(uint32_t n, const char* prefix) {
    Settings record;
    for (const SettingDef& def : SettingsTable) {
        if (uint32_t* number = settingNumber(record, def)) *number = n += 1000003u;
        if (std::string* text = settingText(record, def))
            *text = prefix + std::string(def.key) + "  ";
    }
    return record;
}

}  // namespace

TEST(SettingsWrite, FileIsHeaderAndKeyLinesInCrLf) {
    const TimeZone utc("UTC0");  // the header's time is local
    // The key lines of a record with its defaults are the tool's kept case.
    const std::string want =
        ";Quenmark Heralder configuration file\n;Edit this at your own risk\n"
        ";Quenmark Heralder\n;Last updated Sat Feb  3 23:59:01 2024\n;\n"
        "[HERALDER]\n" +
        readFileBytes(HERALDER_SOURCE_DIR "/tests/tool/cases/settings/empty_file.out")
            .value_or("<missing>");
    EXPECT_EQ(formatSettingsFile(Settings{}, 1707004741), withCrLf(want));
}

// Whatever a text setting holds in memory (a feed may hand it line breaks, a
// Ctrl-Z or 260 characters), the saved file reads back as the same record, less
// the cuts storableSettingText names: no value can spill into a line of its own.
// Keys the reader skips keep what the record held, not the defaults. Records of
// arbitrary bytes are fuzz_settings' part.
TEST(SettingsWrite, AnyRecordReadsBackLessTheDocumentedCuts) {
    Settings written = filled(4294967000u, "= v ");
    written.CurrentTransactionDate =
        "01-01-2020\r\nChangeFolderSound = \\\\127.0.0.1\\share\\inj.wav\r\nColourTableFile = x";
    written.AlertFontName = "Georgia\x1a";
    written.DocumentBrowserPath = "  " + std::string(258, 'x');
    const Settings before = filled(7, "old ");
    Settings read = before;
    readSettingsText(read, formatSettingsFile(written, 0));
    for (const SettingDef& def : SettingsTable) {
        const std::string value = settingValueText(written, def);
        EXPECT_EQ(settingValueText(read, def), def.readFlags & kSettingSkipOnRead
                                                   ? settingValueText(before, def)
                                               : def.isText() ? storableSettingText(def.key, value)
                                                              : value)
            << def.key;
    }
    EXPECT_EQ(std::tie(read.AlertFontName, read.CurrentTransactionDate, read.DocumentBrowserPath),
              std::tuple("Georgia", "01-01-2020", std::string(259 - 19 - 3 - 1, 'x')));
    EXPECT_EQ(storableSettingText("AlertFontName", "= v x  "), "= v x  ");  // no other cut
}

// A damaged file (empty, or with a NUL or Ctrl-Z that ends the reading early)
// is passed over for the newest intact backup; only a missing file means the
// defaults. A save never passes a damaged generation on to the backups.
TEST(SettingsFile, DamagedFilesFallBackToTheNewestIntactBackup) {
    const std::string good = "BeNoisy = 0\r\n", older = "BeNoisy = 0\r\nNoiseType = 5\r\n";
    const std::string cut = std::string("AlertFontName = Georgia\x1a\r\nBeNoisy = 0\r\n");
    using Bytes = std::optional<std::string>;
    // The file and its two backups (nullopt: missing), the one read (nullptr:
    // none), BeNoisy and NoiseType as read.
    const std::tuple<Bytes, Bytes, Bytes, const char*, uint32_t, uint32_t> cases[] = {
        {good, older, older, "Heralder17.ini", 0, 64},
        {"", good, older, "Backup of Heralder17.ini", 0, 64},
        {cut, std::string("\0", 1), older, "Backup of Backup of Heralder17.ini", 0, 5},
        {cut, std::nullopt, std::nullopt, "Heralder17.ini", 1, 64},  // better than nothing
        {std::nullopt, good, older, nullptr, 1, 64},
        {"", "", std::nullopt, nullptr, 1, 64},
    };
    for (const auto& [file, backup, oldest, readFrom, beNoisy, noiseType] : cases) {
        ScratchFolder dir;
        const std::string path = dir.file("Heralder17.ini");
        for (auto [name, bytes] : {std::pair{path, file},
                                   {dir.file("Backup of Heralder17.ini"), backup},
                                   {dir.file("Backup of Backup of Heralder17.ini"), oldest}})
            if (bytes) writeFile(name, *bytes);
        Settings read;
        const std::optional<std::string> from = readSettingsFile(read, path);
        const std::string what = file.value_or("(missing)");
        EXPECT_EQ(from, readFrom ? std::optional(dir.file(readFrom)) : std::nullopt) << what;
        EXPECT_EQ(std::tie(read.BeNoisy, read.NoiseType), std::tie(beNoisy, noiseType)) << what;

        // Saving what was read keeps an intact generation among the backups.
        ASSERT_TRUE(writeSettingsFile(read, path, 0)) << what;
        if (beNoisy == 0) {
            Settings again;
            EXPECT_TRUE(readSettingsFile(again, dir.file("Backup of Heralder17.ini"))) << what;
            EXPECT_EQ(again.BeNoisy, 0u) << what;
        }
    }
}

// Killed after the new file is complete and before it takes the old one's
// place, the worst moment: the old settings are still there to read.
TEST(SettingsFile, AKillDuringASaveLeavesTheOldFile) {
    ScratchFolder dir;
    const std::string path = dir.file("Heralder17.ini");
    Settings before;
    before.AlertFontSize = 33;
    ASSERT_TRUE(writeSettingsFile(before, path, 0));
    EXPECT_EXIT(
        {
            setFileReplaceHook([](const std::string& target) {
                if (target.ends_with("/Heralder17.ini")) _exit(7);
            });
            writeSettingsFile(Settings{}, path, 0);
        },
        testing::ExitedWithCode(7), "");
    Settings read;
    EXPECT_EQ(readSettingsFile(read, path), path);
    EXPECT_EQ(read.AlertFontSize, 33u);
}

// The file a save replaces stays on as the first backup under a second name,
// and only a save that changes nothing over a file a minute old skips the
// disk: anything else could leave no generation holding what was saved.
TEST(SettingsFile, OnlyAnUnchangedSaveOverAnOldKeptFileSkipsTheDisk) {
    ScratchFolder dir;
    const std::string path = dir.file("Heralder17.ini");
    const auto inode = [](const std::string& name) {
        struct stat st {};
        return stat(name.c_str(), &st) == 0 ? st.st_ino : 0;
    };
    ASSERT_TRUE(writeSettingsFile(Settings{}, path, 0));
    const auto first = inode(path);
    ASSERT_TRUE(writeSettingsFile(Settings{}, path, 0));
    EXPECT_EQ(inode(dir.file("Backup of Heralder17.ini")), first);

    Settings changed, today, both;
    changed.BeNoisy = both.BeNoisy = 0;
    today.CurrentTransactionDate = both.CurrentTransactionDate = "11-26-2026";
    const std::string old = formatSettingsFile(Settings{}, 0);
    const std::tuple<std::string, std::string, bool, long long, WriteReach> cases[] = {
        {old, formatSettingsFile(Settings{}, 86400), true, 60, WriteReach::System},
        {old, formatSettingsFile(today, 86400), true, 86400, WriteReach::System},
        {old, formatSettingsFile(both, 86400), true, 86400, WriteReach::Disk},
        {old, formatSettingsFile(changed, 86400), true, 86400, WriteReach::Disk},
        {old, formatSettingsFile(Settings{}, 86400), false, 86400, WriteReach::Disk},  // a copy
        {old, formatSettingsFile(Settings{}, 86400), true, 59, WriteReach::Disk},
        {"", formatSettingsFile(Settings{}, 86400), true, 86400, WriteReach::Disk},
    };
    for (const auto& [before, after, kept, age, reach] : cases)
        EXPECT_EQ(settingsSaveReach(before, after, kept, age), reach) << kept << " " << age;
}

// A full disk: the C runtime may say nothing at close, the flush must.
TEST(FileWrites, AFullDiskIsAFailedWrite) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP();
    EXPECT_FALSE(writeFileBytes("/dev/full", {"BeNoisy = 0\r\n"}));
    EXPECT_FALSE(appendFileBytes("/dev/full", "41\r\n"));
}

TEST(SettingsPaths, BackupAndDataFileNames) {
    const std::pair<std::string, std::string> backups[] = {
        {"C:\\Q\\Heralder17.ini", "C:\\Q\\Backup of Heralder17.ini"},
        {"C:Heralder17.ini", "C:Backup of Heralder17.ini"},
        {"C:\\a/b\\c.d\\name.tar.gz", "C:\\a/b\\c.d\\Backup of name.tar.gz"},
        {"D:\\" + std::string(300, 'n') + ".ini",
         "D:\\Backup of " + std::string(250, 'n') + ".ini"},
    };
    for (const auto& [path, want] : backups) EXPECT_EQ(backupPathFor(path), want) << path;

    // Data paths get one separator and are cut at 260.
    const std::string longName(300, 'n');
    const std::tuple<std::string, std::string, std::string> data[] = {
        {"C:\\A", "Heralder17.ini", "C:\\A\\Quenmark\\Heralder17.ini"},
        {"C:\\A\\", "Heralder17.ini", "C:\\A\\Quenmark\\Heralder17.ini"},
        {"", "Heralder17.ini", "Quenmark\\Heralder17.ini"},
        {"C:\\A", longName, ("C:\\A\\Quenmark\\" + longName).substr(0, 260)},
    };
    for (const auto& [folder, name, want] : data)
        EXPECT_EQ(joinDataPath(folder, {kMakerFolder, name}), want) << folder;
}

TEST(FeedDate, DayNumbersCountFromTheFirstOf2000) {
    const std::pair<const char*, uint32_t> cases[] = {
        {"01-01-2000", 0},          {"03-01-2000", 60}, {"01-01-2001", 366},
        {"12-31-1999", 364},         // a year before 2000 counts within itself only
        {"03-01-2100", 36525 + 59},  // 2100 is no leap year
        {"", 0xFFFFFFFFu},           // no day field gives -1, as unsigned sums do
    };
    for (auto [date, want] : cases) EXPECT_EQ(dateToDayNumber(date), want) << date;
}

TEST(FeedDate, TransactionDateIsTheUtcDayAndVersionsShowTheirLetter) {
    const TimeZone tokyo("JST-9");  // already 1 March in Tokyo
    Settings record;
    setTransactionDate(record, 951868799);  // 2000-02-29 23:59:59 UTC
    EXPECT_EQ(record.CurrentTransactionDate, "02-29-2000");

    EXPECT_EQ(packedVersionText(544), "17.0a");
    EXPECT_EQ(packedVersionText((5u << 5) | (2u << 10) | 1u), "5.2b");
}
