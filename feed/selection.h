#pragma once
// Which items the user wants to see: the user's choice per item type, whether
// the product is installed or out of date, and, with OnlyShowNewItems, whether
// the item was seen already or is held back until a later date. The same
// choice lists fill the Setup dialog's combo boxes, so they live in one table
// beside the rules that give their indices a meaning.
#include <cstddef>
#include <cstdint>
#include <optional>

#include "feed/installed_product.h"
#include "feed/seen_list.h"
#include "feed/update_item.h"
#include "settings/settings.h"

// What one entry of a choice list asks of an item.
enum class ChoiceRule {
    Always,
    ImportanceAtLeast3,
    ImportanceAtLeast2,
    ImportanceAtLeast1,
    Installed,
    OutOfDate,
    Never,
};

struct TypeChoices {
    ItemType type;
    const char* choiceList;  // ";"-separated, as the combo box shows it
    uint32_t Settings::*popup;
    uint32_t Settings::*report;
    ChoiceRule rules[6];
    std::size_t ruleCount;  // an index at or beyond it means Always
};

// The choices of one of the five item types the user chooses for; nullptr for
// the other types.
const TypeChoices* findTypeChoices(ItemType type);
// The rule an index selects; out-of-range indices mean Always.
ChoiceRule choiceRule(const TypeChoices& choices, uint32_t index);

// The installed-version source the filter asks.
class InstalledLookup {
  public:
    virtual ~InstalledLookup() = default;
    virtual std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem& item) = 0;
};

// Whether a version item announces something newer than what is installed.
// Unsigned comparisons, the first field that differs decides.
bool isOutOfDate(const UpdateItem& item, const InstalledVersion& installed);

struct SelectionContext {
    const Settings& settings;
    SeenList& seen;
    InstalledLookup& installed;
};

bool shouldShowItem(const UpdateItem& item, bool reportMode, SelectionContext& context);
