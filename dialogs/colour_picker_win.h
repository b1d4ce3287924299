#pragma once
// The colour picker behind Setup's colour buttons: the chosen colour as hue,
// saturation and luminance and as red, green and blue, kept in step, and a
// table of named colours the user keeps in a file of their own.
#include <cstdint>
#include <string>

#include "base/win_headers.h"
#include "dialogs/colour_table.h"

// Shows "COMMONColourSelectBox" with colour (0x00BBGGRR) chosen. tableFile is
// the ColourTableFile setting: a bare name stands for a file in the product's
// data folder; when the user opens another table and presses OK it becomes
// that table's full path. True when the user pressed OK; colour is then the
// new one. Changes to the table are saved at once, whatever the answer.
bool pickColour(HWND owner, uint32_t& colour, std::string& tableFile, uint32_t softButtons);

// The file a ColourTableFile setting names.
std::string colourTablePath(const std::string& tableFile);

// Writes the table to a temporary file beside path and only then puts it in
// the old file's place, so that a failed save leaves the old table whole.
bool saveColourTableFile(const std::string& path, const ColourTable& table);
