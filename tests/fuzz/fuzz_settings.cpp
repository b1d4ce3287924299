// Arbitrary bytes through the settings reader, then a save and a read of what
// was saved: the first read leaves skipped keys alone and keeps texts short and
// free of control characters; the saved file gives back every value, unless a
// line is too long for the reader's 259-character reads, which splits it.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "settings/settings_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    auto require = [](bool condition) {
        if (!condition) std::abort();
    };
    Settings first;
    readSettingsText(first, std::string_view(reinterpret_cast<const char*>(data), size));
    for (const SettingDef& def : SettingsTable) {
        if (def.readFlags & kSettingSkipOnRead)
            require(settingValueText(first, def) == settingValueText(Settings{}, def));
        if (const std::string* text = settingText(first, def)) {
            require(text->size() < kSettingTextMax);
            for (char c : *text) require(static_cast<unsigned char>(c) >= 32);
        }
    }

    // 258 characters and the line end is what one read takes whole.
    const std::string lines = formatSettingLines(first);
    for (std::size_t start = 0, end; (end = lines.find('\n', start)) != std::string::npos;
         start = end + 1)
        if (end - start > 258) return 0;
    Settings second;
    readSettingsText(second, formatSettingsFile(first, 0));
    for (const SettingDef& def : SettingsTable)
        require(settingValueText(second, def) == settingValueText(first, def));
    return 0;
}
