#pragma once
// Small helpers shared by the program's dialogs.
#include "base/win_headers.h"

// Moves a window to the middle of the primary screen, keeping its size. A
// window larger than the screen is kept at the top-left corner so that its
// title bar stays reachable.
void centreWindow(HWND hwnd);
