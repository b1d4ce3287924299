#pragma once
// The decisions of the Setup dialog that need no window: the choice lists it
// offers, the values it commits and the order and resets of that commit, the
// font list's initial entry, and which label colour a colour swatch takes.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "settings/settings.h"

// The five filter lists are the run's own (findTypeChoices), so that what
// Setup offers and what the run understands cannot drift apart.
inline constexpr char kSoftButtonChoices[] = "None;Soft;Flex;Wedge";

// Texts the dialog stores are cut to this many characters.
inline constexpr std::size_t kSetupTextMax = 259;

// Everything the dialog's controls hold when OK is pressed; a list without a
// selection gives 0.
struct SetupValues {
    uint32_t softButtons = 0;
    uint32_t alertPopup = 0;
    uint32_t tipPopup = 0;
    uint32_t versionPopup = 0;
    uint32_t offtopicPopup = 0;
    uint32_t noticePopup = 0;
    bool onlyShowNewItems = false;
    bool doNotificationsAutomatically = false;
    bool beNoisy = false;
    bool downloadGraphics = false;
    std::string transactionDate;
    uint32_t fontSize = 0;  // already bounded by the size field
    bool fontBold = false;
    bool fontItalic = false;
    bool fontAntialias = false;
    std::string fontName;  // "" when the font list has no selection
};

// OK: stores the values in record. The keys no control edits are reset on
// the way (the four Report keys and AllowINIUpdates to 0), so that after a
// user's own Setup the feed no longer changes the settings behind their
// back; SetupNoticeReport and AllowGraphicUpdates are left as they are.
void commitSetup(Settings& record, const SetupValues& values);

// The font list's entry for the stored face name: the first of names (in
// list order) that begins with storedName, ASCII case-insensitively; -1 when
// none does or no name is stored.
int initialFontIndex(const std::vector<std::string>& names, std::string_view storedName);

// Whether a label on colour (0x00BBGGRR) needs white rather than black: the
// weighted brightness, each share truncated and the sum kept to a byte as
// the program has always computed it, is below 129.
bool isDarkColour(uint32_t colour);
