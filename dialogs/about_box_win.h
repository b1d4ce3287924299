#pragma once
// The About box, and the small tool for the publisher's staff that the same
// menu command carries: with Shift held, a fresh GUID on the clipboard.
#include <string>

#include "base/win_headers.h"
#include "settings/settings.h"

// Shows template IDD_ABOUT modally; only OK closes it. Repaints the owner
// afterwards. The dialog's result: 1, or -1 when it could not be made.
INT_PTR openAboutBox(HWND owner, const Settings& settings);

// A new GUID's 36 characters, without braces, upper-case; "" when the system
// would not make one.
std::string newGuidText();
// Puts a new GUID on the clipboard as plain text, the clipboard opened for
// owner, then plays soundName as confirmation whether or not that worked.
// True when the text was placed.
bool copyNewGuid(HWND owner, const std::string& soundName);
