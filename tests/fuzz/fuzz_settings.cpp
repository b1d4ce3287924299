// Arbitrary bytes through the settings reader, then a save and a read of what
// was saved: the saved file must give back every value it was written from.
// The one way a value may not survive is a line too long for the reader's
// 259-character reads (a long text value), which splits it; such files are only
// read, not compared.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "settings/settings_file.h"

namespace {

// Longest "Key = value" line that one read takes together with its line end.
constexpr std::size_t kLongestWholeLine = 258;

bool everyLineFits(std::string_view lines) {
    std::size_t start = 0;
    for (std::size_t end; (end = lines.find('\n', start)) != std::string_view::npos;
         start = end + 1)
        if (end - start > kLongestWholeLine) return false;
    return true;
}

void require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    Settings first;
    readSettingsText(first, std::string_view(reinterpret_cast<const char*>(data), size));

    const Settings defaults;
    for (const SettingDef& def : SettingsTable) {
        if (def.readFlags & kSettingSkipOnRead)
            require(settingValueText(first, def) == settingValueText(defaults, def));
        if (const std::string* text = settingText(first, def)) {
            require(text->size() < kSettingTextMax);
            for (char c : *text) require(static_cast<unsigned char>(c) >= 32);
        }
    }

    const std::string file = formatSettingsFile(first, 0);
    if (!everyLineFits(formatSettingLines(first))) return 0;
    Settings second;
    readSettingsText(second, file);
    for (const SettingDef& def : SettingsTable)
        require(settingValueText(second, def) == settingValueText(first, def));
    require(formatSettingsFile(second, 0) == file);
    return 0;
}
