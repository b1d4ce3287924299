// Device names among file names (see file_names.h).
#include "base/file_names.h"

#include <array>

#include "base/ascii.h"

bool isDeviceFileName(std::string_view fileName) {
    std::string_view stem = fileName.substr(0, fileName.find('.'));
    while (!stem.empty() && stem.back() == ' ') stem.remove_suffix(1);

    static constexpr std::array<std::string_view, 6> plain = {"CON", "PRN",    "AUX",
                                                              "NUL", "CONIN$", "CONOUT$"};
    for (std::string_view device : plain)
        if (equalsIgnoringAsciiCase(stem, device)) return true;
    if (stem.size() == 4 && (equalsIgnoringAsciiCase(stem.substr(0, 3), "COM") ||
                             equalsIgnoringAsciiCase(stem.substr(0, 3), "LPT"))) {
        // 0xB9, 0xB2, 0xB3: superscript one, two and three in the ANSI code page.
        unsigned char digit = static_cast<unsigned char>(stem[3]);
        return (digit >= '1' && digit <= '9') || digit == 0xB9 || digit == 0xB2 || digit == 0xB3;
    }
    return false;
}

bool pathNamesDevice(std::string_view path) {
    for (;;) {
        std::size_t separator = path.find_first_of("\\/");
        if (isDeviceFileName(path.substr(0, separator))) return true;
        if (separator == std::string_view::npos) return false;
        path.remove_prefix(separator + 1);
    }
}
