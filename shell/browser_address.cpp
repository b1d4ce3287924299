// Browser addresses and manual page paths (see browser_address.h).
#include "shell/browser_address.h"

#include <cstdio>

std::string escapeSpaces(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        if (c == ' ') {
            char escaped[8];
            // The program's escape format since its first version; the zero
            // flag adds nothing to the precision, which compilers point out.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat"
            std::snprintf(escaped, sizeof escaped, "%%%02.2X", static_cast<unsigned char>(c));
#pragma GCC diagnostic pop
            out += escaped;
        } else {
            out += c;
        }
    }
    return out;
}

std::string buildBrowserAddress(std::string_view target, const char* suffix) {
    std::string address;
    // Case matters on purpose: "HTTP..." has always been taken for a file name.
    if (target.substr(0, 4) == "http") {
        address = escapeSpaces(target);
    } else {
        address = "file:///" + escapeSpaces(target);
        if (suffix) address += escapeSpaces(suffix);
    }
    if (address.size() > kBrowserAddressMax) address.resize(kBrowserAddressMax);
    return address;
}

std::string manualPagePath(std::string_view applicationPath, std::string_view page) {
    std::string path(applicationPath);
    if (!path.empty() && path.back() != '\\') path += '\\';
    path += "html\\";
    path += page;
    return path;
}
