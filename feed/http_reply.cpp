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

}  // namespace

std::optional<ServerAddress> splitServerAddress(std::string_view text) {
    const std::size_t colon = text.find(':');
    ServerAddress address;
    address.host = std::string(text.substr(0, colon));
    if (address.host.empty()) return std::nullopt;
    if (colon == std::string_view::npos) return address;
    auto port = parseBoundedDecimal(text.substr(colon + 1), 65535);
    if (!port || *port == 0) return std::nullopt;
    address.port = static_cast<uint16_t>(*port);
    return address;
}

std::optional<std::size_t> parseContentLength(std::string_view text) {
    return parseBoundedDecimal(trimmed(text), maxContentLength);
}
