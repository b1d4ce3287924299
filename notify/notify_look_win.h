#pragma once
// The drawing objects the notification windows share: made once by the
// program (from the AlertFont settings and AlertBackgroundColor) and lent to
// each window, which never deletes them.
#include "base/win_headers.h"
#include "settings/settings.h"

struct NotifyLook {
    HFONT alertFont = nullptr;    // the body text's; the dialog's own font when null
    HBRUSH background = nullptr;  // solid AlertBackgroundColor; the window's colour when null
};

// The answer of the notification windows to WM_CTLCOLORDLG, WM_CTLCOLORBTN and
// WM_CTLCOLORSTATIC: their background and text colours on dc, and the brush.
inline HBRUSH notifyControlColours(HDC dc, HBRUSH background, COLORREF backgroundColour,
                                   COLORREF textColour) {
    SetBkColor(dc, backgroundColour);
    SetTextColor(dc, textColour);
    UnrealizeObject(background);
    SetBrushOrgEx(dc, 0, 0, nullptr);
    return background;
}
