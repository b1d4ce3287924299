#pragma once
// Which item addresses the notification windows will hand to a browser. The
// feed travels over plain HTTP, so anyone on the way can change it: only web
// addresses are opened, never a file, a program, a share or another scheme
// that the shell would happily start.
#include <string_view>

// True when url is a well-formed web address: "http://" or "https://" in any
// case, a host, and nothing that could end the address on a command line or
// that an address never holds unencoded (no blank, double quote, backslash,
// angle bracket, control character or byte above 126; a "%" is followed by two hex
// digits).
bool isWebAddress(std::string_view url);
