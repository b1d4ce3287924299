// Day numbers, feed dates and packed versions.
#include <gtest/gtest.h>

#include "feed/feed_date.h"
#include "settings/settings.h"

namespace {

TEST(FeedDate, DayNumbersCountFromTheFirstOf2000) {
    struct {
        const char* date;
        uint32_t want;
    } cases[] = {
        {"01-01-2000", 0},
        {"03-01-2000", 60},
        {"01-01-2001", 366},
        {"12-31-1999", 364},  // counted within its own year only
        {"03-01-2001", 366 + 59},
        {"03-01-2100", 36525 + 59},  // 2100 is not a leap year
        {"11-20-2026", 9820},
        {"01-01-1900", 0},
        {"12-31-2000", 365},
        {"01-00-2000", 0xFFFFFFFFu},  // day 0 on the first day wraps, as unsigned sums do
        {"14-01-2001", 366 + 365},    // a month past December counts the whole year
        {"", 0xFFFFFFFFu},
        {"12", 335 - 1},  // year 0 is a leap year; no day field gives -1
        {"xx-yy-zzzz", 0xFFFFFFFFu},
        {"1-1-2001", 0xFFFFFFFDu},  // not month first in two digits: fields fall apart
    };
    for (const auto& c : cases) EXPECT_EQ(dateToDayNumber(c.date), c.want) << c.date;
}

TEST(FeedDate, LeapYearsFollowTheGregorianRule) {
    struct {
        int year;
        bool leap;
    } cases[] = {{2000, true},  {1900, false}, {2024, true}, {2023, false},
                 {2100, false}, {2400, true},  {4, true},    {0, true}};
    for (const auto& c : cases) EXPECT_EQ(isLeapYear(c.year), c.leap) << c.year;
}

TEST(FeedDate, FormatsMonthFirstWithPadding) {
    EXPECT_EQ(formatFeedDate(3, 5, 2001), "03-05-2001");
    EXPECT_EQ(formatFeedDate(12, 31, 99), "12-31-0099");
    EXPECT_EQ(formatFeedDate(123, 4, 12345), "123-04-12345");
}

TEST(FeedDate, TransactionDateIsTheUtcDay) {
    struct {
        std::time_t now;
        const char* want;
    } cases[] = {
        {0, "01-01-1970"},
        {951782400, "02-29-2000"},  // 2000-02-29 00:00:00 UTC
        {951868799, "02-29-2000"},  // 23:59:59 UTC: already 1 March east of UTC
        {1795219199, "11-20-2026"},
    };
    for (const auto& c : cases) {
        Settings record;
        setTransactionDate(record, c.now);
        EXPECT_EQ(record.CurrentTransactionDate, c.want) << c.now;
    }
}

TEST(PackedVersion, ShowsMajorMinorAndLetter) {
    struct {
        uint32_t packed;
        const char* want;
    } cases[] = {
        {544, "17.0a"},
        {(5u << 5) | (2u << 10) | 1u, "5.2b"},
        {0, "0.0a"},
        {0xFFFFFFFFu, "31.31\x80"},  // letter 31 is past 'z'; bits above 14 are ignored
    };
    for (const auto& c : cases) EXPECT_EQ(packedVersionText(c.packed), c.want) << c.packed;
}

}  // namespace
