#pragma once
// Choice lists shown in combo boxes (the entries come from choice_combo.h).
#include <string_view>

#include "base/win_headers.h"
#include "ui/choice_combo.h"

// Empties the combo box, adds the list's entries, selects entry index.
void fillChoiceCombo(HWND dialog, int controlId, std::string_view list, int index);
// The selected entry's index; 0 when nothing is selected.
int getChoiceIndex(HWND dialog, int controlId);
