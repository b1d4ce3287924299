// Day numbers, feed dates and packed versions.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

#include "feed/feed_date.h"
#include "settings/settings.h"

namespace {

TEST(FeedDate, DayNumbersCountFromTheFirstOf2000) {
    struct {
        const char* date;
        uint32_t want;
    } cases[] = {
        {"01-01-2000", 0},          {"03-01-2000", 60},
        {"01-01-2001", 366},        {"12-31-1999", 364},  // counted within its own year only
        {"03-01-2100", 36525 + 59},                       // 2100 is not a leap year
        {"11-20-2026", 9820},       {"", 0xFFFFFFFFu},    // no day field gives -1, as unsigned sums
                                                          // do
    };
    for (const auto& c : cases) EXPECT_EQ(dateToDayNumber(c.date), c.want) << c.date;
}

TEST(FeedDate, LeapYearsFollowTheGregorianRule) {
    struct {
        int year;
        bool leap;
    } cases[] = {{2000, true},  {1900, false}, {2024, true},
                 {2023, false}, {2400, true},  {1800, false}};
    for (const auto& c : cases) EXPECT_EQ(isLeapYear(c.year), c.leap) << c.year;
}

TEST(FeedDate, TransactionDateIsTheUtcDay) {
    // Nine hours east of UTC, so that the local day would differ from the UTC one.
    const char* tz = std::getenv("TZ");
    const std::optional<std::string> savedTz = tz ? std::optional<std::string>(tz) : std::nullopt;
    setenv("TZ", "JST-9", 1);
    tzset();
    struct {
        std::time_t now;
        const char* want;
    } cases[] = {
        {0, "01-01-1970"}, {951868799, "02-29-2000"},  // 23:59:59 UTC, 1 March in Tokyo
    };
    for (const auto& c : cases) {
        Settings record;
        setTransactionDate(record, c.now);
        EXPECT_EQ(record.CurrentTransactionDate, c.want) << c.now;
    }
    if (savedTz)
        setenv("TZ", savedTz->c_str(), 1);
    else
        unsetenv("TZ");
    tzset();
}

TEST(PackedVersion, ShowsMajorMinorAndLetter) {
    EXPECT_EQ(packedVersionText(544), "17.0a");
    EXPECT_EQ(packedVersionText((5u << 5) | (2u << 10) | 1u), "5.2b");
}

}  // namespace
