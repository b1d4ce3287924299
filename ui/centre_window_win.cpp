// Centring of dialogs on the primary screen (see dialog_helpers.h).
#include <algorithm>

#include "ui/dialog_helpers.h"

void centreWindow(HWND hwnd) {
    RECT r;
    if (!GetWindowRect(hwnd, &r)) return;
    const int width = r.right - r.left;
    const int height = r.bottom - r.top;
    const int left = std::max(0, (GetSystemMetrics(SM_CXSCREEN) - width) / 2);
    const int top = std::max(0, (GetSystemMetrics(SM_CYSCREEN) - height) / 2);
    SetWindowPos(hwnd, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
