// Settings files: the exact text written, what a read of it gives back, and
// backup naming. Writing and rotating backups on disk is tested under Wine in
// the real user data folder.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "base/crt_text.h"
#include "settings/settings_file.h"

namespace {

TEST(SettingsWrite, FileIsHeaderAndKeyLinesInCrLf) {
    const std::string savedTz = std::getenv("TZ") ? std::getenv("TZ") : "";
    setenv("TZ", "UTC0", 1);  // the header's time is local
    tzset();
    // The key lines of a record with its defaults are the tool's kept case.
    std::string want =
        ";Quenmark Heralder configuration file\n;Edit this at your own risk\n"
        ";Quenmark Heralder\n;Last updated Sat Feb  3 23:59:01 2024\n;\n"
        "[HERALDER]\n" +
        readFileBytes(HERALDER_SOURCE_DIR "/tests/tool/cases/settings/empty_file.out")
            .value_or("<missing>");
    std::string crlf;
    for (char c : want) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ(formatSettingsFile(Settings{}, 1707004741), crlf);
    savedTz.empty() ? unsetenv("TZ") : setenv("TZ", savedTz.c_str(), 1);
    tzset();
}

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

TEST(SettingsBackupName, PutsBackupOfBeforeTheBaseName) {
    const struct {
        std::string path, want;
    } cases[] = {
        {"C:\\Q\\Heralder17.ini", "C:\\Q\\Backup of Heralder17.ini"},
        {"C:Heralder17.ini", "C:Backup of Heralder17.ini"},
        {"C:\\a/b\\c.d\\name.tar.gz", "C:\\a/b\\c.d\\Backup of name.tar.gz"},
        {"D:\\" + std::string(300, 'n') + ".ini",
         "D:\\Backup of " + std::string(250, 'n') + ".ini"},
    };
    for (const auto& c : cases) EXPECT_EQ(backupPathFor(c.path), c.want) << c.path;
}

}  // namespace
