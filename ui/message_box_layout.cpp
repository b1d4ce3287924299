// Placement of the message box's parts (see message_box_layout.h). Buttons
// stack down the right-hand side; check boxes and notes follow the text. The
// text control is raised so that three buttons always fit beside it, but what
// comes below the text starts from the measured height, so a short message
// does not push its check boxes far down.
#include "ui/message_box_layout.h"

#include <algorithm>

MessageBoxLayout layoutMessageBox(const MessageBoxMeasures& m) {
    MessageBoxLayout out;
    const LayoutRect& b1 = m.button1;
    const int gap = b1.top * 8 / 10;
    const int margin = b1.top;
    const int topMargin = m.text.top * 3 / 10;

    int y = b1.bottom();
    for (int i = 0; i < m.extraButtons; ++i) {
        LayoutRect r{b1.left, y + gap, b1.width, b1.height};
        out.buttons.push_back(r);
        y = r.bottom();
    }

    const int minTextHeight = 3 * b1.height + 2 * b1.top;
    out.text = {m.text.left, m.text.top, m.textWidth, std::max(m.textHeight, minTextHeight)};

    // Check boxes and notes keep the template width of the text control: the
    // measured width of a short message would clip them.
    int bottom = m.text.top + m.textHeight;
    int last = out.text.bottom();
    for (int i = 0; i < m.checkBoxes; ++i) {
        LayoutRect r{m.text.left, bottom + 2 * margin, m.text.width, m.checkBoxHeight};
        out.checkBoxes.push_back(r);
        bottom = last = r.bottom();
    }
    for (int h : m.noteHeights) {
        LayoutRect r{m.text.left, bottom + 2 * margin, m.text.width, h};
        out.notes.push_back(r);
        bottom = last = r.bottom();
    }

    out.windowHeight = 2 * m.frameHeight + topMargin + last + 2 * margin + m.captionHeight;
    return out;
}
