// The icon button: the size picked for the control and the centring, read
// back from the pixels against the icon drawn by hand at the expected place.
#include <gtest/gtest.h>

#include <vector>

#include "base/win_handles.h"
#include "resources/resource.h"
#include "ui/icon_button_win.h"

namespace {

using UniqueBitmap = UniqueHandle<NullHandleTraits<HBITMAP, DeleteObject>>;
using UniqueBrush = UniqueHandle<NullHandleTraits<HBRUSH, DeleteObject>>;

constexpr COLORREF kBackground = RGB(0x20, 0x60, 0xA0);
constexpr int kOffset = 5;  // the item rectangle does not start at the corner

// A memory canvas of the given size, filled with kBackground.
class Canvas {
  public:
    Canvas(int width, int height) : width_(width), height_(height) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        WindowDc screen(nullptr);
        bitmap_.reset(CreateDIBSection(screen.get(), &info, DIB_RGB_COLORS, &bits_, nullptr, 0));
        dc_ = CreateCompatibleDC(screen.get());
        old_ = SelectObject(dc_, bitmap_.get());
        UniqueBrush brush(CreateSolidBrush(kBackground));
        RECT all{0, 0, width, height};
        FillRect(dc_, &all, brush.get());
    }
    ~Canvas() {
        SelectObject(dc_, old_);
        DeleteDC(dc_);
    }
    HDC dc() const { return dc_; }
    std::vector<uint32_t> pixels() const {
        GdiFlush();
        const auto* p = static_cast<const uint32_t*>(bits_);
        std::vector<uint32_t> out(p, p + width_ * height_);
        for (uint32_t& x : out) x &= 0xFFFFFF;
        return out;
    }

  private:
    int width_, height_;
    void* bits_ = nullptr;
    UniqueBitmap bitmap_;
    HDC dc_;
    HGDIOBJ old_;
};

TEST(IconButton, PicksTheLargestSizeThatFitsAndCentresIt) {
    const struct {
        int width, height, iconSize;
    } cases[] = {
        {16, 16, 16},    {31, 31, 16},   {32, 32, 16},  {100, 100, 64},
        {300, 300, 256}, {300, 100, 64}, {40, 140, 32},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << " x " << c.height);
        const int canvasWidth = c.width + 2 * kOffset, canvasHeight = c.height + 2 * kOffset;
        Canvas drawn(canvasWidth, canvasHeight), expected(canvasWidth, canvasHeight);
        DRAWITEMSTRUCT item{ODT_BUTTON,
                            IDC_ICONBUTTON,
                            0,
                            ODA_DRAWENTIRE,
                            ODS_DISABLED,
                            nullptr,
                            drawn.dc(),
                            {kOffset, kOffset, kOffset + c.width, kOffset + c.height},
                            0};
        EXPECT_TRUE(drawIconButton(item, kBackground));

        UniqueIcon icon(
            static_cast<HICON>(LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDI_HERALDER),
                                          IMAGE_ICON, c.iconSize, c.iconSize, LR_DEFAULTCOLOR)));
        ASSERT_TRUE(icon);
        DrawIconEx(expected.dc(), kOffset + (c.width - c.iconSize) / 2,
                   kOffset + (c.height - c.iconSize) / 2, icon.get(), c.iconSize, c.iconSize, 0,
                   nullptr, DI_NORMAL);
        EXPECT_NE(expected.pixels(), Canvas(canvasWidth, canvasHeight).pixels());
        EXPECT_EQ(drawn.pixels(), expected.pixels());
    }
}

TEST(IconButton, MissingIconStillFillsTheBackground) {
    Canvas drawn(40, 40), expected(40, 40);
    HBRUSH white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    RECT all{0, 0, 40, 40};
    FillRect(drawn.dc(), &all, white);
    DRAWITEMSTRUCT item{
        ODT_BUTTON, IDC_ICONBUTTON, 0, ODA_DRAWENTIRE, ODS_DISABLED, nullptr, drawn.dc(), all, 0};
    EXPECT_FALSE(drawIconButton(item, kBackground, "NOSUCHICON"));
    EXPECT_EQ(drawn.pixels(), expected.pixels());
}

}  // namespace
