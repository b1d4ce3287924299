// Shared helpers of the Windows tests (see test_support.h).
#include "tests/win/test_support.h"

#include <wincrypt.h>

#include <cstdio>
#include <fstream>
#include <iterator>

std::string testEnv(const char* name) {
    char value[1024];
    DWORD n = GetEnvironmentVariableA(name, value, sizeof value);
    return n > 0 && n < sizeof value ? std::string(value, n) : std::string();
}

std::string windowText(HWND hwnd) {
    char text[4096] = {};
    GetWindowTextA(hwnd, text, sizeof text);
    return text;
}

std::string className(HWND hwnd) {
    char name[64] = "";
    GetClassNameA(hwnd, name, sizeof name);
    return name;
}

Canvas::Canvas(int width, int height, COLORREF colour) : width_(width), height_(height) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    dc_ = CreateCompatibleDC(nullptr);
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
    old_ = SelectObject(dc_, bitmap_);
    const RECT all = {0, 0, width, height};
    HBRUSH brush = CreateSolidBrush(colour);
    FillRect(dc_, &all, brush);
    DeleteObject(brush);
}

Canvas::~Canvas() {
    SelectObject(dc_, old_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
}

std::vector<uint32_t> Canvas::pixels() const {
    GdiFlush();
    std::vector<uint32_t> out;
    if (!bits_) return out;
    for (int i = 0; i < width_ * height_; ++i)
        out.push_back(static_cast<const uint32_t*>(bits_)[i] & 0xFFFFFF);
    return out;
}

void Canvas::save(const std::string& name) const {
    const std::string dir = testEnv("HERALDER_SHOT_DIR");
    if (dir.empty() || !bits_) return;
    const std::vector<uint32_t> all = pixels();
    const int stride = (width_ * 3 + 3) & ~3;  // rows padded to 4 bytes, bottom row first
    std::vector<unsigned char> rows(stride * height_);
    for (int y = 0; y < height_; ++y)
        for (int x = 0; x < width_; ++x) {
            const uint32_t p = all[(height_ - 1 - y) * width_ + x];
            unsigned char* out = &rows[y * stride + x * 3];
            out[0] = p & 0xFF, out[1] = (p >> 8) & 0xFF, out[2] = (p >> 16) & 0xFF;
        }
    BITMAPINFOHEADER info = {sizeof info, width_, height_, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    BITMAPFILEHEADER file = {0x4D42, 0, 0, 0, sizeof file + sizeof info};
    file.bfSize = file.bfOffBits + rows.size();
    if (std::FILE* f = std::fopen((dir + "\\" + name + ".bmp").c_str(), "wb")) {
        std::fwrite(&file, sizeof file, 1, f);
        std::fwrite(&info, sizeof info, 1, f);
        std::fwrite(rows.data(), 1, rows.size(), f);
        std::fclose(f);
    }
}

void saveWindowScreenshot(HWND hwnd, const std::string& name) {
    RECT r;
    if (testEnv("HERALDER_SHOT_DIR").empty() || !GetWindowRect(hwnd, &r)) return;
    // Let the window finish painting before the screen is copied.
    RedrawWindow(hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
    Canvas shot(r.right - r.left, r.bottom - r.top, 0);
    HDC screen = GetDC(nullptr);
    BitBlt(shot.dc(), 0, 0, r.right - r.left, r.bottom - r.top, screen, r.left, r.top, SRCCOPY);
    ReleaseDC(nullptr, screen);
    shot.save(name);
}

void deleteFilesIn(const std::string& folder) {
    WIN32_FIND_DATAA found;
    HANDLE search = FindFirstFileA((folder + "*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            DeleteFileA((folder + found.cFileName).c_str());
    while (FindNextFileA(search, &found));
    FindClose(search);
}

bool pathExists(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

ScratchKey::ScratchKey(HKEY root, std::string path) : root_(root), path_(std::move(path)) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    if (RegCreateKeyExA(root_, path_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                        &disposition) == ERROR_SUCCESS)
        RegCloseKey(key);
    created_ = disposition == REG_CREATED_NEW_KEY;
}

bool ScratchKey::set(const char* name, DWORD type, const void* data, DWORD size,
                     const std::string& subKey) {
    const std::string path = subKey.empty() ? path_ : path_ + "\\" + subKey;
    return RegSetKeyValueA(root_, path.c_str(), name, type, data, size) == ERROR_SUCCESS;
}

std::string clipboardText() {
    std::string text;
    if (!OpenClipboard(nullptr)) return text;
    if (HANDLE data = GetClipboardData(CF_TEXT))
        if (const char* p = static_cast<const char*>(GlobalLock(data))) {
            text = p;
            GlobalUnlock(data);
        }
    CloseClipboard();
    return text;
}

bool trustTestAuthority() {
    std::ifstream in(testEnv("HERALDER_HTTPS_CA"), std::ios::binary);
    const std::string der((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    HCERTSTORE store =
        CertOpenStore(CERT_STORE_PROV_SYSTEM_A, 0, 0, CERT_SYSTEM_STORE_LOCAL_MACHINE, "Root");
    PCCERT_CONTEXT authority = CertCreateCertificateContext(
        X509_ASN_ENCODING, reinterpret_cast<const BYTE*>(der.data()), DWORD(der.size()));
    const bool ok = store && authority &&
                    CertAddCertificateContextToStore(store, authority,
                                                     CERT_STORE_ADD_REPLACE_EXISTING, nullptr);
    if (authority) CertFreeCertificateContext(authority);
    if (store) CertCloseStore(store, 0);
    return ok;
}
