// Numeric fields in a real dialog: the up-down control's template text sets
// the range and the first value, the arrows step the edit, and what the user
// types comes back clamped to the range.
#include <gtest/gtest.h>

#include <string>

#include "tests/win/dialog_driver.h"
#include "tests/win/test_dialogs.h"
#include "ui/spin_edit_win.h"

namespace {

// Runs the test dialog with both fields set up, script inside it.
void withFields(const std::function<void(HWND)>& script) {
    TestPiecesBox box([](HWND dialog) {
        initSpinEdit(dialog, IDC_TEST_COUNT);
        initSpinEdit(dialog, IDC_TEST_PLAIN);
    });
    DialogDriver driver([&](HWND dialog) {
        script(dialog);
        EndDialog(dialog, 0);
    });
    box.run();
    EXPECT_TRUE(driver.ran());
}

TEST(SpinEdit, TemplateTextSetsRangeAndFirstValue) {
    withFields([](HWND dialog) {
        int low = 0, high = 0;
        SendDlgItemMessageA(dialog, IDC_TEST_COUNT_UPDOWN, UDM_GETRANGE32,
                            reinterpret_cast<WPARAM>(&low), reinterpret_cast<LPARAM>(&high));
        EXPECT_EQ(low, 2);
        EXPECT_EQ(high, 32760);
        EXPECT_EQ(itemText(dialog, IDC_TEST_COUNT), "6");
        EXPECT_EQ(getSpinEditValue(dialog, IDC_TEST_COUNT), 6);
        // An up-down without numbers: 0 to 100, starting at 0.
        EXPECT_EQ(itemText(dialog, IDC_TEST_PLAIN), "0");
        SendDlgItemMessageA(dialog, IDC_TEST_PLAIN_UPDOWN, UDM_GETRANGE32,
                            reinterpret_cast<WPARAM>(&low), reinterpret_cast<LPARAM>(&high));
        EXPECT_EQ(low, 0);
        EXPECT_EQ(high, 100);
        // The arrow keys step the field through its up-down control.
        SetFocus(GetDlgItem(dialog, IDC_TEST_COUNT));
        SendDlgItemMessageA(dialog, IDC_TEST_COUNT, WM_KEYDOWN, VK_UP, 1);
        EXPECT_EQ(itemText(dialog, IDC_TEST_COUNT), "7");
    });
}

TEST(SpinEdit, TypedAndSetValuesStayInTheRange) {
    const struct {
        int field;
        const char* typed;
        int expected;
    } cases[] = {
        // Text that is not a number keeps the value the field last held.
        {IDC_TEST_COUNT, "25", 25}, {IDC_TEST_COUNT, "", 25},         {IDC_TEST_COUNT, "lots", 25},
        {IDC_TEST_COUNT, "1", 2},   {IDC_TEST_COUNT, "40000", 32760}, {IDC_TEST_PLAIN, "150", 100},
        {IDC_TEST_PLAIN, "-3", 0},
    };
    withFields([&](HWND dialog) {
        for (const auto& c : cases) {
            SetDlgItemTextA(dialog, c.field, c.typed);
            EXPECT_EQ(getSpinEditValue(dialog, c.field), c.expected) << '"' << c.typed << '"';
        }
        setSpinEditValue(dialog, IDC_TEST_COUNT, 50000);
        EXPECT_EQ(itemText(dialog, IDC_TEST_COUNT), "32760");
        EXPECT_EQ(SendDlgItemMessageA(dialog, IDC_TEST_COUNT_UPDOWN, UDM_GETPOS32, 0, 0), 32760);
        setSpinEditValue(dialog, IDC_TEST_COUNT, 0);
        EXPECT_EQ(itemText(dialog, IDC_TEST_COUNT), "2");
    });
}

}  // namespace
