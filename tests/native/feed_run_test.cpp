// The feed's run with a scripted user: the seen list, the item filter, the
// windows and what ends the run, and the updates the feed carries. Every shown
// or applied item must be in the seen list afterwards, however the run ended.
#include <gtest/gtest.h>

#include <tuple>

#include "feed/feed_updates.h"
#include "feed/notification_run.h"
#include "feed/selection.h"
#include "tests/native/feed_test_support.h"
#include "ui/choice_combo.h"

namespace {

InstalledVersion installedAt(uint32_t major, uint32_t minor, char letter = 'a', uint32_t patch = 0,
                             uint32_t beta = 0) {
    return {(major << 5) | (minor << 10) | static_cast<uint32_t>(letter - 'a'), patch, beta, ""};
}

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
    void promptFrom(uint32_t count) {
        settings.PromptMultipleItems = 1;
        settings.PromptMultipleCount = count;
    }
    // A setting update with its text, a graphic update with its url.
    void add(ItemType type, int32_t number, std::string text) {
        UpdateItem item = makeItem(type, number);
        (type == ItemType::SettingUpdate ? item.plainText : item.url) = std::move(text);
        items.push_back(item);
    }
    bool go() { return runNotifications(items, host, settings, seen); }
    bool shows(const UpdateItem& item, bool reportMode = false) {
        SelectionContext context{settings, seen, host};
        return shouldShowItem(item, reportMode, context);
    }
    std::string listFile() { return readFile(seen.path()); }
};

}  // namespace

// Every reader must see the marks the runtime's line reading saw; damage (a
// Ctrl-Z, NULs, binary, a last line without its line end) must neither hide
// marks nor swallow the next one: a damaged list is rewritten with the numbers
// it holds before the append, a clean one is only appended to.
TEST(SeenList, ReadsAsTheRuntimeDidAndEachMarkLandsOnALineOfItsOwn) {
    using Numbers = std::vector<int32_t>;
    // The file (nullopt: none at all), marks seen and unseen, the file after marking 9.
    const std::tuple<std::optional<std::string>, Numbers, Numbers, std::string> cases[] = {
        {std::nullopt, {}, {0}, "9\r\n"},
        {"", {}, {0}, "9\r\n"},
        {"17\r\n", {17}, {18}, "17\r\n9\r\n"},
        {"\r\n", {0}, {}, "\r\n9\r\n"},
        {"  1042abc\r\n", {1042}, {}, "  1042abc\r\n9\r\n"},
        {"41", {41}, {}, "41\r\n9\r\n"},
        {"7\r\n7\r\n", {7}, {}, "7\r\n7\r\n9\r\n"},
        {"5\r\n\x1a\r\n7\r\n", {5, 7}, {}, "5\r\n7\r\n9\r\n"},  // a Ctrl-Z hides nothing
        {std::string("5\r\n\0\0junk\r\n  1042abc\r\n-3", 24),
         {5, 1042, -3},
         {},
         "5\r\n1042\r\n-3\r\n9\r\n"},
        {"\xff\xfe"
         "12\r\n\x89PNG\r\n",
         {},
         {12},
         "9\r\n"},
    };
    for (const auto& [file, seen, unseen, afterMarking9] : cases) {
        SCOPED_TRACE(file.value_or("(none)"));
        ScratchFolder dir;
        if (file) writeFile(dir.file("Heralder.lst"), *file);
        SeenList list(dir.file("Heralder.lst"));
        for (int32_t n : seen) EXPECT_TRUE(list.isItemSeen(makeItem(ItemType::Alert, n))) << n;
        for (int32_t n : unseen) EXPECT_FALSE(list.isItemSeen(makeItem(ItemType::Alert, n))) << n;
        EXPECT_TRUE(list.markItemSeen(makeItem(ItemType::Alert, 9)));
        EXPECT_EQ(readFile(list.path()), afterMarking9);
        for (int32_t n : parseSeenNumbers(afterMarking9))
            EXPECT_TRUE(SeenList(list.path()).isItemSeen(makeItem(ItemType::Alert, n))) << n;
    }
}

TEST(SeenList, MarkingAppendsCrLfLinesAndFollowsOtherWriters) {
    ScratchFolder dir;
    SeenList list(dir.file("Heralder.lst"));
    ASSERT_TRUE(list.markItemSeen(makeItem(ItemType::Alert, 2077)));
    ASSERT_TRUE(list.markItemSeen(makeItem(ItemType::Tip, -3)));
    EXPECT_EQ(readFile(list.path()), "2077\r\n-3\r\n");
    writeFile(list.path(), "5\r\n", true);  // another copy of the program appends
    EXPECT_TRUE(list.isItemSeen(makeItem(ItemType::Alert, 5)));
    {
        const SeenList::OneLook look(list);  // a pass over the items reads once
        writeFile(list.path(), "6\r\n", true);
        EXPECT_FALSE(list.isItemSeen(makeItem(ItemType::Alert, 6)));
    }
    EXPECT_TRUE(list.isItemSeen(makeItem(ItemType::Alert, 6)));
    std::filesystem::remove(list.path());
    EXPECT_FALSE(list.isItemSeen(makeItem(ItemType::Alert, 2077)));
    SeenList unwritable(dir.file("no-such-folder/Heralder.lst"));
    EXPECT_FALSE(unwritable.markItemSeen(makeItem(ItemType::Alert, 5)));
    EXPECT_FALSE(unwritable.isItemSeen(makeItem(ItemType::Alert, 5)));
}

// Each index against four items that tell the rules apart: not installed at
// importance 0 (version number 0) and 3 (no file), installed and current at 2,
// installed and out of date at 1. The last index of each row is out of range.
TEST(Selection, ChoiceIndexPerType) {
    const std::pair<int32_t, std::optional<InstalledVersion>> probes[] = {
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
                Scenario filter;
                filter.settings.*(choices->popup) = index;
                filter.host.installed = probes[p].second;
                UpdateItem item = makeItem(type, 1);
                item.importance = probes[p].first;
                item.version = 5;
                EXPECT_EQ(filter.shows(item), outcomes[index][p] == 'Y')
                    << itemTypeTag(type) << " index " << index << " item " << p;
            }
    }
    // Report mode has its own index; any number allows an update kind, each
    // flag its own (0 and 1 are the run's).
    Scenario other;
    other.settings.SetupNoticePopup = 1;
    other.settings.SetupNoticeReport = 0;
    other.settings.AllowINIUpdates = 7, other.settings.AllowGraphicUpdates = 0;
    EXPECT_FALSE(other.shows(makeItem(ItemType::Notice, 1), false));
    EXPECT_TRUE(other.shows(makeItem(ItemType::Notice, 1), true));
    EXPECT_TRUE(other.shows(makeItem(ItemType::SettingUpdate, 1)));
    EXPECT_FALSE(other.shows(makeItem(ItemType::GraphicUpdate, 1)));
}

// The first part that differs decides; later parts are not looked at.
TEST(Selection, OutOfDateComparison) {
    auto announced = [](int32_t version, int32_t sub, int32_t revision = 0, int32_t patch = 0,
                        int32_t beta = 0) {
        UpdateItem item;
        std::tie(item.version, item.subVersion, item.revision, item.patch, item.beta) =
            std::tie(version, sub, revision, patch, beta);
        return item;
    };
    const std::tuple<const char*, UpdateItem, InstalledVersion, bool> cases[] = {
        {"5.2 vs 5.1a", announced(5, 2), installedAt(5, 1), true},
        {"5.2 vs 5.2a, patch and beta 0", announced(5, 2), installedAt(5, 2), false},
        {"5.2 vs 5.3a, beta ignored", announced(5, 2, 0, 0, 9), installedAt(5, 3), false},
        {"revision c vs 5.2b", announced(5, 2, 'c'), installedAt(5, 2, 'b'), true},
        {"revision b vs 5.2c, patch ignored", announced(5, 2, 'b', 9), installedAt(5, 2, 'c'),
         false},
        {"patch 3 vs 2", announced(5, 2, 'b', 3), installedAt(5, 2, 'b', 2), true},
        {"patch decides, beta unused", announced(5, 2, 0, 1, 9), installedAt(5, 2, 'a', 1, 0),
         false},
        {"beta 2 vs 1", announced(5, 2, 0, 0, 2), installedAt(5, 2, 'a', 0, 1), true},
        {"no version: sub ignored", announced(0, 9), installedAt(5, 1), false},
        {"negative version is huge", announced(-1, 0), installedAt(31, 31), true},
    };
    for (const auto& [what, item, installed, outOfDate] : cases)
        EXPECT_EQ(isOutOfDate(item, installed), outOfDate) << what;
}

TEST(Selection, OnlyShowNewItemsHoldsBackSeenAndIgnoredItems) {
    // OnlyShowNewItems, seen, ignore until (today is 03-15-2001), shown.
    const std::tuple<bool, bool, const char*, bool> cases[] = {
        {true, true, nullptr, false},       {true, false, "03-16-2001", false},
        {false, false, "03-16-2001", true}, {true, false, "03-15-2001", true},
        {true, false, "01-01-2000", true},  // day 0 never holds back
    };
    for (const auto& [onlyNew, seen, ignoreUntil, shown] : cases) {
        Scenario filter;
        filter.settings.OnlyShowNewItems = onlyNew;
        filter.settings.CurrentTransactionDate = "03-15-2001";
        UpdateItem item = makeItem(ItemType::Alert, 42);
        if (ignoreUntil) item.ignoreUntil = ignoreUntil;
        if (seen) filter.seen.markItemSeen(item);
        EXPECT_EQ(filter.shows(item), shown) << (ignoreUntil ? ignoreUntil : "seen");
    }
}

// The unknown item (3) opens no window but is marked like the rest; a cancel
// (on 4, the third window of five) ends the run after marking it; "never show
// again" ends it leaving its item unmarked.
TEST(NotificationRun, ShowsInDocumentOrderAndCancelOrNeverShowAgainEndTheRun) {
    Scenario run, never;
    EXPECT_FALSE(run.go());  // nothing to run over
    run.settings.SetupVersionPopup = 0;
    for (ItemType type : {ItemType::Notice, ItemType::Version, ItemType::Unknown, ItemType::Tip,
                          ItemType::OffTopic, ItemType::Alert})
        run.items.push_back(makeItem(type, static_cast<int32_t>(run.items.size() + 1)));
    run.host.cancelOn = 4;
    EXPECT_TRUE(run.go());
    EXPECT_EQ(std::tuple(run.host.shown, run.listFile()),
              std::tuple(std::vector<int32_t>{1, 2, 4}, "1\r\n2\r\n3\r\n4\r\n"));

    never.settings.StartupOptions = 100;
    never.addAlerts(1, 3);
    never.host.neverShowAgainOn = 2;
    EXPECT_TRUE(never.go());
    EXPECT_EQ(std::tuple(never.host.shown, never.listFile(), never.settings.StartupOptions),
              std::tuple(std::vector<int32_t>{1, 2}, "1\r\n", 101u));
}

// Seen items do not count towards the threshold; items the prompt marks do
// not open a window afterwards.
TEST(NotificationRun, PromptOpensFromTheThresholdAndCanStopTheRun) {
    // Items, of which seen already, the prompt's answer, items the prompt marks:
    // the waiting counts it opened with, the run's result, windows opened.
    const std::tuple<int, int, int, std::size_t, std::vector<int>, bool, std::size_t> cases[] = {
        {4, 0, 1, 0, {4}, true, 4},  {3, 0, 1, 0, {}, true, 3},  {5, 2, 1, 0, {}, true, 3},
        {5, 0, 0, 0, {5}, false, 0}, {4, 0, 1, 2, {4}, true, 2},
    };
    for (const auto& [itemCount, seen, answer, marks, prompts, result, windows] : cases) {
        Scenario run;
        run.promptFrom(4);
        run.addAlerts(100, itemCount);
        for (int i = 0; i < seen; ++i) run.seen.markItemSeen(run.items[i]);
        run.host.promptAnswer = answer;
        run.host.promptMarks = marks;
        const bool ran = run.go();
        EXPECT_EQ(std::tuple(ran, run.host.prompts, run.host.shown.size()),
                  std::tuple(result, prompts, windows))
            << itemCount;
    }
}

// A run with news waits for the user as a whole: given up, it applies, shows
// and marks nothing. A run with nothing new never asks.
TEST(NotificationRun, WaitsForTheUserOnlyWithNewsAndGivesUpLeavingEverything) {
    for (bool userFree : {true, false})
        for (bool news : {true, false}) {
            Scenario run;
            run.host.userFree = userFree;
            run.addAlerts(7, 2);
            run.add(ItemType::SettingUpdate, 9, "NoiseType = 5");
            if (!news)
                for (const UpdateItem& item : run.items) run.seen.markItemSeen(item);
            const std::string before = run.listFile();
            run.go();
            const bool showed = news && userFree;
            EXPECT_EQ(
                std::tuple(run.host.waitedForUser, run.host.shown.size(), run.settings.NoiseType),
                std::tuple(news ? 1 : 0, showed ? 2u : 0u, showed ? 5u : 64u))
                << userFree << news;
            EXPECT_TRUE(showed || run.listFile() == before) << userFree << news;
        }
}

// A graphic whose download failed (9) is still waiting: it counts towards the
// prompt and is marked by the window pass.
TEST(NotificationRun, UpdatesRunBeforeWindowsOnlyWhenAllowed) {
    for (uint32_t allowed : {0u, 1u}) {
        Scenario run;
        run.settings.AllowINIUpdates = run.settings.AllowGraphicUpdates = allowed;
        run.promptFrom(2);
        run.addAlerts(1, 1);
        run.add(ItemType::SettingUpdate, 7, "alertfontsize = 20");
        run.add(ItemType::GraphicUpdate, 8, "/update/images/logo.bmp");
        run.add(ItemType::GraphicUpdate, 9, "/update/images/missing.bmp");
        run.host.serverFiles["/update/images/logo.bmp"] = "BM";
        EXPECT_TRUE(run.go());

        const bool on = allowed != 0;
        EXPECT_EQ(std::tuple(run.settings.AlertFontSize, run.host.prompts, run.listFile(),
                             run.host.shown),
                  std::tuple(on ? 20u : Settings{}.AlertFontSize,
                             on ? std::vector<int>{2} : std::vector<int>{},
                             on ? "8\r\n7\r\n1\r\n9\r\n" : "1\r\n", std::vector<int32_t>{1}));
    }
}

// The download that used up the run's time and those never tried are not
// marked, so the next run fetches them; a download that failed in time is.
TEST(NotificationRun, GraphicUpdatesPastTheDownloadTimeWaitForTheNextRun) {
    Scenario run;
    run.promptFrom(1);
    run.addAlerts(1, 1);
    for (int32_t n : {7, 8, 9})
        run.add(ItemType::GraphicUpdate, n, "/update/images/g" + std::to_string(n) + ".png");
    run.host.timeSpentAfter = 2;
    EXPECT_TRUE(run.go());
    EXPECT_EQ(std::tuple(run.host.fetches, run.host.prompts, run.listFile()),
              std::tuple(2, std::vector<int>{2}, "1\r\n7\r\n"));
}

TEST(NotificationRun, WithOnlyShowNewItemsOffEveryRunShowsAndMarksAgain) {
    Scenario run;
    run.settings.OnlyShowNewItems = 0;
    run.addAlerts(1, 1);
    run.add(ItemType::SettingUpdate, 7, "PromptMultipleCount=6");
    EXPECT_TRUE(run.go() && run.go());
    // Each run: the setting pass marks 7, the window pass marks 1 and 7 again.
    EXPECT_EQ(std::tuple(run.host.shown, run.listFile()),
              std::tuple(std::vector<int32_t>{1, 1}, "7\r\n1\r\n7\r\n7\r\n1\r\n7\r\n"));
}

// Whatever the text does to the settings, the item is marked: the feed's
// answer is taken even when it is refused. Invariants of the split over any
// text are the fuzz target's.
TEST(SettingUpdate, AppliesByKindAndMarksTheItem) {
    const std::string longText(300, 't');
    // The text (nullopt: none, nothing marked), a setting, its value (nullopt: as it was).
    const std::tuple<std::optional<std::string>, const char*, std::optional<std::string>> cases[] =
        {
            {"alertfontsize=20", "AlertFontSize", "20"},
            {"BeNoisy = 5", "BeNoisy", "1"},
            {"AlertFontName  ==  Times New Roman ", "AlertFontName", "Times New Roman "},
            {"AlertFontName=line one\r\nline two", "AlertFontName", "line one\r\nline two"},
            {"AlertFontName=" + longText, "AlertFontName", longText.substr(0, 260)},
            {"AlertFontSiz=1", "AlertFontSize", std::nullopt},
            {"PromptMultipleCount =", "PromptMultipleCount", std::nullopt},
            {"AlertFontName= \t", "AlertFontName", std::nullopt},
            {std::nullopt, "AlertFontSize", std::nullopt},
            // Settings that name a program or file to open stay as they are.
            {"DocumentBrowserPath=\\\\evil\\x.exe", "DocumentBrowserPath", std::nullopt},
            {"applicationpath = C:\\evil\\", "ApplicationPath", std::nullopt},
        };
    auto valueOf = [](const Settings& s, const char* key) {
        const SettingDef* def = findSetting(key);
        return def->text ? s.*(def->text) : std::to_string(s.*(def->number));
    };
    for (const auto& [text, setting, after] : cases) {
        Scenario run;
        UpdateItem item = makeItem(ItemType::SettingUpdate, 2077);
        item.plainText = text;
        performSettingUpdate(item, run.settings, run.seen);
        EXPECT_EQ(valueOf(run.settings, setting), after.value_or(valueOf(Settings{}, setting)))
            << text.value_or("(none)");
        EXPECT_EQ(run.seen.isItemSeen(item), text.has_value()) << text.value_or("(none)");
    }
}

// Separators, colons and trailing dots are the fuzz target's; devices and
// characters Windows refuses are checked here.
TEST(GraphicUpdate, FileNameFromUrl) {
    const std::pair<const char*, const char*> accepted[] = {
        {"/a\\b/c.d.png", "c.d|.png"},       {"logo", "logo|"},
        {"/update/logo.png. ", "logo|.png"}, {"/u/COM0.bmp", "COM0|.bmp"},
        {"/u/COM10.bmp", "COM10|.bmp"},      {"/u/console.bmp", "console|.bmp"}};
    for (auto [url, expected] : accepted) {
        std::optional<GraphicFileName> got = graphicFileName(url);
        EXPECT_EQ(got ? got->name + "|" + got->extension : "refused", expected) << url;
    }
    for (const char* url :
         {"/update/images/", "", "/u/..", "/u/.png", "/u/lo?go.png", "/u/CON", "/u/Nul.tar.gz",
          "/u/aux .bmp", "/u/COM1.bmp", "/u/lpt9", "/u/com\xb9.bmp", "/u/conout$.bmp"})
        EXPECT_FALSE(graphicFileName(url)) << url;
}

// The new image goes to ".temp" first: an earlier attempt's leftover there is
// replaced, and a folder there (which can be neither removed nor written) makes
// the write fail. Only a complete picture of its extension replaces the old
// image and marks the item; only a failed write is reported. Nothing but a
// picture is ever written: not the seen list, not a program.
TEST(GraphicUpdate, ReplacesOnlyPicturesAndOnlyAfterACompleteWrite) {
    const std::string picture = "BM new image", fresh = picture + std::string(16, '\0');
    const std::vector<std::string> reported = {
        "There has been an error upgrading the new graphic logo.bmp."};
    using Text = std::optional<std::string>;
    // The url, the body (nullopt: the download fails), a graphic folder, ".temp"
    // blocked by a folder, whether the image is replaced.
    const std::tuple<Text, Text, bool, bool, bool> cases[] = {
        {"/update/logo.bmp", picture, true, false, true},
        {"/update/logo.bmp", picture, true, true, false},
        {"/update/gone.bmp", std::nullopt, true, false, false},
        {"/update/con.bmp", picture, true, false, false},
        {std::nullopt, picture, true, false, false},
        {"/update/logo.bmp", picture, false, false, false},
        {"/update/logo.bmp", "", true, false, false},
        {"/update/logo.bmp", "<html>404 Not Found</html>", true, false, false},
        {"/update/logo.bmp", "\x89PNG\r\n\x1A\n", true, false, false},
        {"/update/images/Heralder.lst", "1\r\n", true, false, false},
        {"/update/evil.exe", "MZ", true, false, false},
    };
    for (const auto& [url, body, folder, blocked, replaced] : cases) {
        Scenario run;
        if (!folder) run.host.folder = "";
        if (url && body) run.host.serverFiles = {{*url, *body}};
        writeFile(run.dir.file("logo.bmp"), "old");
        if (blocked)
            std::filesystem::create_directories(run.dir.file("logo.bmp.temp/inner"));
        else
            writeFile(run.dir.file("logo.bmp.temp"), "leftover from an earlier attempt");
        UpdateItem item = makeItem(ItemType::GraphicUpdate, 31);
        item.url = url;
        performGraphicUpdate(item, run.host, run.seen);
        const std::string what = url.value_or("(none)") + " " + body.value_or("").substr(0, 8) +
                                 (folder ? "" : " no folder") + (blocked ? " blocked" : "");
        EXPECT_EQ(std::tuple(readFile(run.dir.file("logo.bmp")), run.listFile(),
                             std::filesystem::exists(run.dir.file("evil.exe")), run.host.messages),
                  std::tuple(replaced ? fresh : "old", replaced ? "31\r\n" : "", false,
                             blocked ? reported : std::vector<std::string>{}))
            << what;
    }
}
