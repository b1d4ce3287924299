#pragma once
// Text as the C runtime presents it. The program's files (settings, seen list)
// are read in text mode with fgets into fixed buffers and converted with atoi;
// these helpers reproduce exactly that on every platform, so the portable core
// reads a file the same way natively and on Windows.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// atoi: leading white space, one optional sign, decimal digits up to the first
// non-digit; no digits give 0. Out-of-range values saturate to INT32_MIN or
// INT32_MAX, as the Windows C runtime documents for atoi.
int32_t atoiLike(std::string_view text);

// What a text-mode ("rt") read of a file's bytes yields: every CR LF pair becomes
// LF and a Ctrl-Z ends the text.
std::string textModeView(std::string_view raw);

// The pieces that repeated fgets calls with a buffer of bufferSize bytes return:
// at most bufferSize - 1 characters each, a piece ending after its LF.
template <class Fn>
void forEachFgetsPiece(std::string_view text, std::size_t bufferSize, Fn&& fn) {
    std::size_t pos = 0;
    const std::size_t maxChars = bufferSize - 1;
    while (pos < text.size()) {
        std::size_t end = pos;
        while (end < text.size() && end - pos < maxChars) {
            if (text[end++] == '\n') break;
        }
        fn(text.substr(pos, end - pos));
        pos = end;
    }
}
