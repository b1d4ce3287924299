// The remembered main-window rectangle. The settings are unsigned 32-bit
// numbers but were written from signed window coordinates, so each is read
// back as the int32 it stood for; all arithmetic is then done in 64 bits so
// that a hand-edited or damaged file cannot overflow a difference or put the
// window off the screen.
#include "app/window_edges.h"

#include <algorithm>

namespace {

int64_t asCoordinate(uint32_t stored) {
    return static_cast<int32_t>(stored);
}

// One axis: where the window starts and how long it is, screen being the
// screen's extent along it.
void placeAxis(int64_t low, int64_t high, int64_t screen, int64_t minimum, int& start,
               int& length) {
    // Room to the right of (or below) the window's start on the screen; a
    // negative start only comes from a hand-edited file and gets the whole screen.
    int64_t size = std::min(high - low, screen - std::max<int64_t>(low, 0));
    if (size < minimum) size = minimum;
    int64_t at = std::min(low, screen - minimum);
    if (at < 0) at = 0;
    start = static_cast<int>(at);
    length = static_cast<int>(size);
}

}  // namespace

std::optional<WindowPlacement> restoredWindowPlacement(const Settings& record, int screenWidth,
                                                       int screenHeight) {
    const uint32_t edges[] = {record.StickyWindowLeft, record.StickyWindowTop,
                              record.StickyWindowRight, record.StickyWindowBottom};
    if (std::find(std::begin(edges), std::end(edges), kNoWindowEdge) != std::end(edges))
        return std::nullopt;
    WindowPlacement p;
    placeAxis(asCoordinate(record.StickyWindowLeft), asCoordinate(record.StickyWindowRight),
              screenWidth, kMinWindowWidth, p.x, p.width);
    placeAxis(asCoordinate(record.StickyWindowTop), asCoordinate(record.StickyWindowBottom),
              screenHeight, kMinWindowHeight, p.y, p.height);
    return p;
}

void storeWindowEdges(Settings& record, const ScreenRect& window, int screenWidth,
                      int screenHeight) {
    record.StickyWindowLeft = static_cast<uint32_t>(std::max(0, window.left));
    record.StickyWindowTop = static_cast<uint32_t>(std::max(0, window.top));
    record.StickyWindowRight = static_cast<uint32_t>(std::min(screenWidth, window.right));
    record.StickyWindowBottom = static_cast<uint32_t>(std::min(screenHeight, window.bottom));
}
