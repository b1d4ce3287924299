// The update document reader against the plain per-key reader on generated
// documents, documents that would make a careless reader slow, and the limits of
// the reader and of the publisher's check. The reading rules and the check's
// findings are pinned by the tool's kept cases.
#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <string>
#include <tuple>

#include "check/document_check.h"
#include "feed/document_parser.h"
#include "parser_reference.h"
#include "tests/native/feed_test_support.h"

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

TEST(ParserDifferential, StaysLinearOnHostileShapes) {
    const std::tuple<std::string, std::size_t> cases[] = {
        {":BEGINALERT\r\nTITLE=" + std::string(10 << 20, 'a') + "\r\n:END\r\n", 1},
        {repeat(":BEGINALERT\r\nNUMBER=1\r\n", 200000), 1},  // no :END
        {":BEGINALERT\r\nTITLE=" + repeat("{\r\n", 1000000), 1},
        {":BEGINALERT\r\n" + repeat("}\r\n", 1000000) + ":END\r\n", 1},
        // Past the item limit the blocks are walked no further.
        {repeat(":BEGINTIP\r\n:END\r\n", 300000), kMaxDocumentItems},
    };
    for (const auto& [document, items] : cases) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(parseUpdateDocument(document).size(), items) << document.substr(0, 40);
        // Generous even under the sanitizers on a busy machine; a quadratic
        // walk over these sizes takes hours.
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60))
            << document.substr(0, 40);
    }
}

// The limit keeps the first items and drops the rest whole; one block more
// than the limit is where the dropping starts.
TEST(Parser, KeepsTheFirstItemsUpToTheLimit) {
    const std::string block = ":BEGINTIP\r\nNUMBER=7\r\n:END\r\n";
    const std::string full = repeat(block, kMaxDocumentItems);
    EXPECT_EQ(firstDroppedBlock(full), std::nullopt);
    const std::string over = full + ":BEGINALERT\r\nNUMBER=8\r\n:END\r\n" + block;
    EXPECT_EQ(firstDroppedBlock(over), full.size());
    const std::vector<UpdateItem> items = parseUpdateDocument(over);
    ASSERT_EQ(items.size(), kMaxDocumentItems);
    EXPECT_EQ(items.back().number, 7);
    EXPECT_EQ(items.back().type, ItemType::Tip);
}

// The reference reader relies on atoi as the C runtime reads it, beyond the
// tool's kept number cases.
TEST(AtoiLike, ReadsAsTheRuntimeDoes) {
    const std::pair<const char*, int32_t> cases[] = {{"\t\r\n-17x", -17},
                                                     {"- 5", 0},
                                                     {"--5", 0},
                                                     {"-99999999999999999999", INT32_MIN},
                                                     {"0000000000000000000000012", 12}};
    for (const auto& [text, want] : cases) EXPECT_EQ(atoiLike(text), want) << '"' << text << '"';
}

// A broken document is not a list of a million fixes: the first thousand
// findings, one that counts the rest, and the item limit wherever it falls.
TEST(DocumentCheck, ListsTheFirstThousandFindingsAndTheItemLimit) {
    const std::vector<Finding> findings =
        checkUpdateDocument(repeat(":BEGINTIP\n:END\n", kMaxDocumentItems + 1));
    ASSERT_EQ(findings.size(), 1002u);
    // Three errors a block (no NUMBER, TITLE, PLAINTEXT); the thousandth is
    // the first of block 334's three.
    EXPECT_EQ(findings[999].line, 667);
    const std::tuple<int, FindingSeverity, const char*> last[] = {
        {667, FindingSeverity::Error, "too many findings: 29003 more errors and 0 more warnings"},
        {20001, FindingSeverity::Warning, "reads the first 10000 items only"}};
    for (int i = 0; i < 2; ++i) {
        const Finding& f = findings[1000 + i];
        const auto& [line, severity, text] = last[i];
        EXPECT_TRUE(f.line == line && f.severity == severity &&
                    f.text.find(text) != std::string::npos)
            << f.line << " " << f.text;
    }
}
