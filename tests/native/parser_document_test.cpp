// Reading rules the kept tool cases do not pin, line-end normalising, and the
// sample document shipped in examples/.
#include <gtest/gtest.h>

#include <string>

#include "base/crt_text.h"
#include "feed/document_parser.h"
#include "feed/document_parser_detail.h"

namespace {

// Each item as its tag and the keys that are present or not 0, in key order:
// "ALRT TITLE[A] NUMBER=5"; items are separated by " | ".
std::string describe(const std::vector<UpdateItem>& items) {
    std::string out;
    for (const UpdateItem& item : items) {
        if (!out.empty()) out += " | ";
        out += itemTypeTag(item.type);
        for (const document::KeyDef& k : document::documentKeys()) {
            if (k.kind == document::KeyKind::Text) {
                if (const ItemText& t = item.*k.text)
                    out += " " + std::string(k.name) + "[" + *t + "]";
            } else if (int32_t v = item.*k.value) {
                out += " " + std::string(k.name) + "=" + std::to_string(v);
            }
        }
    }
    return out;
}

TEST(ParseUpdateDocument, FollowsTheReadingRules) {
    struct {
        const char* rule;
        std::string document, want;
    } cases[] = {
        {"key followed by letters still matches",
         ":BEGINVERSION\r\nVERSIONX=3\r\nVERSION=5\r\nTITLES=x\r\n:END\r\n", "VERS TITLE[S=x]"},
        {"atoi goes on past a line break", ":BEGINVERSION\r\nVERSION=\r\n12\r\n:END\r\n",
         "VERS VERSION=12"},
        {"a marker needs a byte after it", ":BEGINTIP", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(describe(parseUpdateDocument(c.document)), c.want) << c.rule;
}

TEST(NormalizeLineEnds, WritesEveryBreakAsCrLf) {
    struct {
        std::string in, want;
    } cases[] = {
        {"a\nb", "a\r\nb"},
        {"a\r\nb\r\n", "a\r\nb\r\n"},
        {"a\rb\r", "ab"},
        {std::string("a\nb\0c\n", 6), "a\r\nb"},
        {"\xe9\t{\n}", "\xe9\t{\r\n}"},
    };
    for (const auto& c : cases) EXPECT_EQ(normalizeLineEnds(c.in), c.want) << c.in;
}

TEST(ParseUpdateDocument, SampleDocumentGivesEveryItemType) {
    auto document = readFileBytes(HERALDER_SOURCE_DIR "/examples/update.txt");
    ASSERT_TRUE(document.has_value());
    const auto items = parseUpdateDocument(normalizeLineEnds(*document));
    std::string summary;
    for (const UpdateItem& item : items)
        summary += itemTypeTag(item.type) + ":" + std::to_string(item.number) + " ";
    EXPECT_EQ(summary,
              "ALRT:2101 VERS:2102 VERS:2103 TIP_:2104 NOTC:2105 OFFT:2106 CINI:2107 CINI:2108 "
              "GRPN:2109 ");
    ASSERT_EQ(items.size(), 9u);
    EXPECT_EQ(textOf(items[6].plainText), "PromptMultipleCount = 6");
    EXPECT_EQ(textOf(items[8].url), "/update/images/heralder_banner.png");
    EXPECT_EQ(announcedVersionText(items[1]) +
                  levelsText(items[1].patch, items[1].beta, LevelWords::Capitalised),
              "5.2b (Revision 1)");
}

}  // namespace
