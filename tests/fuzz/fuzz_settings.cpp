// Arbitrary bytes through the settings reader, then a save and a read of what
// was saved: the saved file must give back every value, the skipped keys'
// defaults included, so a read that let a control character or a skipped key
// through fails here too. The one way a value may not survive
// is a line too long for the reader's 259-character reads (a long text value),
// which splits it; such files are only read, not compared.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "settings/settings_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    Settings first;
    readSettingsText(first, std::string_view(reinterpret_cast<const char*>(data), size));

    // 258 characters and the line end is what one read takes whole.
    const std::string lines = formatSettingLines(first);
    for (std::size_t start = 0, end; (end = lines.find('\n', start)) != std::string::npos;
         start = end + 1)
        if (end - start > 258) return 0;
    Settings second;
    readSettingsText(second, formatSettingsFile(first, 0));
    for (const SettingDef& def : SettingsTable)
        if (settingValueText(second, def) != settingValueText(first, def)) std::abort();
    return 0;
}
