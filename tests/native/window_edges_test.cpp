// Where the remembered rectangle puts the main window, for sensible and for
// damaged settings, and what a closing window stores.
#include <gtest/gtest.h>

#include "app/window_edges.h"

namespace {

constexpr uint32_t stored(int32_t coordinate) {
    return static_cast<uint32_t>(coordinate);
}

}  // namespace

TEST(WindowEdges, RestoredPlacement) {
    constexpr uint32_t kNone = kNoWindowEdge;
    const struct {
        const char* name;
        uint32_t left, top, right, bottom;
        std::optional<WindowPlacement> want;  // on a 1024 x 768 screen
    } cases[] = {
        {"never saved", kNone, kNone, kNone, kNone, std::nullopt},
        {"one field unsaved", 10, 10, 500, kNone, std::nullopt},
        {"as stored", 100, 50, 600, 450, WindowPlacement{100, 50, 500, 400}},
        {"whole screen", 0, 0, 1024, 768, WindowPlacement{0, 0, 1024, 768}},
        {"raised to the minimum", 100, 50, 200, 100, WindowPlacement{100, 50, 360, 160}},
        {"cut at the screen's edge", 600, 500, 1500, 1200, WindowPlacement{600, 500, 424, 268}},
        {"pulled back from the right", 900, 700, 1000, 760, WindowPlacement{664, 608, 360, 160}},
        {"far off screen", 4000000, 3000000, 4000500, 3000400, WindowPlacement{664, 608, 360, 160}},
        {"right before left", 500, 400, 100, 50, WindowPlacement{500, 400, 360, 160}},
        // Negative coordinates come back as huge unsigned numbers.
        {"negative start", stored(-5), stored(-20), 500, 300, WindowPlacement{0, 0, 505, 320}},
        {"negative start, wide", stored(-300), 0, 2000, 100, WindowPlacement{0, 0, 1024, 160}},
        {"all negative", stored(-900), stored(-800), stored(-500), stored(-400),
         WindowPlacement{0, 0, 400, 400}},
        {"extremes", 0x80000000u, 0x80000000u, 0x7FFFFFFEu, 0x7FFFFFFEu,
         WindowPlacement{0, 0, 1024, 768}},
        {"largest start", 0x7FFFFFFEu, 0x7FFFFFFEu, 0x80000000u, 0x80000000u,
         WindowPlacement{664, 608, 360, 160}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Settings record;
        record.StickyWindowLeft = c.left;
        record.StickyWindowTop = c.top;
        record.StickyWindowRight = c.right;
        record.StickyWindowBottom = c.bottom;
        EXPECT_EQ(restoredWindowPlacement(record, 1024, 768), c.want);
    }
}

TEST(WindowEdges, ScreenSmallerThanTheMinimumKeepsTheWindowAtTheCorner) {
    Settings record;
    record.StickyWindowLeft = 50;
    record.StickyWindowTop = 40;
    record.StickyWindowRight = 250;
    record.StickyWindowBottom = 140;
    EXPECT_EQ(restoredWindowPlacement(record, 320, 120), (WindowPlacement{0, 0, 360, 160}));
}

TEST(WindowEdges, StoredRectangleIsClippedToTheScreenAndRestoresAsIs) {
    const struct {
        ScreenRect window;
        uint32_t left, top, right, bottom;
    } cases[] = {
        {{100, 50, 600, 450}, 100, 50, 600, 450},
        {{-8, -8, 1032, 776}, 0, 0, 1024, 768},  // maximised frames overhang
        {{-500, -400, -100, -50}, 0, 0, stored(-100), stored(-50)},
    };
    for (const auto& c : cases) {
        Settings record;
        storeWindowEdges(record, c.window, 1024, 768);
        EXPECT_EQ(record.StickyWindowLeft, c.left);
        EXPECT_EQ(record.StickyWindowTop, c.top);
        EXPECT_EQ(record.StickyWindowRight, c.right);
        EXPECT_EQ(record.StickyWindowBottom, c.bottom);
    }
    Settings record;
    storeWindowEdges(record, {100, 50, 600, 450}, 1024, 768);
    EXPECT_EQ(restoredWindowPlacement(record, 1024, 768), (WindowPlacement{100, 50, 500, 400}));
}
