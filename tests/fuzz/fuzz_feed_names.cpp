// Names that arrive over the network: a graphic update's url must never name a
// file outside the product folder, a device or an alternate stream, and a
// setting update's text must split without losing or inventing characters. The
// same bytes as a damaged seen list: written clean, it holds only number lines,
// loses none of its marks, and stays as it is when cleaned again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "feed/feed_updates.h"
#include "feed/seen_list.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    auto check = [](bool condition) {
        if (!condition) std::abort();
    };
    std::string_view text(reinterpret_cast<const char*>(data), size);

    if (auto file = graphicFileName(text)) {
        std::string whole = file->name + file->extension;
        // No trailing dot also rules out "." and "..".
        check(!file->name.empty() && whole.back() != '.' && whole.back() != ' ');
        check(whole.find_first_of("/\\:") == std::string::npos);
        check(graphicFileName(whole).has_value());  // the name alone is as acceptable
    }

    SettingAssignment a = parseSettingAssignment(text);
    check(a.name.size() <= 260 && text.substr(0, a.name.size()) == a.name);
    check(text.size() >= a.name.size() + a.value.size());
    check(text.substr(text.size() - a.value.size()) == a.value);

    const std::string clean = cleanSeenList(text);
    const SeenListShape shape = seenListShape(clean);
    check(!shape.damaged && !shape.endsOpen && cleanSeenList(clean) == clean);
    const auto before = parseSeenNumbers(text);
    for (int32_t n : parseSeenNumbers(clean)) check(before.count(n) == 1);
    return 0;
}
