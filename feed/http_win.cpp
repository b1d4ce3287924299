// Fetches one file from the publisher's web server with WinINet. The design is
// deliberately small: one request, the Content-Length header decides the size,
// one read, the status code is not looked at (an error page is the file). What
// it adds is refusing a length that is not a plain number or is absurdly large,
// so that a broken or hostile server cannot make it allocate gigabytes.
#include "feed/http_win.h"

#include <algorithm>
#include <new>

#include "base/win_handles.h"
#include "feed/http_reply.h"

const char* publisherServerHost() {
    return HERALDER_SERVER_HOST;
}

std::optional<std::string> fetchServerFile(HWND owner, const std::string& host,
                                           const std::string& path) {
    const auto address = splitServerAddress(host);
    if (!address) return std::nullopt;

    // The system's own proxy settings apply.
    UniqueInternet internet(
        InternetOpenA("Quenmark Heralder", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
    if (!internet) return std::nullopt;

    const INTERNET_PORT port = address->port ? address->port : INTERNET_INVALID_PORT_NUMBER;
    UniqueInternet connection(InternetConnectA(internet.get(), address->host.c_str(), port, "", "",
                                               INTERNET_SERVICE_HTTP, 0, 0));
    if (!connection) return std::nullopt;

    UniqueInternet request(HttpOpenRequestA(connection.get(), "GET", path.c_str(), "HTTP/1.0",
                                            nullptr, nullptr, INTERNET_FLAG_NO_CACHE_WRITE, 0));
    if (!request) return std::nullopt;
    if (!HttpSendRequestA(request.get(), nullptr, 0, nullptr, 0)) return std::nullopt;

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
