// Soft buttons in a test dialog. The default button following the focus is
// checked in every real window (scale_test).
#include <set>

#include "base/win_handles.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/test_dialogs.h"
#include "tests/win/test_support.h"
#include "ui/soft_button_win.h"

namespace {

void typeKey(HWND dialog, UINT vk) {
    HWND target = GetFocus();
    PostMessageA(target, WM_KEYDOWN, vk, 1);
    PostMessageA(target, WM_KEYUP, vk, 0xC0000001);
    pumpDialog(dialog);
}

std::vector<uint32_t> pixelsOf(HWND control) {
    RECT r;
    GetClientRect(control, &r);
    Canvas shown(r.right, r.bottom, 0);
    WindowDc screen(control);
    BitBlt(shown.dc(), 0, 0, r.right, r.bottom, screen.get(), 0, 0, SRCCOPY);
    return shown.pixels();
}

bool waitFor(HWND dialog, const std::function<bool()>& done) {
    for (int i = 0; i < 100; ++i, Sleep(10)) {
        pumpDialog(dialog);
        if (done()) return true;
    }
    return false;
}

// Enabling and disabling shows at once, and the mouse lights a button until
// it leaves.
void expectChangesShow(HWND dialog) {
    HWND later = GetDlgItem(dialog, IDC_TEST_DISABLED);
    UpdateWindow(dialog);
    const std::vector<uint32_t> disabled = pixelsOf(later);
    EnableWindow(later, TRUE);
    UpdateWindow(later);
    EXPECT_NE(pixelsOf(later), disabled);
    EnableWindow(later, FALSE);
    UpdateWindow(later);
    EXPECT_EQ(pixelsOf(later), disabled);

    HWND cancel = GetDlgItem(dialog, IDC_CANCELBUTTON);
    const std::vector<uint32_t> normal = pixelsOf(cancel);
    RECT r;
    GetWindowRect(cancel, &r);
    SetCursorPos((r.left + r.right) / 2, (r.top + r.bottom) / 2);
    PostMessageA(cancel, WM_MOUSEMOVE, 0, MAKELPARAM(10, 10));
    EXPECT_TRUE(waitFor(dialog, [&] { return pixelsOf(cancel) != normal; }));
    SetCursorPos(0, 0);
    EXPECT_TRUE(waitFor(dialog, [&] { return pixelsOf(cancel) == normal; }));
}

TEST(SoftButtons, EveryStyleKeepsPushButtonsForMouseAndKeyboard) {
    const struct {
        const char* what;
        int focus;  // 0: where the dialog puts it (the numeric field)
        std::vector<UINT> keys;
        UINT sysChar;  // Alt + this letter, after the keys
        INT_PTR expected;
    } cases[] = {
        {"Tab from Help to the field, Enter", IDC_HELPBUTTON, {VK_TAB, VK_RETURN}, 0, IDOK},
        {"Escape", IDC_HELPBUTTON, {VK_ESCAPE}, 0, IDCANCEL},
        {"Tab twice from OK, Enter", IDC_BUTTON1, {VK_TAB, VK_TAB, VK_RETURN}, 0, IDHELP},
        {"Space on Cancel", IDC_CANCELBUTTON, {VK_SPACE}, 0, IDCANCEL},
        {"Alt+H", 0, {}, 'h', IDHELP},
    };
    SetCursorPos(0, 0);  // away from the dialog, so that no button is drawn hot
    for (uint32_t style = kSoftButtonsNone; style <= kSoftButtonsWedge; ++style)
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << "style " << style << ": " << c.what);
            TestPiecesBox box([style](HWND dialog) {
                makeSoftButtons(dialog, style,
                                {IDC_BUTTON1, IDC_CANCELBUTTON, IDC_HELPBUTTON, IDC_TEST_DISABLED});
            });
            DialogDriver driver([&](HWND dialog) {
                EXPECT_EQ(isSoftButton(GetDlgItem(dialog, IDC_TEST_DISABLED)), style != 0);
                // A click on a soft button is checked with every window (Help).
                if (style != 0 && c.sysChar) expectChangesShow(dialog);
                if (c.focus)
                    SendMessageA(dialog, WM_NEXTDLGCTL,
                                 reinterpret_cast<WPARAM>(GetDlgItem(dialog, c.focus)), TRUE);
                for (UINT vk : c.keys) typeKey(dialog, vk);
                if (c.sysChar) {
                    PostMessageA(GetFocus(), WM_SYSCHAR, c.sysChar, 1 << 29);
                    pumpDialog(dialog);
                }
                if (IsWindowVisible(dialog)) EndDialog(dialog, -2);
            });
            EXPECT_EQ(box.run(), c.expected);
        }
}

// Each state drawn off screen looks different from every other, at the usual
// 75 x 23 at 96 dpi and at 150 %. With high contrast on the user chose every
// colour: only system colours may appear (text drawn without smoothing so that
// edges add none; focus dots invert what is under them, so none).
TEST(SoftButtons, EveryStateLooksDifferentAndHighContrastUsesSystemColours) {
    constexpr struct {
        bool isDefault, focused, pressed, hot, disabled;
    } kStates[] = {{0, 0, 0, 0, 0}, {1, 0, 0, 0, 0}, {1, 1, 0, 0, 0},
                   {1, 1, 1, 0, 0}, {0, 0, 0, 1, 0}, {0, 0, 0, 0, 1}};
    const struct {
        int width, height, fontHeight;
        DWORD quality;
        bool highContrast;
    } scales[] = {{75, 23, 11, DEFAULT_QUALITY, false},
                  {112, 35, 16, DEFAULT_QUALITY, false},
                  {75, 23, 11, NONANTIALIASED_QUALITY, true}};
    std::set<uint32_t> allowed;
    for (int c :
         {COLOR_BTNFACE, COLOR_BTNTEXT, COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT, COLOR_GRAYTEXT}) {
        const COLORREF ref = GetSysColor(c);
        allowed.insert((GetRValue(ref) << 16) | (GetGValue(ref) << 8) | GetBValue(ref));
    }
    for (uint32_t style = kSoftButtonsSoft; style <= kSoftButtonsWedge; ++style)
        for (const auto& scale : scales) {
            const bool hc = scale.highContrast;
            SCOPED_TRACE(testing::Message()
                         << "style " << style << " " << scale.width << " " << hc);
            UniqueFont font(CreateFontA(-scale.fontHeight, 0, 0, 0, FW_NORMAL, 0, 0, 0,
                                        ANSI_CHARSET, 0, 0, scale.quality, 0, "MS Shell Dlg"));
            std::set<std::vector<uint32_t>> looks;
            for (int i = 0; i < 6; ++i) {
                const auto& s = kStates[i];
                const SoftButtonFace face{
                    style,     "&Dismiss", font.get(), nullptr, s.isDefault, s.focused && !hc,
                    s.pressed, s.hot,      s.disabled, false,   false,       hc};
                Canvas canvas(scale.width, scale.height, GetSysColor(COLOR_BTNFACE));
                paintSoftButton(canvas.dc(), {0, 0, scale.width, scale.height}, face);
                looks.insert(canvas.pixels());
                for (uint32_t p : canvas.pixels())
                    ASSERT_TRUE(!hc || allowed.count(p)) << i << " " << std::hex << p;
            }
            EXPECT_EQ(looks.size(), hc ? looks.size() : 6u);
        }
}

}  // namespace
