#pragma once
// The version notice: a newer version of one of the publisher's products is
// out. It names the product, the version installed here (or that none is),
// the current version and its release date, and offers Go to the download page.
#include "base/win_headers.h"
#include "feed/update_item.h"
#include "notify/notify_look_win.h"
#include "notify/version_box_text.h"
#include "settings/settings.h"

// Runs the "VersionBox" template modally for item: 1 for Next (or Enter), 0 for
// Cancel (or Escape); item.neverShowAgain as in the alert window. lookup tells
// which version of the product is installed (the real one reads the product's
// INI file); it is asked only for an item that names an APPLICATION.
int showVersionBox(HWND owner, UpdateItem& item, const NotifyLook& look, const Settings& settings,
                   InstalledLookup& lookup);
