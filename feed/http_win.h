#pragma once
// Fetching a file from the publisher's web server over WinINet.
#include <optional>
#include <string>

#include "base/win_headers.h"

// The publisher's web server, "host" or "host:port"; chosen at build time.
const char* publisherServerHost();

// GETs path from host ("host" or "host:port") and returns the body, or nullopt on
// any failure. Blocks the calling thread; callers show the wait cursor.
std::optional<std::string> fetchServerFile(HWND owner, const std::string& host,
                                           const std::string& path);
