#pragma once
// The first-run sign-up's words and decisions, apart from its window so that
// they are checked on any machine: the sign-up text, the newsletter address,
// what closing the window does to the settings, and the check for an older
// installation of the agent that the user should remove.
#include <cstdint>
#include <string>
#include <string_view>

#include "settings/settings.h"

// Put into the sign-up's text control when the window opens; "\n" breaks lines.
extern const char* const kInitConfigText;

// The old product's record of where it was installed, in the user data folder.
inline constexpr const char* kOldInstallationFile = "QMKHRLDR.INI";
inline constexpr const char* kOldInstallationSection = "Heralder";
inline constexpr const char* kOldInstallationKey = "ApplicationPath";
inline constexpr const char* kOldInstallationProgram = "QMK-heralder.exe";

// The newsletter page on the publisher's web server, as configured ("host",
// "host:port", optionally after "http://" or "https://").
std::string newsletterAddress(std::string_view host);

// The old program's path from the folder the old INI file names: a backslash
// added unless there is one, then the program's name, cut at 260 characters.
// "" when no folder is named.
std::string oldInstallationProgramPath(std::string_view applicationPath);

// The warning about the old installation; platformCode 12 (Windows XP) names
// that system's control panel item.
const char* oldInstallationMessage(uint32_t platformCode);

// The sign-up has been shown (result 1 for Close, 0 for Escape) and Close
// chose option: records that in the settings. True when the startup option is
// to be applied now, which only Close asks for.
bool settleInitConfig(Settings& record, int result, uint32_t option);
