#pragma once
// Choice lists in combo boxes. A list is one ";"-separated string so that the
// filter's table and the dialog show exactly the same entries; splitting it
// is portable, filling and reading the combo box is Windows only.
#include <string>
#include <string_view>
#include <vector>

// The entries in order. A run of several ";" separates like one; a list that
// begins with ";" has an empty first entry; a final ";" adds nothing.
std::vector<std::string> splitChoiceList(std::string_view list);
