// The About box's text and the Shift action's identifier (see about_text.h).
#include "dialogs/about_text.h"

#include <array>

#include "base/version.h"

std::string revisionText(int revision) {
    return " (Revision " + std::to_string(revision) + ")";
}

std::string programVersionText() {
    return HERALDER_VERSION_DISPLAY + revisionText(HERALDER_VERSION_REVISION);
}

std::string formatAboutText(std::string_view templateText) {
    // Each conversion letter, in the order the values come.
    const std::array<std::pair<char, std::string>, 4> values = {{
        {'d', std::to_string(HERALDER_VERSION_MAJOR)},
        {'d', std::to_string(HERALDER_VERSION_MINOR)},
        {'c', std::string(1, HERALDER_VERSION_LETTER)},
        {'s', revisionText(HERALDER_VERSION_REVISION)},
    }};
    std::size_t next = 0;
    std::string text;
    for (std::size_t i = 0; i < templateText.size(); ++i) {
        const char c = templateText[i];
        const char after = i + 1 < templateText.size() ? templateText[i + 1] : '\0';
        if (c == '%' && after == '%') {
            text += '%';
            ++i;
        } else if (c == '%' && next < values.size() && after == values[next].first) {
            text += values[next++].second;
            ++i;
        } else {
            text += c;
        }
    }
    return text;
}

std::string guidClipboardText(std::string_view registryForm) {
    std::string_view text = registryForm.substr(0, registryForm.find('}'));
    if (!text.empty() && text.front() == '{') text.remove_prefix(1);
    return std::string(text);
}
