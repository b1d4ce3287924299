#pragma once
// Soft buttons: the program's own owner-drawn look for a dialog's push buttons
// (the SoftButtons setting: 0 none, 1 "Soft", 2 "Flex", 3 "Wedge"). A button
// keeps its text, id and state, so the keyboard, mnemonics and accessibility
// tools see an ordinary push button; only the drawing changes.
#include <cstdint>
#include <initializer_list>

#include "base/win_headers.h"

enum SoftButtonStyle : uint32_t {
    kSoftButtonsNone = 0,
    kSoftButtonsSoft = 1,
    kSoftButtonsFlex = 2,
    kSoftButtonsWedge = 3,
};

// Turns the dialog's push buttons ids into soft buttons of style; nothing for
// kSoftButtonsNone or an unknown style.
void makeSoftButtons(HWND dialog, uint32_t style, std::initializer_list<int> ids);
// Draws the control of item when it is a soft button; false otherwise. The
// shared dialog procedure calls it for every WM_DRAWITEM.
bool drawSoftButton(const DRAWITEMSTRUCT& item);
