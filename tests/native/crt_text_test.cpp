// The C runtime's text reading, which every file reader of the program relies on.
#include <gtest/gtest.h>

#include <vector>

#include "base/crt_text.h"

TEST(AtoiLike, ReadsAsTheRuntimeDoes) {
    struct Case {
        const char* text;
        int32_t want;
    } cases[] = {
        {"42", 42},
        {"  \t\r\n-17x", -17},
        {"+8", 8},
        {"4.2", 4},
        {"x5", 0},
        {"", 0},
        {"- 5", 0},
        {"--5", 0},
        {"2147483647", 2147483647},
        {"2147483648", 2147483647},
        {"-2147483648", INT32_MIN},
        {"-99999999999999999999", INT32_MIN},
        {"0000000000000000000000012", 12},
    };
    for (const Case& c : cases) EXPECT_EQ(atoiLike(c.text), c.want) << '"' << c.text << '"';
}

TEST(TextModeView, JoinsCrLfAndStopsAtCtrlZ) {
    EXPECT_EQ(textModeView("a\r\nb\rc\n\r\n"), "a\nb\rc\n\n");
    EXPECT_EQ(textModeView("one\x1atwo"), "one");
    EXPECT_EQ(textModeView(std::string("n\0l\r\n", 5)), std::string("n\0l\n", 4));
}

TEST(FgetsPieces, SplitsLongLinesAtTheBufferSize) {
    std::vector<std::string> pieces;
    forEachFgetsPiece("abcdef\ngh\n\nij", 4, [&](std::string_view p) { pieces.emplace_back(p); });
    EXPECT_EQ(pieces, (std::vector<std::string>{"abc", "def", "\n", "gh\n", "\n", "ij"}));
}
