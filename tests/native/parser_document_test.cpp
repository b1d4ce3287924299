// Line-end normalising, and the sample document shipped in examples/. The
// reading rules are pinned by the tool's kept cases and by the comparison with
// the per-key reader.
#include <gtest/gtest.h>

#include <string>

#include "base/crt_text.h"
#include "feed/document_parser.h"

namespace {

TEST(NormalizeLineEnds, WritesEveryBreakAsCrLfAndStopsAtNul) {
    const struct {
        std::string in, want;
    } cases[] = {
        {"a\nb\r\nc\rd\r\n", "a\r\nb\r\ncd\r\n"},
        {std::string("\xe9{\nb\0c\n", 7), "\xe9{\r\nb"},
    };
    for (const auto& c : cases) EXPECT_EQ(normalizeLineEnds(c.in), c.want) << c.in;
}

TEST(ParseUpdateDocument, SampleDocumentGivesEveryItemType) {
    const auto document = readFileBytes(HERALDER_SOURCE_DIR "/examples/update.txt");
    std::string summary;
    for (const UpdateItem& item : parseUpdateDocument(normalizeLineEnds(document.value_or(""))))
        summary += itemTypeTag(item.type) + ":" + std::to_string(item.number) + " ";
    EXPECT_EQ(
        summary,
        "ALRT:2101 VERS:2102 VERS:2103 TIP_:2104 NOTC:2105 OFFT:2106 CINI:2107 CINI:2108 CINI:2110 "
        "GRPN:2109 ");
}

}  // namespace
