#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/document_check.h"
// The subcommands of heralder-tool, one file each.
int runParseCommand(int argc, char** argv);
int runSettingsCommand(int argc, char** argv);
int runCheckCommand(int argc, char** argv);
int runKeygenCommand(int argc, char** argv);
int runSignCommand(int argc, char** argv);
int runVerifyCommand(int argc, char** argv);

// check --key: an error when the document's signature does not verify with
// the public key files named.
std::optional<Finding> signatureFinding(std::string_view document,
                                        const std::vector<std::string>& keyPaths);

// The agent's texts are single-byte (Latin-1); JSON wants UTF-8.
std::string latin1ToUtf8(std::string_view bytes);

// The bytes of a document FILE, or nullopt after a message on standard error:
// the file is missing or unreadable, or is no regular file (a folder, a FIFO,
// a device), which is never opened for reading.
std::optional<std::string> readToolDocument(const std::string& path);
// False, after a message, when a settings FILE exists but is no regular file
// or cannot be opened; a missing one gives the defaults, as in the agent.
bool mayReadToolSettings(const std::string& path);
