#pragma once
// Shared helpers of the Windows tests: the settings made by the test script,
// and screenshots of windows for people to look at.
#include <string>

#include "base/win_headers.h"

// The value of an environment variable set by scripts/test_wine.sh, or "".
std::string testEnv(const char* name);

// Saves what the screen shows of window hwnd as NAME.bmp in the screenshot
// folder, if the test script named one (it turns them into PNG files).
void saveWindowScreenshot(HWND hwnd, const std::string& name);
