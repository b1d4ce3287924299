#pragma once
// Where the program's files live. Settings and the files shared with the
// publisher's other products are in the user data folder (application data,
// then "Quenmark"); the product's own files (seen list, colour table, item
// graphics) one level deeper, in "Quenmark\Heralder". Callers never build these
// paths themselves. Paths are cut at 260 characters, the length of the buffers
// the rest of the program and the system calls use.
#include <optional>
#include <string>
#include <string_view>

inline constexpr std::size_t kMaxPathChars = 260;

// A shell special folder (CSIDL_APPDATA, CSIDL_COMMON_APPDATA, CSIDL_STARTUP...)
// as a file-system path without a trailing backslash guarantee; nullopt when the
// shell cannot give it.
std::optional<std::string> getSpecialFolderPath(int csidl);
