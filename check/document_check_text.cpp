// Text tools of the document check (see document_check_text.h).
#include "check/document_check_text.h"

#include <array>
#include <limits>

#include <algorithm>

#include "base/ascii.h"
#include "base/crt_text.h"
#include "feed/feed_date.h"

namespace checktext {

namespace {

bool digitsAt(std::string_view s, std::size_t at, std::size_t count) {
    for (std::size_t i = at; i < at + count; ++i)
        if (i >= s.size() || s[i] < '0' || s[i] > '9') return false;
    return true;
}

}  // namespace

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && static_cast<unsigned char>(s.front()) <= ' ') s.remove_prefix(1);
    while (!s.empty() && static_cast<unsigned char>(s.back()) <= ' ') s.remove_suffix(1);
    return s;
}

// A value as the publisher wrote it, fit to stand in a one-line message.
std::string quoted(std::string_view value) {
    constexpr std::size_t kMax = 40;
    std::string out = "'";
    for (std::size_t i = 0; i < value.size() && i < kMax; ++i)
        out += static_cast<unsigned char>(value[i]) < ' ' ? ' ' : value[i];
    return out + (value.size() > kMax ? "...'" : "'");
}

namespace {

// Optimal string alignment distance, ASCII case folded: a swapped pair of
// letters ("TITEL") costs one, as a publisher's typo does. Past limit the
// answer is limit + 1: a row's smallest value never falls in later rows, so
// the walk ends as soon as one exceeds the limit, which for an unknown word
// set against every name is after a row or two.
std::size_t distanceUpTo(std::string_view a, std::string_view b, std::size_t limit) {
    // Three rows: the one before the previous is needed for a swapped pair.
    // Names and the words set against them are short, so the rows usually
    // live on the stack: this runs for every unknown word of a document.
    constexpr std::size_t kShort = 48;
    std::array<std::size_t, 3 * kShort> local;
    std::vector<std::size_t> heap;
    std::size_t* rows = local.data();
    if (b.size() + 1 > kShort) {
        heap.resize(3 * (b.size() + 1));
        rows = heap.data();
    }
    const std::size_t width = b.size() + 1 > kShort ? b.size() + 1 : kShort;
    std::size_t* before = rows;
    std::size_t* previous = rows + width;
    std::size_t* row = rows + 2 * width;
    for (std::size_t j = 0; j <= b.size(); ++j) before[j] = previous[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        std::size_t smallest = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t cost = asciiUpper(a[i - 1]) == asciiUpper(b[j - 1]) ? 0 : 1;
            row[j] = std::min(std::min(previous[j], row[j - 1]) + 1, previous[j - 1] + cost);
            if (i > 1 && j > 1 && asciiUpper(a[i - 1]) == asciiUpper(b[j - 2]) &&
                asciiUpper(a[i - 2]) == asciiUpper(b[j - 1]))
                row[j] = std::min(row[j], before[j - 2] + 1);
            smallest = std::min(smallest, row[j]);
        }
        if (smallest > limit) return limit + 1;
        std::swap(before, previous);
        std::swap(previous, row);
    }
    return std::min(previous[b.size()], limit + 1);
}

}  // namespace

std::size_t editDistance(std::string_view a, std::string_view b) {
    return distanceUpTo(a, b, std::numeric_limits<std::size_t>::max() - 1);
}

// Names further apart in length than the limit cannot be within it.
bool withinDistance(std::string_view a, std::string_view b, std::size_t limit) {
    const std::size_t gap = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
    return gap <= limit && distanceUpTo(a, b, limit) <= limit;
}

std::optional<std::string_view> nearest(std::string_view word,
                                        std::span<const std::string_view> names,
                                        std::size_t limit) {
    std::optional<std::string_view> best;
    std::size_t bestDistance = limit + 1;
    for (std::string_view name : names) {
        const std::size_t gap =
            word.size() > name.size() ? word.size() - name.size() : name.size() - word.size();
        if (gap > limit) continue;
        const std::size_t d = distanceUpTo(word, name, limit);
        if (d < bestDistance) best = name, bestDistance = d;
    }
    return best;
}

// The leading word of a line: letters, digits and "_", after a ":" when the
// line begins with one. Blanks inside a marker (":BEGIN ALERT") are dropped.
std::string leadingWord(std::string_view line, bool joinBlanks) {
    std::string word;
    std::size_t i = 0;
    if (i < line.size() && line[i] == ':') word += line[i++];
    for (; i < line.size() && word.size() < 40; ++i) {
        char c = line[i];
        if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_')
            word += c;
        else if (!(joinBlanks && c == ' '))
            break;
    }
    return word;
}

LineNumbers::LineNumbers(std::string_view raw) {
    starts_.push_back(0);
    std::size_t normalised = 0;
    for (std::size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] == '\n') {
            normalised += 2;
            starts_.push_back(normalised);
        } else if (raw[i] == '\r') {
            if (i + 1 < raw.size() && raw[i + 1] == '\n') continue;
            ++loneCrs_;
            if (!firstLoneCr_) firstLoneCr_ = static_cast<int>(starts_.size());
            normalised += 2;  // read as CR LF
            starts_.push_back(normalised);
        } else {
            ++normalised;
        }
    }
}

int LineNumbers::at(std::size_t offset) const {
    return static_cast<int>(std::upper_bound(starts_.begin(), starts_.end(), offset) -
                            starts_.begin());
}

// "-12", "+7", "2101": a number that atoi reads completely and keeps.
bool isPlainInteger(std::string_view s) {
    std::string_view digits = s;
    if (!digits.empty() && (digits[0] == '+' || digits[0] == '-')) digits.remove_prefix(1);
    if (digits.empty() || digits.size() > 18 ||
        !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return false;
    long long value = std::stoll(std::string(digits));
    if (s[0] == '-') value = -value;
    return value == atoiLike(s);
}

// Whether atoi finds any digits at all, or gives 0 for want of them.
bool startsWithNumber(std::string_view s) {
    std::size_t i = 0;
    while (i < s.size() && isBlank(s[i])) ++i;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    return i < s.size() && s[i] >= '0' && s[i] <= '9';
}

// MM-DD-YYYY, a real day of a year from 2000 on; blanks may follow.
bool isFeedDate(std::string_view value) {
    if (value.size() < 10 || !digitsAt(value, 0, 2) || value[2] != '-' || !digitsAt(value, 3, 2) ||
        value[5] != '-' || !digitsAt(value, 6, 4) || !trimmed(value.substr(10)).empty())
        return false;
    int month = atoiLike(value.substr(0, 2)), day = atoiLike(value.substr(3, 2));
    int year = atoiLike(value.substr(6, 4));
    static constexpr int kDays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (year < 2000 || month < 1 || month > 12 || day < 1 || day > kDays[month - 1]) return false;
    return !(month == 2 && day == 29 && !isLeapYear(year));
}

// What the author meant by a lone CR: a line end. The agent drops it and joins
// the lines; that is reported once, and the rest is judged as meant.
std::string withLoneCrsAsLineEnds(std::string_view raw) {
    std::string out;
    out.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        out += raw[i];
        if (raw[i] == '\r' && (i + 1 == raw.size() || raw[i + 1] != '\n')) out += '\n';
    }
    return out;
}

std::string dateOrderHint(std::string_view value) {
    if (digitsAt(value, 0, 4) && value.size() > 4 && value[4] == '-') return ", year last";
    if (digitsAt(value, 0, 2) && digitsAt(value, 3, 2) && atoiLike(value.substr(0, 2)) > 12 &&
        atoiLike(value.substr(3, 2)) <= 12)
        return ", month first";
    return {};
}

}  // namespace checktext
