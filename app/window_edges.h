#pragma once
// The main window's remembered edges: where a stored rectangle puts the window
// (at least 360 x 160 pixels, pulled back onto the primary screen) and what a
// closing window stores. Pure arithmetic on the four StickyWindow settings, so
// every stored value, however strange, has a tested outcome. Each setting is
// the int32 coordinate it was written from (4294967291 is -5); a negative
// left or top, which only a hand-edited file holds, puts the window at the
// screen's edge and keeps its size to the screen's.
#include <cstdint>
#include <optional>

#include "settings/settings.h"

inline constexpr uint32_t kNoWindowEdge = 2147483647;  // nothing was ever saved
inline constexpr int kMinWindowWidth = 360;
inline constexpr int kMinWindowHeight = 160;

struct WindowPlacement {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const WindowPlacement&) const = default;
};

struct ScreenRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

// Where to put the window on a screenWidth x screenHeight primary screen;
// nullopt when no rectangle was ever saved.
std::optional<WindowPlacement> restoredWindowPlacement(const Settings& record, int screenWidth,
                                                       int screenHeight);
// Stores the window's rectangle, clipped to the screen, into record.
void storeWindowEdges(Settings& record, const ScreenRect& window, int screenWidth,
                      int screenHeight);
