#pragma once
// The marker at the left of each row of the item list: a 16 x 16 picture by the
// item's importance (3 red, 2 yellow, 1 green, anything else blue-grey),
// composed over the row's background, or a bevelled square in the same colours
// when the picture cannot be made.
#include "base/win_headers.h"

// Draws the marker of a row whose rectangle is row, on background (a
// COLORREF; 0xFFFFFFFF stands for the system button-face colour).
void drawListMarker(HDC dc, const RECT& row, int importance, COLORREF background);
