#pragma once
// The marker at the left of each row of the item list: a 16 x 16 picture by the
// item's importance (3 red, 2 yellow, 1 green, anything else blue-grey),
// composed over the row's background, or a bevelled square in the same colours
// when the picture cannot be made. The two halves are exposed so that each can
// be drawn on its own.
#include <cstdint>
#include <span>

#include "base/win_headers.h"

// COLORREF that stands for the system button-face colour.
inline constexpr COLORREF kButtonFaceBackground = 0xFFFFFFFF;

// Draws the marker of a row whose rectangle is row, on background (a
// COLORREF or kButtonFaceBackground), at dpi: sizes and offsets are 96-DPI
// pixels scaled, and the picture is drawn smoothly at the scaled size.
void drawListMarker(HDC dc, const RECT& row, int importance, COLORREF background,
                    unsigned dpi = 96);

// The picture half: bmpFile is a whole 32-bit bitmap file. False, with nothing
// drawn, when it cannot be read or composed.
bool drawMarkerPicture(HDC dc, const RECT& row, std::span<const uint8_t> bmpFile,
                       COLORREF background, unsigned dpi = 96);
// The fallback half: the bevelled square in the importance's colours.
void drawMarkerSquare(HDC dc, const RECT& row, int importance, unsigned dpi = 96);
// The raw data resource that holds the importance's picture (empty when
// missing): the 16-pixel one, or the 32-pixel one when doubled.
std::span<const uint8_t> markerPictureResource(int importance, bool doubled = false);
