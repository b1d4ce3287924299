// Day numbers, the transaction date and packed versions.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "feed/feed_date.h"
#include "settings/settings.h"

namespace {

TEST(FeedDate, DayNumbersCountFromTheFirstOf2000) {
    const struct {
        const char* date;
        uint32_t want;
    } cases[] = {
        {"01-01-2000", 0},          {"03-01-2000", 60}, {"01-01-2001", 366},
        {"12-31-1999", 364},         // a year before 2000 counts within itself only
        {"03-01-2100", 36525 + 59},  // 2100 is no leap year
        {"", 0xFFFFFFFFu},           // no day field gives -1, as unsigned sums do
    };
    for (const auto& c : cases) EXPECT_EQ(dateToDayNumber(c.date), c.want) << c.date;
    for (int year : {2000, 2024}) EXPECT_TRUE(isLeapYear(year)) << year;
    for (int year : {1900, 2023}) EXPECT_FALSE(isLeapYear(year)) << year;
}

TEST(FeedDate, TransactionDateIsTheUtcDay) {
    const std::string savedTz = std::getenv("TZ") ? std::getenv("TZ") : "";
    setenv("TZ", "JST-9", 1);  // already 1 March in Tokyo
    tzset();
    Settings record;
    setTransactionDate(record, 951868799);  // 2000-02-29 23:59:59 UTC
    EXPECT_EQ(record.CurrentTransactionDate, "02-29-2000");
    savedTz.empty() ? unsetenv("TZ") : setenv("TZ", savedTz.c_str(), 1);
    tzset();
}

TEST(PackedVersion, ShowsMajorMinorAndLetter) {
    EXPECT_EQ(packedVersionText(544), "17.0a");
    EXPECT_EQ(packedVersionText((5u << 5) | (2u << 10) | 1u), "5.2b");
}

}  // namespace
