// Names that arrive over the network: a graphic update's url must never name a
// file outside the product folder, a device or an alternate stream, and a
// setting update's text must split without losing or inventing characters. The
// same bytes as a damaged seen list: written clean, it holds only number lines,
// loses none of its marks, and stays as it is when cleaned again.
#include "tests/fuzz/fuzz_input.h"
#include "feed/feed_updates.h"
#include "feed/seen_list.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    std::string_view text = asText(data, size);

    if (auto file = graphicFileName(text)) {
        std::string whole = file->name + file->extension;
        // No trailing dot also rules out "." and "..".
        require(!file->name.empty() && whole.back() != '.' && whole.back() != ' ');
        require(whole.find_first_of("/\\:") == std::string::npos);
        require(graphicFileName(whole).has_value());  // the name alone is as acceptable
    }

    SettingAssignment a = parseSettingAssignment(text);
    require(a.name.size() <= 260 && text.substr(0, a.name.size()) == a.name);
    require(text.size() >= a.name.size() + a.value.size());
    require(text.substr(text.size() - a.value.size()) == a.value);

    const std::string clean = cleanSeenList(text);
    const SeenListShape shape = seenListShape(clean);
    require(!shape.damaged && !shape.endsOpen && cleanSeenList(clean) == clean);
    const auto before = parseSeenNumbers(text);
    for (int32_t n : parseSeenNumbers(clean)) require(before.count(n) == 1);
    return 0;
}
