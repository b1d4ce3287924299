#pragma once
// Which item addresses the notification windows will hand to a browser. The
// feed travels over plain HTTP, so anyone on the way can change it: only web
// addresses are opened, never a file, a program, a share or another scheme
// that the shell would happily start.
#include <string_view>

// True when url begins with "http://" or "https://", in any case.
bool isWebAddress(std::string_view url);
