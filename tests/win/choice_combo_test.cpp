// Choice lists in a real drop-down combo box: list order is kept even when the
// box sorts, and filling again replaces the entries. Splitting is checked
// natively.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/win_headers.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/test_support.h"
#include "ui/choice_combo_win.h"

TEST(ChoiceCombo, FillsInListOrderSelectsAndReadsBack) {
    for (DWORD sort : {DWORD(0), DWORD(CBS_SORT)}) {
        HWND parent = CreateWindowExA(0, "STATIC", "Choices", WS_POPUP | WS_CAPTION | WS_VISIBLE,
                                      100, 100, 330, 120, nullptr, nullptr, nullptr, nullptr);
        CreateWindowExA(0, "COMBOBOX", "", WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST | sort, 10, 10,
                        300, 200, parent, reinterpret_cast<HMENU>(INT_PTR{300}), nullptr, nullptr);
        fillChoiceCombo(parent, 300, "Never;Always;High importance", 2);
        EXPECT_EQ(comboEntries(parent, 300),
                  (std::vector<std::string>{"Never", "Always", "High importance"}));
        EXPECT_EQ(getChoiceIndex(parent, 300), 2);
        if (!sort) saveWindowScreenshot(parent, "choice_combo");

        // An index past the entries selects nothing, which reads as the first.
        fillChoiceCombo(parent, 300, ";;Always;;Never;", 7);
        EXPECT_EQ(comboEntries(parent, 300), (std::vector<std::string>{"", "Always", "Never"}));
        EXPECT_EQ(getChoiceIndex(parent, 300), 0);
        DestroyWindow(parent);
    }
}
