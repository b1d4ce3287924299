// The colour table file: which lines are colours, that whatever else the user
// keeps in the file survives a save, and that a huge or unreadable file is
// refused rather than taken for an empty table.
#include <gtest/gtest.h>

#include <filesystem>

#include "dialogs/colour_table.h"
#include "tests/native/feed_test_support.h"

namespace {

TEST(ColourTable, LinesThatAreColoursAndLinesThatAreNot) {
    const struct {
        const char* line;
        bool isColour;
        const char* name;
        Rgb colour;
    } cases[] = {
        {"Sky=135,206,235", true, "Sky", {135, 206, 235}},
        {"  Deep sea  =  0 , 0 ,128 ", true, "Deep sea", {0, 0, 128}},
        {"a=b=1,2,3", true, "a=b", {1, 2, 3}},  // the name ends at the last "="
        {"Black=0,0,0", true, "Black", {0, 0, 0}},
        {"White=255,255,255", true, "White", {255, 255, 255}},
        {"Too bright=256,0,0", false, "", {}},
        {"Negative=-1,0,0", false, "", {}},
        {"Short=1,2", false, "", {}},
        {"Long=1,2,3,4", false, "", {}},
        {"Letters=1,2,x", false, "", {}},
        {"Empty=,,", false, "", {}},
        {"=1,2,3", false, "", {}},
        {"   =1,2,3", false, "", {}},
        {"No equals 1,2,3", false, "", {}},
        {"[Section]", false, "", {}},
        {"Tab\tname=1,2,3", false, "", {}},
        {"Huge=0001,2,3", false, "", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        const std::optional<NamedColour> parsed = parseColourLine(c.line);
        ASSERT_EQ(parsed.has_value(), c.isColour);
        if (!parsed) continue;
        EXPECT_EQ(parsed->name, c.name);
        EXPECT_EQ(parsed->colour, c.colour);
    }
    EXPECT_FALSE(parseColourLine(std::string(kMaxColourNameChars + 1, 'n') + "=1,2,3"));
    EXPECT_TRUE(parseColourLine(std::string(kMaxColourNameChars, 'n') + "=1,2,3"));
}

TEST(ColourTable, SavingKeepsEveryLineItDidNotUnderstand) {
    const std::string file =
        "Sky=135,206,235\r\n; my notes\r\n\r\nRust=183,65,14\nbroken=1,2\nlast=9,9,9";
    ColourTable table = parseColourTable(file);
    ASSERT_EQ(table.colours.size(), 3u);
    EXPECT_EQ(table.colours[2], (NamedColour{"last", {9, 9, 9}}));
    EXPECT_EQ(table.otherLines, (std::vector<std::string>{"; my notes", "broken=1,2"}));

    const std::string written = formatColourTable(table);
    EXPECT_EQ(written, "Sky=135,206,235\nRust=183,65,14\nlast=9,9,9\n; my notes\nbroken=1,2\n");
    const ColourTable again = parseColourTable(written);
    EXPECT_EQ(again.colours, table.colours);
    EXPECT_EQ(again.otherLines, table.otherLines);
}

TEST(ColourTable, PutReplacesANameWhateverItsCaseOrAppends) {
    ColourTable table = parseColourTable("Sky=1,1,1\nSea=2,2,2\n");
    EXPECT_EQ(table.put("SKY", {7, 8, 9}), 0u);
    EXPECT_EQ(table.colours[0], (NamedColour{"Sky", {7, 8, 9}}));
    EXPECT_EQ(table.put("Sand", {3, 3, 3}), 2u);
    EXPECT_EQ(table.colours.size(), 3u);

    EXPECT_EQ(cleanColourName("  Sand  "), "Sand");
    EXPECT_FALSE(cleanColourName("   "));
    EXPECT_FALSE(cleanColourName("a\tb"));
}

TEST(ColourTable, FilesAreReadMissingOrRefused) {
    ScratchFolder dir;
    writeFile(dir.file("table.ccl"), "Sky=135,206,235\r\njunk\r\n");
    ColourTableFile read = readColourTableFile(dir.file("table.ccl"));
    EXPECT_EQ(read.status, ColourTableRead::kRead);
    EXPECT_EQ(read.table.colours.size(), 1u);
    EXPECT_EQ(read.table.otherLines.size(), 1u);

    EXPECT_EQ(readColourTableFile(dir.file("none.ccl")).status, ColourTableRead::kMissing);

    std::filesystem::create_directory(dir.file("folder.ccl"));
    EXPECT_EQ(readColourTableFile(dir.file("folder.ccl")).status, ColourTableRead::kUnreadable);

    // At the limit a file of colours is still read, one byte more is refused.
    std::string line = "Colour number ....=1,2,3\n";
    std::string big;
    while (big.size() + line.size() <= kMaxColourTableBytes) big += line;
    big.resize(kMaxColourTableBytes, '\n');
    writeFile(dir.file("big.ccl"), big);
    read = readColourTableFile(dir.file("big.ccl"));
    EXPECT_EQ(read.status, ColourTableRead::kRead);
    EXPECT_EQ(read.table.colours.size(), kMaxColourTableBytes / line.size());
    writeFile(dir.file("big.ccl"), "x", true);
    read = readColourTableFile(dir.file("big.ccl"));
    EXPECT_EQ(read.status, ColourTableRead::kTooLarge);
    EXPECT_TRUE(read.table.colours.empty());
}

TEST(ColourTable, ABinaryFileGivesNoColoursAndNoCrash) {
    std::string bytes;
    for (int i = 0; i < 70000; ++i) bytes += static_cast<char>((i * 7919) & 0xFF);
    const ColourTable table = parseColourTable(bytes);
    EXPECT_EQ(parseColourTable(formatColourTable(table)).otherLines.size(),
              table.otherLines.size());
}

}  // namespace
