// Logical lines and the "starts with" test, on which every rule of the reader rests.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "feed/document_parser_detail.h"

namespace {

// The start offsets of every line from 0 on.
std::vector<std::size_t> lineStarts(std::string_view text) {
    std::vector<std::size_t> starts;
    for (document::Position p = 0; p; p = document::nextLine(text, *p)) starts.push_back(*p);
    return starts;
}

TEST(DocumentLines, SplitWhereControlBytesStandOutsideBraces) {
    struct {
        std::string text;
        std::vector<std::size_t> starts;
    } cases[] = {
        {"", {0}},
        {"ab", {0}},
        {"ab\r\ncd", {0, 4}},
        {"ab\r\n\r\n\t\tcd\r\n", {0, 8}},
        {"a\tb", {0, 2}},
        {"a{\r\n}b\r\nc", {0, 8}},
        {"a{{\r\n}\r\nb", {0, 8}},
        {"a}\r\nb", {0, 4}},
        {"a{\r\nb", {0}},
        {"\r\n\r\nab", {0, 4}},
        {"\r\n", {0}},
        {" x\r\n y", {0, 4}},
        {"a\x7f\xff\x80\r\nb", {0, 6}},
    };
    for (const auto& c : cases) EXPECT_EQ(lineStarts(c.text), c.starts) << c.text;
}

TEST(DocumentLines, StartsWithFoldsCaseAndNeedsMoreTextThanTheWord) {
    struct {
        std::string text;
        std::size_t at;
        std::string_view word;
        bool want;
    } cases[] = {
        {":END\r\n", 0, ":END", true},
        {":END", 0, ":END", false},
        {":END ", 0, ":END", true},
        {":end\r\n", 0, ":END", true},
        {":ENDS", 0, ":END", true},
        {" :END\r\n", 0, ":END", false},
        {"x\r\n:END", 3, ":END", false},
        {"x\r\n:END!", 3, ":END", true},
        {":EN\r\n", 0, ":END", false},
        {"\x1a"
         "END\r\n",
         0, ":END", false},
        {"TITLE=", 0, "title", true},
        {"TITLF=", 0, "TITLE", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(document::lineStartsWith(c.text, c.at, c.word), c.want) << c.text;
}

}  // namespace
