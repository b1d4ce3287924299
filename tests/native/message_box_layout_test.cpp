// Placement of the message box's parts, checked by what a user would see go
// wrong (a part cut off, parts on top of each other, a check box far below a
// short message) rather than by copying the arithmetic. The metrics are those
// of a common screen: button 1 at (400, 13) 75 x 23, the text control at
// (12, 85) 330 x 208, a 3-pixel frame and a 20-pixel caption.
#include <gtest/gtest.h>

#include "ui/message_box_layout.h"

namespace {

MessageBoxMeasures measures(int textHeight, int extraButtons, int checkBoxes,
                            std::vector<int> notes, int caption = 20) {
    return {{400, 13, 75, 23}, {12, 85, 330, 208}, 200, textHeight, extraButtons,
            checkBoxes,        std::move(notes),   3,   caption};
}

TEST(MessageBoxLayout, EveryPartFitsInsideTheBoxWithoutOverlapping) {
    const MessageBoxMeasures cases[] = {
        measures(13, 0, 0, {}),           measures(13, 3, 1, {26}),     measures(400, 2, 2, {}),
        measures(13, 1, 3, {13, 26, 39}), measures(900, 3, 3, {13}, 0),
    };
    for (const MessageBoxMeasures& m : cases) {
        SCOPED_TRACE(testing::Message() << m.textHeight << " " << m.extraButtons << " "
                                        << m.checkBoxes << " " << m.noteHeights.size());
        const MessageBoxLayout l = layoutMessageBox(m);
        const int clientHeight = l.windowHeight - 2 * m.frameHeight - m.captionHeight;

        // The text shows in full and leaves room for three buttons beside it.
        EXPECT_GE(l.text.height, m.textHeight);
        EXPECT_GE(l.text.height, 3 * m.button1.height);
        EXPECT_EQ(l.text.top, m.text.top);

        // Buttons stack under button 1 in order, in its column.
        ASSERT_EQ(l.buttons.size(), static_cast<size_t>(m.extraButtons));
        int above = m.button1.bottom();
        for (const LayoutRect& b : l.buttons) {
            EXPECT_EQ(b.left, m.button1.left);
            EXPECT_EQ(b.height, m.button1.height);
            EXPECT_GT(b.top, above);
            above = b.bottom();
        }

        // Check boxes, then notes, follow the measured text in order, each
        // as wide as the template's text control so nothing is clipped.
        ASSERT_EQ(l.checkBoxes.size(), static_cast<size_t>(m.checkBoxes));
        ASSERT_EQ(l.notes.size(), m.noteHeights.size());
        int previous = m.text.top + m.textHeight;
        int lowest = std::max(l.text.bottom(), above);
        for (const auto* part : {&l.checkBoxes, &l.notes})
            for (const LayoutRect& r : *part) {
                EXPECT_GT(r.top, previous);
                EXPECT_LE(r.top - previous, 40);  // close to what it belongs to
                EXPECT_EQ(r.left, m.text.left);
                EXPECT_EQ(r.width, m.text.width);
                previous = r.bottom();
                lowest = std::max(lowest, r.bottom());
            }
        for (std::size_t i = 0; i < l.notes.size(); ++i)
            EXPECT_EQ(l.notes[i].height, m.noteHeights[i]);

        // The box is tall enough for everything, with a margin below.
        EXPECT_GT(clientHeight, lowest);
        EXPECT_LE(clientHeight - lowest, 60);
    }
}

TEST(MessageBoxLayout, ALongerMessageNeverMakesASmallerBox) {
    int previous = 0;
    for (int textHeight = 0; textHeight <= 1000; textHeight += 13) {
        const int height = layoutMessageBox(measures(textHeight, 2, 1, {26})).windowHeight;
        EXPECT_GE(height, previous) << textHeight;
        previous = height;
    }
}

}  // namespace
