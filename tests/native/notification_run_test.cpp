// The notification run with a scripted user: which windows open in which
// order, what ends the run, and that every shown or applied item is in the
// seen-item list afterwards, however the run ended.
#include <gtest/gtest.h>

#include "feed/notification_run.h"
#include "tests/native/feed_test_support.h"

namespace {

struct Scenario {
    ScratchFolder dir;
    Settings settings;
    SeenList seen{dir.file("Heralder.lst")};
    ScriptedHost host;
    std::vector<UpdateItem> items;

    Scenario() {
        settings.PromptMultipleItems = 0;
        host.folder = dir.path;
    }
    void addAlerts(int32_t first, int count) {
        for (int i = 0; i < count; ++i) items.push_back(makeItem(ItemType::Alert, first + i));
    }
    bool go() { return runNotifications(items, host, settings, seen); }
    std::string listFile() { return readFile(seen.path()); }
};

}  // namespace

// The unknown item (3) opens no window but is marked like the rest; a cancel
// (on 4, the third window of five) ends the run after marking it.
TEST(NotificationRun, ShowsInDocumentOrderAndCancelEndsTheRun) {
    Scenario run;
    EXPECT_FALSE(run.go());  // nothing to run over
    run.settings.SetupVersionPopup = 0;
    for (ItemType type : {ItemType::Notice, ItemType::Version, ItemType::Unknown, ItemType::Tip,
                          ItemType::OffTopic, ItemType::Alert})
        run.items.push_back(makeItem(type, static_cast<int32_t>(run.items.size() + 1)));
    run.host.cancelOn = 4;
    EXPECT_TRUE(run.go());
    EXPECT_EQ(run.host.shown, (std::vector<int32_t>{1, 2, 4}));
    EXPECT_EQ(run.listFile(), "1\r\n2\r\n3\r\n4\r\n");
}

TEST(NotificationRun, NeverShowAgainEndsTheRunLeavingTheItemUnmarked) {
    Scenario run;
    run.settings.StartupOptions = 100;
    run.addAlerts(1, 3);
    run.host.neverShowAgainOn = 2;
    EXPECT_TRUE(run.go());
    EXPECT_EQ(run.host.shown, (std::vector<int32_t>{1, 2}));
    EXPECT_EQ(run.listFile(), "1\r\n");
    EXPECT_EQ(run.settings.StartupOptions, 101u);
}

// Seen items do not count towards the threshold; items the prompt marks do
// not open a window afterwards.
TEST(NotificationRun, PromptOpensFromTheThresholdAndCanStopTheRun) {
    struct Case {
        int itemCount, alreadySeen, promptAnswer;
        std::size_t promptMarks;
        std::vector<int> prompts;
        bool result;
        std::size_t windows;
    } cases[] = {
        {4, 0, 1, 0, {4}, true, 4},  {3, 0, 1, 0, {}, true, 3},  {5, 2, 1, 0, {}, true, 3},
        {5, 0, 0, 0, {5}, false, 0}, {4, 0, 1, 2, {4}, true, 2},
    };
    for (const Case& c : cases) {
        Scenario run;
        run.settings.PromptMultipleItems = 1;
        run.settings.PromptMultipleCount = 4;
        run.addAlerts(100, c.itemCount);
        for (int i = 0; i < c.alreadySeen; ++i) run.seen.markItemSeen(run.items[i]);
        run.host.promptAnswer = c.promptAnswer;
        run.host.promptMarks = c.promptMarks;
        EXPECT_EQ(run.go(), c.result) << c.itemCount;
        EXPECT_EQ(run.host.prompts, c.prompts) << c.itemCount;
        EXPECT_EQ(run.host.shown.size(), c.windows) << c.itemCount;
    }
}

// A graphic whose download failed (9) is still waiting: it counts towards the
// prompt and is marked by the window pass.
TEST(NotificationRun, UpdatesRunBeforeWindowsOnlyWhenAllowed) {
    for (uint32_t allowed : {0u, 1u}) {
        Scenario run;
        run.settings.AllowINIUpdates = run.settings.AllowGraphicUpdates = allowed;
        run.settings.PromptMultipleItems = 1;
        run.settings.PromptMultipleCount = 2;
        UpdateItem setting = makeItem(ItemType::SettingUpdate, 7);
        setting.plainText = "alertfontsize = 20";
        UpdateItem graphic = makeItem(ItemType::GraphicUpdate, 8);
        graphic.url = "/update/images/logo.bmp";
        UpdateItem failed = graphic;
        failed.number = 9;
        failed.url = "/update/images/missing.bmp";
        run.host.serverFiles["/update/images/logo.bmp"] = "BM";
        run.items = {makeItem(ItemType::Alert, 1), setting, graphic, failed};
        EXPECT_TRUE(run.go());

        const bool on = allowed != 0;
        EXPECT_EQ(run.settings.AlertFontSize, on ? 20u : Settings{}.AlertFontSize);
        EXPECT_EQ(run.host.prompts, on ? std::vector<int>{2} : std::vector<int>{});
        EXPECT_EQ(run.listFile(), on ? "8\r\n7\r\n1\r\n9\r\n" : "1\r\n");
        EXPECT_EQ(run.host.shown, (std::vector<int32_t>{1}));
    }
}

TEST(NotificationRun, WithOnlyShowNewItemsOffEveryRunShowsAndMarksAgain) {
    Scenario run;
    run.settings.OnlyShowNewItems = 0;
    UpdateItem setting = makeItem(ItemType::SettingUpdate, 7);
    setting.plainText = "PromptMultipleCount=6";
    run.items = {makeItem(ItemType::Alert, 1), setting};
    EXPECT_TRUE(run.go());
    EXPECT_TRUE(run.go());
    EXPECT_EQ(run.host.shown, (std::vector<int32_t>{1, 1}));
    // Each run: the setting pass marks 7, the window pass marks 1 and 7 again.
    EXPECT_EQ(run.listFile(), "7\r\n1\r\n7\r\n7\r\n1\r\n7\r\n");
}
