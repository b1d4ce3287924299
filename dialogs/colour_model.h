#pragma once
// Colours as the colour picker shows them: red, green and blue from 0 to 255,
// and hue, saturation and luminance on the 0..240 scale Windows users know
// from the system's own colour chooser (hue 0..239 going round, 160 for
// greys). The conversions are integer and rounded so that a colour typed in
// one form shows the same figures every time it is converted.
#include <cstdint>

inline constexpr int kHlsMax = 240;
inline constexpr int kHueMax = kHlsMax - 1;
inline constexpr int kRgbMax = 255;
// The hue shown for greys, which have none.
inline constexpr int kGreyHue = kHlsMax * 2 / 3;

struct Rgb {
    int red = 0, green = 0, blue = 0;
    bool operator==(const Rgb&) const = default;
};

struct Hls {
    int hue = kGreyHue, luminance = 0, saturation = 0;
    bool operator==(const Hls&) const = default;
};

// Values outside their ranges are brought into them first.
Hls rgbToHls(Rgb colour);
Rgb hlsToRgb(Hls colour);

// A 0x00BBGGRR colour value and its parts; the top byte is ignored.
Rgb rgbOfColourRef(uint32_t colour);
uint32_t colourRefOf(Rgb colour);
