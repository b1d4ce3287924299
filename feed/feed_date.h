#pragma once
// Dates of the feed and packed product versions. A feed date is ten
// characters, month first ("03-15-2001"); the feed reckons in days counted
// from 1 January 2000. A packed version holds the revision letter in bits 0-4
// (offset from 'a'), the major version in bits 5-9 and the minor in 10-14.
#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

struct Settings;

bool isLeapYear(int year);
// Days from 1 January 2000; a year before 2000 counts within itself only.
uint32_t dateToDayNumber(std::string_view feedDate);
// "%02.2u-%02.2u-%04.4u" of month, day, year.
std::string formatFeedDate(unsigned month, unsigned day, unsigned year);
// CurrentTransactionDate := today's date in UTC (now defaults to the clock).
void setTransactionDate(Settings& record, std::time_t now = std::time(nullptr));

// "%d.%d%c": major, minor, 'a' + letter ("17.0a" for 544).
std::string packedVersionText(uint32_t packed);
