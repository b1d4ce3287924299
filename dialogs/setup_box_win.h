#pragma once
// The Setup dialog: the notification filters, the look of the notification
// windows and the behaviour switches, edited in the settings record.
#include "base/win_headers.h"
#include "settings/settings.h"

// Shows "SetupBox" owned by owner. OK stores every control's value in record
// (with the resets of commitSetup) and gives 1; Cancel gives 0 and stores
// nothing, except colours already picked, which are stored the moment the
// colour picker accepts them. Writes no file: the main window saves after.
int openSetupBox(HWND owner, Settings& record);
