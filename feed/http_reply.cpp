// Checks that stand between a reply's headers and the allocation of its body.
#include "feed/http_reply.h"

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}

// Digits only, no sign; stops early once the value passes limit so that a
// long run of digits cannot overflow.
std::optional<std::size_t> parseBoundedDecimal(std::string_view digits, std::size_t limit) {
    if (digits.empty()) return std::nullopt;
    std::size_t value = 0;
    for (char c : digits) {
        if (!isDigit(c)) return std::nullopt;
        value = value * 10 + static_cast<std::size_t>(c - '0');
        if (value > limit) return std::nullopt;
    }
    return value;
}

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (lowered(a[i]) != lowered(b[i])) return false;
    return true;
}

// Removes a leading "http://" or "https://" (any case) and says which it was.
std::optional<bool> takeScheme(std::string_view& text) {
    for (bool secure : {false, true}) {
        const std::string_view scheme = secure ? "https://" : "http://";
        if (equalNoCase(text.substr(0, scheme.size()), scheme)) {
            text.remove_prefix(scheme.size());
            return secure;
        }
    }
    return std::nullopt;
}

uint16_t effectivePort(const ServerAddress& address) {
    if (address.port) return address.port;
    return address.secure ? 443 : 80;
}

std::optional<ServerAddress> splitHostPort(std::string_view text) {
    const std::size_t colon = text.find(':');
    ServerAddress address;
    address.host = std::string(text.substr(0, colon));
    if (address.host.empty()) return std::nullopt;
    for (char c : address.host)  // a name or an IPv4 address, nothing that would end it
        if (!isDigit(c) && !(lowered(c) >= 'a' && lowered(c) <= 'z') && c != '.' && c != '-' &&
            c != '_')
            return std::nullopt;
    if (colon == std::string_view::npos) return address;
    auto port = parseBoundedDecimal(text.substr(colon + 1), 65535);
    if (!port || *port == 0) return std::nullopt;
    address.port = static_cast<uint16_t>(*port);
    return address;
}

}  // namespace

std::optional<ServerAddress> splitServerAddress(std::string_view text) {
    const std::optional<bool> secure = takeScheme(text);
    auto address = splitHostPort(text);
    if (address) address->secure = secure.value_or(false);
    return address;
}

std::string serverLinkBase(std::string_view configured) {
    std::string_view rest = configured;
    if (takeScheme(rest)) return std::string(configured);
    return "http://" + std::string(configured);
}

bool isRedirectStatus(unsigned status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

std::optional<std::string> redirectPath(const ServerAddress& from, std::string_view location) {
    location = trimmed(location);
    location = location.substr(0, location.find('#'));
    for (char c : location)
        if (static_cast<unsigned char>(c) <= ' ' || c == 0x7f) return std::nullopt;
    if (location.starts_with('/') && !location.starts_with("//")) return std::string(location);

    const std::optional<bool> secure = takeScheme(location);
    if (!secure) return std::nullopt;  // a relative or scheme-less target is not guessed at
    const std::size_t end = location.find_first_of("/?");
    const std::string_view authority = location.substr(0, end);
    if (authority.find('@') != std::string_view::npos) return std::nullopt;
    auto to = splitHostPort(authority);
    if (!to) return std::nullopt;
    to->secure = *secure;
    if (to->secure != from.secure || !equalNoCase(to->host, from.host) ||
        effectivePort(*to) != effectivePort(from))
        return std::nullopt;
    if (end == std::string_view::npos) return std::string("/");
    std::string path(location.substr(end));
    if (path.front() == '?') path.insert(0, "/");
    return path;
}

std::optional<std::size_t> parseContentLength(std::string_view text) {
    return parseBoundedDecimal(trimmed(text), maxContentLength);
}
