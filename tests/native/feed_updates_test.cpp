// Setting and graphic updates carried by the feed: what a setting text
// assigns, which settings and file names the feed may not touch, and that a
// graphic replaces the old file only when the new one is complete.
#include <gtest/gtest.h>

#include "feed/feed_updates.h"
#include "tests/native/feed_test_support.h"

// Whatever the text does to the settings, the item is marked: the feed's
// answer is taken even when it is refused. Invariants of the split over any
// text are the fuzz target's.
TEST(SettingUpdate, AppliesByKindAndMarksTheItem) {
    const std::string longText(300, 't');
    struct Case {
        std::optional<std::string> text;   // nullopt: none at all, nothing marked
        const char* setting;               // the one to look at afterwards
        std::optional<std::string> after;  // nullopt: as it was
    } cases[] = {
        {"alertfontsize=20", "AlertFontSize", "20"},
        {"BeNoisy = 5", "BeNoisy", "1"},
        {"BeNoisy = yes", "BeNoisy", "0"},
        {"AlertFontName  ==  Times New Roman ", "AlertFontName", "Times New Roman "},
        {"AlertFontName=line one\r\nline two", "AlertFontName", "line one\r\nline two"},
        {"AlertFontName=" + longText, "AlertFontName", longText.substr(0, 260)},
        {"AlertFontSiz=1", "AlertFontSize", std::nullopt},
        {"", "AlertFontSize", std::nullopt},
        {std::nullopt, "AlertFontSize", std::nullopt},
        // Settings that name a program or file to open stay as they are.
        {"DocumentBrowserPath=\\\\evil\\x.exe", "DocumentBrowserPath", std::nullopt},
        {"applicationpath = C:\\evil\\", "ApplicationPath", std::nullopt},
        {"ChangeFolderSound=\\\\evil\\a.wav", "ChangeFolderSound", std::nullopt},
        {"ColourTableFile=..\\x", "ColourTableFile", std::nullopt},
    };
    auto valueOf = [](const Settings& s, const char* key) {
        const SettingDef* def = findSetting(key);
        return def->text ? s.*(def->text) : std::to_string(s.*(def->number));
    };
    for (const Case& c : cases) {
        ScratchFolder dir;
        SeenList seen(dir.file("Heralder.lst"));
        Settings s;
        UpdateItem item = makeItem(ItemType::SettingUpdate, 2077);
        item.plainText = c.text;
        performSettingUpdate(item, s, seen);
        const std::string what = c.text.value_or("(none)");
        EXPECT_EQ(valueOf(s, c.setting), c.after.value_or(valueOf(Settings{}, c.setting))) << what;
        EXPECT_EQ(seen.isItemSeen(item), c.text.has_value()) << what;
    }
}

// Separators, colons and trailing dots are the fuzz target's; devices and
// characters Windows refuses are checked here.
TEST(GraphicUpdate, FileNameFromUrl) {
    struct Case {
        const char* url;
        const char* name;
        const char* extension;
    } accepted[] = {
        {"/update/images/logo.bmp", "logo", ".bmp"},
        {"/a\\b/c.d.png", "c.d", ".png"},
        {"logo", "logo", ""},
        {"/update/logo.png. ", "logo", ".png"},
        {"/u/COM0.bmp", "COM0", ".bmp"},
        {"/u/COM10.bmp", "COM10", ".bmp"},
        {"/u/console.bmp", "console", ".bmp"},
    };
    for (const Case& c : accepted) {
        std::optional<GraphicFileName> got = graphicFileName(c.url);
        ASSERT_TRUE(got) << c.url;
        EXPECT_EQ(got->name, c.name) << c.url;
        EXPECT_EQ(got->extension, c.extension) << c.url;
    }
    for (const char* url :
         {"/update/images/", "", "/u/..", "/u/.png", "/u/lo?go.png", "/u/CON", "/u/Nul.tar.gz",
          "/u/aux .bmp", "/u/COM1.bmp", "/u/lpt9", "/u/com\xb9.bmp", "/u/conout$.bmp"})
        EXPECT_FALSE(graphicFileName(url)) << url;
}

namespace {

struct GraphicRun {
    ScratchFolder dir;
    SeenList seen{dir.file("Heralder.lst")};
    ScriptedHost host;
    UpdateItem item = makeItem(ItemType::GraphicUpdate, 31);
    GraphicRun() {
        host.folder = dir.path;
        writeFile(dir.file("logo.bmp"), "old");
    }
    void go(std::optional<std::string> url) {
        item.url = url;
        performGraphicUpdate(item, host, seen);
    }
};

}  // namespace

TEST(GraphicUpdate, ReplacesTheFileOnlyOnceTheNewOneIsWritten) {
    GraphicRun run;
    writeFile(run.dir.file("logo.bmp.temp"), "leftover from an earlier attempt");
    run.host.serverFiles["/update/images/logo.bmp"] = "new image";
    run.go("/update/images/logo.bmp");

    EXPECT_EQ(readFile(run.dir.file("logo.bmp")), "new image" + std::string(16, '\0'));
    EXPECT_FALSE(std::filesystem::exists(run.dir.file("logo.bmp.temp")));
    EXPECT_TRUE(run.seen.isItemSeen(run.item));
    EXPECT_TRUE(run.host.messages.empty());
    EXPECT_EQ(run.host.waitDepth, 0);
}

TEST(GraphicUpdate, FailedWriteIsReportedAndKeepsTheOldImage) {
    GraphicRun run;
    // A folder where the temporary file should go can be neither removed nor
    // opened for writing.
    std::filesystem::create_directories(run.dir.file("logo.bmp.temp/inner"));
    run.host.serverFiles["/x/logo.bmp"] = "new";
    run.go("/x/logo.bmp");
    EXPECT_EQ(readFile(run.dir.file("logo.bmp")), "old");
    EXPECT_EQ(
        run.host.messages,
        (std::vector<std::string>{"There has been an error upgrading the new graphic logo.bmp."}));
    EXPECT_FALSE(run.seen.isItemSeen(run.item));
}

// A failed download, a refused name, no URL or no product folder: silent,
// the old image kept, the item left for the next run.
TEST(GraphicUpdate, NothingToWriteIsSilentAndUnmarked) {
    struct Case {
        std::optional<std::string> url;
        bool folder;
        std::size_t fetches;
    } cases[] = {{"/update/gone.bmp", true, 1},
                 {"/update/con.bmp", true, 0},
                 {std::nullopt, true, 0},
                 {"/update/logo.bmp", false, 0}};
    for (const Case& c : cases) {
        GraphicRun run;
        if (!c.folder) run.host.folder.clear();
        run.host.serverFiles = {{"/update/con.bmp", "x"}, {"/update/logo.bmp", "x"}};
        run.go(c.url);
        EXPECT_EQ(run.host.fetched.size(), c.fetches) << c.url.value_or("(none)");
        EXPECT_EQ(readFile(run.dir.file("logo.bmp")), "old") << c.url.value_or("(none)");
        EXPECT_FALSE(run.seen.isItemSeen(run.item)) << c.url.value_or("(none)");
        EXPECT_TRUE(run.host.messages.empty());
        EXPECT_EQ(run.host.waitDepth, 0);
    }
}
