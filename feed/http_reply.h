#pragma once
// The parts of a fetch that need no network: reading the configured server
// name and judging a reply's Content-Length before any memory is set aside for
// the body. Kept apart from the WinINet code so that they are tested natively.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Larger replies are refused: nothing the agent fetches (a text document, a
// picture) comes near it, and a bogus length must not become a huge allocation.
inline constexpr std::size_t maxContentLength = 64u * 1024u * 1024u;

struct ServerAddress {
    std::string host;
    uint16_t port = 0;    // 0: the scheme's default port
    bool secure = false;  // https: TLS, and never plain HTTP to this server
};

// "host" or "host:port" (port 1-65535, decimal digits only), optionally after
// "http://" or "https://". A malformed name is refused rather than read as "no
// port", so that a mistyped port never sends the request to port 80 of the
// same host instead.
std::optional<ServerAddress> splitServerAddress(std::string_view text);

// The start of a link to the server ("http://host:port"): the scheme the
// server is configured with, so a page the agent opens never drops to HTTP.
std::string serverLinkBase(std::string_view configured);

// A redirect is followed by hand, at most this many times in one fetch.
inline constexpr int maxRedirects = 5;
bool isRedirectStatus(unsigned status);
// The path to ask for next when the server at `from` answers with a redirect
// to `location`, or nullopt when the target is another host, port or scheme
// (or cannot be read): the server address is fixed at build time, and a
// redirect must not move the fetch anywhere else.
std::optional<std::string> redirectPath(const ServerAddress& from, std::string_view location);

// The Content-Length header's text: decimal digits with optional surrounding
// white space, at most maxContentLength. Anything else (a sign, no digits,
// trailing characters, an oversized value) is nullopt.
std::optional<std::size_t> parseContentLength(std::string_view text);
