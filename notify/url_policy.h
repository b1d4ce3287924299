#pragma once
// Which item addresses the notification windows may hand to the shell. The
// feed travels over plain HTTP, so anyone on the way can change an item's URL;
// letting the shell "open" a file: address, a program path or a UNC share would
// let a changed feed start a program. Only web addresses are opened.
#include <string_view>

// True when url begins with "http://" or "https://", in any case.
bool isOpenableAddress(std::string_view url);
