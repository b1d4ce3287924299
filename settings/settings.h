#pragma once
// The program's settings: a record with a member per key, and SettingsTable,
// the one table that drives reading, writing and the feed's setting updates.
// The process's own record belongs to app/, which hands it down. Members are
// named exactly as the keys in the settings file so that the code reads like
// the file. Numbers are 32-bit unsigned; texts hold at most kSettingTextMax
// characters.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

inline constexpr std::size_t kSettingTextMax = 260;

// The values of StartupOptions, which are also the startup manager's radio
// button ids.
inline constexpr uint32_t kStartupManual = 101;     // no shortcut in the Startup folder
inline constexpr uint32_t kStartupAutomatic = 102;  // shortcut with "/UPDATE"

struct Settings {
    uint32_t AlertBackgroundColor = 16777215;
    uint32_t AlertFontAntialias = 1;
    uint32_t AlertFontBold = 0;
    uint32_t AlertFontItal = 0;
    std::string AlertFontName = "Georgia";
    uint32_t AlertFontSize = 16;
    uint32_t AlertTextColor = 0;
    uint32_t AllowGraphicUpdates = 1;
    uint32_t AllowINIUpdates = 1;
    std::string ApplicationPath;
    uint32_t BeNoisy = 1;
    std::string BuildDate = "Sep 17 2025";
    std::string ChangeFolderSound = "~~~DEFAULT~~~";
    std::string ColourTableFile = "HERALDER.CCL";
    std::string CurrentTransactionDate;
    uint32_t DocumentBrowserFlags = 127;
    std::string DocumentBrowserPath;
    uint32_t DoNoticationsAutomatically = 1;
    uint32_t DownloadGraphics = 1;
    uint32_t InitConfigDone = 0;
    uint32_t OnlyShowNewItems = 1;
    uint32_t NoiseType = 64;
    uint32_t PatchLevel = 1;
    uint32_t PromptMultipleCount = 4;
    uint32_t PromptMultipleItems = 1;
    uint32_t SetupAlertPopup = 0;
    uint32_t SetupAlertReport = 0;
    uint32_t SetupNoticePopup = 0;
    uint32_t SetupNoticeReport = 0;
    uint32_t SetupOfftopicPopup = 0;
    uint32_t SetupOfftopicReport = 0;
    uint32_t SetupTipPopup = 0;
    uint32_t SetupTipReport = 0;
    uint32_t SetupVersionPopup = 2;
    uint32_t SetupVersionReport = 1;
    uint32_t SoftButtons = 1;
    uint32_t StartMaximized = 0;
    uint32_t StartupOptions = kStartupManual;
    uint32_t StickyWindowBottom = 2147483647;
    uint32_t StickyWindowLeft = 2147483647;
    uint32_t StickyWindowRight = 2147483647;
    uint32_t StickyWindowTop = 2147483647;
    uint32_t VersionNumber = 544;
};

// Type bits of a row.
enum : uint8_t {
    kSettingFlag = 0x01,  // 0 or 1, stored as an integer
    kSettingText = 0x02,
    kSettingInteger = 0x04,
    kSettingColour = 0x08,  // always with kSettingInteger
    kSettingChoice = 0x10,  // bound to a dialog list (only SoftButtons)
};
// Read bits of a row.
enum : uint8_t {
    kSettingSkipOnRead = 0x01,  // written with the program's own value, never read back
};

struct SettingDef {
    const char* key;
    uint32_t Settings::*number;   // set for numeric rows
    std::string Settings::*text;  // set for text rows
    uint8_t typeFlags;
    uint8_t readFlags;
    int controlId;  // the dialog control that edits it, or 0

    bool isNumeric() const { return (typeFlags & (kSettingFlag | kSettingInteger)) != 0; }
    bool isText() const { return (typeFlags & kSettingText) != 0; }
};

inline constexpr std::size_t kSettingCount = 43;
// In file order; also the order in which keys are matched on reading.
extern const std::array<SettingDef, kSettingCount> SettingsTable;

// The row of that key, compared exactly; nullptr when there is none.
const SettingDef* findSetting(std::string_view key);
// The same, ASCII case-insensitively (the feed's setting updates).
const SettingDef* findSettingNoCase(std::string_view key);

// The value a row describes, for code that works through the table rather than
// by member name; nullptr when the row is of the other kind.
uint32_t* settingNumber(Settings& record, const SettingDef& def);
const uint32_t* settingNumber(const Settings& record, const SettingDef& def);
std::string* settingText(Settings& record, const SettingDef& def);
const std::string* settingText(const Settings& record, const SettingDef& def);

// Replaces a text value with at most kSettingTextMax characters of text, the
// room the program's text settings have always had.
void assignSettingText(std::string& value, std::string_view text);

// The value as it stands after "Key = " in the settings file: the number in
// unsigned decimal, or the text up to its first NUL character.
std::string settingValueText(const Settings& record, const SettingDef& def);
