#pragma once
// Numeric fields in dialogs: an edit control with id N and an up-down control
// ("msctls_updown32") with id N + 10000 whose template text is "min,max,start"
// (see spin_edit.h for how that text and typed values are read). Values read
// from a field are always kept inside the range.
#include <cstdint>

#include "base/win_headers.h"
#include "ui/spin_edit.h"

inline constexpr int kSpinUpDownOffset = 10000;

// The range of field id, read from its up-down control's text (0..100 when
// the control or its numbers are missing).
SpinRange spinEditRange(HWND dialog, int id);

// Sets the field up when its dialog opens: the up-down control takes the edit
// as its buddy (unless it already has it) and the range, and the edit shows
// the start value, clamped.
void initSpinEdit(HWND dialog, int id);

// Shows value, clamped to the range, in the edit and as the up-down position.
void setSpinEditValue(HWND dialog, int id, long long value);

// Shows a stored setting as it is, even outside the range: a hand-edited
// value is still the one in effect. The up-down steps from the nearest value
// in range, and reading the field clamps it.
void showSpinEditSetting(HWND dialog, int id, uint32_t value);

// What a field holding a setting stores: the number typed, clamped; a field
// emptied (or not a number) reads as 0, so as the range's minimum.
int getSpinEditSetting(HWND dialog, int id);

// The number the user typed, clamped to the range. Text that is not a number
// (empty, letters, "12ab") gives the up-down control's position instead, the
// last value set or stepped to, so a field cleared by mistake keeps its value.
int getSpinEditValue(HWND dialog, int id);
