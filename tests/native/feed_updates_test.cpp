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
        {"AlertFontName  ==  Times New Roman ", "AlertFontName", "Times New Roman "},
        {"AlertFontName=line one\r\nline two", "AlertFontName", "line one\r\nline two"},
        {"AlertFontName=" + longText, "AlertFontName", longText.substr(0, 260)},
        {"AlertFontSiz=1", "AlertFontSize", std::nullopt},
        // An empty value leaves the setting as it was.
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
// the write fail. Only a complete write replaces the old image and marks the
// item; only a failed write is reported.
TEST(GraphicUpdate, ReplacesTheOldImageOnlyAfterACompleteWrite) {
    const std::string fresh = "new image" + std::string(16, '\0');
    const std::vector<std::string> reported = {
        "There has been an error upgrading the new graphic logo.bmp."};
    struct Case {
        std::optional<std::string> url;
        bool folder, blocked;
        std::string image;
        std::vector<std::string> messages;
    } cases[] = {
        {"/update/logo.bmp", true, false, fresh, {}},
        {"/update/logo.bmp", true, true, "old", reported},
        {"/update/gone.bmp", true, false, "old", {}},
        {"/update/con.bmp", true, false, "old", {}},
        {std::nullopt, true, false, "old", {}},
        {"/update/logo.bmp", false, false, "old", {}},
    };
    for (const Case& c : cases) {
        ScratchFolder dir;
        SeenList seen(dir.file("Heralder.lst"));
        ScriptedHost host;
        host.folder = c.folder ? dir.path : "";
        host.serverFiles = {{"/update/con.bmp", "x"}, {"/update/logo.bmp", "new image"}};
        writeFile(dir.file("logo.bmp"), "old");
        if (c.blocked)
            std::filesystem::create_directories(dir.file("logo.bmp.temp/inner"));
        else
            writeFile(dir.file("logo.bmp.temp"), "leftover from an earlier attempt");
        UpdateItem item = makeItem(ItemType::GraphicUpdate, 31);
        item.url = c.url;
        performGraphicUpdate(item, host, seen);
        const std::string what = c.url.value_or("(none)") + (c.folder ? "" : " no folder") +
                                 (c.blocked ? " blocked" : "");
        EXPECT_EQ(readFile(dir.file("logo.bmp")), c.image) << what;
        EXPECT_EQ(seen.isItemSeen(item), c.image == fresh) << what;
        EXPECT_EQ(host.messages, c.messages) << what;
    }
}
