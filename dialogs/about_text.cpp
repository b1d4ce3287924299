// The About box's text and the Shift action's identifier (see about_text.h).
#include "dialogs/about_text.h"

#include <array>

std::string revisionText(int revision) {
    return " (Revision " + std::to_string(revision) + ")";
}

std::string programVersionText() {
    return std::to_string(kProgramMajor) + "." + std::to_string(kProgramMinor) + kProgramLetter +
           revisionText(kProgramRevision);
}

std::string formatAboutText(std::string_view templateText) {
    // Each conversion letter, in the order the values come.
    const std::array<std::pair<char, std::string>, 4> values = {{
        {'d', std::to_string(kProgramMajor)},
        {'d', std::to_string(kProgramMinor)},
        {'c', std::string(1, kProgramLetter)},
        {'s', revisionText(kProgramRevision)},
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
