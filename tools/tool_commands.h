#pragma once
#include <string>
#include <string_view>
// The subcommands of heralder-tool, one file each.
int runParseCommand(int argc, char** argv);
int runSettingsCommand(int argc, char** argv);
int runCheckCommand(int argc, char** argv);

// The agent's texts are single-byte (Latin-1); JSON wants UTF-8.
std::string latin1ToUtf8(std::string_view bytes);
