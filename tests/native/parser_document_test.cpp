// The update document's rules, one small document each, as the agent reads it.
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

struct Case {
    const char* rule;
    std::string document;
    std::string want;
};

const Case kCases[] = {
    {"empty document", "", ""},
    {"no begin marker", "Hello\r\nTITLE=x\r\n:END\r\n", ""},
    {"404 page", "<html><head><title>404 Not Found</title></head>\r\n<body>:BEGINALERT</body>", ""},
    {"every marker in table order",
     ":BEGINALERT\r\n:END\r\n:BEGINVERSION\r\n:END\r\n:BEGINTIP\r\n:END\r\n:BEGINNOTICE\r\n:END\r\n"
     ":BEGINOFFTOPIC\r\n:END\r\n:BEGINCHANGEINI\r\n:END\r\n:BEGINNEWGRAPHIC\r\n:END\r\n",
     "ALRT | VERS | TIP_ | NOTC | OFFT | CINI | GRPN"},
    {"marker in any case, with letters after it", ":beginAlerts\r\nNUMBER 1\r\n:EnD\r\n",
     "ALRT NUMBER=1"},
    {"leading blank starts nothing", " :BEGINALERT\r\nNUMBER=1\r\n:END\r\n", ""},
    {"leading blank hides a key", ":BEGINTIP\r\n NUMBER=1\r\n:END\r\n", "TIP_"},
    {"keys in any order and case",
     ":BEGINALERT\r\nnumber=9\r\nTitle=T\r\nDaTe=01-02-2003\r\nimportance=2\r\n:END\r\n",
     "ALRT DATE[01-02-2003] IMPORTANCE=2 TITLE[T] NUMBER=9"},
    {"key joined by blanks and = signs",
     ":BEGINTIP\r\nTITLE   a\r\nURL=b\r\nKEYWORDS = = c d\r\nNUMBER==12\r\n:END\r\n",
     "TIP_ TITLE[a] URL[b] KEYWORDS[c d] NUMBER=12"},
    {"trailing blanks kept", ":BEGINTIP\r\nTITLE=a  \r\n:END\r\n", "TIP_ TITLE[a  ]"},
    {"tab is not skipped and splits the line",
     ":BEGINTIP\r\nTITLE\tNUMBER=4\r\nURL=\tx\r\n:END\r\n", "TIP_ TITLE[] URL[] NUMBER=4"},
    {"key followed by letters still matches",
     ":BEGINVERSION\r\nVERSIONX=3\r\nVERSION=5\r\nTITLES=x\r\n:END\r\n", "VERS TITLE[S=x]"},
    {"braces carry a value over lines",
     ":BEGINALERT\r\nPLAINTEXT={A\r\nB\r\n\r\nC}\r\nNUMBER=2\r\n:END\r\n",
     "ALRT PLAINTEXT[A\r\nB\r\n\r\nC] NUMBER=2"},
    {"braces in mid value are dropped", ":BEGINALERT\r\nTITLE=a{b}c\r\n:END\r\n",
     "ALRT TITLE[abc]"},
    {"braces do not nest", ":BEGINALERT\r\nTITLE={{a\r\n}b\r\nNUMBER=3\r\n:END\r\n",
     "ALRT TITLE[a\r\nb] NUMBER=3"},
    {"a closing brace alone changes nothing", ":BEGINALERT\r\nTITLE=}a\r\nNUMBER=3\r\n:END\r\n",
     "ALRT TITLE[a] NUMBER=3"},
    {"tab inside braces stays in the value", ":BEGINALERT\r\nTITLE={a\tb}\r\n:END\r\n",
     "ALRT TITLE[a\tb]"},
    {"braces hide an :END line", ":BEGINALERT\r\nTITLE={a\r\n:END\r\n}\r\nNUMBER=5\r\n:END\r\n",
     "ALRT TITLE[a\r\n:END\r\n] NUMBER=5"},
    {"unclosed brace runs to the end",
     ":BEGINALERT\r\nTITLE={a\r\n:END\r\n:BEGINTIP\r\nNUMBER=1\r\n:END\r\n",
     "ALRT TITLE[a\r\n:END\r\n:BEGINTIP\r\nNUMBER=1\r\n:END\r\n]"},
    {"revision takes the byte after the blanks", ":BEGINVERSION\r\nREVISION = b\r\n:END\r\n",
     "VERS REVISION=98"},
    {"revision before a line break is the CR", ":BEGINVERSION\r\nREVISION=\r\n:END\r\n",
     "VERS REVISION=13"},
    {"revision byte above 127 is unsigned", ":BEGINVERSION\r\nREVISION=\xe9\r\n:END\r\n",
     "VERS REVISION=233"},
    {"numbers read as atoi", ":BEGINVERSION\r\nVERSION=4.2\r\nPATCH=x1\r\nBETA=-7b\r\n:END\r\n",
     "VERS VERSION=4 BETA=-7"},
    {"atoi goes on past a line break", ":BEGINVERSION\r\nVERSION=\r\n12\r\n:END\r\n",
     "VERS VERSION=12"},
    {"atoi goes on past a tab", ":BEGINVERSION\r\nPATCH\t5\r\n:END\r\n", "VERS PATCH=5"},
    {"first occurrence wins",
     ":BEGINALERT\r\nTITLE=one\r\nTITLE=two\r\nNUMBER=1\r\nNUMBER=2\r\n:END",
     "ALRT TITLE[one] NUMBER=1"},
    {"keys after :END do not count", ":BEGINALERT\r\nNUMBER=1\r\n:END\r\nTITLE=x\r\n",
     "ALRT NUMBER=1"},
    {"missing :END swallows the next block",
     ":BEGINALERT\r\nNUMBER=1\r\n:BEGINTIP\r\nTITLE=t\r\nNUMBER=2\r\n:END\r\n:BEGINNOTICE\r\n:"
     "END\r\n",
     "ALRT TITLE[t] NUMBER=1 | NOTC"},
    {"no :END at all makes this the last item",
     ":BEGINALERT\r\nNUMBER=1\r\n:BEGINTIP\r\nNUMBER=2\r\n", "ALRT NUMBER=1"},
    {"document ending in :END without a line break",
     ":BEGINALERT\r\nNUMBER=1\r\n:END\r\n:BEGINTIP\r\nNUMBER=2\r\n:END",
     "ALRT NUMBER=1 | TIP_ NUMBER=2"},
    {"a key must be shorter than the rest of the document", ":BEGINTIP\r\nURL=x\r\nTITLE",
     "TIP_ URL[x]"},
    {"a key at the very end with one byte after it", ":BEGINTIP\r\nTITLE=", "TIP_ TITLE[]"},
    {"a marker needs a byte after it", ":BEGINTIP", ""},
    {"NUL ends the document", std::string(":BEGINTIP\r\nNUMBER=1\0\r\n:END\r\n:BEGINALERT\r\n", 42),
     "TIP_ NUMBER=1"},
    {"bytes above 127 kept", ":BEGINTIP\r\nTITLE=Caf\xe9 \xff\r\n:END\r\n",
     "TIP_ TITLE[Caf\xe9 \xff]"},
    {"control bytes between lines vanish",
     ":BEGINTIP\x01\x02\x1f\t\t\r\nNUMBER=1\x0b\x0cTITLE=t\r\n:END\r\n", "TIP_ TITLE[t] NUMBER=1"},
    {"comment lines inside a block are ignored",
     ":BEGINNOTICE\r\n; a comment\r\nNUMBER=4\r\nunknown=1\r\n:END\r\n", "NOTC NUMBER=4"},
};

TEST(ParseUpdateDocument, FollowsEveryRule) {
    for (const Case& c : kCases)
        EXPECT_EQ(describe(parseUpdateDocument(c.document)), c.want) << c.rule;
}

TEST(NormalizeLineEnds, WritesEveryBreakAsCrLf) {
    struct {
        std::string in, want;
    } cases[] = {
        {"a\nb", "a\r\nb"},
        {"a\r\nb\r\n", "a\r\nb\r\n"},
        {"a\rb\r", "ab"},
        {"\r\r\n\n", "\r\n\r\n"},
        {std::string("a\nb\0c\n", 6), "a\r\nb"},
        {"", ""},
        {"\xe9\t{\n}", "\xe9\t{\r\n}"},
    };
    for (const auto& c : cases) EXPECT_EQ(normalizeLineEnds(c.in), c.want) << c.in;
}

TEST(ParseUpdateDocument, LfAndCrOnlyDocumentsAfterNormalising) {
    const std::string want = "ALRT TITLE[a\r\nb] NUMBER=1";
    EXPECT_EQ(describe(parseUpdateDocument(
                  normalizeLineEnds(":BEGINALERT\nTITLE={a\nb}\nNUMBER=1\n:END\n"))),
              want);
    // A CR-only document loses its line breaks altogether and holds one line.
    EXPECT_EQ(describe(parseUpdateDocument(normalizeLineEnds(":BEGINALERT\rNUMBER=1\r:END\r"))),
              "ALRT");
}

}  // namespace

namespace {

// The sample document shipped in examples/ must stay readable as intended.
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
