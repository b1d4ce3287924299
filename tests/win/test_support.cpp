// Shared helpers of the Windows tests (see test_support.h).
#include "tests/win/test_support.h"

#include <cstdio>

std::string testEnv(const char* name) {
    char value[1024];
    DWORD n = GetEnvironmentVariableA(name, value, sizeof value);
    return n > 0 && n < sizeof value ? std::string(value, n) : std::string();
}

void saveWindowScreenshot(HWND hwnd, const std::string& name) {
    std::string dir = testEnv("HERALDER_SHOT_DIR");
    RECT r;
    if (dir.empty() || !GetWindowRect(hwnd, &r)) return;
    // Let the window finish painting before the screen is copied.
    RedrawWindow(hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
    const int w = r.right - r.left, h = r.bottom - r.top;

    BITMAPINFOHEADER info = {sizeof info, w, h, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    HDC screen = GetDC(nullptr);
    HDC mem = CreateCompatibleDC(screen);
    HBITMAP dib = CreateDIBSection(screen, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS,
                                   &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(mem, dib);
    BitBlt(mem, 0, 0, w, h, screen, r.left, r.top, SRCCOPY);
    SelectObject(mem, old);
    GdiFlush();

    const DWORD imageSize = ((w * 3 + 3) & ~3u) * h;  // rows padded to 4 bytes
    BITMAPFILEHEADER file = {0x4D42, 0, 0, 0, sizeof file + sizeof info};
    file.bfSize = file.bfOffBits + imageSize;
    if (std::FILE* f = bits ? std::fopen((dir + "\\" + name + ".bmp").c_str(), "wb") : nullptr) {
        std::fwrite(&file, sizeof file, 1, f);
        std::fwrite(&info, sizeof info, 1, f);
        std::fwrite(bits, 1, imageSize, f);
        std::fclose(f);
    }
    DeleteObject(dib);
    DeleteDC(mem);
    ReleaseDC(nullptr, screen);
}
