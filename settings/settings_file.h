#pragma once
// The settings file "Heralder17.ini": reading with the program's forgiving
// prefix-matching rules, and writing with two backup generations ("Backup of
// ..." and "Backup of Backup of ..."). The work is done on plain paths so that
// it runs natively too; readSettings and writeSettings bind it to the user's
// data folder.
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include "base/file_io.h"
#include "settings/settings.h"

inline constexpr const char* kSettingsFileName = "Heralder17.ini";

// Applies the lines of a settings file, given as the bytes on disk, to record.
void readSettingsText(Settings& record, std::string_view fileBytes);
// Reads the file at path into record and names the file it read. A missing
// file reads nothing (nullopt, the record keeps its defaults); one that is
// empty, unreadable or holds a NUL or Ctrl-Z is damaged, and the newest intact
// backup is read instead ("Backup of ...", then "Backup of Backup of ..."),
// and only without one what the damaged file still holds.
std::optional<std::string> readSettingsFile(Settings& record, const std::string& path);

// What of a text value comes back from the file: the text up to its first
// control character, without leading blanks, and no longer than "key = value"
// and its line end fit in one read of the reader. The writer stores exactly
// this, so a value can never spill into a line of its own.
std::string_view storableSettingText(std::string_view key, std::string_view text);

// The key lines alone, "Key = value" in table order, each ending in LF.
std::string formatSettingLines(const Settings& record);
// The whole file as it is written: header with the 24-character time text,
// "[HERALDER]", one line per key in table order, CR LF line ends.
std::string formatSettingsFile(const Settings& record, std::time_t now);
// "Backup of NAME" beside path (folder and extension kept).
std::string backupPathFor(const std::string& path);
// Rotates the two backups (intact generations only), then writes record to
// path. Each file is written beside the old one and replaces it in one step, so
// a crash leaves the old file or the new. False when the file itself could not
// be written; the old one then stays.
bool writeSettingsFile(const Settings& record, const std::string& path,
                       std::time_t now = std::time(nullptr));
// How far a save must reach before it counts. Only as far as the system when
// it changes no setting but the date of the last document (which the next
// fetch sets again), the file it replaces stays as the first backup (a
// second name, not a copy) and has been there a minute or more, long enough
// for the system to have put it on the disk: a power cut that damages the new
// file then leaves the reader that backup, holding the same settings. Every
// daily run makes such a save, and waiting for the disk would cost it more than
// the rest of its work.
WriteReach settingsSaveReach(std::string_view before, std::string_view after, bool beforeKept,
                             long long beforeAgeSeconds);

// record against the user's data folder (Windows only).
void readSettings(Settings& record);
void writeSettings(const Settings& record);
