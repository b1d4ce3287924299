// The test program's own loopback file server (see loopback_server.h).
#include "tests/win/loopback_server.h"

#include <winsock2.h>

#include <functional>

#include "base/file_io.h"

namespace {

// A 304 has no body and says nothing of its length.
std::string reply(const std::string& status, const std::string& etag, const std::string& body) {
    return "HTTP/1.0 " + status + (etag.empty() ? "" : "\r\nETag: " + etag) +
           (status[0] == '3' ? ""
                             : "\r\nContent-Type: text/plain\r\nContent-Length: " +
                                   std::to_string(body.size())) +
           "\r\nConnection: close\r\n\r\n" + body;
}

// A file's ETag, as a static web server makes one: it changes with the bytes.
std::string etagOf(const std::string& body) {
    return "\"" + std::to_string(body.size()) + "-" +
           std::to_string(std::hash<std::string>{}(body)) + "\"";
}

}  // namespace

LoopbackServer::LoopbackServer(std::string root, int refuseFirst)
    : root_(std::move(root)), refuse_(refuseFirst) {
    static const bool winsock = [] {
        WSADATA data;
        return WSAStartup(MAKEWORD(2, 2), &data) == 0;
    }();
    SOCKET s = winsock ? socket(AF_INET, SOCK_STREAM, IPPROTO_TCP) : INVALID_SOCKET;
    if (s == INVALID_SOCKET) return;
    BOOL yes = TRUE;
    setsockopt(s, SOL_SOCKET, SO_REUSEADDR, reinterpret_cast<const char*>(&yes), sizeof yes);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(kAppServerPort);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (bind(s, reinterpret_cast<sockaddr*>(&address), sizeof address) || listen(s, 16)) {
        closesocket(s);
        return;
    }
    socket_ = s;
    if (!root_.empty()) thread_ = std::thread([this] { serve(); });
}

LoopbackServer::~LoopbackServer() {
    stopping_ = true;
    if (listening()) closesocket(static_cast<SOCKET>(socket_));
    if (thread_.joinable()) thread_.join();
}

void LoopbackServer::serve() {
    while (!stopping_) {
        SOCKET client = accept(static_cast<SOCKET>(socket_), nullptr, nullptr);
        if (client == INVALID_SOCKET) return;
        if (refuse_ > 0) {
            --refuse_;
            closesocket(client);  // as a network that drops the connection
            continue;
        }
        std::string request;
        char buffer[4096];
        while (request.find("\r\n\r\n") == std::string::npos && request.size() < 65536) {
            const int n = recv(client, buffer, sizeof buffer, 0);
            if (n <= 0) break;
            request.append(buffer, n);
        }
        ++requests_;
        const std::size_t start = request.find(' ') + 1;
        std::string path = request.substr(start, request.find(' ', start) - start);
        std::string answer = reply("404 Not Found", "", "");
        const std::string kPrefix = "/update/";
        if (path.find("..") == std::string::npos && path.rfind(kPrefix, 0) == 0) {
            path.erase(0, kPrefix.size() - 1);
            for (char& c : path)
                if (c == '/') c = '\\';
            if (auto body = readFileBytes(root_ + path)) {
                const std::string etag = etagOf(*body);
                const bool same =
                    request.find("\r\nIf-None-Match: " + etag + "\r\n") != std::string::npos;
                notModified_ += same;
                answer = same ? reply("304 Not Modified", etag, "") : reply("200 OK", etag, *body);
            }
        }
        send(client, answer.data(), static_cast<int>(answer.size()), 0);
        shutdown(client, SD_SEND);
        closesocket(client);
    }
}
