#pragma once
// The DPI a window is drawn at (see ui/dpi.h for the scaling rule).
#include "base/win_headers.h"
#include "ui/dpi.h"

// GetDpiForWindow where the system has it (Windows 10 1607 and later), else
// the DPI of the window's device context; 96 without a window.
unsigned windowDpi(HWND hwnd);

// A 96-DPI pixel measure at hwnd's DPI.
inline int scaledFor(HWND hwnd, int pixelsAt96) {
    return scaleForDpi(pixelsAt96, windowDpi(hwnd));
}
