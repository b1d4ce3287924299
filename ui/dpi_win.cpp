// Looked up at run time: GetDpiForWindow is missing from user32 before
// Windows 10 1607, and a static import would stop the program from starting.
#include "ui/dpi_win.h"

#include <cstdint>
#include <cstring>
#include <string>

#include "base/win_handles.h"
#include "ui/dialog_win.h"

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

using AdjustForDpiFn = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);

// What an extended dialog template says of the window: its size in dialog
// units, styles and font.
struct TemplateFacts {
    int cx = 0, cy = 0;
    DWORD style = 0, exStyle = 0;
    int pointSize = 0;
    std::wstring face;
};

bool readTemplate(const char* name, TemplateFacts& out) {
    HINSTANCE module = resourceModule();
    HRSRC found = FindResourceA(module, name, MAKEINTRESOURCEA(5));  // RT_DIALOG
    HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    const auto* p = loaded ? static_cast<const uint8_t*>(LockResource(loaded)) : nullptr;
    const DWORD size = found ? SizeofResource(module, found) : 0;
    if (!p || size < 26) return false;
    const auto word = [&](std::size_t at) {
        uint16_t w = 0;
        if (at + 2 <= size) std::memcpy(&w, p + at, 2);
        return w;
    };
    if (word(0) != 1 || word(2) != 0xFFFF) return false;  // not an extended template
    std::memcpy(&out.exStyle, p + 8, 4);
    std::memcpy(&out.style, p + 12, 4);
    out.cx = static_cast<int16_t>(word(22));
    out.cy = static_cast<int16_t>(word(24));
    std::size_t at = 26;
    // Menu and class: none, an ordinal, or a string; then the caption.
    for (int field = 0; field < 3; ++field) {
        if (field < 2 && word(at) == 0xFFFF) {
            at += 4;
            continue;
        }
        while (at + 2 <= size && word(at) != 0) at += 2;
        at += 2;
    }
    if (!(out.style & DS_SETFONT) || at + 6 > size) return false;
    out.pointSize = word(at);
    at += 6;  // point size, weight, italic, character set
    for (; at + 2 <= size && word(at) != 0; at += 2) out.face += static_cast<wchar_t>(word(at));
    return !out.face.empty();
}

}  // namespace

void sizeAsScaledTemplate(HWND dialog, const char* templateName) {
    const unsigned dpi = windowDpi(dialog);
    TemplateFacts t;
    if (dpi == kBaseDpi || !readTemplate(templateName, t)) return;
    // The dialog manager's own base units, measured in the template's font
    // at 96 DPI: the line height and the mean width of the letters.
    UniqueFont font(CreateFontW(-MulDiv(t.pointSize, kBaseDpi, 72), 0, 0, 0, FW_NORMAL, 0, 0, 0,
                                DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                DEFAULT_QUALITY, DEFAULT_PITCH, t.face.c_str()));
    HDC dc = GetDC(nullptr);
    HGDIOBJ old = SelectObject(dc, font.get());
    TEXTMETRICW metrics{};
    SIZE letters{};
    const wchar_t alphabet[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const bool measured =
        GetTextMetricsW(dc, &metrics) && GetTextExtentPoint32W(dc, alphabet, 52, &letters);
    SelectObject(dc, old);
    ReleaseDC(nullptr, dc);
    if (!measured) return;
    const int unitX = (letters.cx / 26 + 1) / 2, unitY = metrics.tmHeight;
    RECT r{0, 0, MulDiv(t.cx, unitX, 4), MulDiv(t.cy, unitY, 8)};
    static const auto adjust = reinterpret_cast<AdjustForDpiFn>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("user32.dll"), "AdjustWindowRectExForDpi")));
    const DWORD style = t.style & ~WS_VISIBLE;
    if (!(adjust ? adjust(&r, style, FALSE, t.exStyle, kBaseDpi)
                 : AdjustWindowRectEx(&r, style, FALSE, t.exStyle)))
        return;
    SetWindowPos(dialog, nullptr, 0, 0, scaleForDpi(r.right - r.left, dpi),
                 scaleForDpi(r.bottom - r.top, dpi), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

unsigned windowDpi(HWND hwnd) {
    if (GetDpiForWindowFn fn = dpiForWindowFunction(); fn && hwnd) {
        if (const UINT dpi = fn(hwnd)) return dpi;
    }
    HDC dc = GetDC(hwnd);
    const int dpi = dc ? GetDeviceCaps(dc, LOGPIXELSY) : 0;
    if (dc) ReleaseDC(hwnd, dc);
    return dpi > 0 ? static_cast<unsigned>(dpi) : kBaseDpi;
}
