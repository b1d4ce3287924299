// The message box engine: one modal dialog from template 9898 (with a title
// bar) or 9899 (without), fitted to its MessageBoxSpec when it opens. The
// arithmetic lives in message_box_layout.cpp; this file measures, creates the
// optional controls and applies the layout. The open box's descriptor is kept in one
// process-wide pointer so that a second box cannot start while one is open.
#include <algorithm>
#include <vector>

#include "base/win_handles.h"
#include "resources/resource.h"
#include "ui/dialog_helpers.h"
#include "ui/message_box.h"
#include "ui/message_box_layout.h"

namespace {

MessageBoxSpec* openRequest = nullptr;

struct ExtraButton {
    uint32_t bit;
    int id;
    std::string MessageBoxSpec::*text;
};
// Stacked under button 1 in this order.
const ExtraButton kExtraButtons[] = {
    {kMbNoButton, IDC_NOBUTTON, &MessageBoxSpec::noText},
    {kMbCancelButton, IDC_CANCELBUTTON, &MessageBoxSpec::cancelText},
    {kMbHelpButton, IDC_HELPBUTTON, &MessageBoxSpec::helpText},
};
constexpr uint32_t kCheckBoxBits[3] = {kMbCheckBox1, kMbCheckBox2, kMbCheckBox3};
constexpr int kCheckBoxIds[3] = {IDC_CHECKBOX1, IDC_CHECKBOX2, IDC_CHECKBOX3};
constexpr uint32_t kNoteBits[3] = {kMbNote1, kMbNote2, kMbNote3};
constexpr int kNoteIds[3] = {IDC_NOTE1, IDC_NOTE2, IDC_NOTE3};

struct BoxState {
    MessageBoxSpec& request;
    UniqueIcon icon;
    bool soundPlaying = false;
};

HINSTANCE resourceModule() {
    return GetModuleHandleA(nullptr);
}

LayoutRect clientRectOf(HWND box, int id) {
    RECT r{};
    HWND control = GetDlgItem(box, id);
    GetWindowRect(control, &r);
    MapWindowPoints(HWND_DESKTOP, box, reinterpret_cast<POINT*>(&r), 2);
    return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

// Measured as a static control with SS_NOPREFIX draws it, so that what was
// measured is what is shown.
SIZE measureText(HWND control, HFONT font, const std::string& text, int width) {
    WindowDc dc(control);
    ScopedSelect select(dc.get(), font);
    RECT r{0, 0, width, 0};
    DrawTextA(dc.get(), text.c_str(), static_cast<int>(text.size()), &r,
              DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
    return {r.right - r.left, r.bottom - r.top};
}

void createChild(HWND box, const char* cls, const std::string& text, DWORD style, int id,
                 const LayoutRect& r, HFONT font) {
    HWND child = CreateWindowExA(
        0, cls, text.c_str(), WS_CHILD | WS_VISIBLE | style, r.left, r.top, r.width, r.height, box,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), resourceModule(), nullptr);
    if (child) SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

void moveChild(HWND box, int id, const LayoutRect& r) {
    SetWindowPos(GetDlgItem(box, id), nullptr, r.left, r.top, r.width, r.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void loadIcon(HWND box, BoxState& st) {
    if (!st.request.iconId) return;
    LayoutRect r = clientRectOf(box, IDC_ICONBUTTON);
    int size = iconSizeFor(std::min(r.width, r.height));
    st.icon.reset(
        static_cast<HICON>(LoadImageA(resourceModule(), MAKEINTRESOURCEA(st.request.iconId),
                                      IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

void startSound(BoxState& st) {
    const MessageBoxSpec& request = st.request;
    if (!(request.style & kMbSound) || !request.soundName) return;
    st.soundPlaying = PlaySoundA(request.soundName, request.soundModule,
                                 SND_RESOURCE | SND_ASYNC | SND_NODEFAULT) != FALSE;
}

void stopSound(BoxState& st) {
    if (!st.soundPlaying) return;
    PlaySoundA(nullptr, nullptr, 0);
    st.soundPlaying = false;
}

BOOL onInitDialog(HWND box, BoxState& st) {
    MessageBoxSpec& request = st.request;
    const bool titled = request.style & kMbTitle;
    if (titled) SetWindowTextA(box, request.title.c_str());
    if (request.style & kMbButton1Text)
        SetDlgItemTextA(box, IDC_BUTTON1, request.button1Text.c_str());

    HWND textControl = GetDlgItem(box, IDC_MESSAGETEXT);
    HFONT boxFont = GetWindowFont(box);
    HFONT textFont = (request.style & kMbTextFont) && request.textFont ? request.textFont : boxFont;
    SetWindowFont(textControl, textFont, FALSE);
    SetWindowTextA(textControl, request.text.c_str());

    MessageBoxMeasures m;
    m.button1 = clientRectOf(box, IDC_BUTTON1);
    m.text = clientRectOf(box, IDC_MESSAGETEXT);
    SIZE textSize = measureText(textControl, textFont, request.text, m.text.width);
    m.textWidth = textSize.cx;
    m.textHeight = textSize.cy;
    for (const ExtraButton& b : kExtraButtons)
        if (request.style & b.bit) ++m.extraButtons;
    for (uint32_t bit : kCheckBoxBits)
        if (request.style & bit) ++m.checkBoxes;
    for (int i = 0; i < 3; ++i)
        if (request.style & kNoteBits[i])
            m.noteHeights.push_back(
                measureText(textControl, boxFont, request.notes[i], m.text.width).cy);
    m.frameHeight = GetSystemMetrics(SM_CYDLGFRAME);
    m.captionHeight = titled ? GetSystemMetrics(SM_CYCAPTION) : 0;

    const MessageBoxLayout layout = layoutMessageBox(m);
    moveChild(box, IDC_MESSAGETEXT, layout.text);
    auto button = layout.buttons.begin();
    for (const ExtraButton& b : kExtraButtons)
        if (request.style & b.bit)
            createChild(box, "BUTTON", request.*b.text, BS_PUSHBUTTON | WS_TABSTOP, b.id, *button++,
                        boxFont);
    auto check = layout.checkBoxes.begin();
    for (int i = 0; i < 3; ++i) {
        if (!(request.style & kCheckBoxBits[i])) continue;
        createChild(box, "BUTTON", request.checkTexts[i], BS_AUTOCHECKBOX | WS_TABSTOP,
                    kCheckBoxIds[i], *check++, boxFont);
        CheckDlgButton(box, kCheckBoxIds[i], request.checkStates[i] ? BST_CHECKED : BST_UNCHECKED);
    }
    auto note = layout.notes.begin();
    for (int i = 0; i < 3; ++i)
        if (request.style & kNoteBits[i])
            createChild(box, "STATIC", request.notes[i], SS_LEFT | SS_NOPREFIX, kNoteIds[i],
                        *note++, boxFont);

    RECT window;
    GetWindowRect(box, &window);
    SetWindowPos(box, nullptr, 0, 0, window.right - window.left, layout.windowHeight,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);

    loadIcon(box, st);
    startSound(st);
    SetFocus(GetDlgItem(box, IDC_BUTTON1));
    centreWindow(box);
    return FALSE;  // the focus is set
}

void closeBox(HWND box, BoxState& st, int result) {
    st.request.result = result;
    stopSound(st);
    EndDialog(box, result);
}

void onCommand(HWND box, BoxState& st, int id, UINT code) {
    MessageBoxSpec& request = st.request;
    switch (id) {
        case IDC_BUTTON1:
            closeBox(box, st, kResultFirst);
            return;
        case IDC_CANCELBUTTON:
            closeBox(box, st, kResultCancel);
            return;
        case IDC_NOBUTTON:
            closeBox(box, st, kResultNo);
            return;
        case IDC_HELPBUTTON:
            if (request.helpCallback && !request.helpArgument.empty())
                request.helpCallback(box, request.helpArgument.c_str());
            return;
    }
    for (int i = 0; i < 3; ++i)
        if (id == kCheckBoxIds[i] && code == BN_CLICKED)
            request.checkStates[i] = IsDlgButtonChecked(box, id) == BST_CHECKED ? 1 : 0;
}

void onDrawItem(const DRAWITEMSTRUCT& item, const BoxState& st) {
    const RECT& r = item.rcItem;
    FillRect(item.hDC, &r, GetSysColorBrush(COLOR_BTNFACE));
    if (!st.icon) return;
    int size = iconSizeFor(std::min(r.right - r.left, r.bottom - r.top));
    DrawIconEx(item.hDC, r.left + (r.right - r.left - size) / 2,
               r.top + (r.bottom - r.top - size) / 2, st.icon.get(), size, size, 0, nullptr,
               DI_NORMAL);
}

INT_PTR CALLBACK messageBoxProc(HWND box, UINT msg, WPARAM wp, LPARAM lp) noexcept {
    try {
        if (msg == WM_INITDIALOG) {
            SetWindowLongPtrA(box, GWLP_USERDATA, lp);
            return onInitDialog(box, *reinterpret_cast<BoxState*>(lp));
        }
        auto* st = reinterpret_cast<BoxState*>(GetWindowLongPtrA(box, GWLP_USERDATA));
        if (!st) return FALSE;
        switch (msg) {
            case WM_COMMAND:
                onCommand(box, *st, LOWORD(wp), HIWORD(wp));
                return TRUE;
            case WM_DRAWITEM:
                if (wp != IDC_ICONBUTTON) return FALSE;
                onDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lp), *st);
                return TRUE;
            case WM_DESTROY:
                stopSound(*st);
                return FALSE;
        }
    } catch (...) {
        // Nothing may unwind through the system's dialog code; the box stays
        // as far as it got and the caller's result is untouched.
    }
    return FALSE;
}

}  // namespace

void showMessageBox(HWND owner, MessageBoxSpec& request) {
    if (openRequest) return;
    request.owner = owner;
    BoxState st{request, {}};
    openRequest = &request;
    const int templateId = request.style & kMbTitle ? IDD_MESSAGEBOX_TITLED : IDD_MESSAGEBOX_PLAIN;
    DialogBoxParamA(resourceModule(), MAKEINTRESOURCEA(templateId), owner, messageBoxProc,
                    reinterpret_cast<LPARAM>(&st));
    openRequest = nullptr;
    if (owner)
        RedrawWindow(owner, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}
