// Integer RGB <-> HLS conversions (see colour_model.h). Each division is
// rounded rather than truncated so that greys and the pure hues come back
// exactly and any colour moves by at most a step or two on a round trip.
#include "dialogs/colour_model.h"

#include <algorithm>

namespace {

int clampTo(int value, int high) {
    return std::clamp(value, 0, high);
}

// Rounded a / b for non-negative a and positive b.
int divRound(int a, int b) {
    return (a + b / 2) / b;
}

// One channel's share of the colour, by where hue falls on the colour wheel
// between the two magic values of the luminance and saturation.
int hueToChannel(int low, int high, int hue) {
    if (hue < 0) hue += kHlsMax;
    if (hue >= kHlsMax) hue -= kHlsMax;
    constexpr int sixth = kHlsMax / 6;
    if (hue < sixth) return low + divRound((high - low) * hue, sixth);
    if (hue < kHlsMax / 2) return high;
    if (hue < kHlsMax * 2 / 3) return low + divRound((high - low) * (kHlsMax * 2 / 3 - hue), sixth);
    return low;
}

}  // namespace

Hls rgbToHls(Rgb colour) {
    const int r = clampTo(colour.red, kRgbMax);
    const int g = clampTo(colour.green, kRgbMax);
    const int b = clampTo(colour.blue, kRgbMax);
    const int high = std::max({r, g, b});
    const int low = std::min({r, g, b});
    Hls result;
    result.luminance = divRound((high + low) * kHlsMax, 2 * kRgbMax);
    if (high == low) return result;  // a grey: no saturation, the agreed hue

    const int spread = high - low;
    const int sum = high + low;
    result.saturation = result.luminance <= kHlsMax / 2
                            ? divRound(spread * kHlsMax, sum)
                            : divRound(spread * kHlsMax, 2 * kRgbMax - sum);
    result.saturation = clampTo(result.saturation, kHlsMax);

    const int rDelta = divRound((high - r) * (kHlsMax / 6), spread);
    const int gDelta = divRound((high - g) * (kHlsMax / 6), spread);
    const int bDelta = divRound((high - b) * (kHlsMax / 6), spread);
    int hue;
    if (r == high)
        hue = bDelta - gDelta;
    else if (g == high)
        hue = kHlsMax / 3 + rDelta - bDelta;
    else
        hue = kHlsMax * 2 / 3 + gDelta - rDelta;
    if (hue < 0) hue += kHlsMax;
    if (hue >= kHlsMax) hue -= kHlsMax;
    result.hue = hue;
    return result;
}

Rgb hlsToRgb(Hls colour) {
    const int h = clampTo(colour.hue, kHueMax);
    const int l = clampTo(colour.luminance, kHlsMax);
    const int s = clampTo(colour.saturation, kHlsMax);
    if (s == 0) {
        const int grey = divRound(l * kRgbMax, kHlsMax);
        return {grey, grey, grey};
    }
    const int high =
        l <= kHlsMax / 2 ? divRound(l * (kHlsMax + s), kHlsMax) : l + s - divRound(l * s, kHlsMax);
    const int low = 2 * l - high;
    auto channel = [&](int hue) {
        return clampTo(divRound(hueToChannel(low, high, hue) * kRgbMax, kHlsMax), kRgbMax);
    };
    return {channel(h + kHlsMax / 3), channel(h), channel(h - kHlsMax / 3)};
}

Rgb rgbOfColourRef(uint32_t colour) {
    return {static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
            static_cast<int>((colour >> 16) & 0xFF)};
}

uint32_t colourRefOf(Rgb colour) {
    return static_cast<uint32_t>(clampTo(colour.red, kRgbMax)) |
           static_cast<uint32_t>(clampTo(colour.green, kRgbMax)) << 8 |
           static_cast<uint32_t>(clampTo(colour.blue, kRgbMax)) << 16;
}
