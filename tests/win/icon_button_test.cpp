// The icon button: the size picked for the control and the centring, read
// back from the pixels against the icon drawn by hand at the expected place.
#include <gtest/gtest.h>

#include "base/win_handles.h"
#include "resources/resource.h"
#include "tests/win/test_support.h"
#include "ui/icon_button_win.h"

namespace {

// Which size fits is checked natively; a missing icon leaves the control
// unpainted, even with a background of another colour.
TEST(IconButton, PicksTheLargestSizeThatFitsAndCentresIt) {
    constexpr COLORREF kBackground = RGB(0x20, 0x60, 0xA0);
    constexpr int kOffset = 5;  // the item rectangle does not start at the corner
    const struct {
        int width, height, iconSize;  // 0: no such icon
    } cases[] = {{31, 31, 16}, {300, 100, 64}, {40, 140, 32}, {40, 40, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << " x " << c.height);
        const int width = c.width + 2 * kOffset, height = c.height + 2 * kOffset;
        const COLORREF under = c.iconSize ? kBackground : RGB(255, 255, 255);
        Canvas drawn(width, height, under), expected(width, height, under);
        const RECT r{kOffset, kOffset, kOffset + c.width, kOffset + c.height};
        const DRAWITEMSTRUCT item{
            ODT_BUTTON, IDC_ICONBUTTON, 0, ODA_DRAWENTIRE, ODS_DISABLED, nullptr, drawn.dc(), r, 0};
        const char* name = c.iconSize ? MAKEINTRESOURCEA(IDI_HERALDER) : "NOSUCHICON";
        EXPECT_EQ(drawIconButton(item, kBackground, name), c.iconSize != 0);
        if (c.iconSize) {
            UniqueIcon icon(
                static_cast<HICON>(LoadImageA(GetModuleHandleA(nullptr), name, IMAGE_ICON,
                                              c.iconSize, c.iconSize, LR_DEFAULTCOLOR)));
            ASSERT_TRUE(icon);
            DrawIconEx(expected.dc(), kOffset + (c.width - c.iconSize) / 2,
                       kOffset + (c.height - c.iconSize) / 2, icon.get(), c.iconSize, c.iconSize, 0,
                       nullptr, DI_NORMAL);
            EXPECT_NE(expected.pixels(), Canvas(width, height, under).pixels());
        }
        EXPECT_EQ(drawn.pixels(), expected.pixels());
    }
}

}  // namespace
