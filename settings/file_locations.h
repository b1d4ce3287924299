#pragma once
// Where the program's files live. Settings and the files shared with the
// publisher's other products are in the user data folder (application data,
// then "Quenmark"); the product's own files (seen list, colour table, item
// graphics) one level deeper, in "Quenmark\Heralder". Callers never build these
// paths themselves. Paths are cut at 260 characters, the length of the buffers
// the rest of the program and the system calls use.
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

inline constexpr std::size_t kMaxPathChars = 260;
inline constexpr const char* kMakerFolder = "Quenmark";
inline constexpr const char* kProductFolder = "Heralder";

// folder, then each part, each joined with one "\" (none added after an empty
// text or one that already ends in "\"), the result cut at 260 characters.
std::string joinDataPath(std::string_view folder, std::initializer_list<std::string_view> parts);

// ApplicationPath (the program's folder, see settings.h) + "\" when needed +
// name, not cut: the folder comes from the system, not from a user.
std::string getApplicationFilePath(std::string_view name);

// Windows only from here on.

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
