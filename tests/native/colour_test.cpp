// The colour picker's portable half: the two forms of a colour, and the colour
// table file, whose hand-written lines must survive a save, and which is refused
// when huge or unreadable rather than taken for an empty table.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <tuple>

#include "dialogs/colour_model.h"
#include "dialogs/colour_table.h"
#include "tests/native/feed_test_support.h"

TEST(ColourModel, KnownColoursHaveTheirUsualFigures) {
    const std::pair<Rgb, Hls> cases[] = {
        {{0, 0, 0}, {160, 0, 0}},         {{255, 255, 255}, {160, 240, 0}},
        {{128, 128, 128}, {160, 120, 0}}, {{255, 0, 0}, {0, 120, 240}},
        {{0, 255, 0}, {80, 120, 240}},    {{0, 0, 255}, {160, 120, 240}},
        {{255, 255, 0}, {40, 120, 240}},  {{0, 255, 255}, {120, 120, 240}},
        {{255, 0, 255}, {200, 120, 240}}, {{128, 0, 0}, {0, 60, 240}},
    };
    for (const auto& [rgb, hls] : cases)
        EXPECT_EQ(std::pair(rgbToHls(rgb), hlsToRgb(hls)), std::pair(hls, rgb))
            << rgb.red << "," << rgb.green << "," << rgb.blue;
    // Out-of-range figures are brought in.
    EXPECT_EQ(hlsToRgb({-5, 999, 999}), hlsToRgb({0, 240, 240}));
    EXPECT_EQ(rgbToHls({300, -1, 0}), rgbToHls({255, 0, 0}));
}

// Hue, saturation and luminance have fewer steps than red, green and blue, so
// a colour may move a little once; after that it must stay where it is.
TEST(ColourModel, RoundTripsStayCloseAndSettle) {
    auto distance = [](Rgb x, Rgb y) {
        return std::max(
            {std::abs(x.red - y.red), std::abs(x.green - y.green), std::abs(x.blue - y.blue)});
    };
    for (int r = 0; r < 256; r += 3)
        for (int g = 0; g < 256; g += 5)
            for (int b = 0; b < 256; b += 7) {
                const Rgb once = hlsToRgb(rgbToHls({r, g, b}));
                ASSERT_LE(distance(once, {r, g, b}), 5) << r << "," << g << "," << b;
                ASSERT_LE(distance(hlsToRgb(rgbToHls(once)), once), 2) << r << "," << g << "," << b;
            }
    for (int h = 0; h < kHlsMax; ++h)
        EXPECT_EQ(rgbToHls(hlsToRgb({h, 120, 240})).hue, h) << "pure hues keep their hue";
}

TEST(ColourModel, ColourValuesPackRedLowest) {
    EXPECT_EQ(rgbOfColourRef(0x00123456), (Rgb{0x56, 0x34, 0x12}));
    EXPECT_EQ(rgbOfColourRef(0xFF000001), (Rgb{1, 0, 0}));  // the top byte means nothing
    EXPECT_EQ(std::tuple(colourRefOf({0x56, 0x34, 0x12}), colourRefOf({256, -3, 0})),
              std::tuple(0x00123456u, 0xFFu));
}

TEST(ColourTable, LinesThatAreColoursAndLinesThatAreNot) {
    const std::pair<const char*, NamedColour> accepted[] = {
        {"Sky=135,206,235", {"Sky", {135, 206, 235}}},
        {"  Deep sea  =  0 , 0 ,128 ", {"Deep sea", {0, 0, 128}}},
        {"a=b=1,2,3", {"a=b", {1, 2, 3}}},  // the name ends at the last "="
        {"Black=0,0,0", {"Black", {0, 0, 0}}},
        {"White=255,255,255", {"White", {255, 255, 255}}},
    };
    for (const auto& [line, colour] : accepted) EXPECT_EQ(parseColourLine(line), colour) << line;
    for (const char* line : {"Too bright=256,0,0", "Negative=-1,0,0", "Short=1,2", "Long=1,2,3,4",
                             "Letters=1,2,x", "Empty=,,", "=1,2,3", "   =1,2,3", "No equals 1,2,3",
                             "[Section]", "Tab\tname=1,2,3", "Huge=0001,2,3"})
        EXPECT_FALSE(parseColourLine(line)) << line;
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
    EXPECT_EQ(std::tie(again.colours, again.otherLines), std::tie(table.colours, table.otherLines));
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
    EXPECT_EQ(std::tuple(read.status, read.table.colours.size(), read.table.otherLines.size()),
              std::tuple(ColourTableRead::kRead, 1u, 1u));

    EXPECT_EQ(readColourTableFile(dir.file("none.ccl")).status, ColourTableRead::kMissing);
    std::filesystem::create_directory(dir.file("folder.ccl"));
    EXPECT_EQ(readColourTableFile(dir.file("folder.ccl")).status, ColourTableRead::kUnreadable);

    // At the limit a file of colours is still read, one byte more is refused.
    const std::string line = "Colour number ....=1,2,3\n";
    std::string big;
    while (big.size() + line.size() <= kMaxColourTableBytes) big += line;
    big.resize(kMaxColourTableBytes, '\n');
    writeFile(dir.file("big.ccl"), big);
    read = readColourTableFile(dir.file("big.ccl"));
    EXPECT_EQ(std::tuple(read.status, read.table.colours.size()),
              std::tuple(ColourTableRead::kRead, kMaxColourTableBytes / line.size()));
    writeFile(dir.file("big.ccl"), "x", true);
    read = readColourTableFile(dir.file("big.ccl"));
    EXPECT_EQ(std::tuple(read.status, read.table.colours.size()),
              std::tuple(ColourTableRead::kTooLarge, 0u));
}
