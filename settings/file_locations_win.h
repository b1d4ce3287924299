#pragma once
// The user's folders as the shell names them, and the program's data file
// locations in them.
#include <optional>
#include <string>
#include <string_view>

#include "settings/file_locations.h"

// A shell special folder (CSIDL_APPDATA, CSIDL_COMMON_APPDATA, CSIDL_STARTUP...)
// as a file-system path; nullopt when the shell cannot give it, "" when it
// cannot be turned into a path.
std::optional<std::string> getSpecialFolderPath(int csidl);

// application data + "\Quenmark\" + name; "" when there is no such folder.
std::string getUserDataPath(std::string_view name);
// application data + "\Quenmark\Heralder\" + name.
std::string getUserHeralderPath(std::string_view name);
// Creates "Quenmark" and "Quenmark\Heralder" when they are missing, so that a
// program run without its installer keeps its settings. True when both exist.
bool ensureDataFolders();
