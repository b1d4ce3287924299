// The shared dialog layer (see dialog_win.h): the one dialog procedure, and the
// control helpers that every dialog and the test driver use.
#include "ui/dialog_win.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "ui/icon_button_win.h"
#include "ui/soft_button_win.h"

namespace {

bool isEditControl(HWND hwnd) {
    char cls[16] = {};
    GetClassNameA(hwnd, cls, sizeof cls);
    return lstrcmpiA(cls, "Edit") == 0;
}

// Sees every message of a modal dialog's loop before the dialog manager does.
LRESULT CALLBACK ctrlCFilter(int code, WPARAM wp, LPARAM lp) {
    const MSG* msg = reinterpret_cast<const MSG*>(lp);
    if (code == MSGF_DIALOGBOX && msg->message == WM_KEYDOWN && msg->wParam == 'C' &&
        (GetKeyState(VK_CONTROL) & 0x8000) && !isEditControl(msg->hwnd)) {
        SendMessageA(GetAncestor(msg->hwnd, GA_ROOT), WM_COPY, 0, 0);
        return 1;
    }
    return CallNextHookEx(nullptr, code, wp, lp);
}

}  // namespace

INT_PTR Dialog::runModal(HWND owner, const char* templateName) {
    HHOOK hook = SetWindowsHookExA(WH_MSGFILTER, ctrlCFilter, nullptr, GetCurrentThreadId());
    const INT_PTR result = DialogBoxParamA(resourceModule(), templateName, owner,
                                           &Dialog::procedure, reinterpret_cast<LPARAM>(this));
    if (hook) UnhookWindowsHookEx(hook);
    return result;
}

INT_PTR CALLBACK Dialog::procedure(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept {
    try {
        if (msg == WM_INITDIALOG) {
            SetWindowLongPtrA(hwnd, GWLP_USERDATA, lp);
            auto* self = reinterpret_cast<Dialog*>(lp);
            self->hwnd_ = hwnd;
            return self->onInitDialog();
        }
        auto* self = reinterpret_cast<Dialog*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
        if (!self) return FALSE;
        return self->dispatch(msg, wp, lp);
    } catch (...) {
        // Nothing may unwind through the system's dialog code; the dialog
        // stays as far as it got.
        return FALSE;
    }
}

INT_PTR Dialog::dispatch(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_COMMAND:
            onCommand(LOWORD(wp), HIWORD(wp), reinterpret_cast<HWND>(lp));
            return TRUE;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lp);
            return drawSoftButton(item) || onDrawItem(item) || drawOwnIconButton(item);
        }
        case WM_MEASUREITEM:
            return onMeasureItem(*reinterpret_cast<MEASUREITEMSTRUCT*>(lp));
        case WM_DESTROY:
            onDestroy();
            SetWindowLongPtrA(hwnd_, GWLP_USERDATA, 0);
            return FALSE;
    }
    INT_PTR result = 0;
    if (!onMessage(msg, wp, lp, result)) return FALSE;
    // Colour and query messages answer through the return value itself; the
    // rest through DWLP_MSGRESULT.
    return SetDlgMsgResult(hwnd_, msg, result);
}

bool Dialog::drawOwnIconButton(const DRAWITEMSTRUCT& item) const {
    if (!iconButton_ || item.CtlID != IDC_ICONBUTTON) return false;
    drawIconButton(item, iconFace_ == CLR_INVALID ? GetSysColor(COLOR_BTNFACE) : iconFace_);
    return true;
}

BOOL Dialog::focusAndCentre(int defaultButton) {
    SetFocus(item(defaultButton));
    centreWindow(hwnd_);
    return FALSE;
}

HINSTANCE resourceModule() {
    return GetModuleHandleA(nullptr);
}

RECT clientRectOf(HWND dialog, int id) {
    RECT r{};
    GetWindowRect(GetDlgItem(dialog, id), &r);
    MapWindowPoints(HWND_DESKTOP, dialog, reinterpret_cast<POINT*>(&r), 2);
    return r;
}

HWND createChild(HWND dialog, const char* cls, const char* text, DWORD style, int id, const RECT& r,
                 HFONT font) {
    HWND child = CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, r.left, r.top,
                                 r.right - r.left, r.bottom - r.top, dialog,
                                 reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                 resourceModule(), nullptr);
    if (child && font) SetWindowFont(child, font, FALSE);
    return child;
}

void moveChild(HWND dialog, int id, const RECT& r) {
    SetWindowPos(GetDlgItem(dialog, id), nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void centreWindow(HWND hwnd) {
    RECT r;
    if (!GetWindowRect(hwnd, &r)) return;
    const int width = r.right - r.left;
    const int height = r.bottom - r.top;
    const int left = std::max(0, (GetSystemMetrics(SM_CXSCREEN) - width) / 2);
    const int top = std::max(0, (GetSystemMetrics(SM_CYSCREEN) - height) / 2);
    SetWindowPos(hwnd, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool copyTextToClipboard(HWND owner, std::string_view text) {
    std::string crlf;
    crlf.reserve(text.size() + 16);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) crlf += '\r';
        crlf += text[i];
    }
    if (!OpenClipboard(owner)) return false;
    EmptyClipboard();
    bool placed = false;
    if (HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, crlf.size() + 1)) {
        if (void* p = GlobalLock(block)) {
            std::memcpy(p, crlf.c_str(), crlf.size() + 1);
            GlobalUnlock(block);
            placed = SetClipboardData(CF_TEXT, block) != nullptr;
        }
        if (!placed) GlobalFree(block);
    }
    CloseClipboard();
    return placed;
}

std::string controlText(HWND control) {
    const int length = GetWindowTextLengthA(control);
    if (length <= 0) return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(control, text.data(), length + 1)));
    return text;
}
