#pragma once
// Update documents and downloaded bodies on disk.
#include <optional>
#include <string>
#include <string_view>

// The whole file read in binary, as the agent reads a local update document;
// nullopt when the file cannot be opened or read completely.
std::optional<std::string> readLocalDocument(const std::string& path);

// Writes a downloaded body the way the agent always stored one: the body, then
// the 16 zero bytes that terminated it in memory. True only when every byte was
// written; a partly written file is deleted.
bool writeHandleToFile(const std::string& path, std::string_view body);
