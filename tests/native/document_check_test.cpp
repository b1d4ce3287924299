// The publisher's document check. The kept tool cases (tests/tool/cases/check)
// plant faults, one or several a document, under every kind of line end, and
// pin the findings, their lines and the summary, pictures judged by their
// bytes included; here a document past the item and finding limits.
#include <gtest/gtest.h>

#include "check/document_check.h"
#include "feed/document_parser.h"
#include "tests/native/feed_test_support.h"

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
