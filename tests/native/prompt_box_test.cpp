// The pending count in the prompt's explanation. The four answers are carried
// out on a real seen list and Startup folder in the Windows tests.
#include <gtest/gtest.h>

#include "notify/prompt_box.h"

TEST(PromptBox, PendingCountFillsTheFirstFormat) {
    const struct {
        const char* text;
        int waiting;
        const char* expected;
    } cases[] = {
        {"there are %d items pending", 6, "there are 6 items pending"},
        {"%d", 32760, "32760"},
        {"%d and %d", 7, "7 and %d"},
        {"no count", 3, "no count"},
        {"", 3, ""},
    };
    for (const auto& c : cases) EXPECT_EQ(fillPendingCount(c.text, c.waiting), c.expected);
}
