#pragma once
// Help and web pages in the user's browser: the manual pages installed beside
// the program, and the launcher that both they and the notification windows
// use to open an address.
#include <string>

#include "base/win_headers.h"
#include "settings/settings.h"

// The reference page "html\referenc.html" at anchor topic ("SETUP", "STARTUP",
// "NOTIFICATION", "BROWSE"), in the folder settings.ApplicationPath names and
// the browser they choose. Always 1.
int openManualTopic(HWND owner, const Settings& settings, const char* topic);
// The main manual "html\manual.html" at "#DOCUMENTATION". Always 1.
int openManual(HWND owner, const Settings& settings);
// Opens target (a local file or a web address) in a browser, trying the
// DocumentBrowserPath program, the known browsers of DocumentBrowserFlags, then
// the program the target's type is associated with; suffix ("#TOPIC" or
// nullptr) is added to local files only. Reports its own failure in a message
// box; always 1.
int launchBrowser(HWND owner, const Settings& settings, const std::string& target,
                  const char* suffix, bool maximised);
