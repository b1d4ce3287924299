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
// WM_CTLCOLORSTATIC: the AlertBackgroundColor and AlertTextColor on the dc in
// wp, and look's brush as result. False for other messages, and when look has
// no brush: the window's own colours then stay.
inline bool answerNotifyColours(UINT msg, WPARAM wp, const NotifyLook& look,
                                const Settings& settings, INT_PTR& result) {
    if (msg != WM_CTLCOLORBTN && msg != WM_CTLCOLORDLG && msg != WM_CTLCOLORSTATIC) return false;
    if (!look.background) return false;
    HDC dc = reinterpret_cast<HDC>(wp);
    SetBkColor(dc, settings.AlertBackgroundColor);
    SetTextColor(dc, settings.AlertTextColor);
    UnrealizeObject(look.background);
    SetBrushOrgEx(dc, 0, 0, nullptr);
    result = reinterpret_cast<INT_PTR>(look.background);
    return true;
}
