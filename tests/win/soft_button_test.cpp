// Soft buttons in a real dialog: in every style the buttons keep behaving as
// push buttons for the mouse, Enter, Escape, Tab, Space and mnemonics, the
// default moves with the focus, enabling and disabling shows at once, each
// state looks different, and high contrast uses the system's colours only.
// Pictures of every style and state are saved for people to judge.
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "base/win_handles.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/test_dialogs.h"
#include "tests/win/test_support.h"
#include "ui/soft_button_win.h"
#include "ui/spin_edit_win.h"

namespace {

constexpr int kButtons[] = {IDC_BUTTON1, IDC_CANCELBUTTON, IDC_HELPBUTTON, IDC_TEST_DISABLED};
const char* const kStyleNames[] = {"None", "Soft", "Flex", "Wedge"};

// Opens the test dialog with its buttons in style, runs script in it; the
// dialog's result.
INT_PTR runWithStyle(uint32_t style, const DialogDriver::Script& script) {
    TestPiecesBox box([style](HWND dialog) {
        makeSoftButtons(dialog, style,
                        {IDC_BUTTON1, IDC_CANCELBUTTON, IDC_HELPBUTTON, IDC_TEST_DISABLED});
    });
    DialogDriver driver(script);
    return box.run();
}

// A key pressed and released on the focused control.
void typeKey(HWND dialog, UINT vk) {
    HWND target = GetFocus();
    PostMessageA(target, WM_KEYDOWN, vk, 1);
    PostMessageA(target, WM_KEYUP, vk, 0xC0000001);
    pumpDialog(dialog);
}

void focusControl(HWND dialog, int id) {
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, id)), TRUE);
}

LRESULT dialogCode(HWND dialog, int id) {
    return SendDlgItemMessageA(dialog, id, WM_GETDLGCODE, 0, 0);
}

LONG_PTR buttonType(HWND dialog, int id) {
    return GetWindowLongPtrA(GetDlgItem(dialog, id), GWL_STYLE) & BS_TYPEMASK;
}

// The pixels a control shows.
std::vector<uint32_t> pixelsOf(HWND control) {
    RECT r;
    GetClientRect(control, &r);
    Canvas shown(r.right, r.bottom, 0);
    WindowDc screen(control);
    BitBlt(shown.dc(), 0, 0, r.right, r.bottom, screen.get(), 0, 0, SRCCOPY);
    return shown.pixels();
}

// The mouse is kept away from the dialog so that no button is drawn hot.
class SoftButtons : public testing::Test {
  protected:
    void SetUp() override { SetCursorPos(0, 0); }
};

TEST_F(SoftButtons, EveryStyleKeepsPushButtonsForMouseAndKeyboard) {
    const struct {
        const char* what;
        int focus;  // 0: where the dialog puts it (the numeric field)
        std::vector<UINT> keys;
        UINT sysChar;  // Alt + this letter, after the keys
        int click;     // BM_CLICK on this button, after the rest
        INT_PTR expected;
    } cases[] = {
        {"click Cancel", 0, {}, 0, IDC_CANCELBUTTON, IDCANCEL},
        {"Enter in a field", 0, {VK_RETURN}, 0, 0, IDOK},
        {"Escape", IDC_HELPBUTTON, {VK_ESCAPE}, 0, 0, IDCANCEL},
        {"Tab twice from OK, Enter", IDC_BUTTON1, {VK_TAB, VK_TAB, VK_RETURN}, 0, 0, IDHELP},
        {"Space on Cancel", IDC_CANCELBUTTON, {VK_SPACE}, 0, 0, IDCANCEL},
        {"Alt+H", 0, {}, 'h', 0, IDHELP},
    };
    for (uint32_t style = kSoftButtonsNone; style <= kSoftButtonsWedge; ++style)
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << kStyleNames[style] << ": " << c.what);
            const INT_PTR result = runWithStyle(style, [&](HWND dialog) {
                for (int id : kButtons)
                    EXPECT_EQ(isSoftButton(GetDlgItem(dialog, id)), style != kSoftButtonsNone);
                EXPECT_EQ(itemText(dialog, IDC_HELPBUTTON), "&Help");
                if (c.focus) focusControl(dialog, c.focus);
                for (UINT vk : c.keys) typeKey(dialog, vk);
                if (c.sysChar) {
                    PostMessageA(GetFocus(), WM_SYSCHAR, c.sysChar, 1 << 29);
                    pumpDialog(dialog);
                }
                if (c.click) clickItem(dialog, c.click);
                if (IsWindowVisible(dialog)) EndDialog(dialog, -2);
            });
            EXPECT_EQ(result, c.expected);
        }
}

// The default button is the one Enter presses; it follows the focus among the
// push buttons and goes back to OK when the focus leaves them. Soft buttons
// must answer the dialog manager for that and stay owner-drawn throughout.
TEST_F(SoftButtons, DefaultFollowsTheFocusAndButtonsStayOwnerDrawn) {
    for (uint32_t style = kSoftButtonsNone; style <= kSoftButtonsWedge; ++style) {
        SCOPED_TRACE(kStyleNames[style]);
        const LONG_PTR plainType[] = {BS_DEFPUSHBUTTON, BS_PUSHBUTTON};
        runWithStyle(style, [&](HWND dialog) {
            const struct {
                int focus;
                int defaultButton;
            } steps[] = {{IDC_BUTTON1, IDC_BUTTON1},
                         {IDC_HELPBUTTON, IDC_HELPBUTTON},
                         {IDC_TEST_COUNT, IDC_BUTTON1},
                         {IDC_CANCELBUTTON, IDC_CANCELBUTTON}};
            for (const auto& step : steps) {
                focusControl(dialog, step.focus);
                for (int id : {IDC_BUTTON1, IDC_CANCELBUTTON, IDC_HELPBUTTON}) {
                    const bool isDefault = id == step.defaultButton;
                    EXPECT_EQ((dialogCode(dialog, id) & DLGC_DEFPUSHBUTTON) != 0, isDefault)
                        << step.focus << " " << id;
                    EXPECT_EQ(buttonType(dialog, id), style == kSoftButtonsNone
                                                          ? plainType[isDefault ? 0 : 1]
                                                          : BS_OWNERDRAW)
                        << step.focus << " " << id;
                }
            }
            EndDialog(dialog, 0);
        });
    }
}

// Pumps the dialog's messages for up to a second until done() holds.
bool waitFor(HWND dialog, const std::function<bool()>& done) {
    for (int i = 0; i < 100; ++i, Sleep(10)) {
        pumpDialog(dialog);
        if (done()) return true;
    }
    return false;
}

// Enabling and disabling shows at once, and the mouse lights a button until
// it leaves. The numeric fields of the same dialog take their range and first
// value from the template's text, and a value set moves the arrows' start.
TEST_F(SoftButtons, ChangesShowAtOnceAndTheMouseLightsAButton) {
    for (uint32_t style = kSoftButtonsSoft; style <= kSoftButtonsWedge; ++style) {
        SCOPED_TRACE(kStyleNames[style]);
        runWithStyle(style, [&](HWND dialog) {
            HWND later = GetDlgItem(dialog, IDC_TEST_DISABLED);
            UpdateWindow(dialog);
            const std::vector<uint32_t> disabled = pixelsOf(later);
            EnableWindow(later, TRUE);
            UpdateWindow(later);
            const std::vector<uint32_t> enabled = pixelsOf(later);
            EnableWindow(later, FALSE);
            UpdateWindow(later);
            EXPECT_NE(enabled, disabled);
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

            initSpinEdit(dialog, IDC_TEST_COUNT);
            initSpinEdit(dialog, IDC_TEST_PLAIN);
            EXPECT_EQ(itemText(dialog, IDC_TEST_COUNT), "6");
            EXPECT_EQ(upDownRange(dialog, IDC_TEST_PLAIN_UPDOWN), std::make_pair(0, 100));
            setSpinEditValue(dialog, IDC_TEST_COUNT, 0);  // below the template's 2
            SetFocus(GetDlgItem(dialog, IDC_TEST_COUNT));
            SendDlgItemMessageA(dialog, IDC_TEST_COUNT, WM_KEYDOWN, VK_UP, 1);
            EXPECT_EQ(getSpinEditValue(dialog, IDC_TEST_COUNT), 3);
            focusControl(dialog, IDC_BUTTON1);
            saveWindowScreenshot(dialog, std::string("soft_button_dialog_") + kStyleNames[style]);
            EndDialog(dialog, 0);
        });
    }
}

// ---- Faces drawn off screen in every state ---------------------------------------

constexpr struct {
    const char* name;
    bool isDefault, focused, pressed, hot, disabled;
} kStates[] = {{"normal", 0, 0, 0, 0, 0},  {"default", 1, 0, 0, 0, 0}, {"focused", 1, 1, 0, 0, 0},
               {"pressed", 1, 1, 1, 0, 0}, {"hot", 0, 0, 0, 1, 0},     {"disabled", 0, 0, 0, 0, 1}};

SoftButtonFace faceIn(uint32_t style, HFONT font, int state) {
    SoftButtonFace face;
    face.style = style;
    face.text = "&Dismiss";
    face.font = font;
    face.isDefault = kStates[state].isDefault;
    face.focused = kStates[state].focused;
    face.pressed = kStates[state].pressed;
    face.hot = kStates[state].hot;
    face.disabled = kStates[state].disabled;
    return face;
}

// The dialogs' font at a given pixel height.
UniqueFont dialogFont(int height, DWORD quality = DEFAULT_QUALITY) {
    return UniqueFont(CreateFontA(-height, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0, 0, quality,
                                  0, "MS Shell Dlg"));
}

// Each state looks different from every other, in a picture per style at the
// usual 75 x 23 at 96 dpi and at 150 %. With high contrast on the user chose
// every colour: only system colours may appear (text drawn without smoothing
// so that edges add none; focus dots invert what is under them, so none).
TEST_F(SoftButtons, EveryStateLooksDifferentAndHighContrastUsesSystemColours) {
    const struct { int width, height, fontHeight; } scales[] = {{75, 23, 11}, {112, 35, 16}};
    constexpr int kGap = 12, kLabel = 18, kColumn = 112 + kGap;
    std::set<uint32_t> allowed;
    for (int c :
         {COLOR_BTNFACE, COLOR_BTNTEXT, COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT, COLOR_GRAYTEXT}) {
        const COLORREF ref = GetSysColor(c);
        allowed.insert((GetRValue(ref) << 16) | (GetGValue(ref) << 8) | GetBValue(ref));
    }
    UniqueFont labelFont = dialogFont(11), sharp = dialogFont(11, NONANTIALIASED_QUALITY);
    Canvas contrast(6 * 87 + 12, 3 * 35 + 12, GetSysColor(COLOR_BTNFACE));
    for (uint32_t style = kSoftButtonsSoft; style <= kSoftButtonsWedge; ++style) {
        SCOPED_TRACE(kStyleNames[style]);
        Canvas picture(kGap + 6 * kColumn, kLabel + 3 * kGap + 23 + 35, GetSysColor(COLOR_BTNFACE));
        SelectObject(picture.dc(), labelFont.get());
        SetBkMode(picture.dc(), TRANSPARENT);
        int top = kLabel + kGap;
        for (const auto& scale : scales) {
            UniqueFont font = dialogFont(scale.fontHeight);
            std::set<std::vector<uint32_t>> looks;
            for (int i = 0; i < 6; ++i) {
                const int left = kGap + i * kColumn;
                RECT label{left, 4, left + kColumn - kGap, kLabel};
                DrawTextA(picture.dc(), kStates[i].name, -1, &label, DT_CENTER | DT_SINGLELINE);
                const RECT r{left, top, left + scale.width, top + scale.height};
                paintSoftButton(picture.dc(), r, faceIn(style, font.get(), i));
                looks.insert(picture.pixels(r));
            }
            EXPECT_EQ(looks.size(), 6u) << scale.width;
            top += scale.height + kGap;
        }
        picture.save(std::string("soft_button_states_") + kStyleNames[style]);
        for (int i = 0; i < 6; ++i) {
            SoftButtonFace face = faceIn(style, sharp.get(), i);
            face.highContrast = true;
            face.focused = false;
            const int left = 12 + i * 87, top = 12 + int(style - 1) * 35;
            const RECT r{left, top, left + 75, top + 23};
            paintSoftButton(contrast.dc(), r, face);
            for (uint32_t p : contrast.pixels(r))
                ASSERT_TRUE(allowed.count(p)) << kStates[i].name << " " << std::hex << p;
        }
    }
    contrast.save("soft_button_states_high_contrast");
}

}  // namespace
