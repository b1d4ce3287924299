#pragma once
// Control 10 of the program's dialogs: a disabled owner-drawn button that shows
// the "Heralder" icon at the largest of 16, 32, 64, 128 or 256 pixels that fits
// the control's smaller side, centred on a background colour. The button keeps
// its window text, so screen readers still have a name for the picture.
#include "base/win_headers.h"
#include "resources/resource.h"

// Fills item's rectangle with background (a COLORREF) and draws the icon
// resource icon (a name or MAKEINTRESOURCE id; the program icon unless told)
// centred on it. The icon is loaded at the chosen size for each drawing and
// destroyed straight after: the button repaints rarely and nothing is kept.
// False when there is no such icon; the background is filled all the same.
bool drawIconButton(const DRAWITEMSTRUCT& item, COLORREF background,
                    const char* icon = MAKEINTRESOURCEA(IDI_HERALDER));
