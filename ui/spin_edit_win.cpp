// Numeric fields (see spin_edit_win.h). The up-down control's own window text
// carries the range so that the template alone says what a field accepts.
#include "ui/spin_edit_win.h"

#include <string>

#include "ui/dialog_win.h"

namespace {

HWND upDownOf(HWND dialog, int id) {
    return GetDlgItem(dialog, id + kSpinUpDownOffset);
}

// The fields have always been read into 64 characters.
std::string textOf(HWND hwnd) {
    return controlText(hwnd).substr(0, 63);
}

}  // namespace

SpinRange spinEditRange(HWND dialog, int id) {
    return parseSpinRange(textOf(upDownOf(dialog, id)));
}

void initSpinEdit(HWND dialog, int id) {
    HWND upDown = upDownOf(dialog, id);
    HWND edit = GetDlgItem(dialog, id);
    const SpinRange range = spinEditRange(dialog, id);
    if (upDown) {
        // Setting the buddy again would narrow an aligned buddy once more.
        if (edit && reinterpret_cast<HWND>(SendMessageA(upDown, UDM_GETBUDDY, 0, 0)) != edit)
            SendMessageA(upDown, UDM_SETBUDDY, reinterpret_cast<WPARAM>(edit), 0);
        // Without bounds in the text the control's own default would step
        // from 100 down to 0; the field's 0 to 100 is set instead.
        SendMessageA(upDown, UDM_SETRANGE32, range.minimum, range.maximum);
    }
    setSpinEditValue(dialog, id, range.start);
}

void setSpinEditValue(HWND dialog, int id, long long value) {
    const SpinRange range = spinEditRange(dialog, id);
    const int clamped = clampToRange(range, value);
    if (HWND upDown = upDownOf(dialog, id)) SendMessageA(upDown, UDM_SETPOS32, 0, clamped);
    SetDlgItemInt(dialog, id, static_cast<UINT>(clamped), clamped < 0);
}

void showSpinEditSetting(HWND dialog, int id, uint32_t value) {
    setSpinEditValue(dialog, id, value);
    SetDlgItemInt(dialog, id, value, FALSE);
}

int getSpinEditSetting(HWND dialog, int id) {
    return spinFieldValue(spinEditRange(dialog, id), textOf(GetDlgItem(dialog, id)), 0);
}

int getSpinEditValue(HWND dialog, int id) {
    const SpinRange range = spinEditRange(dialog, id);
    int last = range.start;
    if (HWND upDown = upDownOf(dialog, id)) {
        BOOL failed = FALSE;
        last = static_cast<int>(
            SendMessageA(upDown, UDM_GETPOS32, 0, reinterpret_cast<LPARAM>(&failed)));
    }
    return spinFieldValue(range, textOf(GetDlgItem(dialog, id)), last);
}
