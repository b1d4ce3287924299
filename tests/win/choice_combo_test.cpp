// Choice lists in a real combo box of a real dialog.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/win_headers.h"
#include "tests/win/test_support.h"
#include "ui/choice_combo.h"

namespace {

constexpr int kComboId = 300;
constexpr const char* kAlertChoices =
    "Always;High importance;Medium and high importance;High, medium and low importance;"
    "For all installed software;Never";

// A modeless dialog made from an in-memory template holding one drop-down list.
class ComboDialog {
  public:
    explicit ComboDialog(DWORD comboStyle) {
        std::vector<WORD> t;
        auto dword = [&](DWORD v) {
            t.push_back(LOWORD(v));
            t.push_back(HIWORD(v));
        };
        auto text = [&](const wchar_t* s) {
            do t.push_back(*s);
            while (*s++);
        };
        dword(WS_POPUP | WS_CAPTION | WS_VISIBLE | DS_SETFONT | DS_MODALFRAME);
        dword(0);
        t.push_back(1);  // one control
        t.insert(t.end(), {10, 10, 220, 120});
        t.push_back(0);  // no menu
        t.push_back(0);  // standard class
        text(L"Choices");
        t.push_back(8);
        text(L"MS Shell Dlg");
        if (t.size() % 2) t.push_back(0);  // items start on a DWORD boundary
        dword(WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | comboStyle);
        dword(0);
        t.insert(t.end(), {10, 10, 200, 100});
        t.push_back(kComboId);
        t.push_back(0xFFFF);
        t.push_back(0x0085);  // combo box class
        text(L"");
        t.push_back(0);  // no creation data
        hwnd_ = CreateDialogIndirectParamW(GetModuleHandleW(nullptr),
                                           reinterpret_cast<LPCDLGTEMPLATEW>(t.data()), nullptr,
                                           &ComboDialog::proc, 0);
    }
    ~ComboDialog() {
        if (hwnd_) DestroyWindow(hwnd_);
    }
    ComboDialog(const ComboDialog&) = delete;
    ComboDialog& operator=(const ComboDialog&) = delete;

    HWND hwnd() const { return hwnd_; }

    std::vector<std::string> entries() const {
        std::vector<std::string> result;
        int count = static_cast<int>(SendDlgItemMessageA(hwnd_, kComboId, CB_GETCOUNT, 0, 0));
        for (int i = 0; i < count; ++i) {
            char buffer[256] = "";
            SendDlgItemMessageA(hwnd_, kComboId, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(buffer));
            result.emplace_back(buffer);
        }
        return result;
    }

  private:
    static INT_PTR CALLBACK proc(HWND, UINT message, WPARAM, LPARAM) {
        return message == WM_INITDIALOG;
    }
    HWND hwnd_ = nullptr;
};

}  // namespace

TEST(ChoiceCombo, FillsInListOrderAndSelects) {
    for (DWORD style : {DWORD(CBS_DROPDOWNLIST), DWORD(CBS_DROPDOWNLIST | CBS_SORT)}) {
        ComboDialog dialog(style);
        ASSERT_TRUE(dialog.hwnd());
        fillChoiceCombo(dialog.hwnd(), kComboId, kAlertChoices, 4);
        EXPECT_EQ(dialog.entries(), splitChoiceList(kAlertChoices));
        EXPECT_EQ(getChoiceIndex(dialog.hwnd(), kComboId), 4);
        if (!(style & CBS_SORT)) saveWindowScreenshot(dialog.hwnd(), "choice_combo");

        // Filling again replaces the entries instead of adding to them.
        fillChoiceCombo(dialog.hwnd(), kComboId, ";;Always;;Never;", 2);
        EXPECT_EQ(dialog.entries(), (std::vector<std::string>{"", "Always", "Never"}));
        EXPECT_EQ(getChoiceIndex(dialog.hwnd(), kComboId), 2);
    }
}

TEST(ChoiceCombo, NothingSelectedReadsZero) {
    ComboDialog dialog(CBS_DROPDOWNLIST);
    ASSERT_TRUE(dialog.hwnd());
    fillChoiceCombo(dialog.hwnd(), kComboId, "Always;Never", 7);  // no such entry
    EXPECT_EQ(getChoiceIndex(dialog.hwnd(), kComboId), 0);
    fillChoiceCombo(dialog.hwnd(), kComboId, "Always;Never", 1);
    EXPECT_EQ(getChoiceIndex(dialog.hwnd(), kComboId), 1);
    SendDlgItemMessageA(dialog.hwnd(), kComboId, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    EXPECT_EQ(getChoiceIndex(dialog.hwnd(), kComboId), 0);
}
