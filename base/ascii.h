#pragma once
// ASCII case folding. Document markers and keys, setting names and device
// names compare without regard to case, but only for A-Z: the program's texts
// are 8-bit ANSI, and no locale may change what matches.
#include <string_view>

constexpr char asciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr bool equalsIgnoringAsciiCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (asciiUpper(a[i]) != asciiUpper(b[i])) return false;
    return true;
}
