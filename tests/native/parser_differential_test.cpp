// The one-walk reader against the plain per-key reader on generated documents,
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
        ASSERT_EQ(fast, reference::parse(doc)) << "document #" << i << ": " << doc;
        items += fast.size();
    }
    EXPECT_GT(items, 1000u) << "the comparison means little unless the generator makes blocks";
}

std::string repeat(std::string_view piece, std::size_t times) {
    std::string s;
    for (std::size_t i = 0; i < times; ++i) s += piece;
    return s;
}

TEST(ParserDifferential, StaysLinearOnHostileShapes) {
    const struct {
        std::string document;
        std::size_t items;
    } cases[] = {
        {":BEGINALERT\r\nTITLE=" + std::string(10 << 20, 'a') + "\r\n:END\r\n", 1},
        {repeat(":BEGINALERT\r\nNUMBER=1\r\n", 200000), 1},  // no :END
        {":BEGINALERT\r\nTITLE=" + repeat("{\r\n", 1000000), 1},
        {":BEGINALERT\r\n" + repeat("}\r\n", 1000000) + ":END\r\n", 1},
        {repeat(":BEGINTIP\r\n:END\r\n", 300000), 300000},
    };
    for (const auto& c : cases) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(parseUpdateDocument(c.document).size(), c.items) << c.document.substr(0, 40);
        // Generous even under the sanitizers on a machine busy with other
        // builds; a quadratic walk over these sizes takes hours.
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60))
            << c.document.substr(0, 40);
    }
}

}  // namespace
