// Numeric field rules (see spin_edit.h).
#include "ui/spin_edit.h"

#include <algorithm>
#include <climits>

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

void skipSpaces(std::string_view text, std::size_t& pos) {
    while (pos < text.size() && isSpace(text[pos])) ++pos;
}

// A decimal number at pos after optional white space and sign, as "%d" reads
// it; pos moves past it. Saturates far beyond int, so that a long run of
// digits still reads as "very large".
std::optional<long long> readNumber(std::string_view text, std::size_t& pos) {
    std::size_t i = pos;
    skipSpaces(text, i);
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
    const std::size_t digits = i;
    long long value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
        value = std::min<long long>(value * 10 + (text[i] - '0'), 1LL << 40);
    if (i == digits) return std::nullopt;
    pos = i;
    return negative ? -value : value;
}

}  // namespace

SpinRange parseSpinRange(std::string_view text) {
    SpinRange range;
    int* const fields[] = {&range.minimum, &range.maximum, &range.start};
    std::size_t pos = 0;
    for (int* field : fields) {
        if (field != fields[0]) {
            if (pos >= text.size() || text[pos] != ',') break;
            ++pos;
        }
        const std::optional<long long> value = readNumber(text, pos);
        if (!value) break;
        *field = static_cast<int>(std::clamp<long long>(*value, INT_MIN, INT_MAX));
    }
    return range;
}

int clampToRange(const SpinRange& range, long long value) {
    const int low = std::min(range.minimum, range.maximum);
    const int high = std::max(range.minimum, range.maximum);
    return static_cast<int>(std::clamp<long long>(value, low, high));
}

std::optional<long long> parseFieldNumber(std::string_view text) {
    std::size_t pos = 0;
    const std::optional<long long> value = readNumber(text, pos);
    skipSpaces(text, pos);
    if (!value || pos != text.size()) return std::nullopt;
    return value;
}

int spinFieldValue(const SpinRange& range, std::string_view text, int fallback) {
    return clampToRange(range, parseFieldNumber(text).value_or(fallback));
}
