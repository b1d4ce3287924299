#pragma once
// Where the message box puts its parts. The arithmetic is kept apart from the
// window code so that it can be checked without a display: the platform side
// measures (template rectangles, text heights, frame metrics) and applies the
// result. All values are pixels in the box's client coordinates.
#include <vector>

struct LayoutRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int bottom() const { return top + height; }
    bool operator==(const LayoutRect&) const = default;
};

inline constexpr int kCheckBoxHeight = 16;  // 96-DPI pixels

struct MessageBoxMeasures {
    LayoutRect button1;  // from the template
    LayoutRect text;     // control 65 from the template
    int textWidth = 0;   // measured word-wrapped at text.width
    int textHeight = 0;
    int extraButtons = 0;                  // No, Cancel, Help that are present
    int checkBoxes = 0;                    // check boxes that are present
    std::vector<int> noteHeights;          // measured heights of the present notes
    int frameHeight = 0;                   // dialog frame, one side
    int captionHeight = 0;                 // 0 without a title bar
    int checkBoxHeight = kCheckBoxHeight;  // at the box's display scale
};

struct MessageBoxLayout {
    std::vector<LayoutRect> buttons;  // below button 1, in creation order
    LayoutRect text;                  // control 65 after fitting
    std::vector<LayoutRect> checkBoxes;
    std::vector<LayoutRect> notes;
    int windowHeight = 0;
};

MessageBoxLayout layoutMessageBox(const MessageBoxMeasures& m);
