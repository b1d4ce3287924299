// Soft buttons (see soft_button_win.h).
#include "ui/soft_button_win.h"

void makeSoftButtons(HWND, uint32_t, std::initializer_list<int>) {}

bool drawSoftButton(const DRAWITEMSTRUCT&) {
    return false;
}
