#pragma once
// Pixel measures of the windows are written for a 96-DPI screen; a window on a
// scaled screen multiplies them by its DPI, rounding halves away from zero as
// Windows' MulDiv does, so that our sizes agree with those of the dialog
// templates the system scales.
#include <cstdint>

inline constexpr unsigned kBaseDpi = 96;

constexpr int scaleForDpi(int pixelsAt96, unsigned dpi) {
    const std::int64_t product = static_cast<std::int64_t>(pixelsAt96) * dpi;
    const std::int64_t half = kBaseDpi / 2;
    return static_cast<int>(product >= 0 ? (product + half) / kBaseDpi
                                         : -((-product + half) / kBaseDpi));
}

// Picture sets come at 1x and 2x: above one and a half times the base scale
// the 2x source is nearer the size shown, and shrinking it stays sharp.
constexpr bool wantsDoublePicture(unsigned dpi) {
    return dpi * 2 > kBaseDpi * 3;
}
