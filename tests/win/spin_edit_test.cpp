// Numeric fields in a real dialog: the up-down control's template text sets
// the range and the first value, the arrows step the edit, and values typed or
// set come back within the range. Parsing and clamping are checked natively.
#include <gtest/gtest.h>

#include <string>

#include "tests/win/dialog_driver.h"
#include "tests/win/test_dialogs.h"
#include "ui/spin_edit_win.h"

namespace {

TEST(SpinEdit, TemplateTextSetsTheRangeAndValuesStayInIt) {
    TestPiecesBox box([](HWND dialog) {
        initSpinEdit(dialog, IDC_TEST_COUNT);
        initSpinEdit(dialog, IDC_TEST_PLAIN);
    });
    DialogDriver driver([](HWND dialog) {
        EXPECT_EQ(upDownRange(dialog, IDC_TEST_COUNT_UPDOWN), std::make_pair(2, 32760));
        EXPECT_EQ(itemText(dialog, IDC_TEST_COUNT), "6");
        // An up-down without numbers: 0 to 100, starting at 0.
        EXPECT_EQ(upDownRange(dialog, IDC_TEST_PLAIN_UPDOWN), std::make_pair(0, 100));
        EXPECT_EQ(itemText(dialog, IDC_TEST_PLAIN), "0");
        // The arrow keys step the field through its up-down control.
        SetFocus(GetDlgItem(dialog, IDC_TEST_COUNT));
        SendDlgItemMessageA(dialog, IDC_TEST_COUNT, WM_KEYDOWN, VK_UP, 1);
        EXPECT_EQ(getSpinEditValue(dialog, IDC_TEST_COUNT), 7);

        const struct {
            int field;
            const char* typed;
            int expected;
        } cases[] = {
            {IDC_TEST_COUNT, "25", 25},
            {IDC_TEST_COUNT, "lots", 25},  // not a number: the last value stays
            {IDC_TEST_COUNT, "40000", 32760},
            {IDC_TEST_PLAIN, "150", 100},
        };
        for (const auto& c : cases) {
            SetDlgItemTextA(dialog, c.field, c.typed);
            EXPECT_EQ(getSpinEditValue(dialog, c.field), c.expected) << '"' << c.typed << '"';
        }
        setSpinEditValue(dialog, IDC_TEST_COUNT, 0);
        EXPECT_EQ(itemText(dialog, IDC_TEST_COUNT), "2");
        EXPECT_EQ(SendDlgItemMessageA(dialog, IDC_TEST_COUNT_UPDOWN, UDM_GETPOS32, 0, 0), 2);
        EndDialog(dialog, 0);
    });
    box.run();
    EXPECT_TRUE(driver.ran());
}

}  // namespace
