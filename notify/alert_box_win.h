#pragma once
// The alert window: one notification item (alert, tip, notice or off-topic)
// with its title as caption, a header line naming product, version and release
// date, its text in the user's alert font, its picture under the buttons, and
// Next, Cancel, Go and Help.
#include "base/win_headers.h"
#include "feed/update_item.h"
#include "notify/notify_look_win.h"
#include "settings/settings.h"

// Posted by the window to itself once laid out: fit the height to the text.
inline constexpr UINT WM_ALERT_FIT = WM_USER + 100;

// Runs the "AlertBox" template modally for item: 1 for Next (or Enter), 0 for
// Cancel (or Escape). item.neverShowAgain is set when the check box was ticked
// as Next, Cancel or Go was pressed. A missing picture is fetched into the
// images folder when settings.DownloadGraphics is on.
int showAlertBox(HWND owner, UpdateItem& item, const NotifyLook& look, const Settings& settings);
