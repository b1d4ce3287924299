// The message box engine: one modal dialog from template 9898 (with a title
// bar) or 9899 (without), fitted to its MessageBoxSpec when it opens. The
// arithmetic lives in message_box_layout.cpp; this file measures, creates the
// optional controls and applies the layout. The open box's descriptor is kept in one
// process-wide pointer so that a second box cannot start while one is open.
#include <algorithm>
#include <vector>

#include "base/win_handles.h"
#include "resources/resource.h"
#include "ui/dialog_win.h"
#include "ui/dpi_win.h"
#include "ui/icon_button_win.h"
#include "ui/message_box_win.h"
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

RECT toRect(const LayoutRect& r) {
    return {r.left, r.top, r.left + r.width, r.top + r.height};
}

LayoutRect layoutRectOf(HWND box, int id) {
    const RECT r = clientRectOf(box, id);
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

class MessageBoxDialog : public Dialog {
  public:
    explicit MessageBoxDialog(MessageBoxSpec& request) : request_(request) {}

  private:
    BOOL onInitDialog() override;
    void onCommand(int id, UINT code, HWND control) override;
    bool onDrawItem(const DRAWITEMSTRUCT& item) override;
    bool onMessage(UINT msg, WPARAM wp, LPARAM lp, INT_PTR& result) override;
    void onDestroy() override { stopSound(); }

    void layOut();
    void startSound();
    void stopSound();
    void close(int result);

    MessageBoxSpec& request_;
    bool soundPlaying_ = false;
};

void MessageBoxDialog::startSound() {
    if (!(request_.style & kMbSound) || !request_.soundName) return;
    soundPlaying_ = PlaySoundA(request_.soundName, request_.soundModule,
                               SND_RESOURCE | SND_ASYNC | SND_NODEFAULT) != FALSE;
}

void MessageBoxDialog::stopSound() {
    if (!soundPlaying_) return;
    PlaySoundA(nullptr, nullptr, 0);
    soundPlaying_ = false;
}

void MessageBoxDialog::layOut() {
    HWND box = hwnd();
    const bool titled = request_.style & kMbTitle;
    HWND textControl = item(IDC_MESSAGETEXT);
    HFONT boxFont = GetWindowFont(box);
    HFONT textFont =
        (request_.style & kMbTextFont) && request_.textFont ? request_.textFont : boxFont;
    SetWindowFont(textControl, textFont, FALSE);
    SetWindowTextA(textControl, request_.text.c_str());

    MessageBoxMeasures m;
    m.button1 = layoutRectOf(box, IDC_BUTTON1);
    m.text = layoutRectOf(box, IDC_MESSAGETEXT);
    const SIZE textSize = measureText(textControl, textFont, request_.text, m.text.width);
    m.textWidth = textSize.cx;
    m.textHeight = textSize.cy;
    for (const ExtraButton& b : kExtraButtons)
        if (request_.style & b.bit) ++m.extraButtons;
    for (uint32_t bit : kCheckBoxBits)
        if (request_.style & bit) ++m.checkBoxes;
    for (int i = 0; i < 3; ++i)
        if (request_.style & kNoteBits[i])
            m.noteHeights.push_back(
                measureText(textControl, boxFont, request_.notes[i], m.text.width).cy);
    m.frameHeight = GetSystemMetrics(SM_CYDLGFRAME);
    m.captionHeight = titled ? GetSystemMetrics(SM_CYCAPTION) : 0;
    m.checkBoxHeight = scaledFor(box, kCheckBoxHeight);

    const MessageBoxLayout layout = layoutMessageBox(m);
    moveChild(box, IDC_MESSAGETEXT, toRect(layout.text));
    auto button = layout.buttons.begin();
    for (const ExtraButton& b : kExtraButtons)
        if (request_.style & b.bit)
            createChild(box, "BUTTON", (request_.*b.text).c_str(), BS_PUSHBUTTON | WS_TABSTOP, b.id,
                        toRect(*button++), boxFont);
    auto check = layout.checkBoxes.begin();
    for (int i = 0; i < 3; ++i) {
        if (!(request_.style & kCheckBoxBits[i])) continue;
        createChild(box, "BUTTON", request_.checkTexts[i].c_str(), BS_AUTOCHECKBOX | WS_TABSTOP,
                    kCheckBoxIds[i], toRect(*check++), boxFont);
        CheckDlgButton(box, kCheckBoxIds[i], request_.checkStates[i] ? BST_CHECKED : BST_UNCHECKED);
    }
    auto note = layout.notes.begin();
    for (int i = 0; i < 3; ++i)
        if (request_.style & kNoteBits[i])
            createChild(box, "STATIC", request_.notes[i].c_str(), SS_LEFT | SS_NOPREFIX,
                        kNoteIds[i], toRect(*note++), boxFont);

    RECT window;
    GetWindowRect(box, &window);
    SetWindowPos(box, nullptr, 0, 0, window.right - window.left, layout.windowHeight,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL MessageBoxDialog::onInitDialog() {
    if (request_.style & kMbTitle) SetWindowTextA(hwnd(), request_.title.c_str());
    if (request_.style & kMbButton1Text)
        SetDlgItemTextA(hwnd(), IDC_BUTTON1, request_.button1Text.c_str());
    layOut();
    startSound();
    return focusAndCentre();
}

void MessageBoxDialog::close(int result) {
    request_.result = result;
    stopSound();
    end(result);
}

void MessageBoxDialog::onCommand(int id, UINT code, HWND) {
    switch (id) {
        case IDC_BUTTON1:
            close(kResultFirst);
            return;
        case IDC_CANCELBUTTON:
            close(kResultCancel);
            return;
        case IDC_NOBUTTON:
            close(kResultNo);
            return;
        case IDC_HELPBUTTON:
            if (request_.helpCallback && !request_.helpArgument.empty())
                request_.helpCallback(hwnd(), request_.helpArgument.c_str());
            return;
    }
    for (int i = 0; i < 3; ++i)
        if (id == kCheckBoxIds[i] && code == BN_CLICKED)
            request_.checkStates[i] = IsDlgButtonChecked(hwnd(), id) == BST_CHECKED ? 1 : 0;
}

bool MessageBoxDialog::onDrawItem(const DRAWITEMSTRUCT& item) {
    if (item.CtlID != IDC_ICONBUTTON) return false;
    drawIconButton(item, GetSysColor(COLOR_BTNFACE),
                   request_.iconId ? MAKEINTRESOURCEA(request_.iconId) : nullptr);
    return true;
}

// Ctrl+C copies the box's text, as the system's own message box does (the
// dialog layer turns the key into WM_COPY).
bool MessageBoxDialog::onMessage(UINT msg, WPARAM, LPARAM, INT_PTR& result) {
    if (msg != WM_COPY) return false;
    copyTextToClipboard(hwnd(), request_.text);
    result = 0;
    return true;
}

}  // namespace

void showMessageBox(HWND owner, MessageBoxSpec& request) {
    if (openRequest) return;
    request.owner = owner;
    openRequest = &request;
    MessageBoxDialog box(request);
    const int templateId = request.style & kMbTitle ? IDD_MESSAGEBOX_TITLED : IDD_MESSAGEBOX_PLAIN;
    box.runModal(owner, MAKEINTRESOURCEA(templateId));
    openRequest = nullptr;
    if (owner)
        RedrawWindow(owner, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}
