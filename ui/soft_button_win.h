#pragma once
// Soft buttons: the program's own owner-drawn look for a dialog's push buttons
// (the SoftButtons setting: 0 none, 1 "Soft", 2 "Flex", 3 "Wedge"). A button
// keeps its text, id and state, so the keyboard, mnemonics and accessibility
// tools see an ordinary push button; only the drawing changes.
//
// Owner-drawn buttons drop out of the dialog manager's default-button
// protocol (it asks WM_GETDLGCODE and sends BM_SETSTYLE), so each soft button
// is subclassed to answer it as a push button would while staying owner
// drawn, and to track the mouse for its hover look. The little state this
// needs lives in the subclass and goes with the window.
#include <cstdint>
#include <initializer_list>
#include <string>

#include "base/win_headers.h"

enum SoftButtonStyle : uint32_t {
    kSoftButtonsNone = 0,
    kSoftButtonsSoft = 1,
    kSoftButtonsFlex = 2,
    kSoftButtonsWedge = 3,
};

// Turns the dialog's push buttons ids into soft buttons of style; nothing for
// kSoftButtonsNone or an unknown style. Ids that are missing or are not push
// buttons are left alone; a soft button asked again takes the new style.
void makeSoftButtons(HWND dialog, uint32_t style, std::initializer_list<int> ids);
// Draws the control of item when it is a soft button; false otherwise. The
// shared dialog procedure calls it for every WM_DRAWITEM.
bool drawSoftButton(const DRAWITEMSTRUCT& item);
bool isSoftButton(HWND button);

// Everything one drawing of a soft button depends on. drawSoftButton gathers
// it from the control, its subclass and the system; it is open so that a face
// can be drawn in any state, for instance for a picture of all of them.
struct SoftButtonFace {
    uint32_t style = kSoftButtonsSoft;
    std::string text;             // with "&" before the mnemonic
    HFONT font = nullptr;         // DEFAULT_GUI_FONT when null
    HBRUSH background = nullptr;  // what shows around the face; button face when null
    bool isDefault = false;       // Enter would press it
    bool focused = false;
    bool pressed = false;
    bool hot = false;  // the mouse is over it
    bool disabled = false;
    bool hideAccelerator = false;  // ODS_NOACCEL: no underline until Alt is used
    bool hideFocus = false;        // ODS_NOFOCUSRECT
    bool highContrast = false;     // system colours only, no shading
    unsigned dpi = 96;             // border, ring and insets are 96-DPI pixels scaled
};
void paintSoftButton(HDC dc, const RECT& r, const SoftButtonFace& face);
