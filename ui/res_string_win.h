#pragma once
// The program's string table.
#include <string>

#include "base/win_headers.h"

// A string resource of the program, read through one shared 8192-character
// buffer; the fixed error text when it is missing.
std::string loadResString(UINT id);
