// atoi as the C runtime reads it, beyond what the tool's kept number cases
// show: the reference reader of the parser tests relies on it too.
#include <gtest/gtest.h>

#include "base/crt_text.h"

TEST(AtoiLike, ReadsAsTheRuntimeDoes) {
    const struct {
        const char* text;
        int32_t want;
    } cases[] = {{"\t\r\n-17x", -17},
                 {"- 5", 0},
                 {"--5", 0},
                 {"-99999999999999999999", INT32_MIN},
                 {"0000000000000000000000012", 12}};
    for (const auto& c : cases) EXPECT_EQ(atoiLike(c.text), c.want) << '"' << c.text << '"';
}
