// Feed dates and packed versions (see feed_date.h). The day number reads its
// fields with atoi at fixed positions, as the feed's dates always were read, so
// a malformed date gives a number rather than an error; short text simply has
// fewer characters to read.
#include "feed/feed_date.h"

#include <cstdio>

#include "base/crt_text.h"
#include "settings/settings.h"

namespace {

constexpr int kMonthDays[2][12] = {
    {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31},
    {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31},
};

int32_t fieldAt(std::string_view text, std::size_t pos, std::size_t length) {
    if (pos >= text.size()) return 0;
    return atoiLike(text.substr(pos, length));
}

}  // namespace

bool isLeapYear(int year) {
    if (year % 100 != 0) return year % 4 == 0;
    return year % 400 == 0;
}

uint32_t dateToDayNumber(std::string_view feedDate) {
    const int32_t year = fieldAt(feedDate, 6, 4);
    const int32_t month = fieldAt(feedDate, 0, 2) - 1;
    const int32_t day = fieldAt(feedDate, 3, 2) - 1;
    int64_t days = 0;
    for (int32_t y = 2000; y < year; ++y) days += isLeapYear(y) ? 366 : 365;
    // A month beyond December counts the whole year rather than reading past the table.
    const int* lengths = kMonthDays[isLeapYear(year) ? 1 : 0];
    for (int32_t m = 0; m < month && m < 12; ++m) days += lengths[m];
    days += day;
    // Unsigned arithmetic: a day of 0 on 1 January wraps around.
    return static_cast<uint32_t>(days);
}

std::string formatFeedDate(unsigned month, unsigned day, unsigned year) {
    // "%02.2u" pads to two digits like "%02u" and never cuts a longer number.
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%02u-%02u-%04u", month, day, year);
    return buffer;
}

void setTransactionDate(Settings& record, std::time_t now) {
    std::tm utc{};
#ifdef _WIN32
    if (gmtime_s(&utc, &now) != 0) return;
#else
    if (!gmtime_r(&now, &utc)) return;
#endif
    record.CurrentTransactionDate =
        formatFeedDate(static_cast<unsigned>(utc.tm_mon + 1), static_cast<unsigned>(utc.tm_mday),
                       static_cast<unsigned>(utc.tm_year + 1900));
}

std::string packedVersionText(uint32_t packed) {
    const int major = static_cast<int>((packed >> 5) & 31);
    const int minor = static_cast<int>((packed >> 10) & 31);
    const char letter = static_cast<char>('a' + (packed & 31));
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%d.%d%c", major, minor, letter);
    return buffer;
}
