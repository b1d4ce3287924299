#pragma once
// Control 10 of the program's dialogs: a disabled owner-drawn button that shows
// the "Heralder" icon at the largest of 16, 32, 64, 128 or 256 pixels that fits
// the control's smaller side, centred on a background colour.
#include "base/win_headers.h"

// Draws the icon button of item on background (a COLORREF).
void drawIconButton(const DRAWITEMSTRUCT& item, COLORREF background);
