// The shared controls' portable rules: display scale, choice lists, icon size,
// the spin edit and the message box's layout.
#include <gtest/gtest.h>

#include <tuple>

#include "ui/choice_combo.h"
#include "ui/dpi.h"
#include "ui/icon_button.h"
#include "ui/message_box_layout.h"
#include "ui/spin_edit.h"

namespace {

// A common screen: button 1 at (400, 13) 75 x 23, the text control at (12, 85)
// 330 x 208, a 3-pixel frame and a 20-pixel caption.
MessageBoxMeasures measures(int textHeight, int extraButtons, int checkBoxes,
                            std::vector<int> notes, int caption = 20) {
    return {{400, 13, 75, 23}, {12, 85, 330, 208}, 200, textHeight, extraButtons,
            checkBoxes,        std::move(notes),   3,   caption};
}

}  // namespace

TEST(DisplayScale, RoundsHalvesAwayFromZeroAsMulDiv) {
    const std::tuple<int, unsigned, int> cases[] = {
        {14, 96, 14},    {14, 120, 18},                 // 17.5 rounds up
        {20, 144, 30},   {208, 192, 416}, {1, 120, 1},  // 1.25
        {3, 120, 4},                                    // 3.75
        {-3, 144, -5},                                  // -4.5: away from zero, not towards it
        {586, 120, 733},                                // 732.5
        {0, 192, 0},
    };
    for (const auto& [pixels, dpi, scaled] : cases)
        EXPECT_EQ(scaleForDpi(pixels, dpi), scaled) << pixels << " at " << dpi;
    // Exactly 1.5 keeps the 1x source: it shrinks less.
    EXPECT_EQ(std::tuple(wantsDoublePicture(120), wantsDoublePicture(144), wantsDoublePicture(168)),
              std::tuple(false, false, true));
}

TEST(ChoiceList, SplitsAtRunsOfSemicolons) {
    using V = std::vector<std::string>;
    const std::pair<const char*, V> cases[] = {
        {"Always;;;Never", {"Always", "Never"}},
        {";;Always;Never", {"", "Always", "Never"}},  // a leading run gives one empty entry
        {"Always;Never;", {"Always", "Never"}},
        {"", {}},
        {";", {""}},
    };
    for (const auto& [list, entries] : cases) EXPECT_EQ(splitChoiceList(list), entries) << list;
}

TEST(IconButton, IconSizeIsTheLargestStandardSizeThatFits) {
    const int cases[][2] = {{0, 16},   {32, 16},   {33, 32},   {64, 32},   {65, 64},
                            {128, 64}, {129, 128}, {256, 128}, {257, 256}, {4000, 256}};
    for (const auto& c : cases) EXPECT_EQ(iconSizeFor(c[0]), c[1]) << c[0];
}

TEST(SpinEdit, TemplateTextGivesBoundsAndStart) {
    const std::tuple<const char*, int, int, int> cases[] = {
        {"2,32760,6", 2, 32760, 6},
        {"-50, 50, -7", -50, 50, -7},  // "%d" skips spaces before a number
        {"", 0, 100, 0},
        {"5", 5, 100, 0},
        {"5,20", 5, 20, 0},
        {"5 ,20,3", 5, 100, 0},  // a comma must follow the number directly
        {"5,x,3", 5, 100, 0},
        {"1,9,4 and more", 1, 9, 4},
        {"99999999999,1,0", 2147483647, 1, 0},
    };
    for (const auto& [text, minimum, maximum, start] : cases) {
        const SpinRange r = parseSpinRange(text);
        EXPECT_TRUE(r.minimum == minimum && r.maximum == maximum && r.start == start)
            << text << ": " << r.minimum << "," << r.maximum << "," << r.start;
    }
}

TEST(SpinEdit, TypedTextIsClampedAndJunkKeepsTheLastValue) {
    const SpinRange count = parseSpinRange("2,32760,6");
    const SpinRange signedRange = parseSpinRange("-10,10,0");
    const SpinRange reversed = parseSpinRange("144,4,16");
    const std::tuple<const SpinRange*, const char*, int, int> cases[] = {
        {&count, "12", 6, 12},       {&count, "1", 6, 2},
        {&count, "40000", 6, 32760}, {&count, "  300 ", 6, 300},
        {&count, "-5", 6, 2},        {&count, "123456789012345678901234567890", 6, 32760},
        {&count, "", 6, 6},          {&count, "abc", 9, 9},
        {&count, "12ab", 9, 9},      {&count, "1 2", 9, 9},
        {&count, "-", 9, 9},         {&count, "", 0, 2},  // the fallback is bounded too
        {&signedRange, "-4", 0, -4}, {&signedRange, "-40", 0, -10},
        {&signedRange, "+7", 0, 7},  {&reversed, "200", 16, 144},
        {&reversed, "1", 16, 4},
    };
    for (const auto& [range, text, fallback, expected] : cases)
        EXPECT_EQ(spinFieldValue(*range, text, fallback), expected) << '"' << text << '"';
}

// Checked by what a user would see go wrong (a part cut off, parts on top of
// each other, a check box far below a short message), not by copying the
// arithmetic.
TEST(MessageBoxLayout, EveryPartFitsInsideTheBoxWithoutOverlapping) {
    const MessageBoxMeasures cases[] = {
        measures(13, 0, 0, {}),           measures(13, 3, 1, {26}),     measures(400, 2, 2, {}),
        measures(13, 1, 3, {13, 26, 39}), measures(900, 3, 3, {13}, 0),
    };
    for (const MessageBoxMeasures& m : cases) {
        SCOPED_TRACE(testing::Message() << "row " << &m - cases);
        const MessageBoxLayout l = layoutMessageBox(m);
        const int clientHeight = l.windowHeight - 2 * m.frameHeight - m.captionHeight;

        // The text shows in full with room for three buttons beside it; buttons
        // stack under button 1 in order, in its column.
        EXPECT_GE(l.text.height, std::max(m.textHeight, 3 * m.button1.height));
        EXPECT_EQ(l.text.top, m.text.top);
        ASSERT_EQ(l.buttons.size(), static_cast<size_t>(m.extraButtons));
        int above = m.button1.bottom();
        for (const LayoutRect& b : l.buttons) {
            EXPECT_TRUE(b.left == m.button1.left && b.height == m.button1.height);
            EXPECT_GT(b.top, above);
            above = b.bottom();
        }

        // Check boxes, then notes, follow the text closely in order, as wide as it.
        ASSERT_EQ(l.checkBoxes.size(), static_cast<size_t>(m.checkBoxes));
        ASSERT_EQ(l.notes.size(), m.noteHeights.size());
        int previous = m.text.top + m.textHeight;
        int lowest = std::max(l.text.bottom(), above);
        for (const auto* part : {&l.checkBoxes, &l.notes})
            for (const LayoutRect& r : *part) {
                EXPECT_GT(r.top, previous);
                EXPECT_LE(r.top - previous, 40);
                EXPECT_TRUE(r.left == m.text.left && r.width == m.text.width);
                previous = r.bottom();
                lowest = std::max(lowest, r.bottom());
            }
        for (std::size_t i = 0; i < l.notes.size(); ++i)
            EXPECT_EQ(l.notes[i].height, m.noteHeights[i]);

        EXPECT_GT(clientHeight, lowest);
        EXPECT_LE(clientHeight - lowest, 60);
    }
    // A longer message never makes a smaller box.
    int previous = 0;
    for (int textHeight = 0; textHeight <= 1000; textHeight += 13) {
        const int height = layoutMessageBox(measures(textHeight, 2, 1, {26})).windowHeight;
        EXPECT_GE(height, previous) << textHeight;
        previous = height;
    }
}
