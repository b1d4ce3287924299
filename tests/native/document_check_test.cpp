// The publisher's document check. The kept tool cases plant one fault per
// document and run the sample; these cover the line counting under every kind
// of line end, faults that follow one another, and the judgements of values
// that the cases leave out.
#include <gtest/gtest.h>

#include <map>

#include "feed/document_parser.h"
#include "check/document_check.h"

namespace {

std::string tip(int number, const std::string& extra = "") {
    const std::string n = std::to_string(number);
    return ":BEGINTIP\nNUMBER = " + n + "\nTITLE = Tip " + n + "\nPLAINTEXT = Text " + n + ".\n" +
           extra + ":END\n";
}

std::string setting(int number, const std::string& assignment) {
    return ":BEGINCHANGEINI\nNUMBER = " + std::to_string(number) + "\nPLAINTEXT = " + assignment +
           "\n:END\n";
}

// Each expected finding is "LINE E|W fragment of its text".
void expectFindings(const std::vector<Finding>& findings, const std::vector<std::string>& expected,
                    const std::string& name) {
    std::vector<std::string> got;
    for (const Finding& f : findings)
        got.push_back(std::to_string(f.line) +
                      (f.severity == FindingSeverity::Error ? " E " : " W ") + f.text);
    ASSERT_EQ(got.size(), expected.size()) << name << ": " << testing::PrintToString(got);
    for (std::size_t i = 0; i < got.size(); ++i) {
        const std::size_t head = expected[i].find(' ', expected[i].find(' ') + 1) + 1;
        EXPECT_TRUE(got[i].starts_with(expected[i].substr(0, head)) &&
                    got[i].find(expected[i].substr(head)) != std::string::npos)
            << name << ": got " << got[i] << ", expected " << expected[i];
    }
}

}  // namespace

TEST(DocumentCheck, FindsEachFaultAtItsLine) {
    const std::string longText(300, 'x');
    const struct {
        const char* name;
        std::string document;
        std::vector<std::string> expected;
    } cases[] = {
        {"clean, last :END without line break",
         tip(1) + ":BEGINTIP\nNUMBER=2\nTITLE=t\nPLAINTEXT=p\n:END",
         {}},
        {"two :ENDs missing: each swallowed block names the one before it",
         ":BEGINALERT\nNUMBER=1\nIMPORTANCE=1\nTITLE=t\nPLAINTEXT=p\n"
         ":BEGINTIP\nNUMBER=2\nTITLE=t\nPLAINTEXT=p\n" +
             tip(3),
         {"6 E :BEGINALERT block at line 1 has no :END",
          "10 E :BEGINTIP block at line 6 has no :END"}},
        {"a multi-line braced value keeps the line count",
         tip(1, "KEYWORDS = {a\nb\nc}\n") + tip(1),
         {"10 E NUMBER 1 is also the item's at line 2"}},
        {"CR LF line ends count like LF",
         "\r\n:BEGINTIP\r\nNUMBER=1\r\nTITLE=t\r\nPLAINTEXT=p\r\nIGNOREUNTIL=1-2-2026\r\n:END\r\n",
         {"6 E IGNOREUNTIL '1-2-2026'"}},
        {"after a lone CR the lines still count as the editor shows them",
         ":BEGINTIP\nNUMBER=1\rTITLE=t\nPLAINTEXT=p\nURL=ftp://x\n:END\n",
         {"2 E lone CR", "5 E URL 'ftp://x'"}},
        {"CR-only line ends", ":BEGINTIP\rNUMBER=1\rTITLE=t\rPLAINTEXT=p\r:END\r", {"1 E CR only"}},
        {"nested braces",
         tip(1, "PLAINTEXT = {a {b} c}\n"),
         {"5 W braces do not nest", "5 W PLAINTEXT again"}},
        {"an unclosed brace is the only thing said",
         ":BEGINTIP\nNUMBER=1\nTITLE={t\n:END\n" + tip(1),
         {"3 E never closed"}},
        {"a misspelt key the item has anyway is a warning",
         tip(1, "TITEL = again\n"),
         {"5 W did you mean TITLE?"}},
        {"a blank before a required key",
         ":BEGINTIP\nNUMBER=1\n TITLE=t\nPLAINTEXT=p\n:END\n",
         {"3 E blank before TITLE hides the key"}},
        {"text outside blocks is reported once per run",
         "a\nb\n;c\nd\n" + tip(1),
         {"1 W outside any block", "4 W outside any block"}},
        {"stray :END", tip(1) + ":END\n", {"6 W ':END' outside any block"}},
        {"numbers the agent reads other than written",
         ":BEGINALERT\nNUMBER=12abc\nIMPORTANCE=high\nTITLE=t\nPLAINTEXT=p\nVERSION=4.2\n"
         "REVISION=B\n:END\n",
         {"2 E '12abc' is not a number: the agent reads 12", "3 W reads 0", "6 W reads 4",
          "7 W one lower-case letter"}},
        {"NUMBER 0 and a missing NUMBER",
         ":BEGINTIP\nNUMBER=0\nTITLE=t\nPLAINTEXT=p\n:END\n"
         ":BEGINNOTICE\nTITLE=t\nPLAINTEXT=p\n:END\n",
         {"2 E NUMBER 0", "6 E Notice without NUMBER"}},
        {"an alert without importance",
         ":BEGINALERT\nNUMBER=1\nTITLE=t\nPLAINTEXT=p\n:END\n",
         {"1 W Alert without IMPORTANCE"}},
        {"dates: 29 February of a common year, before 2000, and fine ones",
         tip(1, "DATE=02-29-2027\n") + tip(2, "DATE=12-31-1999\n") +
             tip(3, "DATE=02-29-2028\nIGNOREUNTIL=01-01-2000 \n"),
         {"5 W DATE '02-29-2027'", "11 W DATE '12-31-1999'"}},
        {"pictures the agent never shows",
         tip(1, "GRAPHIC=tip.jpeg\n") + tip(2, "GRAPHIC=nul.png\n"),
         {"5 E only .png and .jpg", "11 E not a plain file name"}},
        {"setting values of the wrong kind",
         setting(1, "BeNoisy = 5") + setting(2, "AlertTextColor = 16777216") +
             setting(3, "VersionNumber = 600") + setting(4, "AlertFontName = " + longText) +
             setting(5, "alertfontsize=18") + setting(6, "PromptMultipleCount = 6 items"),
         {"3 W BeNoisy is 0 or 1", "7 W AlertTextColor is a colour",
          "11 W VersionNumber is the program's own", "15 E too long for the settings file",
          "23 W '6 items' sets it to 6"}},
        {"what a forged document would write: a setting line, the seen list, a browser flag",
         setting(1, "{CurrentTransactionDate = 01-01-2020\nChangeFolderSound = x.wav}") +
             ":BEGINNEWGRAPHIC\nNUMBER=2\nURL=/update/images/Heralder.lst\n:END\n" +
             tip(3, "URL = http://127.0.0.1:47699/\" --evil-flag \"\n"),
         {"3 E holds a line break", "8 E names no picture", "14 E not a well-formed web address"}},
        {"blanks and '=' after PLAINTEXT go, so the value names the setting",
         setting(1, "= 5"),
         {"3 E '5' is not a setting"}},
        {"graphic update urls",
         ":BEGINNEWGRAPHIC\nNUMBER=1\nURL=/update/images/..\n:END\n"
         ":BEGINNEWGRAPHIC\nNUMBER=2\nURL=new.png\n:END\n",
         {"3 E names no file", "7 W not a path on the update server"}},
        {"a value in braces under its key, a lone ':' in a block",
         ":BEGINTIP\nNUMBER=1\nTITLE=t\nPLAINTEXT =\n{text}\n:\n:END\n",
         {"4 E PLAINTEXT is empty", "5 W must begin on its key's line",
          "6 E ':' is not a marker: the agent ignores this line"}},
        {"no item at all", "; nothing yet\n", {"1 W holds no item"}},
    };
    for (const auto& c : cases) expectFindings(checkUpdateDocument(c.document), c.expected, c.name);
}

TEST(DocumentCheck, JudgesPicturesByTheirBytes) {
    const std::map<std::string, std::string> folder = {
        {"good.png", "\x89PNG\r\n\x1A\n...."},
        {"photo.png", "\xFF\xD8\xFF\xE0...."},
        {"error.jpg", "<html>404</html>"},
    };
    const ImageReader images = [&](const std::string& name) -> std::optional<std::string> {
        auto it = folder.find(name);
        return it == folder.end() ? std::nullopt : std::optional(it->second);
    };
    const std::string document = tip(1, "GRAPHIC=good.png\n") + tip(2, "GRAPHIC=photo.png\n") +
                                 tip(3, "GRAPHIC=error.jpg\n") + tip(4, "GRAPHIC=gone.png\n") +
                                 ":BEGINNEWGRAPHIC\nNUMBER=5\nURL=/update/images/good.png\n:END\n"
                                 ":BEGINNEWGRAPHIC\nNUMBER=6\nURL=/update/images/gone.png\n:END\n";
    expectFindings(checkUpdateDocument(document, images),
                   {"11 E holds a JPEG picture", "17 E is not a PNG or JPEG file",
                    "23 E 'gone.png' is not in the images folder",
                    "31 E '/update/images/gone.png' is not in the images folder"},
                   "pictures");
}

TEST(DocumentCheck, SummaryCountsBothKinds) {
    const std::vector<Finding> findings = {{3, FindingSeverity::Error, "a"},
                                           {5, FindingSeverity::Warning, "b"},
                                           {9, FindingSeverity::Warning, "c"}};
    EXPECT_EQ(formatFindings("u.txt", findings),
              "u.txt:3: error: a\nu.txt:5: warning: b\nu.txt:9: warning: c\n"
              "u.txt: 1 error, 2 warnings\n");
    EXPECT_TRUE(hasErrors(findings));
    EXPECT_EQ(formatFindings("u.txt", {}), "u.txt: 0 errors, 0 warnings\n");
    EXPECT_FALSE(hasErrors({findings[1]}));
}

// A broken document is not a list of a million fixes: the first thousand
// findings, one that counts the rest, and the item limit wherever it falls.
TEST(DocumentCheck, ListsTheFirstThousandFindingsAndTheItemLimit) {
    std::string document;
    for (std::size_t i = 0; i <= kMaxDocumentItems; ++i) document += ":BEGINTIP\n:END\n";
    const std::vector<Finding> findings = checkUpdateDocument(document);
    ASSERT_EQ(findings.size(), 1002u);
    // Three errors a block (no NUMBER, TITLE, PLAINTEXT); the thousandth is
    // the first of block 334's three.
    EXPECT_EQ(findings[999].line, 667);
    expectFindings({findings[1000], findings[1001]},
                   {"667 E too many findings: 29003 more errors and 0 more warnings",
                    "20001 W reads the first 10000 items only"},
                   "limits");
}
