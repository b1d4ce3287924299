#pragma once
// Two independent readers of a shell link (.lnk) for the tests: the shell's
// own IShellLinkA, and Debian's exiftool run as a Unix program.
#include <map>
#include <optional>
#include <string>

struct LinkFields {
    std::string path, arguments, description, workingDirectory;
};

std::optional<LinkFields> readLinkThroughShell(const std::string& file);
// The Unix path of a Windows one (Wine's own export), or "".
std::string unixPath(const std::string& path);
// exiftool's "-S" listing ("Tag: value" lines) of a file, as a map.
std::map<std::string, std::string> exiftoolTags(const std::string& file);

// The user's Startup shortcut, "Heralder.lnk" in the Startup folder.
std::string startupLinkPath();
// Checks with both readers that the shortcut link starts program with these
// arguments in program's folder, described as the product.
void expectStartupLink(const std::string& link, const std::string& program,
                       const std::string& arguments);
