#pragma once
// The address a browser is given for a manual page or a web page, and the path
// of a manual page. Kept free of the platform so that the rules (which targets
// count as web addresses, what is escaped, where the text is cut) are tested
// natively and fast.
#include <cstddef>
#include <string>
#include <string_view>

// Browsers have always been handed at most this many characters.
inline constexpr std::size_t kBrowserAddressMax = 1024;

// Only a space is escaped ("%20"); backslashes and every other character stay
// as they are, which the browsers we start have always accepted.
std::string escapeSpaces(std::string_view text);

// A target starting with exactly "http" (lower case) is a web address and is
// passed escaped, without the suffix. Anything else is a local file: "file:///",
// the escaped target, then the escaped suffix (nullptr for none). Cut to
// kBrowserAddressMax characters.
std::string buildBrowserAddress(std::string_view target, const char* suffix);

// applicationPath + "\" when it lacks one + "html\" + page; a bare relative
// "html\page" when applicationPath is empty.
std::string manualPagePath(std::string_view applicationPath, std::string_view page);
