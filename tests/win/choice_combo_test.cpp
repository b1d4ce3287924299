// Choice lists in a real drop-down combo box, with and without sorting.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/win_headers.h"
#include "tests/win/test_support.h"
#include "ui/choice_combo.h"

namespace {

constexpr int kComboId = 300;

// A small popup window holding one drop-down list with id kComboId.
struct ComboWindow {
    HWND parent = CreateWindowExA(0, "STATIC", "Choices", WS_POPUP | WS_CAPTION | WS_VISIBLE, 100,
                                  100, 330, 120, nullptr, nullptr, nullptr, nullptr);

    explicit ComboWindow(DWORD comboStyle) {
        CreateWindowExA(0, "COMBOBOX", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | comboStyle, 10, 10,
                        300, 200, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kComboId)),
                        nullptr, nullptr);
    }
    ~ComboWindow() { DestroyWindow(parent); }
    ComboWindow(const ComboWindow&) = delete;
    ComboWindow& operator=(const ComboWindow&) = delete;

    std::vector<std::string> entries() const {
        std::vector<std::string> result;
        const auto count = SendDlgItemMessageA(parent, kComboId, CB_GETCOUNT, 0, 0);
        for (int i = 0; i < count; ++i) {
            char buffer[256] = "";
            SendDlgItemMessageA(parent, kComboId, CB_GETLBTEXT, i,
                                reinterpret_cast<LPARAM>(buffer));
            result.emplace_back(buffer);
        }
        return result;
    }
};

}  // namespace

TEST(ChoiceCombo, FillsInListOrderSelectsAndReadsBack) {
    for (DWORD style : {DWORD(CBS_DROPDOWNLIST), DWORD(CBS_DROPDOWNLIST | CBS_SORT)}) {
        ComboWindow w(style);
        ASSERT_TRUE(GetDlgItem(w.parent, kComboId));
        fillChoiceCombo(w.parent, kComboId, "Never;Always;High importance", 2);
        EXPECT_EQ(w.entries(), (std::vector<std::string>{"Never", "Always", "High importance"}));
        EXPECT_EQ(getChoiceIndex(w.parent, kComboId), 2);
        if (!(style & CBS_SORT)) saveWindowScreenshot(w.parent, "choice_combo");

        // Filling again replaces the entries instead of adding to them.
        fillChoiceCombo(w.parent, kComboId, ";;Always;;Never;", 1);
        EXPECT_EQ(w.entries(), (std::vector<std::string>{"", "Always", "Never"}));
        EXPECT_EQ(getChoiceIndex(w.parent, kComboId), 1);

        // Nothing selected reads as the first entry.
        fillChoiceCombo(w.parent, kComboId, "Always;Never", 7);
        EXPECT_EQ(getChoiceIndex(w.parent, kComboId), 0);
    }
}
