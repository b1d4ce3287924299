// Arbitrary bytes through the settings reader, then a save and a read of what
// was saved: the first read must leave skipped keys alone and keep texts short
// and free of control characters, and the saved file must give back every value
// it was written from. The one way a value may not survive is a line too long
// for the reader's 259-character reads (a long text value), which splits it;
// such files are only read, not compared.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "settings/settings_file.h"

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
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
