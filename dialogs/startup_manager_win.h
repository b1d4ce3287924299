#pragma once
// The startup manager: the dialog that chooses between running Heralder by
// hand and at every logon (kStartupManual, kStartupAutomatic); the shortcut it
// then makes or deletes is shell/startup_link_win.h's.

#include "base/win_headers.h"
#include "settings/settings.h"

// Shows "StartupOptionsBox"; on Close stores StartupOptions and applies it.
// 1 for Close, 0 for Cancel. Writes no file: the main window saves later.
int openStartupManager(HWND owner, Settings& settings);
