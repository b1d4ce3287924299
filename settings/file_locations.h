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

// applicationPath (the program's folder, the ApplicationPath setting) + "\"
// when needed + name, not cut: the folder comes from the system, not from a user.
std::string getApplicationFilePath(std::string_view applicationPath, std::string_view name);
