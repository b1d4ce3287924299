#pragma once
// Names of files that arrive from the network. Windows opens some names as
// devices whatever folder or extension goes with them ("CON", "nul.tar.gz",
// "COM1.ini"): reading or writing one can block on a serial port or talk to
// the console instead of touching a file. Both the graphic updates (written)
// and the products' configuration files (read) check their names with this.
#include <string_view>

// True when the file name (no folder) is a device name: CON, PRN, AUX, NUL,
// COM1-9 and LPT1-9 (also with the superscript digits one to three, which
// newer Windows treats alike), CONIN$ and CONOUT$, in any case, judged on the
// part before the first dot with trailing blanks dropped.
bool isDeviceFileName(std::string_view fileName);

// True when some component of a relative path ("a\b/c.ini") is a device name.
bool pathNamesDevice(std::string_view path);
