#pragma once
// The settings file "Heralder17.ini": reading with the program's forgiving
// prefix-matching rules, and writing with two backup generations ("Backup of
// ..." and "Backup of Backup of ..."). The work is done on plain paths so that
// it runs natively too; readSettings and writeSettings bind it to the user's
// data folder.
#include <ctime>
#include <string>
#include <string_view>

#include "settings/settings.h"

inline constexpr const char* kSettingsFileName = "Heralder17.ini";

// Applies the lines of a settings file, given as the bytes on disk, to record.
void readSettingsText(Settings& record, std::string_view fileBytes);
// Reads the file at path into record; false (record untouched) when it cannot
// be opened.
bool readSettingsFile(Settings& record, const std::string& path);

// The key lines alone, "Key = value" in table order, each ending in LF.
std::string formatSettingLines(const Settings& record);
// The whole file as it is written: header with the 24-character time text,
// "[HERALDER]", one line per key in table order, CR LF line ends.
std::string formatSettingsFile(const Settings& record, std::time_t now);
// "Backup of NAME" beside path (folder and extension kept).
std::string backupPathFor(const std::string& path);
// Rotates the two backups, then writes record to path. Failures are silent;
// false when the file itself could not be written.
bool writeSettingsFile(const Settings& record, const std::string& path,
                       std::time_t now = std::time(nullptr));

// The process-wide record against the user's data folder (Windows only).
void readSettings();
void writeSettings();
