// Setting and graphic updates carried by the feed: what a setting text
// assigns, which settings and file names the feed may not touch, and that a
// graphic replaces the old file only when the new one is complete.
#include <gtest/gtest.h>

#include "feed/feed_updates.h"
#include "tests/native/feed_test_support.h"

TEST(SettingUpdate, ParsesNameAndValue) {
    struct Case {
        const char* text;
        const char* name;
        const char* value;
    } cases[] = {
        {"PromptMultipleCount = 6", "PromptMultipleCount", "6"},
        {"PromptMultipleCount=6", "PromptMultipleCount", "6"},
        {"AlertFontName  ==  Times New Roman ", "AlertFontName", "Times New Roman "},
        {"AlertFontName\t= x", "AlertFontName", "x"},
        {"AlertFontName\r\n= x", "AlertFontName", "\r\n= x"},
        {"AlertFontName", "AlertFontName", ""},
        {"= 5", "", "5"},
        {"  Name=1", "", "Name=1"},
        {"Name=line one\r\nline two", "Name", "line one\r\nline two"},
    };
    for (const Case& c : cases) {
        SettingAssignment a = parseSettingAssignment(c.text);
        EXPECT_EQ(a.name, c.name) << c.text;
        EXPECT_EQ(a.value, c.value) << c.text;
    }
    std::string longName(300, 'n');
    SettingAssignment a = parseSettingAssignment(longName + "=1");
    EXPECT_EQ(a.name, std::string(260, 'n'));
    EXPECT_EQ(a.value, std::string(40, 'n') + "=1");
}

TEST(SettingUpdate, AppliesByKind) {
    const std::string longText(300, 't');
    struct Case {
        const char* name;
        std::string value;
        bool known;
        uint32_t Settings::*number;
        uint32_t wantNumber;
        std::string Settings::*text;
        std::string wantText;
    } cases[] = {
        {"alertfontsize", "20", true, &Settings::AlertFontSize, 20, nullptr, ""},
        {"AlertFontSize", "-1", true, &Settings::AlertFontSize, 0xFFFFFFFF, nullptr, ""},
        {"BeNoisy", "5", true, &Settings::BeNoisy, 1, nullptr, ""},
        {"BeNoisy", "yes", true, &Settings::BeNoisy, 0, nullptr, ""},
        {"ALERTTEXTCOLOR", "255 red", true, &Settings::AlertTextColor, 255, nullptr, ""},
        {"AllowINIUpdates", "0", true, &Settings::AllowINIUpdates, 0, nullptr, ""},
        {"AlertFontName", "Times\r\nNew", true, nullptr, 0, &Settings::AlertFontName,
         "Times\r\nNew"},
        {"AlertFontName", longText, true, nullptr, 0, &Settings::AlertFontName,
         longText.substr(0, 260)},
        {"NoSuchSetting", "1", false, nullptr, 0, nullptr, ""},
        {"AlertFontSiz", "1", false, &Settings::AlertFontSize, 16, nullptr, ""},
        // Settings that name a program or file to open stay as they are.
        {"DocumentBrowserPath", "\\\\evil\\x.exe", false, nullptr, 0,
         &Settings::DocumentBrowserPath, ""},
        {"applicationpath", "C:\\evil\\", false, nullptr, 0, &Settings::ApplicationPath, ""},
        {"ChangeFolderSound", "\\\\evil\\a.wav", false, nullptr, 0, &Settings::ChangeFolderSound,
         "~~~DEFAULT~~~"},
        {"ColourTableFile", "..\\x", false, nullptr, 0, &Settings::ColourTableFile, "HERALDER.CCL"},
    };
    for (const Case& c : cases) {
        Settings s;
        EXPECT_EQ(applySettingUpdate(s, c.name, c.value), c.known) << c.name;
        if (c.number) {
            EXPECT_EQ(s.*(c.number), c.wantNumber) << c.name;
        }
        if (c.text) {
            EXPECT_EQ(s.*(c.text), c.wantText) << c.name;
        }
    }
}

TEST(SettingUpdate, MarksTheItemWhetherOrNotApplied) {
    struct Case {
        std::optional<std::string> text;
        bool marked;
        uint32_t count;
    } cases[] = {
        {"PromptMultipleCount = 6", true, 6},
        {"Nonsense = 6", true, 4},
        {"ApplicationPath = C:\\x", true, 4},
        {"", true, 4},
        {std::nullopt, false, 4},
    };
    for (const Case& c : cases) {
        ScratchFolder dir;
        SeenList seen(dir.file("Heralder.lst"));
        Settings s;
        UpdateItem item = makeItem(ItemType::SettingUpdate, 2077);
        item.plainText = c.text;
        performSettingUpdate(item, s, seen);
        EXPECT_EQ(seen.isItemSeen(item), c.marked) << c.text.value_or("(absent)");
        EXPECT_EQ(s.PromptMultipleCount, c.count) << c.text.value_or("(absent)");
    }
}

TEST(GraphicUpdate, FileNameFromUrl) {
    struct Case {
        const char* url;
        const char* name;  // nullptr: refused
        const char* extension;
    } cases[] = {
        {"/update/images/logo.bmp", "logo", ".bmp"},
        {"images\\logo.png", "logo", ".png"},
        {"/a\\b/c.d.png", "c.d", ".png"},
        {"logo", "logo", ""},
        {"/update/logo.png. ", "logo", ".png"},
        {"/update/images/", nullptr, nullptr},
        {"", nullptr, nullptr},
        {"/update/..", nullptr, nullptr},
        {"/update/.", nullptr, nullptr},
        {"/update/. . .", nullptr, nullptr},
        {"/update/.png", nullptr, nullptr},
        {"C:logo.png", nullptr, nullptr},
        {"/update/logo.png:evil", nullptr, nullptr},
        {"/update/lo?go.png", nullptr, nullptr},
        {"/update/lo\x01go.png", nullptr, nullptr},
        {"/update/CON", nullptr, nullptr},
        {"/update/con.png", nullptr, nullptr},
        {"/update/Nul.tar.gz", nullptr, nullptr},
        {"/update/aux .bmp", nullptr, nullptr},
        {"/update/prn.", nullptr, nullptr},
        {"/update/COM1.bmp", nullptr, nullptr},
        {"/update/lpt9", nullptr, nullptr},
        {"/update/com\xb9.bmp", nullptr, nullptr},
        {"/update/conout$.bmp", nullptr, nullptr},
        {"/update/COM0.bmp", "COM0", ".bmp"},
        {"/update/COM10.bmp", "COM10", ".bmp"},
        {"/update/console.bmp", "console", ".bmp"},
        {"/update/nul_logo.bmp", "nul_logo", ".bmp"},
    };
    for (const Case& c : cases) {
        std::optional<GraphicFileName> got = graphicFileName(c.url);
        if (!c.name) {
            EXPECT_FALSE(got) << c.url;
            continue;
        }
        ASSERT_TRUE(got) << c.url;
        EXPECT_EQ(got->name, c.name) << c.url;
        EXPECT_EQ(got->extension, c.extension) << c.url;
    }
}

namespace {

struct GraphicRun {
    ScratchFolder dir;
    SeenList seen{dir.file("Heralder.lst")};
    ScriptedHost host;
    UpdateItem item = makeItem(ItemType::GraphicUpdate, 31);
    GraphicRun() { host.folder = dir.path(); }
    void go(const char* url) {
        item.url = url;
        performGraphicUpdate(item, host, seen);
    }
};

}  // namespace

TEST(GraphicUpdate, ReplacesTheFileOnlyOnceTheNewOneIsWritten) {
    GraphicRun run;
    writeFile(run.dir.file("logo.bmp"), "old");
    writeFile(run.dir.file("logo.bmp.temp"), "leftover from an earlier attempt");
    run.host.serverFiles["/update/images/logo.bmp"] = "new image";
    run.go("/update/images/logo.bmp");

    EXPECT_EQ(readFile(run.dir.file("logo.bmp")), "new image" + std::string(16, '\0'));
    EXPECT_FALSE(std::filesystem::exists(run.dir.file("logo.bmp.temp")));
    EXPECT_TRUE(run.seen.isItemSeen(run.item));
    EXPECT_TRUE(run.host.messages.empty());
    EXPECT_EQ(run.host.maxWaitDepth, 1);
    EXPECT_EQ(run.host.waitDepth, 0);
}

TEST(GraphicUpdate, FailedDownloadIsSilentAndUnmarked) {
    GraphicRun run;
    writeFile(run.dir.file("logo.bmp"), "old");
    run.go("/update/images/logo.bmp");
    EXPECT_EQ(run.host.fetched, (std::vector<std::string>{"/update/images/logo.bmp"}));
    EXPECT_EQ(readFile(run.dir.file("logo.bmp")), "old");
    EXPECT_FALSE(run.seen.isItemSeen(run.item));
    EXPECT_TRUE(run.host.messages.empty());
    EXPECT_EQ(run.host.waitDepth, 0);
}

TEST(GraphicUpdate, FailedWriteIsReportedAndKeepsTheOldImage) {
    GraphicRun run;
    writeFile(run.dir.file("logo.bmp"), "old");
    // A folder where the temporary file should go: it can be neither removed
    // nor opened for writing.
    std::filesystem::create_directories(run.dir.file("logo.bmp.temp/inner"));
    run.host.serverFiles["/x/logo.bmp"] = "new";
    run.go("/x/logo.bmp");
    EXPECT_EQ(readFile(run.dir.file("logo.bmp")), "old");
    EXPECT_EQ(
        run.host.messages,
        (std::vector<std::string>{"There has been an error upgrading the new graphic logo.bmp."}));
    EXPECT_FALSE(run.seen.isItemSeen(run.item));
}

TEST(GraphicUpdate, RefusedOrAbsentNamesFetchNothing) {
    for (const char* url : {"/update/con.bmp", "/update/..", "/a/b.png:stream", "/update/"}) {
        GraphicRun run;
        run.host.serverFiles[url] = "x";
        run.go(url);
        EXPECT_TRUE(run.host.fetched.empty()) << url;
        EXPECT_FALSE(run.seen.isItemSeen(run.item)) << url;
    }
    GraphicRun run;
    performGraphicUpdate(run.item, run.host, run.seen);  // no URL at all
    EXPECT_TRUE(run.host.fetched.empty());
    EXPECT_EQ(run.host.maxWaitDepth, 0);

    GraphicRun noFolder;
    noFolder.host.folder.clear();
    noFolder.host.serverFiles["/u/a.bmp"] = "x";
    noFolder.go("/u/a.bmp");
    EXPECT_TRUE(noFolder.host.fetched.empty());
    EXPECT_FALSE(std::filesystem::exists("a.bmp"));
}
