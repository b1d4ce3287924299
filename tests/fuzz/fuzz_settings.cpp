// The settings file both ways. Arbitrary bytes through the reader must leave
// skipped keys alone and texts short and free of control characters. Then the
// same bytes as a record (texts of any bytes and length, as a feed could set
// them) are saved and read again: every value must come back, less the cuts
// storableSettingText names, so that no value ever becomes a line of its own.
#include "tests/fuzz/fuzz_input.h"
#include "settings/settings_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    std::string_view bytes = asText(data, size);
    Settings first;
    readSettingsText(first, bytes);
    for (const SettingDef& def : SettingsTable) {
        if (def.readFlags & kSettingSkipOnRead)
            require(settingValueText(first, def) == settingValueText(Settings{}, def));
        if (const std::string* text = settingText(first, def)) {
            require(text->size() <= kSettingTextMax);
            for (char c : *text) require(static_cast<unsigned char>(c) >= 32);
        }
    }

    // Each row takes its value from the next piece of the input.
    Settings record;
    for (const SettingDef& def : SettingsTable) {
        const std::size_t take = bytes.empty() ? 0 : static_cast<unsigned char>(bytes[0]) + 8u;
        std::string_view piece = bytes.substr(bytes.empty() ? 0 : 1, take);
        bytes.remove_prefix(std::min(bytes.size(), take + 1));
        if (uint32_t* number = settingNumber(record, def))
            for (char c : piece.substr(0, 4))
                *number = *number << 8 | static_cast<unsigned char>(c);
        if (std::string* text = settingText(record, def)) assignSettingText(*text, piece);
    }
    Settings back;
    readSettingsText(back, formatSettingsFile(record, 0));
    for (const SettingDef& def : SettingsTable) {
        if (def.readFlags & kSettingSkipOnRead) continue;
        const std::string value = settingValueText(record, def);
        require(settingValueText(back, def) ==
                (def.isText() ? std::string(storableSettingText(def.key, value)) : value));
    }
    return 0;
}
