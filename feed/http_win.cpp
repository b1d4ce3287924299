// Fetches one file from the publisher's web server with WinINet. The design is
// deliberately small: one request, the Content-Length header decides the size,
// one read, the status code is looked at only for redirects (an error page is
// the file). What it adds is refusing a length that is not a plain number or
// is absurdly large, so that a broken or hostile server cannot make it
// allocate gigabytes, and time limits: WinINet's receive time-out ends a
// silent server, and the fetch runs on a worker thread that the caller stops
// waiting for at the deadline, the one way to end a single blocking read of a
// server that trickles.
// Redirects are followed by hand, a few times and only within the configured
// server: the server address is fixed at build time so that nobody else can
// write what the agent shows, and an https server is never left for http.
#include "feed/http_win.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <memory>
#include <new>
#include <system_error>
#include <thread>

#include "base/win_handles.h"
#include "feed/http_reply.h"

namespace {

FetchLimits fetchLimits;
// The end of the current run's download time (GetTickCount64), 0 for none.
ULONGLONG runDeadline = 0;

// One fetch handed to a worker thread, so that the calling thread can stop
// waiting at the deadline: WinINet offers no way to cut short a single read
// from a server that keeps sending a byte now and then. The state is shared,
// so a worker given up on finishes (or fails) on its own and cleans up.
struct FetchJob {
    std::mutex mutex;
    std::condition_variable finished;
    bool done = false;
    bool abandoned = false;
    HINTERNET internet = nullptr;
    std::optional<std::string> body;

    // A worker given up on makes no further request: a redirect loop must
    // not go on knocking at the server after the caller has moved on.
    bool givenUp() {
        std::lock_guard lock(mutex);
        return abandoned;
    }
};

std::optional<std::string> fetchWithin(FetchJob& job, const ServerAddress& address,
                                       const std::string& path);

}  // namespace

const char* publisherServerHost() {
    return HERALDER_SERVER_HOST;
}

void setFetchLimits(const FetchLimits& limits) {
    fetchLimits = limits;
}

RunFetchBudget::RunFetchBudget() : outer_(runDeadline == 0) {
    if (outer_) runDeadline = GetTickCount64() + fetchLimits.runMs;
}

RunFetchBudget::~RunFetchBudget() {
    if (outer_) runDeadline = 0;
}

bool RunFetchBudget::spent() {
    return runDeadline != 0 && GetTickCount64() >= runDeadline;
}

std::optional<std::string> fetchServerFile(HWND owner, const std::string& host,
                                           const std::string& path) {
    const auto address = splitServerAddress(host);
    if (!address) return std::nullopt;
    DWORD waitMs = fetchLimits.totalMs;
    if (runDeadline) {
        if (RunFetchBudget::spent()) return std::nullopt;
        waitMs = static_cast<DWORD>(std::min<ULONGLONG>(waitMs, runDeadline - GetTickCount64()));
    }

    // The system's own proxy settings apply.
    HINTERNET internet =
        InternetOpenA("Quenmark Heralder", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0);
    if (!internet) return std::nullopt;
    // Options set on the session are inherited by its connection and request.
    for (DWORD option : {INTERNET_OPTION_CONNECT_TIMEOUT, INTERNET_OPTION_RECEIVE_TIMEOUT,
                         INTERNET_OPTION_SEND_TIMEOUT})
        InternetSetOptionA(internet, option, &fetchLimits.idleMs, sizeof fetchLimits.idleMs);

    auto job = std::make_shared<FetchJob>();
    job->internet = internet;
    try {
        std::thread([job, address = *address, path] {
            std::optional<std::string> body = fetchWithin(*job, address, path);
            std::lock_guard lock(job->mutex);
            job->body = std::move(body);
            job->done = true;
            if (!job->abandoned) InternetCloseHandle(job->internet);
            job->finished.notify_one();
        }).detach();
    } catch (const std::system_error&) {
        InternetCloseHandle(internet);
        return std::nullopt;
    }

    // The calling thread still blocks, as the daily run expects; it only
    // stops waiting at the deadline.
    std::unique_lock lock(job->mutex);
    if (!job->finished.wait_for(lock, std::chrono::milliseconds(waitMs),
                                [&] { return job->done; })) {
        job->abandoned = true;
        InternetCloseHandle(job->internet);  // ends the worker's wait if WinINet can
        return std::nullopt;
    }
    return std::move(job->body);
}

namespace {

// Sends GET path and follows up to maxRedirects redirects within the same
// server; the request whose reply is not a redirect, or null on failure.
UniqueInternet sendFollowingRedirects(FetchJob& job, HINTERNET connection,
                                      const ServerAddress& address, std::string path) {
    const DWORD flags = INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_AUTO_REDIRECT |
                        (address.secure ? INTERNET_FLAG_SECURE : 0);
    for (int redirects = 0;; ++redirects) {
        if (job.givenUp()) return {};
        UniqueInternet request(HttpOpenRequestA(connection, "GET", path.c_str(), "HTTP/1.0",
                                                nullptr, nullptr, flags, 0));
        if (!request) return {};
        // Wine honours the receive time-out only when it is set on the request.
        InternetSetOptionA(request.get(), INTERNET_OPTION_RECEIVE_TIMEOUT, &fetchLimits.idleMs,
                           sizeof fetchLimits.idleMs);
        if (!HttpSendRequestA(request.get(), nullptr, 0, nullptr, 0)) return {};

        DWORD status = 0, size = sizeof status;
        if (!HttpQueryInfoA(request.get(), HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status,
                            &size, nullptr) ||
            !isRedirectStatus(status))
            return request;
        if (redirects == maxRedirects) return {};
        char location[2048] = {};
        DWORD locationSize = sizeof location - 1;
        if (!HttpQueryInfoA(request.get(), HTTP_QUERY_LOCATION, location, &locationSize, nullptr))
            return {};
        auto next = redirectPath(address, std::string_view(location, locationSize));
        if (!next) return {};
        path = std::move(*next);
    }
}

std::optional<std::string> fetchWithin(FetchJob& job, const ServerAddress& address,
                                       const std::string& path) {
    const INTERNET_PORT port = address.port     ? address.port
                               : address.secure ? INTERNET_DEFAULT_HTTPS_PORT
                                                : INTERNET_DEFAULT_HTTP_PORT;
    UniqueInternet connection(InternetConnectA(job.internet, address.host.c_str(), port, "", "",
                                               INTERNET_SERVICE_HTTP, 0, 0));
    if (!connection) return std::nullopt;

    UniqueInternet request = sendFollowingRedirects(job, connection.get(), address, path);
    if (!request) return std::nullopt;

    char lengthText[32] = {};
    DWORD lengthSize = sizeof lengthText;
    if (!HttpQueryInfoA(request.get(), HTTP_QUERY_CONTENT_LENGTH, lengthText, &lengthSize,
                        nullptr)) {
        return std::nullopt;  // no length header: not taken as a file
    }
    const auto length =
        parseContentLength(std::string_view(lengthText, std::min<DWORD>(lengthSize, 31)));
    if (!length) return std::nullopt;

    std::string body;
    try {
        body.resize(*length + 1);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
    // A single read: whatever the transport delivers in that call is the body,
    // so a reply cut short gives the shorter text rather than a failure.
    DWORD read = 0;
    if (!InternetReadFile(request.get(), body.data(), static_cast<DWORD>(body.size()), &read)) {
        return std::nullopt;
    }
    // Bytes past the announced length are not part of the file, yet Wine's
    // WinINet hands them over when they arrive together with the headers.
    body.resize(std::min<std::size_t>(read, *length));
    return body;
}

}  // namespace
