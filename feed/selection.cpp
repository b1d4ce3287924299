// The item filter (see selection.h).
#include "feed/selection.h"

#include <array>

#include "feed/feed_date.h"

namespace {

using R = ChoiceRule;

const std::array<TypeChoices, 5> kTypeChoices = {{
    {ItemType::Alert,
     "Always;High importance;Medium and high importance;High, medium and low importance;"
     "For all installed software;Never",
     &Settings::SetupAlertPopup,
     &Settings::SetupAlertReport,
     {R::Always, R::ImportanceAtLeast3, R::ImportanceAtLeast2, R::ImportanceAtLeast1, R::Installed,
      R::Never},
     6},
    {ItemType::Version,
     "Always;For all installed software;For out of date installed software;Never",
     &Settings::SetupVersionPopup,
     &Settings::SetupVersionReport,
     {R::Always, R::Installed, R::OutOfDate, R::Never},
     4},
    {ItemType::Tip,
     "Always;For all installed software;Never",
     &Settings::SetupTipPopup,
     &Settings::SetupTipReport,
     {R::Always, R::Installed, R::Never},
     3},
    {ItemType::Notice,
     "Always;Never",
     &Settings::SetupNoticePopup,
     &Settings::SetupNoticeReport,
     {R::Always, R::Never},
     2},
    {ItemType::OffTopic,
     "Always;Never",
     &Settings::SetupOfftopicPopup,
     &Settings::SetupOfftopicReport,
     {R::Always, R::Never},
     2},
}};

uint32_t majorOf(uint32_t packed) {
    return (packed >> 5) & 31;
}
uint32_t minorOf(uint32_t packed) {
    return (packed >> 10) & 31;
}
uint32_t letterOf(uint32_t packed) {
    return 'a' + (packed & 31);
}

// Held back by IGNOREUNTIL: a date after today's transaction date. Day 0 (the
// first of January 2000, or text that is no date) never holds anything back.
bool isHeldBack(const UpdateItem& item, const Settings& settings) {
    if (!item.ignoreUntil) return false;
    auto today = static_cast<int32_t>(dateToDayNumber(settings.CurrentTransactionDate));
    auto held = static_cast<int32_t>(dateToDayNumber(*item.ignoreUntil));
    return held != 0 && held > today;
}

bool passesRule(ChoiceRule rule, const UpdateItem& item, SelectionContext& context) {
    switch (rule) {
        case R::Always:
            return true;
        case R::ImportanceAtLeast3:
            return item.importance >= 3;
        case R::ImportanceAtLeast2:
            return item.importance >= 2;
        case R::ImportanceAtLeast1:
            return item.importance >= 1;
        case R::Installed:
        case R::OutOfDate: {
            std::optional<InstalledVersion> installed =
                context.installed.lookupInstalledVersion(item);
            if (!installed || installed->versionNumber == 0) return false;
            return rule == R::Installed || isOutOfDate(item, *installed);
        }
        case R::Never:
            return false;
    }
    return true;
}

}  // namespace

const TypeChoices* findTypeChoices(ItemType type) {
    for (const TypeChoices& choices : kTypeChoices)
        if (choices.type == type) return &choices;
    return nullptr;
}

ChoiceRule choiceRule(const TypeChoices& choices, uint32_t index) {
    return index < choices.ruleCount ? choices.rules[index] : ChoiceRule::Always;
}

bool isOutOfDate(const UpdateItem& item, const InstalledVersion& installed) {
    const auto version = static_cast<uint32_t>(item.version);
    const auto subVersion = static_cast<uint32_t>(item.subVersion);
    const auto revision = static_cast<uint32_t>(item.revision);
    const auto patch = static_cast<uint32_t>(item.patch);
    const auto beta = static_cast<uint32_t>(item.beta);
    const uint32_t packed = installed.versionNumber;

    if (version > 0) {
        if (majorOf(packed) < version) return true;
        if (majorOf(packed) > version) return false;
        if (minorOf(packed) < subVersion) return true;
        if (minorOf(packed) > subVersion) return false;
    }
    if (revision != 0) {
        if (letterOf(packed) < revision) return true;
        if (letterOf(packed) > revision) return false;
    }
    if (patch != 0) return installed.patchLevel < patch;
    if (beta == 0) return false;
    return installed.betaLevel < beta;
}

bool shouldShowItem(const UpdateItem& item, bool reportMode, SelectionContext& context) {
    const Settings& settings = context.settings;
    if (settings.OnlyShowNewItems != 0) {
        if (context.seen.isItemSeen(item)) return false;
        if (isHeldBack(item, settings)) return false;
    }
    switch (item.type) {
        case ItemType::SettingUpdate:
            return settings.AllowINIUpdates != 0;
        case ItemType::GraphicUpdate:
            return settings.AllowGraphicUpdates != 0;
        default:
            break;
    }
    const TypeChoices* choices = findTypeChoices(item.type);
    if (!choices) return true;
    uint32_t index = settings.*(reportMode ? choices->report : choices->popup);
    return passesRule(choiceRule(*choices, index), item, context);
}
