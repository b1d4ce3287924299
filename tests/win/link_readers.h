#pragma once
// The user's Startup shortcut checked by two independent readers of a shell
// link (.lnk): the shell's own IShellLinkA, and Debian's exiftool run as a
// Unix program.
#include <string>

// The user's Startup shortcut, "Heralder.lnk" in the Startup folder.
std::string startupLinkPath();
// Checks with both readers that the shortcut link starts program with these
// arguments in program's folder, described as the product.
void expectStartupLink(const std::string& link, const std::string& program,
                       const std::string& arguments);
