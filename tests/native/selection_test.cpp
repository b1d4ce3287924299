// The item filter: the user's choices per type, installed and out-of-date
// products, and what OnlyShowNewItems holds back.
#include <gtest/gtest.h>

#include "feed/selection.h"
#include "tests/native/feed_test_support.h"
#include "ui/choice_combo.h"

namespace {

struct FixedLookup : InstalledLookup {
    std::optional<InstalledVersion> answer;
    std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem&) override {
        return answer;
    }
};

InstalledVersion installedAt(uint32_t packed, uint32_t patch = 0, uint32_t beta = 0) {
    return InstalledVersion{packed, patch, beta, ""};
}

uint32_t packed(uint32_t major, uint32_t minor, char letter = 'a') {
    return (major << 5) | (minor << 10) | static_cast<uint32_t>(letter - 'a');
}

// A filter over its own settings, an empty seen list and a fixed lookup.
struct Filter {
    ScratchFolder dir;
    Settings settings;
    SeenList seen{dir.file("Heralder.lst")};
    FixedLookup lookup;
    bool operator()(const UpdateItem& item, bool reportMode = false) {
        SelectionContext context{settings, seen, lookup};
        return shouldShowItem(item, reportMode, context);
    }
};

}  // namespace

TEST(Selection, EveryChoiceListHasOneEntryPerRule) {
    ASSERT_EQ(typeChoiceTable().size(), 5u);
    for (const TypeChoices& choices : typeChoiceTable())
        EXPECT_EQ(splitChoiceList(choices.choiceList).size(), choices.ruleCount)
            << choices.choiceList;
    EXPECT_EQ(findTypeChoices(ItemType::Alert)->choiceList,
              std::string("Always;High importance;Medium and high importance;"
                          "High, medium and low importance;For all installed software;Never"));
    EXPECT_EQ(findTypeChoices(ItemType::SettingUpdate), nullptr);
}

TEST(Selection, ChoiceIndexPerType) {
    const std::optional<InstalledVersion> none;
    const std::optional<InstalledVersion> zero = installedAt(0);
    const std::optional<InstalledVersion> v5 = installedAt(packed(5, 0));
    struct Case {
        ItemType type;
        uint32_t index;
        int32_t importance;
        std::optional<InstalledVersion> installed;
        bool shown;
    } cases[] = {
        {ItemType::Alert, 0, 0, none, true},    {ItemType::Alert, 1, 0, none, false},
        {ItemType::Alert, 1, 3, none, true},    {ItemType::Alert, 2, 1, none, false},
        {ItemType::Alert, 2, 2, none, true},    {ItemType::Alert, 3, 0, none, false},
        {ItemType::Alert, 3, 1, none, true},    {ItemType::Alert, 3, -1, none, false},
        {ItemType::Alert, 4, 0, none, false},   {ItemType::Alert, 4, 0, zero, false},
        {ItemType::Alert, 4, 0, v5, true},      {ItemType::Alert, 5, 9, v5, false},
        {ItemType::Alert, 6, 0, none, true},    {ItemType::Alert, 0xFFFFFFFF, 0, none, true},
        {ItemType::Tip, 1, 0, none, false},     {ItemType::Tip, 1, 0, v5, true},
        {ItemType::Tip, 2, 0, v5, false},       {ItemType::Tip, 3, 0, none, true},
        {ItemType::Version, 0, 0, none, true},  {ItemType::Version, 1, 0, zero, false},
        {ItemType::Version, 1, 0, v5, true},    {ItemType::Version, 2, 0, none, false},
        {ItemType::Version, 3, 0, v5, false},   {ItemType::Version, 4, 0, none, true},
        {ItemType::Notice, 0, 0, none, true},   {ItemType::Notice, 1, 0, none, false},
        {ItemType::Notice, 2, 0, none, true},   {ItemType::OffTopic, 1, 0, none, false},
        {ItemType::OffTopic, 7, 0, none, true}, {ItemType::Unknown, 1, 0, none, true},
    };
    for (const Case& c : cases) {
        Filter filter;
        const TypeChoices* choices = findTypeChoices(c.type);
        if (choices) filter.settings.*(choices->popup) = c.index;
        filter.lookup.answer = c.installed;
        UpdateItem item = makeItem(c.type, 1);
        item.importance = c.importance;
        item.version = 5;
        EXPECT_EQ(filter(item), c.shown)
            << itemTypeTag(c.type) << " index " << c.index << " importance " << c.importance;
    }
}

TEST(Selection, ReportModeReadsTheReportTwin) {
    Filter filter;
    filter.settings.SetupNoticePopup = 1;
    filter.settings.SetupNoticeReport = 0;
    UpdateItem notice = makeItem(ItemType::Notice, 1);
    EXPECT_FALSE(filter(notice, false));
    EXPECT_TRUE(filter(notice, true));
}

TEST(Selection, OutOfDateComparison) {
    struct Case {
        const char* what;
        int32_t version, subVersion, revision, patch, beta;
        InstalledVersion installed;
        bool outOfDate;
    } cases[] = {
        {"5.2 vs 5.1a", 5, 2, 0, 0, 0, installedAt(packed(5, 1)), true},
        {"5.2 vs 5.2a, nothing more", 5, 2, 0, 0, 0, installedAt(packed(5, 2)), false},
        {"5.2 vs 5.3a", 5, 2, 0, 0, 0, installedAt(packed(5, 3)), false},
        {"6.0 vs 5.9a", 6, 0, 0, 0, 0, installedAt(packed(5, 9)), true},
        {"4.9 vs 5.0a", 4, 9, 0, 0, 0, installedAt(packed(5, 0)), false},
        {"revision c vs 5.2b", 5, 2, 'c', 0, 0, installedAt(packed(5, 2, 'b')), true},
        {"revision b vs 5.2c", 5, 2, 'b', 9, 0, installedAt(packed(5, 2, 'c')), false},
        {"same revision, patch 3 vs 2", 5, 2, 'b', 3, 0, installedAt(packed(5, 2, 'b'), 2), true},
        {"same revision, patch 3 vs 3", 5, 2, 'b', 3, 0, installedAt(packed(5, 2, 'b'), 3), false},
        {"patch decides, beta unused", 5, 2, 0, 1, 9, installedAt(packed(5, 2), 1, 0), false},
        {"beta 2 vs 1", 5, 2, 0, 0, 2, installedAt(packed(5, 2), 0, 1), true},
        {"beta 2 vs 2", 5, 2, 0, 0, 2, installedAt(packed(5, 2), 0, 2), false},
        {"no version: sub ignored", 0, 9, 0, 0, 0, installedAt(packed(5, 1)), false},
        {"no version: beta decides", 0, 0, 0, 0, 1, installedAt(packed(5, 1)), true},
        {"negative version is huge", -1, 0, 0, 0, 0, installedAt(packed(31, 31)), true},
        {"negative patch is huge", 5, 2, 0, -1, 0, installedAt(packed(5, 2), 7), true},
        {"installed patch -1 is huge", 5, 2, 0, 4, 0, installedAt(packed(5, 2), 0xFFFFFFFF), false},
    };
    for (const Case& c : cases) {
        UpdateItem item = makeItem(ItemType::Version, 1);
        item.version = c.version;
        item.subVersion = c.subVersion;
        item.revision = c.revision;
        item.patch = c.patch;
        item.beta = c.beta;
        EXPECT_EQ(isOutOfDate(item, c.installed), c.outOfDate) << c.what;

        Filter filter;
        filter.settings.SetupVersionPopup = 2;
        filter.lookup.answer = c.installed;
        EXPECT_EQ(filter(item), c.outOfDate) << c.what << " (filter)";
    }
}

TEST(Selection, OnlyShowNewItemsHoldsBackSeenAndIgnoredItems) {
    struct Case {
        const char* what;
        bool onlyNew;
        bool seen;
        const char* ignoreUntil;
        bool shown;
    } cases[] = {
        {"new item", true, false, nullptr, true},
        {"seen item", true, true, nullptr, false},
        {"seen item, filter off", false, true, nullptr, true},
        {"held until tomorrow", true, false, "03-16-2001", false},
        {"held until tomorrow, filter off", false, false, "03-16-2001", true},
        {"held until today", true, false, "03-15-2001", true},
        {"held until yesterday", true, false, "03-14-2001", true},
        {"day 0 never holds back", true, false, "01-01-2000", true},
        {"not a date", true, false, "soon", true},
    };
    for (const Case& c : cases) {
        Filter filter;
        filter.settings.OnlyShowNewItems = c.onlyNew;
        filter.settings.CurrentTransactionDate = "03-15-2001";
        UpdateItem item = makeItem(ItemType::Alert, 42);
        if (c.ignoreUntil) item.ignoreUntil = c.ignoreUntil;
        if (c.seen) filter.seen.markItemSeen(item);
        EXPECT_EQ(filter(item), c.shown) << c.what;
    }
}

TEST(Selection, UpdatesFollowTheirAllowFlags) {
    struct Case {
        ItemType type;
        uint32_t allowIni, allowGraphic;
        bool shown;
    } cases[] = {
        {ItemType::SettingUpdate, 1, 0, true},  {ItemType::SettingUpdate, 0, 1, false},
        {ItemType::SettingUpdate, 7, 0, true},  {ItemType::GraphicUpdate, 0, 1, true},
        {ItemType::GraphicUpdate, 1, 0, false},
    };
    for (const Case& c : cases) {
        Filter filter;
        filter.settings.AllowINIUpdates = c.allowIni;
        filter.settings.AllowGraphicUpdates = c.allowGraphic;
        EXPECT_EQ(filter(makeItem(c.type, 1)), c.shown) << itemTypeTag(c.type);
    }
}
