// The item filter: the user's choices per type, installed and out-of-date
// products, and what OnlyShowNewItems holds back.
#include <gtest/gtest.h>

#include <tuple>

#include "feed/selection.h"
#include "tests/native/feed_test_support.h"
#include "ui/choice_combo.h"

namespace {

InstalledVersion installedAt(uint32_t major, uint32_t minor, char letter = 'a', uint32_t patch = 0,
                             uint32_t beta = 0) {
    return {(major << 5) | (minor << 10) | static_cast<uint32_t>(letter - 'a'), patch, beta, ""};
}

// A filter over its own settings, an empty seen list and a fixed installed version.
struct Filter {
    ScratchFolder dir;
    Settings settings;
    SeenList seen{dir.file("Heralder.lst")};
    ScriptedHost lookup;
    bool operator()(const UpdateItem& item, bool reportMode = false) {
        SelectionContext context{settings, seen, lookup};
        return shouldShowItem(item, reportMode, context);
    }
};

}  // namespace

// Each index against four items that tell the rules apart: not installed at
// importance 0 (version number 0) and 3 (no file), installed and current at 2,
// installed and out of date at 1. The last index of each row is out of range.
TEST(Selection, ChoiceIndexPerType) {
    const struct {
        int32_t importance;
        std::optional<InstalledVersion> installed;
    } probes[] = {
        {0, InstalledVersion{}}, {3, std::nullopt}, {2, installedAt(5, 0)}, {1, installedAt(4, 9)}};
    const std::pair<ItemType, std::vector<std::string>> cases[] = {
        {ItemType::Alert, {"YYYY", "NYNN", "NYYN", "NYYY", "NNYY", "NNNN", "YYYY"}},
        {ItemType::Version, {"YYYY", "NNYY", "NNNY", "NNNN", "YYYY"}},
        {ItemType::Tip, {"YYYY", "NNYY", "NNNN", "YYYY"}},
        {ItemType::Notice, {"YYYY", "NNNN", "YYYY"}},
        {ItemType::OffTopic, {"YYYY", "NNNN", "YYYY"}},
    };
    for (const auto& [type, outcomes] : cases) {
        const TypeChoices* choices = findTypeChoices(type);
        ASSERT_TRUE(choices);
        // The combo box offers one entry per rule.
        EXPECT_EQ(splitChoiceList(choices->choiceList).size(), outcomes.size() - 1);
        for (uint32_t index = 0; index < outcomes.size(); ++index)
            for (std::size_t p = 0; p < 4; ++p) {
                Filter filter;
                filter.settings.*(choices->popup) = index;
                filter.lookup.installed = probes[p].installed;
                UpdateItem item = makeItem(type, 1);
                item.importance = probes[p].importance;
                item.version = 5;
                EXPECT_EQ(filter(item), outcomes[index][p] == 'Y')
                    << itemTypeTag(type) << " index " << index << " item " << p;
            }
    }
    Filter report;
    report.settings.SetupNoticePopup = 1;
    report.settings.SetupNoticeReport = 0;
    EXPECT_FALSE(report(makeItem(ItemType::Notice, 1), false));
    EXPECT_TRUE(report(makeItem(ItemType::Notice, 1), true));
}

// The first part that differs decides; later parts are not looked at.
TEST(Selection, OutOfDateComparison) {
    struct Case {
        const char* what;
        int32_t version, subVersion, revision, patch, beta;
        InstalledVersion installed;
        bool outOfDate;
    } cases[] = {
        {"5.2 vs 5.1a", 5, 2, 0, 0, 0, installedAt(5, 1), true},
        {"5.2 vs 5.2a, patch and beta 0", 5, 2, 0, 0, 0, installedAt(5, 2), false},
        {"5.2 vs 5.3a, beta ignored", 5, 2, 0, 0, 9, installedAt(5, 3), false},
        {"revision c vs 5.2b", 5, 2, 'c', 0, 0, installedAt(5, 2, 'b'), true},
        {"revision b vs 5.2c, patch ignored", 5, 2, 'b', 9, 0, installedAt(5, 2, 'c'), false},
        {"patch 3 vs 2", 5, 2, 'b', 3, 0, installedAt(5, 2, 'b', 2), true},
        {"patch decides, beta unused", 5, 2, 0, 1, 9, installedAt(5, 2, 'a', 1, 0), false},
        {"beta 2 vs 1", 5, 2, 0, 0, 2, installedAt(5, 2, 'a', 0, 1), true},
        {"no version: sub ignored", 0, 9, 0, 0, 0, installedAt(5, 1), false},
        {"negative version is huge", -1, 0, 0, 0, 0, installedAt(31, 31), true},
    };
    for (const Case& c : cases) {
        UpdateItem item;
        std::tie(item.version, item.subVersion, item.revision, item.patch, item.beta) =
            std::tie(c.version, c.subVersion, c.revision, c.patch, c.beta);
        EXPECT_EQ(isOutOfDate(item, c.installed), c.outOfDate) << c.what;
    }
}

TEST(Selection, OnlyShowNewItemsHoldsBackSeenAndIgnoredItems) {
    struct Case {
        bool onlyNew, seen;
        const char* ignoreUntil;
        bool shown;
    } cases[] = {
        {true, true, nullptr, false},       {true, false, "03-16-2001", false},
        {false, false, "03-16-2001", true}, {true, false, "03-15-2001", true},
        {true, false, "01-01-2000", true},  // day 0 never holds back
    };
    for (const Case& c : cases) {
        Filter filter;
        filter.settings.OnlyShowNewItems = c.onlyNew;
        filter.settings.CurrentTransactionDate = "03-15-2001";
        UpdateItem item = makeItem(ItemType::Alert, 42);
        if (c.ignoreUntil) item.ignoreUntil = c.ignoreUntil;
        if (c.seen) filter.seen.markItemSeen(item);
        EXPECT_EQ(filter(item), c.shown) << (c.ignoreUntil ? c.ignoreUntil : "seen");
    }
}

TEST(Selection, UpdatesFollowTheirAllowFlags) {
    for (auto [ini, graphic] : {std::pair(0u, 1u), std::pair(7u, 0u)}) {
        Filter filter;
        filter.settings.AllowINIUpdates = ini;
        filter.settings.AllowGraphicUpdates = graphic;
        EXPECT_EQ(filter(makeItem(ItemType::SettingUpdate, 1)), ini != 0);
        EXPECT_EQ(filter(makeItem(ItemType::GraphicUpdate, 1)), graphic != 0);
    }
}
