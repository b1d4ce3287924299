// Setup's decisions without a window: what OK stores and resets, which font
// entry it opens on, and which swatch labels turn white.
#include <gtest/gtest.h>

#include "dialogs/setup_box.h"

namespace {

// The dialog's own stores and resets are checked on the real dialog; here the
// texts' bound and the keys that no control edits.
TEST(SetupCommit, CutsTextsAndLeavesKeysWithoutAControlAlone) {
    Settings record;
    record.SetupNoticeReport = 5;
    record.AllowGraphicUpdates = 1;
    record.NoiseType = 77;
    record.AlertTextColor = 0x123456;
    SetupValues v;
    v.transactionDate = std::string(300, 'd');
    v.fontName = std::string(260, 'f');
    commitSetup(record, v);
    EXPECT_EQ(record.CurrentTransactionDate, std::string(259, 'd'));
    EXPECT_EQ(record.AlertFontName, std::string(259, 'f'));
    EXPECT_EQ(record.AllowINIUpdates, 0u);
    EXPECT_EQ(record.SetupNoticeReport, 5u);
    EXPECT_EQ(record.AllowGraphicUpdates, 1u);
    EXPECT_EQ(record.NoiseType, 77u);
    EXPECT_EQ(record.AlertTextColor, 0x123456u);  // colours are the picker's business
}

TEST(SetupFontList, OpensOnTheFirstFaceThatBeginsWithTheStoredName) {
    const std::vector<std::string> faces = {"Arial", "Arial Black", "Courier New", "Georgia",
                                            "Georgia Pro"};
    const struct {
        const char* stored;
        int want;
    } cases[] = {
        {"Georgia", 3},  {"georgia", 3}, {"Arial Black", 1},       {"Cour", 2},
        {"Verdana", -1}, {"", -1},       {"Georgia Pro Bold", -1},
    };
    for (const auto& c : cases) EXPECT_EQ(initialFontIndex(faces, c.stored), c.want) << c.stored;
}

TEST(SetupSwatch, DarkColoursGetWhiteLabels) {
    // Each share is truncated on its own: grey 129 sums to 128 and is dark,
    // grey 130 to 129 and is not.
    const struct {
        uint32_t colour;
        bool dark;
    } cases[] = {
        {0x000000, true},  {0xFFFFFF, false},  {0x818181, true}, {0x828282, false},
        {0x0000FF, true},  {0x00FF00, false},  {0xFF0000, true}, {0x00DA00, true},
        {0x00DB00, false}, {0xFF000000, true},  // the top byte means nothing
    };
    for (const auto& c : cases) EXPECT_EQ(isDarkColour(c.colour), c.dark) << std::hex << c.colour;
}

}  // namespace
