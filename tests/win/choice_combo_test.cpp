// Choice lists in a real drop-down combo box: list order is kept even when the
// box sorts, and filling again replaces the entries. Splitting is checked
// natively; the Setup dialog's round trip fills and reads its own lists.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/win_headers.h"
#include "tests/win/dialog_driver.h"
#include "ui/choice_combo_win.h"

TEST(ChoiceCombo, FillsInListOrderSelectsAndReadsBack) {
    using Shown = std::pair<std::vector<std::string>, int>;
    for (DWORD sort : {DWORD(0), DWORD(CBS_SORT)}) {
        HWND parent = CreateWindowExA(0, "STATIC", "Choices", WS_POPUP, 100, 100, 330, 120, nullptr,
                                      nullptr, nullptr, nullptr);
        CreateWindowExA(0, "COMBOBOX", "", WS_CHILD | CBS_DROPDOWNLIST | sort, 10, 10, 300, 200,
                        parent, reinterpret_cast<HMENU>(INT_PTR{300}), nullptr, nullptr);
        fillChoiceCombo(parent, 300, "Never;Always;High importance", 2);
        EXPECT_EQ(Shown(comboEntries(parent, 300), getChoiceIndex(parent, 300)),
                  Shown({"Never", "Always", "High importance"}, 2));
        // An index past the entries selects nothing, which reads as the first.
        fillChoiceCombo(parent, 300, ";;Always;;Never;", 7);
        EXPECT_EQ(Shown(comboEntries(parent, 300), getChoiceIndex(parent, 300)),
                  Shown({"", "Always", "Never"}, 0));
        DestroyWindow(parent);
    }
}
