// The colour picker's two forms of a colour: known colours land on the
// figures a Windows user expects, and converting back and forth never drifts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "dialogs/colour_model.h"

namespace {

TEST(ColourModel, KnownColoursHaveTheirUsualFigures) {
    const struct {
        Rgb rgb;
        Hls hls;
    } cases[] = {
        {{0, 0, 0}, {160, 0, 0}},         {{255, 255, 255}, {160, 240, 0}},
        {{128, 128, 128}, {160, 120, 0}}, {{255, 0, 0}, {0, 120, 240}},
        {{0, 255, 0}, {80, 120, 240}},    {{0, 0, 255}, {160, 120, 240}},
        {{255, 255, 0}, {40, 120, 240}},  {{0, 255, 255}, {120, 120, 240}},
        {{255, 0, 255}, {200, 120, 240}}, {{128, 0, 0}, {0, 60, 240}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.rgb.red << "," << c.rgb.green << "," << c.rgb.blue);
        EXPECT_EQ(rgbToHls(c.rgb), c.hls);
        EXPECT_EQ(hlsToRgb(c.hls), c.rgb);
    }
}

// Hue, saturation and luminance have fewer steps than red, green and blue, so
// a colour may move a little once; after that it must stay where it is.
TEST(ColourModel, RoundTripsStayCloseAndSettle) {
    int worst = 0;
    for (int r = 0; r < 256; r += 3)
        for (int g = 0; g < 256; g += 5)
            for (int b = 0; b < 256; b += 7) {
                const Rgb once = hlsToRgb(rgbToHls({r, g, b}));
                worst = std::max({worst, std::abs(once.red - r), std::abs(once.green - g),
                                  std::abs(once.blue - b)});
                const Rgb twice = hlsToRgb(rgbToHls(once));
                ASSERT_LE(std::abs(twice.red - once.red), 2) << r << "," << g << "," << b;
                ASSERT_LE(std::abs(twice.green - once.green), 2);
                ASSERT_LE(std::abs(twice.blue - once.blue), 2);
            }
    EXPECT_LE(worst, 5);
    for (int h = 0; h < kHlsMax; ++h) {
        const Hls hls{h, 120, 240};
        EXPECT_EQ(rgbToHls(hlsToRgb(hls)).hue, h) << "pure hues keep their hue";
    }
}

TEST(ColourModel, OutOfRangeFiguresAreBroughtIn) {
    EXPECT_EQ(hlsToRgb({-5, 999, 999}), hlsToRgb({0, 240, 240}));
    EXPECT_EQ(rgbToHls({300, -1, 0}), rgbToHls({255, 0, 0}));
}

TEST(ColourModel, ColourValuesPackRedLowest) {
    EXPECT_EQ(rgbOfColourRef(0x00123456), (Rgb{0x56, 0x34, 0x12}));
    EXPECT_EQ(rgbOfColourRef(0xFF000001), (Rgb{1, 0, 0}));  // the top byte means nothing
    EXPECT_EQ(colourRefOf({0x56, 0x34, 0x12}), 0x00123456u);
    EXPECT_EQ(colourRefOf({256, -3, 0}), 0x000000FFu);
}

}  // namespace
