// The multiple-items prompt's answers against a real seen-list file: only
// "none ever" marks, and then every item of the document; only "disable"
// touches the start-up; only "show now" lets the run go on.
#include <gtest/gtest.h>

#include "notify/prompt_box.h"
#include "tests/native/feed_test_support.h"

TEST(PromptBox, EachChoiceHasItsOwnEffect) {
    const struct {
        PromptChoice choice;
        int goOn;
        const char* listAfter;
        uint32_t startupAfter;
        std::vector<uint32_t> applied;
    } cases[] = {
        {PromptChoice::ShowNow, 1, "5\r\n", 102, {}},
        {PromptChoice::NoneToday, 0, "5\r\n", 102, {}},
        // Every row, seen before or not, of any type.
        {PromptChoice::IgnoreAll, 0, "5\r\n5\r\n6\r\n7\r\n0\r\n", 102, {}},
        {PromptChoice::DisableAutomatic, 0, "5\r\n", 101, {101}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.choice));
        ScratchFolder folder;
        SeenList seen(folder.file("Heralder.lst"));
        std::vector<UpdateItem> items = {
            makeItem(ItemType::Alert, 5), makeItem(ItemType::Version, 6),
            makeItem(ItemType::GraphicUpdate, 7), makeItem(ItemType::Unknown, 0)};
        seen.markItemSeen(items[0]);
        Settings settings;
        settings.StartupOptions = 102;
        settings.PromptMultipleCount = 9;
        std::vector<uint32_t> applied;
        EXPECT_EQ(actOnPromptChoice(c.choice, items, settings, seen,
                                    [&](uint32_t option) { applied.push_back(option); }),
                  c.goOn);
        EXPECT_EQ(readFile(folder.file("Heralder.lst")), c.listAfter);
        EXPECT_EQ(settings.StartupOptions, c.startupAfter);
        EXPECT_EQ(applied, c.applied);
        EXPECT_EQ(settings.PromptMultipleCount, 9u);
    }
}

TEST(PromptBox, PendingCountFillsTheFirstFormat) {
    const struct {
        const char* text;
        int waiting;
        const char* expected;
    } cases[] = {
        {"there are %d items pending", 6, "there are 6 items pending"},
        {"%d", 32760, "32760"},
        {"%d and %d", 7, "7 and %d"},
        {"no count", 3, "no count"},
        {"", 3, ""},
    };
    for (const auto& c : cases) EXPECT_EQ(fillPendingCount(c.text, c.waiting), c.expected);
}
