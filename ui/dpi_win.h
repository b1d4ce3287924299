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

// Gives dialog the outer size its template has at 96 DPI, times its scale. A
// template scales through its font, whose metrics do not grow exactly with
// the DPI, and the system may keep the frame at its own size: windows whose
// geometry is given in pixels must still come out exactly that much larger.
// Nothing changes at 96 DPI or when the template cannot be read.
void sizeAsScaledTemplate(HWND dialog, const char* templateName);
