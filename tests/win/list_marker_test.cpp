// Row markers drawn into memory and read back pixel by pixel.
#include <gtest/gtest.h>

#include <tuple>

#include "base/packed_dib.h"
#include "tests/win/test_support.h"
#include "ui/list_marker_win.h"

namespace {

// The blend written out again, independently of the code under test.
COLORREF blend(uint32_t pixel, COLORREF background) {
    const uint32_t a = pixel >> 24;
    uint32_t out = 0;
    for (int shift : {0, 8, 16}) {
        const uint32_t p = pixel >> shift & 0xFF, c = background >> shift & 0xFF;
        out |= (p * a / 255 + c * (255 - a) / 255) << shift;
    }
    return out;
}

}  // namespace

TEST(ListMarker, PictureIsTheArtworkBlendedOverTheRowBackground) {
    const COLORREF highlight = GetSysColor(COLOR_HIGHLIGHT);
    const struct {
        const char* name;
        COLORREF background, seen;
    } backgrounds[] = {
        {"white", 0xFFFFFF, 0xFFFFFF},
        {"highlight", highlight, highlight},
        {"button face", kButtonFaceBackground, GetSysColor(COLOR_BTNFACE)},
    };
    // What the middle of each ball looks like, from its red, green and blue.
    using Hue = bool (*)(int r, int g, int b);
    const Hue red = [](int r, int g, int b) { return r > g + 80 && r > b + 80; };
    const Hue yellow = [](int r, int g, int b) { return r > b + 80 && g > b + 80; };
    const Hue green = [](int r, int g, int b) { return g > r + 80 && g > b + 80; };
    const Hue blueGrey = [](int r, int g, int b) { return b > r + 40 && b >= g && g > r; };
    const struct {
        int importance;
        Hue hue;
    } markers[] = {{3, red}, {2, yellow}, {1, green}, {0, blueGrey}, {7, blueGrey}};

    const RECT row{10, 20, 300, 40};  // 20 pixels high: the picture at (12, 23)
    for (const auto& m : markers) {
        // 32-bit, transparent corners, an opaque middle; twice the size for
        // large display scales.
        for (const int size : {16, 32}) {
            const std::span<const uint8_t> file = markerPictureResource(m.importance, size == 32);
            const std::optional<DibInfo> info = readBmpFileInfo(file);
            ASSERT_TRUE(info && info->bitCount == 32 && info->width == size && info->height == size)
                << m.importance << " " << size;
            EXPECT_EQ(getDibPixel(file, *info, 0, 0) >> 24, 0u);
            EXPECT_EQ(getDibPixel(file, *info, size / 2, size * 9 / 16) >> 24, 255u);
        }
        const std::span<const uint8_t> file = markerPictureResource(m.importance);
        const DibInfo info = *readBmpFileInfo(file);
        int partial = 0;
        for (const auto& bg : backgrounds) {
            SCOPED_TRACE(testing::Message() << "importance " << m.importance << " on " << bg.name);
            Canvas canvas(320, 60, bg.seen);
            drawListMarker(canvas.dc(), row, m.importance, bg.background);
            for (int y = 0; y < 16; ++y) {
                for (int x = 0; x < 16; ++x) {
                    const uint32_t source = getDibPixel(file, info, x, y);
                    partial += (source >> 24) > 0 && (source >> 24) < 255;
                    ASSERT_EQ(canvas.at(12 + x, 23 + y), blend(source, bg.seen)) << x << "," << y;
                }
            }
            for (auto [x, y] : {std::pair{11, 23}, {28, 23}, {12, 22}, {12, 39}})
                EXPECT_EQ(canvas.at(x, y), bg.seen) << x << "," << y;
            // The ball's middle has its importance's colour.
            const COLORREF middle = canvas.at(12 + 8, 23 + 9);
            EXPECT_TRUE(m.hue(GetRValue(middle), GetGValue(middle), GetBValue(middle)))
                << std::hex << middle;
        }
        EXPECT_GT(partial, 0) << "edges are not anti-aliased";
    }
}

TEST(ListMarker, PictureThatCannotBeMadeDrawsNothing) {
    const std::span<const uint8_t> good = markerPictureResource(1);
    std::vector<uint8_t> shallow(good.begin(), good.end());
    shallow[28] = 24;  // claims 24 bits: only 32-bit pictures are blended
    const std::vector<std::vector<uint8_t>> bad = {
        {}, std::vector<uint8_t>(good.begin(), good.end() - 1), shallow};
    for (const auto& file : bad) {
        Canvas canvas(40, 20, 0xFFFFFF);
        EXPECT_FALSE(drawMarkerPicture(canvas.dc(), {0, 0, 40, 20}, file, 0xFFFFFF));
        EXPECT_EQ(canvas.pixels(), std::vector<uint32_t>(40 * 20, 0xFFFFFF));
    }
}

TEST(ListMarker, FallbackSquareIsBevelledInTheImportanceColours) {
    const struct {
        int importance;
        COLORREF light, fill, dark;
    } cases[] = {{1, 0x00FF00, 0x00C000, 0x004000},
                 {2, 0x00FFFF, 0x00C0C0, 0x004040},
                 {3, 0x0000FF, 0x0000C0, 0x000040},
                 {0, 0xDFCEB3, 0xC7A976, 0x8B6C38},
                 {-1, 0xDFCEB3, 0xC7A976, 0x8B6C38}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.importance);
        Canvas canvas(60, 40, 0xFFFFFF);
        drawMarkerSquare(canvas.dc(), {5, 10, 60, 30}, c.importance);
        // The square spans (12, 13) to (26, 26).
        const std::tuple<int, int, COLORREF> pixels[] = {
            {12, 26, c.light},  {12, 13, c.light},  {25, 13, c.light},  {26, 13, c.dark},
            {26, 26, c.dark},   {13, 26, c.dark},   {13, 14, c.fill},   {25, 25, c.fill},
            {11, 13, 0xFFFFFF}, {27, 13, 0xFFFFFF}, {12, 12, 0xFFFFFF}, {12, 27, 0xFFFFFF}};
        for (auto [x, y, want] : pixels) EXPECT_EQ(canvas.at(x, y), want) << x << "," << y;
    }
}
