// Shared helpers of the Windows tests (see test_support.h).
#include "tests/win/test_support.h"

#include <cstdio>
#include <vector>

std::string testEnv(const char* name) {
    char value[1024];
    DWORD n = GetEnvironmentVariableA(name, value, sizeof value);
    return n > 0 && n < sizeof value ? std::string(value, n) : std::string();
}

static void removeTree(const std::string& folder) {
    WIN32_FIND_DATAA fd;
    HANDLE find = FindFirstFileA((folder + "*").c_str(), &fd);
    if (find == INVALID_HANDLE_VALUE) return;
    do {
        std::string name = fd.cFileName;
        if (name == "." || name == "..") continue;
        std::string path = folder + name;
        if (fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
            removeTree(path + "\\");
            RemoveDirectoryA(path.c_str());
        } else {
            SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            DeleteFileA(path.c_str());
        }
    } while (FindNextFileA(find, &fd));
    FindClose(find);
}

std::string makeScratchFolder(const char* name) {
    char temp[MAX_PATH];
    GetTempPathA(MAX_PATH, temp);
    std::string folder = std::string(temp) + "heralder-test-" + name + "\\";
    removeTree(folder);
    CreateDirectoryA(folder.c_str(), nullptr);
    return folder;
}

bool saveWindowScreenshot(HWND hwnd, const std::string& name) {
    std::string dir = testEnv("HERALDER_SHOT_DIR");
    RECT r;
    if (dir.empty() || !GetWindowRect(hwnd, &r)) return false;
    RedrawWindow(hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
    int w = r.right - r.left, h = r.bottom - r.top;
    if (w <= 0 || h <= 0) return false;

    HDC screen = GetDC(nullptr);
    HDC mem = CreateCompatibleDC(screen);
    BITMAPINFO bi = {};
    bi.bmiHeader.biSize = sizeof bi.bmiHeader;
    bi.bmiHeader.biWidth = w;
    bi.bmiHeader.biHeight = h;
    bi.bmiHeader.biPlanes = 1;
    bi.bmiHeader.biBitCount = 24;
    void* bits = nullptr;
    HBITMAP dib = CreateDIBSection(screen, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(mem, dib);
    BitBlt(mem, 0, 0, w, h, screen, r.left, r.top, SRCCOPY);
    SelectObject(mem, old);
    GdiFlush();

    DWORD stride = ((w * 3 + 3) & ~3u);
    DWORD imageSize = stride * h;
    BITMAPFILEHEADER fh = {};
    fh.bfType = 0x4D42;
    fh.bfOffBits = sizeof fh + sizeof bi.bmiHeader;
    fh.bfSize = fh.bfOffBits + imageSize;
    bool ok = false;
    if (std::FILE* f = std::fopen((dir + "\\" + name + ".bmp").c_str(), "wb")) {
        ok = std::fwrite(&fh, sizeof fh, 1, f) == 1 &&
             std::fwrite(&bi.bmiHeader, sizeof bi.bmiHeader, 1, f) == 1 &&
             std::fwrite(bits, 1, imageSize, f) == imageSize;
        std::fclose(f);
    }
    DeleteObject(dib);
    DeleteDC(mem);
    ReleaseDC(nullptr, screen);
    return ok;
}
