// Settings files: the exact text written, what a read of it gives back, backup
// and data file naming, and the dates and versions settings hold. Writing and
// rotating backups on disk is tested under Wine in the real user data folder.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "base/crt_text.h"
#include "feed/feed_date.h"
#include "settings/file_locations.h"
#include "settings/settings_file.h"

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
    std::string crlf;
    for (char c : want) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ(formatSettingsFile(Settings{}, 1707004741), crlf);
}

// Keys the reader skips keep what the record held, not the defaults.
TEST(SettingsWrite, ReadingASavedFileGivesBackEveryReadableValue) {
    const Settings written = filled(4294967000u, "= v "), before = filled(7, "old ");
    Settings read = before;
    readSettingsText(read, formatSettingsFile(written, 0));
    for (const SettingDef& def : SettingsTable) {
        const Settings& want = def.readFlags & kSettingSkipOnRead ? before : written;
        EXPECT_EQ(settingValueText(read, def), settingValueText(want, def)) << def.key;
    }
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

    // Data paths get one separator and are cut at 260; the program's own folder is never cut.
    const std::string longName(300, 'n');
    const struct {
        std::string folder, name, want;
    } data[] = {
        {"C:\\A", "Heralder17.ini", "C:\\A\\Quenmark\\Heralder17.ini"},
        {"C:\\A\\", "Heralder17.ini", "C:\\A\\Quenmark\\Heralder17.ini"},
        {"", "Heralder17.ini", "Quenmark\\Heralder17.ini"},
        {"C:\\A", longName, ("C:\\A\\Quenmark\\" + longName).substr(0, 260)},
    };
    for (const auto& c : data)
        EXPECT_EQ(joinDataPath(c.folder, {kMakerFolder, c.name}), c.want) << c.folder;
    EXPECT_EQ(getApplicationFilePath("C:\\P\\", "c.dll"), "C:\\P\\c.dll");
    EXPECT_EQ(getApplicationFilePath(std::string(300, 'p'), "c.dll"),
              std::string(300, 'p') + "\\c.dll");
}

TEST(FeedDate, DayNumbersCountFromTheFirstOf2000) {
    const std::pair<const char*, uint32_t> cases[] = {
        {"01-01-2000", 0},          {"03-01-2000", 60}, {"01-01-2001", 366},
        {"12-31-1999", 364},         // a year before 2000 counts within itself only
        {"03-01-2100", 36525 + 59},  // 2100 is no leap year
        {"", 0xFFFFFFFFu},           // no day field gives -1, as unsigned sums do
    };
    for (auto [date, want] : cases) EXPECT_EQ(dateToDayNumber(date), want) << date;
    for (int year : {2000, 2024}) EXPECT_TRUE(isLeapYear(year)) << year;
    for (int year : {1900, 2023}) EXPECT_FALSE(isLeapYear(year)) << year;
}

TEST(FeedDate, TransactionDateIsTheUtcDayAndVersionsShowTheirLetter) {
    const TimeZone tokyo("JST-9");  // already 1 March in Tokyo
    Settings record;
    setTransactionDate(record, 951868799);  // 2000-02-29 23:59:59 UTC
    EXPECT_EQ(record.CurrentTransactionDate, "02-29-2000");

    EXPECT_EQ(packedVersionText(544), "17.0a");
    EXPECT_EQ(packedVersionText((5u << 5) | (2u << 10) | 1u), "5.2b");
}
