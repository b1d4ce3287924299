// atoi as the C runtime reads it: the update document's numbers depend on it,
// and the reference reader of the parser tests uses it too, so it is pinned here
// on its own.
#include <gtest/gtest.h>

#include "base/crt_text.h"

TEST(AtoiLike, ReadsAsTheRuntimeDoes) {
    struct Case {
        const char* text;
        int32_t want;
    } cases[] = {
        {"  \t\r\n-17x", -17},
        {"+8", 8},
        {"x5", 0},
        {"- 5", 0},
        {"--5", 0},
        {"2147483648", 2147483647},
        {"-99999999999999999999", INT32_MIN},
        {"0000000000000000000000012", 12},
    };
    for (const Case& c : cases) EXPECT_EQ(atoiLike(c.text), c.want) << '"' << c.text << '"';
}
