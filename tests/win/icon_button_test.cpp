// The icon button: the size picked for the control and the centring, read
// back from the pixels against the icon drawn by hand at the expected place.
#include <gtest/gtest.h>

#include <vector>

#include "base/win_handles.h"
#include "resources/resource.h"
#include "tests/win/test_support.h"
#include "ui/icon_button_win.h"

namespace {

constexpr COLORREF kBackground = RGB(0x20, 0x60, 0xA0);
constexpr int kOffset = 5;  // the item rectangle does not start at the corner

DRAWITEMSTRUCT iconItem(HDC dc, const RECT& r) {
    return {ODT_BUTTON, IDC_ICONBUTTON, 0, ODA_DRAWENTIRE, ODS_DISABLED, nullptr, dc, r, 0};
}

TEST(IconButton, PicksTheLargestSizeThatFitsAndCentresIt) {
    const struct {
        int width, height, iconSize;
    } cases[] = {
        {31, 31, 16}, {300, 100, 64}, {40, 140, 32},  // which size: checked natively
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << " x " << c.height);
        const int canvasWidth = c.width + 2 * kOffset, canvasHeight = c.height + 2 * kOffset;
        Canvas drawn(canvasWidth, canvasHeight, kBackground),
            expected(canvasWidth, canvasHeight, kBackground);
        const DRAWITEMSTRUCT item =
            iconItem(drawn.dc(), {kOffset, kOffset, kOffset + c.width, kOffset + c.height});
        EXPECT_TRUE(drawIconButton(item, kBackground));

        UniqueIcon icon(
            static_cast<HICON>(LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDI_HERALDER),
                                          IMAGE_ICON, c.iconSize, c.iconSize, LR_DEFAULTCOLOR)));
        ASSERT_TRUE(icon);
        DrawIconEx(expected.dc(), kOffset + (c.width - c.iconSize) / 2,
                   kOffset + (c.height - c.iconSize) / 2, icon.get(), c.iconSize, c.iconSize, 0,
                   nullptr, DI_NORMAL);
        EXPECT_NE(expected.pixels(), Canvas(canvasWidth, canvasHeight, kBackground).pixels());
        EXPECT_EQ(drawn.pixels(), expected.pixels());
    }
}

TEST(IconButton, MissingIconLeavesTheControlUnpainted) {
    Canvas drawn(40, 40, RGB(255, 255, 255)), expected(40, 40, RGB(255, 255, 255));
    RECT all{0, 0, 40, 40};
    const DRAWITEMSTRUCT item = iconItem(drawn.dc(), all);
    EXPECT_FALSE(drawIconButton(item, kBackground, "NOSUCHICON"));
    EXPECT_EQ(drawn.pixels(), expected.pixels());
}

}  // namespace
