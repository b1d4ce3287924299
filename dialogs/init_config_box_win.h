#pragma once
// The first-run sign-up: shown once per user, it explains the agent, asks
// whether it should run at every logon, offers the newsletter page, and then
// warns about an older installation still on the machine.
#include <cstdint>

#include "base/win_headers.h"
#include "settings/settings.h"

// Shows "InitConfigBox" unless InitConfigDone is set (then 1 at once, nothing
// shown). Marks it done however it closes; Close stores and applies the
// startup choice and opens the newsletter page when asked. platformCode picks
// the old-installation warning's wording. 1 for Close, 0 for Escape or when
// the window could not be made (then nothing is marked). Writes no file.
int runInitConfig(HWND owner, Settings& settings, uint32_t platformCode);

// The warning about "QMK-heralder.exe" in the folder the old product's INI
// file names; nothing when there is none. True when the warning was shown.
bool checkOldInstallation(HWND owner, uint32_t platformCode);
