// Numeric fields: what an up-down control's template text gives as bounds and
// first value, and what a typed text becomes.
#include <gtest/gtest.h>

#include "ui/spin_edit.h"

namespace {

TEST(SpinEdit, TemplateTextGivesBoundsAndStart) {
    const struct {
        const char* text;
        int minimum, maximum, start;
    } cases[] = {
        {"2,32760,6", 2, 32760, 6},
        {"4,144,16", 4, 144, 16},
        {"-50, 50, -7", -50, 50, -7},  // "%d" skips spaces before a number
        {"", 0, 100, 0},
        {"5", 5, 100, 0},
        {"5,20", 5, 20, 0},
        {"5 ,20,3", 5, 100, 0},  // a comma must follow the number directly
        {"5,x,3", 5, 100, 0},
        {"1,9,4 and more", 1, 9, 4},
        {"99999999999,1,0", 2147483647, 1, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const SpinRange r = parseSpinRange(c.text);
        EXPECT_EQ(r.minimum, c.minimum);
        EXPECT_EQ(r.maximum, c.maximum);
        EXPECT_EQ(r.start, c.start);
    }
}

TEST(SpinEdit, TypedTextIsClampedAndJunkKeepsTheLastValue) {
    const SpinRange count = parseSpinRange("2,32760,6");
    const SpinRange signedRange = parseSpinRange("-10,10,0");
    const SpinRange reversed = parseSpinRange("144,4,16");
    const struct {
        const SpinRange* range;
        const char* text;
        int fallback;
        int expected;
    } cases[] = {
        {&count, "12", 6, 12},       {&count, "1", 6, 2},
        {&count, "40000", 6, 32760}, {&count, "  300 ", 6, 300},
        {&count, "-5", 6, 2},        {&count, "123456789012345678901234567890", 6, 32760},
        {&count, "", 6, 6},          {&count, "abc", 9, 9},
        {&count, "12ab", 9, 9},      {&count, "1 2", 9, 9},
        {&count, "-", 9, 9},         {&count, "", 0, 2},  // the fallback is bounded too
        {&signedRange, "-4", 0, -4}, {&signedRange, "-40", 0, -10},
        {&signedRange, "+7", 0, 7},  {&reversed, "200", 16, 144},
        {&reversed, "1", 16, 4},
    };
    for (const auto& c : cases)
        EXPECT_EQ(spinFieldValue(*c.range, c.text, c.fallback), c.expected) << '"' << c.text << '"';
}

}  // namespace
