#pragma once
// Fetching a file from the publisher's web server over WinINet.
#include <optional>
#include <string>

#include "base/win_headers.h"

// The publisher's web server, "host" or "host:port"; chosen at build time.
const char* publisherServerHost();

// How long a fetch may take: a server that accepts and then says nothing, or
// sends its reply a byte at a time, must not hold the daily run for ever.
struct FetchLimits {
    DWORD idleMs = 30000;    // no byte received for this long ends the fetch
    DWORD totalMs = 120000;  // the whole fetch, connection to last byte
    DWORD runMs = 30000;     // all downloads of one run after its document
};
// The program always uses the defaults; only the tests set shorter limits.
void setFetchLimits(const FetchLimits& limits);

// One GET: the path, request headers of its own ("Name: value\r\n" lines) and
// whether WinINet is to decode a compressed body (the headers then ask for
// one). A decoded body has no length announced for it, so it is read to its
// end, and one over maxContentLength is a failed fetch.
struct FetchRequest {
    std::string path;
    std::string headers;
    bool decode = false;
};
struct FetchReply {
    DWORD status = 0;
    std::string body;
    std::string etag;  // the validators, "" when the server gave none
    std::string lastModified;
};
std::optional<FetchReply> fetchServerReply(HWND owner, const std::string& host,
                                           const FetchRequest& request);

// GETs path from host ("host" or "host:port") and returns the body, or nullopt on
// any failure. Blocks the calling thread; callers show the wait cursor.
std::optional<std::string> fetchServerFile(HWND owner, const std::string& host,
                                           const std::string& path);

// For as long as it lives, every fetch shares one time budget: runMs of time
// spent fetching (the time the user spends reading windows does not count). A
// fetch ends by the budget's end at the latest, and once the budget is spent
// none starts. A notification run holds one, so that pictures on a
// server that never answers cannot hold the run's windows for minutes. An
// inner one keeps the outer budget.
class RunFetchBudget {
  public:
    RunFetchBudget();
    ~RunFetchBudget();
    RunFetchBudget(const RunFetchBudget&) = delete;
    RunFetchBudget& operator=(const RunFetchBudget&) = delete;

    static bool spent();

  private:
    bool outer_;
};
