// Filling and reading choice combo boxes (see choice_combo.h).
#include "ui/choice_combo_win.h"

void fillChoiceCombo(HWND dialog, int controlId, std::string_view list, int index) {
    HWND combo = GetDlgItem(dialog, controlId);
    SendMessageA(combo, CB_RESETCONTENT, 0, 0);
    for (const std::string& entry : splitChoiceList(list))
        // Inserting at the end keeps the list order even in a sorted combo box.
        SendMessageA(combo, CB_INSERTSTRING, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>(entry.c_str()));
    SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

int getChoiceIndex(HWND dialog, int controlId) {
    LRESULT selected = SendDlgItemMessageA(dialog, controlId, CB_GETCURSEL, 0, 0);
    return selected == CB_ERR ? 0 : static_cast<int>(selected);
}
