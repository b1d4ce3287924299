// The C runtime's text reading, reproduced portably (see crt_text.h).
#include "base/crt_text.h"

#include <cstdio>
#include <limits>

int32_t atoiLike(std::string_view text) {
    std::size_t i = 0;
    auto isSpace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (i < text.size() && isSpace(text[i])) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
    int64_t value = 0;
    constexpr int64_t limit = int64_t{std::numeric_limits<int32_t>::max()} + 1;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        value = value * 10 + (text[i] - '0');
        if (value > limit) value = limit;  // saturated: more digits change nothing
    }
    if (negative) return static_cast<int32_t>(-value);
    return value >= limit ? std::numeric_limits<int32_t>::max() : static_cast<int32_t>(value);
}

std::string textModeView(std::string_view raw) {
    std::string out;
    out.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        char c = raw[i];
        if (c == '\x1a') break;
        if (c == '\r' && i + 1 < raw.size() && raw[i + 1] == '\n') continue;
        out.push_back(c);
    }
    return out;
}
