// Fetches one file from the publisher's web server with WinINet. The design is
// deliberately small: one HTTP/1.1 GET, the Content-Length header decides the
// size, the status code is handed to the caller without judging it (for the
// pictures and for an unconditional document fetch an error page is the file)
// except for redirects. What it adds is refusing a length that is not a plain
// number or is absurdly large, reading a decoded body in chunks up to the same
// limit rather than trusting any announced size, and time limits: WinINet's
// receive time-out ends a silent server, and the fetch runs on a worker thread
// that the caller stops waiting for at the deadline, the one way to end a
// blocking read of a server that trickles.
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

#include "base/version.h"
#include "base/win_handles.h"
#include "feed/http_reply.h"

namespace {

FetchLimits fetchLimits;
// The run's budget: whether one is held, and how long its fetches have taken.
bool runBudgetHeld = false;
ULONGLONG runSpentMs = 0;

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
    std::optional<FetchReply> reply;

    // A worker given up on makes no further request: a redirect loop must
    // not go on knocking at the server after the caller has moved on.
    bool givenUp() {
        std::lock_guard lock(mutex);
        return abandoned;
    }
};

std::optional<FetchReply> fetchWithin(FetchJob& job, const ServerAddress& address,
                                      const FetchRequest& request);

}  // namespace

const char* publisherServerHost() {
    return HERALDER_SERVER_HOST;
}

void setFetchLimits(const FetchLimits& limits) {
    fetchLimits = limits;
}

RunFetchBudget::RunFetchBudget() : outer_(!runBudgetHeld) {
    if (outer_) {
        runBudgetHeld = true;
        runSpentMs = 0;
    }
}

RunFetchBudget::~RunFetchBudget() {
    if (outer_) runBudgetHeld = false;
}

bool RunFetchBudget::spent() {
    return runBudgetHeld && runSpentMs >= fetchLimits.runMs;
}

std::optional<std::string> fetchServerFile(HWND owner, const std::string& host,
                                           const std::string& path) {
    std::optional<FetchReply> reply = fetchServerReply(owner, host, {path});
    if (!reply) return std::nullopt;
    return std::move(reply->body);
}

std::optional<FetchReply> fetchServerReply(HWND owner, const std::string& host,
                                           const FetchRequest& request) {
    const auto address = splitServerAddress(host);
    if (!address) return std::nullopt;
    DWORD waitMs = fetchLimits.totalMs;
    if (runBudgetHeld) {
        if (RunFetchBudget::spent()) return std::nullopt;
        waitMs = static_cast<DWORD>(std::min<ULONGLONG>(waitMs, fetchLimits.runMs - runSpentMs));
    }
    // Only the time spent fetching counts against the run's budget: a user
    // who reads the windows slowly still gets the later windows' pictures.
    struct Clock {
        const ULONGLONG start = GetTickCount64();
        ~Clock() {
            if (runBudgetHeld) runSpentMs += GetTickCount64() - start;
        }
    } clock;

    // The system's own proxy settings apply.
    HINTERNET internet = InternetOpenA(HERALDER_PRODUCT "/" HERALDER_VERSION_DISPLAY,
                                       INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0);
    if (!internet) return std::nullopt;
    // Options set on the session are inherited by its connection and request.
    for (DWORD option : {INTERNET_OPTION_CONNECT_TIMEOUT, INTERNET_OPTION_RECEIVE_TIMEOUT,
                         INTERNET_OPTION_SEND_TIMEOUT})
        InternetSetOptionA(internet, option, &fetchLimits.idleMs, sizeof fetchLimits.idleMs);

    auto job = std::make_shared<FetchJob>();
    job->internet = internet;
    try {
        std::thread([job, address = *address, request] {
            std::optional<FetchReply> reply = fetchWithin(*job, address, request);
            std::lock_guard lock(job->mutex);
            job->reply = std::move(reply);
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
    return std::move(job->reply);
}

namespace {

// A response header's value; nullopt when absent or longer than any value we use.
std::optional<std::string> queryHeader(HINTERNET request, DWORD info) {
    char text[1100];
    DWORD size = sizeof text - 1;
    if (!HttpQueryInfoA(request, info, text, &size, nullptr)) return std::nullopt;
    return std::string(text, std::min<DWORD>(size, sizeof text - 1));
}

// Windows reports the compressed length beside a body it decodes (Wine drops
// both headers): that length says nothing about the text read.
bool isCompressed(const std::optional<std::string>& encoding) {
    return encoding && (encoding->find("gzip") != std::string::npos ||
                        encoding->find("deflate") != std::string::npos);
}

// Reads the body in chunks until its end or past limit bytes, so that memory
// follows what really arrives, never what a header announced.
std::optional<std::string> readBody(HINTERNET request, std::size_t limit) {
    constexpr std::size_t kChunk = 64 * 1024;
    std::string body;
    try {
        while (body.size() <= limit) {
            const std::size_t start = body.size();
            body.resize(start + std::min(kChunk, limit + 1 - start));
            DWORD read = 0;
            if (!InternetReadFile(request, body.data() + start,
                                  static_cast<DWORD>(body.size() - start), &read))
                return std::nullopt;
            body.resize(start + read);
            if (read == 0) break;
        }
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
    return body;
}

// Sends the GET and follows up to maxRedirects redirects within the same
// server; the request whose reply is not a redirect, or null on failure.
UniqueInternet sendFollowingRedirects(FetchJob& job, HINTERNET connection,
                                      const ServerAddress& address, const FetchRequest& fetch) {
    const DWORD flags = INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_AUTO_REDIRECT |
                        (address.secure ? INTERNET_FLAG_SECURE : 0);
    std::string path = fetch.path;
    for (int redirects = 0;; ++redirects) {
        if (job.givenUp()) return {};
        UniqueInternet request(HttpOpenRequestA(connection, "GET", path.c_str(), "HTTP/1.1",
                                                nullptr, nullptr, flags, 0));
        if (!request) return {};
        // Wine honours the receive time-out only when it is set on the request.
        InternetSetOptionA(request.get(), INTERNET_OPTION_RECEIVE_TIMEOUT, &fetchLimits.idleMs,
                           sizeof fetchLimits.idleMs);
        if (fetch.decode) {
            BOOL decode = TRUE;
            InternetSetOptionA(request.get(), INTERNET_OPTION_HTTP_DECODING, &decode,
                               sizeof decode);
        }
        if (!HttpSendRequestA(request.get(),
                              fetch.headers.empty() ? nullptr : fetch.headers.c_str(),
                              static_cast<DWORD>(fetch.headers.size()), nullptr, 0))
            return {};

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

std::optional<FetchReply> fetchWithin(FetchJob& job, const ServerAddress& address,
                                      const FetchRequest& fetch) {
    const INTERNET_PORT port = address.port     ? address.port
                               : address.secure ? INTERNET_DEFAULT_HTTPS_PORT
                                                : INTERNET_DEFAULT_HTTP_PORT;
    UniqueInternet connection(InternetConnectA(job.internet, address.host.c_str(), port, "", "",
                                               INTERNET_SERVICE_HTTP, 0, 0));
    if (!connection) return std::nullopt;

    UniqueInternet request = sendFollowingRedirects(job, connection.get(), address, fetch);
    if (!request) return std::nullopt;

    FetchReply reply;
    DWORD statusSize = sizeof reply.status;
    if (!HttpQueryInfoA(request.get(), HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER,
                        &reply.status, &statusSize, nullptr) ||
        reply.status < 100 || reply.status > 599)
        return std::nullopt;  // a dropped connection: Wine reports it as status 0

    // The announced length, when there is one, must be a plain number within
    // the limit. Without one only a decoded body is taken (a compressed reply
    // announces no decoded length); otherwise it is not taken as a file.
    std::optional<std::size_t> length;
    if (const auto text = queryHeader(request.get(), HTTP_QUERY_CONTENT_LENGTH)) {
        length = parseContentLength(*text);
        if (!length) return std::nullopt;
    } else if (!fetch.decode) {
        return std::nullopt;
    }
    const bool compressed =
        fetch.decode && isCompressed(queryHeader(request.get(), HTTP_QUERY_CONTENT_ENCODING));
    const bool announced = length && !compressed;
    const std::size_t limit = announced ? *length : maxContentLength;

    auto body = readBody(request.get(), limit);
    if (!body) return std::nullopt;
    if (body->size() > limit) {
        // A decoded body past the limit is a failure; bytes past an announced
        // length are not part of the file, yet Wine's WinINet hands them over
        // when they arrive together with the headers.
        if (!announced) return std::nullopt;
        body->resize(limit);
    }
    reply.body = std::move(*body);
    reply.etag = queryHeader(request.get(), HTTP_QUERY_ETAG).value_or("");
    reply.lastModified = queryHeader(request.get(), HTTP_QUERY_LAST_MODIFIED).value_or("");
    return reply;
}

}  // namespace
