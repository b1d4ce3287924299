// Placement of the message box's parts, with the metrics of a common screen:
// button 1 at (400, 13) 75 x 23, the text control at (12, 85) 330 x 208, a
// 3-pixel frame and a 20-pixel caption.
#include <gtest/gtest.h>

#include "ui/message_box_layout.h"

TEST(MessageBoxLayout, TextAndBoxHeights) {
    const struct {
        int textHeight;
        int checkBoxes;
        std::vector<int> notes;
        int wantTextHeight;
        int wantWindowHeight;
    } cases[] = {
        // raised to 3 x 23 + 2 x 13 = 95; 6 frame + 25 margin + 180 + 26 + 20 caption
        {13, 0, {}, 95, 257},
        // check box at 85 + 13 + 26 = 124, note at 140 + 26 = 166, 26 high
        {13, 1, {26}, 95, 6 + 25 + 192 + 26 + 20},
        {400, 2, {}, 400, 6 + 25 + 485 + 2 * (26 + 16) + 26 + 20},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.textHeight + c.checkBoxes);
        const MessageBoxLayout l = layoutMessageBox({{400, 13, 75, 23},
                                                     {12, 85, 330, 208},
                                                     200,
                                                     c.textHeight,
                                                     0,
                                                     c.checkBoxes,
                                                     c.notes,
                                                     3,
                                                     20});
        EXPECT_EQ(l.text, (LayoutRect{12, 85, 200, c.wantTextHeight}));
        EXPECT_EQ(l.windowHeight, c.wantWindowHeight);
        // Check boxes and notes follow the measured text, not the raised control.
        int top = 85 + c.textHeight;
        for (const auto* part : {&l.checkBoxes, &l.notes})
            for (const LayoutRect& r : *part) {
                EXPECT_EQ(r, (LayoutRect{12, top + 26, 330, r.height}));
                top = r.bottom();
            }
    }
}
