// Which addresses the notification windows open (see url_policy.h).
#include "notify/url_policy.h"

#include "base/ascii.h"

namespace {

bool isHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// A byte that may stand in an address handed to a browser's command line. A
// blank or a quote would end the quoted argument the shell puts the address
// in, and a backslash before the closing quote escapes it, so whatever follows
// would reach the browser as options of its own; a control character or a
// byte above 126 has no place in an address (it would be percent-encoded), nor
// have angle brackets.
bool isAddressByte(char c) {
    const auto u = static_cast<unsigned char>(c);
    return u > 32 && u < 127 && c != '"' && c != '\\' && c != '<' && c != '>';
}

}  // namespace

bool isWebAddress(std::string_view url) {
    std::string_view rest;
    for (std::string_view scheme : {std::string_view("http://"), std::string_view("https://")}) {
        if (url.size() >= scheme.size() &&
            equalsIgnoringAsciiCase(url.substr(0, scheme.size()), scheme))
            rest = url.substr(scheme.size());
    }
    // A host must follow: "http://" alone or "http:///x" names no server.
    if (rest.empty() || rest.front() == '/' || rest.front() == '?' || rest.front() == '#')
        return false;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        if (!isAddressByte(rest[i])) return false;
        if (rest[i] == '%' &&
            (i + 2 >= rest.size() || !isHexDigit(rest[i + 1]) || !isHexDigit(rest[i + 2])))
            return false;
    }
    return true;
}
