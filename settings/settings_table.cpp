// The settings table: 43 rows in file order. The order is alphabetical except
// that OnlyShowNewItems stands before NoiseType; it is both the order of the
// lines in the file and the order in which abbreviated keys are matched, so it
// must not be "tidied".
#include "settings/settings.h"

#include "base/ascii.h"

namespace {

constexpr uint8_t F = kSettingFlag;
constexpr uint8_t N = kSettingInteger;
constexpr uint8_t C = kSettingInteger | kSettingColour;
constexpr uint8_t T = kSettingText;
constexpr uint8_t SKIP = kSettingSkipOnRead;

constexpr SettingDef num(const char* key, uint32_t Settings::*m, uint8_t type, uint8_t read = 0,
                         int control = 0) {
    return {key, m, nullptr, type, read, control};
}
constexpr SettingDef txt(const char* key, std::string Settings::*m, uint8_t read = 0) {
    return {key, nullptr, m, T, read, 0};
}

}  // namespace

#define NUM(key, type, ...) num(#key, &Settings::key, type, ##__VA_ARGS__)
#define TXT(key, ...) txt(#key, &Settings::key, ##__VA_ARGS__)

const std::array<SettingDef, kSettingCount> SettingsTable = {{
    NUM(AlertBackgroundColor, C),
    NUM(AlertFontAntialias, F),
    NUM(AlertFontBold, F),
    NUM(AlertFontItal, F),
    TXT(AlertFontName),
    NUM(AlertFontSize, N),
    NUM(AlertTextColor, C),
    NUM(AllowGraphicUpdates, N),
    NUM(AllowINIUpdates, N),
    TXT(ApplicationPath),
    NUM(BeNoisy, F),
    TXT(BuildDate, SKIP),
    TXT(ChangeFolderSound),
    TXT(ColourTableFile),
    TXT(CurrentTransactionDate),
    NUM(DocumentBrowserFlags, N),
    TXT(DocumentBrowserPath),
    NUM(DoNoticationsAutomatically, F),
    NUM(DownloadGraphics, F),
    NUM(InitConfigDone, F),
    NUM(OnlyShowNewItems, F),
    NUM(NoiseType, N),
    NUM(PatchLevel, N, SKIP),
    NUM(PromptMultipleCount, N),
    NUM(PromptMultipleItems, F),
    NUM(SetupAlertPopup, N),
    NUM(SetupAlertReport, N),
    NUM(SetupNoticePopup, N),
    NUM(SetupNoticeReport, N),
    NUM(SetupOfftopicPopup, N),
    NUM(SetupOfftopicReport, N),
    NUM(SetupTipPopup, N),
    NUM(SetupTipReport, N),
    NUM(SetupVersionPopup, N),
    NUM(SetupVersionReport, N),
    NUM(SoftButtons, N | kSettingChoice, 0, 119),
    NUM(StartMaximized, F),
    NUM(StartupOptions, N),
    NUM(StickyWindowBottom, N),
    NUM(StickyWindowLeft, N),
    NUM(StickyWindowRight, N),
    NUM(StickyWindowTop, N),
    NUM(VersionNumber, N, SKIP),
}};

#undef NUM
#undef TXT

const SettingDef* findSetting(std::string_view key) {
    for (const SettingDef& def : SettingsTable)
        if (key == def.key) return &def;
    return nullptr;
}

const SettingDef* findSettingNoCase(std::string_view key) {
    for (const SettingDef& def : SettingsTable)
        if (equalsIgnoringAsciiCase(def.key, key)) return &def;
    return nullptr;
}

uint32_t* settingNumber(Settings& record, const SettingDef& def) {
    return def.number ? &(record.*def.number) : nullptr;
}

const uint32_t* settingNumber(const Settings& record, const SettingDef& def) {
    return def.number ? &(record.*def.number) : nullptr;
}

std::string* settingText(Settings& record, const SettingDef& def) {
    return def.text ? &(record.*def.text) : nullptr;
}

const std::string* settingText(const Settings& record, const SettingDef& def) {
    return def.text ? &(record.*def.text) : nullptr;
}

void assignSettingText(std::string& value, std::string_view text) {
    value.assign(text.substr(0, kSettingTextMax));
}

std::string settingValueText(const Settings& record, const SettingDef& def) {
    if (const uint32_t* number = settingNumber(record, def)) return std::to_string(*number);
    if (const std::string* text = settingText(record, def)) return text->c_str();
    return {};
}
