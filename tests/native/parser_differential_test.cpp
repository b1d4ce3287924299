// The one-walk reader against the plain per-key reader, on generated documents,
// and the documents that would make a careless reader slow.
#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <string>

#include "feed/document_parser.h"
#include "parser_reference.h"

namespace {

TEST(ParserDifferential, OneWalkEqualsPerKeySearch) {
    std::mt19937 rng(20261120);
    std::size_t items = 0;
    for (int i = 0; i < 3000; ++i) {
        const std::string doc = reference::randomDocument(rng, 1 + rng() % 300);
        const auto fast = parseUpdateDocument(doc);
        const auto slow = reference::parse(doc);
        ASSERT_EQ(fast, slow) << "document #" << i << ": " << doc;
        items += fast.size();
    }
    // The generator must actually produce blocks for the comparison to mean anything.
    EXPECT_GT(items, 1000u);
}

struct Heavy {
    const char* shape;
    std::string document;
    std::size_t items;
};

std::string repeat(std::string_view piece, std::size_t times) {
    std::string s;
    s.reserve(piece.size() * times);
    for (std::size_t i = 0; i < times; ++i) s += piece;
    return s;
}

TEST(ParserDifferential, StaysLinearOnHostileShapes) {
    const Heavy cases[] = {
        {"one 8 MB line", ":BEGINALERT\r\nTITLE=" + std::string(8 << 20, 'a') + "\r\n:END\r\n", 1},
        {"blocks without :END", repeat(":BEGINALERT\r\nNUMBER=1\r\n", 200000), 1},
        {"only begin lines", repeat(":BEGINTIP\r\n", 400000), 1},
        {"opening braces", ":BEGINALERT\r\nTITLE=" + repeat("{\r\n", 1000000), 1},
        {"closing braces", ":BEGINALERT\r\n" + repeat("}\r\n", 1000000) + ":END\r\n", 1},
        {"many tiny blocks", repeat(":BEGINTIP\r\n:END\r\n", 300000), 300000},
        {"blank lines after a number key",
         ":BEGINALERT\r\nVERSION=" + repeat("\r\n", 2000000) + "5\r\n:END\r\n", 1},
    };
    for (const Heavy& c : cases) {
        const auto start = std::chrono::steady_clock::now();
        const auto items = parseUpdateDocument(c.document);
        const auto seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start);
        EXPECT_EQ(items.size(), c.items) << c.shape;
        // Generous even under the sanitizers; a quadratic walk takes minutes here.
        EXPECT_LT(seconds.count(), 10.0) << c.shape;
    }
}

}  // namespace
