#pragma once
// The subcommands of heralder-tool, one file each.
int runParseCommand(int argc, char** argv);
int runSettingsCommand(int argc, char** argv);
int runCheckCommand(int argc, char** argv);
