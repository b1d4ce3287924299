// Looked up at run time: GetDpiForWindow is missing from user32 before
// Windows 10 1607, and a static import would stop the program from starting.
#include "ui/dpi_win.h"

namespace {

using GetDpiForWindowFn = UINT(WINAPI*)(HWND);

GetDpiForWindowFn dpiForWindowFunction() {
    static const GetDpiForWindowFn fn = [] {
        HMODULE user32 = GetModuleHandleA("user32.dll");
        return user32 ? reinterpret_cast<GetDpiForWindowFn>(
                            reinterpret_cast<void*>(GetProcAddress(user32, "GetDpiForWindow")))
                      : nullptr;
    }();
    return fn;
}

}  // namespace

unsigned windowDpi(HWND hwnd) {
    if (GetDpiForWindowFn fn = dpiForWindowFunction(); fn && hwnd) {
        if (const UINT dpi = fn(hwnd)) return dpi;
    }
    HDC dc = GetDC(hwnd);
    const int dpi = dc ? GetDeviceCaps(dc, LOGPIXELSY) : 0;
    if (dc) ReleaseDC(hwnd, dc);
    return dpi > 0 ? static_cast<unsigned>(dpi) : kBaseDpi;
}
