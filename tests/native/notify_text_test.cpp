// The notification windows' texts without the windows, and which picture names
// and addresses an item may use.
#include <gtest/gtest.h>

// GCC 12 warns about every member a designated initializer leaves to its default.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

#include <tuple>

#include "notify/alert_text.h"
#include "notify/browse_text.h"
#include "notify/prompt_box.h"
#include "notify/url_policy.h"
#include "notify/version_box_text.h"
#include "tests/native/fake_installed.h"

namespace {

UpdateItem fooItem() {
    return {.type = ItemType::Alert,
            .date = "07-15-2003",
            .application = "Foo",
            .version = 2,
            .subVersion = 1,
            .revision = 'b',
            .patch = 3};
}

}  // namespace

TEST(AlertText, HeaderLine) {
    const std::string date = "07-15-2003", full = " Foo 2.1b (Revision 3) Released " + date;
    using Text = std::optional<std::string>;
    // Type, application, date, revision, patch, beta: the line.
    const std::tuple<ItemType, Text, Text, char, int32_t, int32_t, Text> cases[] = {
        {ItemType::Alert, "Foo", date, 'b', 3, 0, full},
        {ItemType::Notice, "Foo", date, 'b', 3, 0, full},  // tips and notices too
        {ItemType::Alert, "Foo", date, 0, 3, 0, " Foo 2.1 (Revision 3) Released " + date},
        {ItemType::Alert, "Foo", date, 'b', 0, -1, " Foo 2.1b Released " + date},
        {ItemType::Alert, "Foo", std::nullopt, 'b', 3, 0, " Foo 2.1b (Revision 3)"},
        {ItemType::Alert, "Foo", "", 'b', 3, 0, " Foo 2.1b (Revision 3)"},
        {ItemType::Alert, std::nullopt, date, 'b', 3, 0, "  Released " + date},  // two blanks
        {ItemType::Alert, "", std::nullopt, 'b', 3, 0, std::nullopt},
        {ItemType::OffTopic, "Foo", date, 'b', 3, 0, std::nullopt},
    };
    for (const auto& [type, application, date, revision, patch, beta, line] : cases) {
        UpdateItem item = fooItem();
        item.type = type, item.application = application, item.date = date;
        item.revision = revision, item.patch = patch, item.beta = beta;
        EXPECT_EQ(alertHeaderLine(item), line) << line.value_or("(none)");
    }
}

// Each piece is dropped when the line would reach 260 characters.
TEST(AlertText, HeaderLineKeepsBelow260Characters) {
    UpdateItem item = fooItem();
    item.application = std::string(300, 'A');  // the version is cut off with it
    EXPECT_EQ(alertHeaderLine(item), " " + std::string(258, 'A'));  // the buffer is full

    // " " + name + " 2.1b" is the name and 6; " Released " needs 12 of room, the date its own 10.
    item.patch = 0;
    const std::pair<std::size_t, const char*> cases[] = {
        {233, " 2.1b Released 07-15-2003"},
        {234, " 2.1b Released "},
        {241, " 2.1b Released "},
        {242, " 2.1b07-15-2003"},  // the date has its own check, even without " Released "
        {244, " 2.1b"}};
    for (const auto& [name, tail] : cases) {
        item.application = std::string(name, 'A');
        EXPECT_EQ(alertHeaderLine(item), " " + item.application.value() + tail) << name;
    }
}

TEST(AlertText, CaptionTopAndFit) {
    EXPECT_EQ(std::tuple(alertCaption({}), alertCaption({.title = ""}),
                         alertCaption({.title = "Support hours"})),
              std::tuple("Alert", "Alert", "Support hours"));

    // With a header line, below the check box or the header; otherwise at the top.
    const int tops[] = {alertTextTop(true, true), alertTextTop(true, false),
                        alertTextTop(false, true), alertTextTop(false, false)};
    EXPECT_EQ(std::vector<int>(std::begin(tops), std::end(tops)), (std::vector<int>{48, 28, 8, 8}));

    // caption 19, frames 3: 19 + 6 + 48 + text + 8, from 208 up to the screen's 768 - 4.
    for (auto [text, height] :
         {std::pair{16, 208}, {127, 208}, {128, 209}, {682, 763}, {683, 764}, {1 << 20, 764}})
        EXPECT_EQ(fitAlertHeight(19, 3, 48, text, 768), height) << text;
    // At 192 DPI the margin and the minimum double; the measures passed in
    // are already the window's: 38 + 12 + 96 + text + 16, from 416 up.
    for (auto [text, height] : {std::pair{16, 416}, {254, 416}, {255, 417}, {2000, 1436}})
        EXPECT_EQ(fitAlertHeight(38, 6, 96, text, 1440, 192), height) << text;
}

TEST(AlertText, VisibleTextStopsAfterTheScreenful) {
    EXPECT_EQ(alertVisibleText("one\ntwo\nthree", 10), "one\ntwo\nthree");
    EXPECT_EQ(alertVisibleText("a\nb\nc\nd", 2), "a\nb");  // the last line that can show
    // A word wider than the column keeps a column and a pixel of it; blanks fill every line.
    EXPECT_EQ(alertVisibleText(std::string(600, 'w') + " end", 5), std::string(571, 'w') + " end");
    EXPECT_EQ(alertVisibleText(std::string(5000, 'x'), 2), std::string(571, 'x'));
    EXPECT_EQ(alertVisibleText(std::string(3000, ' '), 2), std::string(1140, ' '));

    std::string huge;
    for (int i = 0; i < 200000; ++i) huge += "Twenty words of a long notice. ";
    EXPECT_LE(alertVisibleText(huge, 60).size(), 60u * 570u);
}

TEST(AlertText, PictureNameMustBePlainAndBytesAPicture) {
    for (const char* kept : {"alert.png", "photo.JPG", "noextension"})
        EXPECT_EQ(alertPictureName({.graphic = kept}), kept);
    for (const char* refused :
         {"", "..\\heralder.exe", "images/alert.png", "C:alert.png", "alert.png:stream",
          "alert.png.", "..", "CON.png", "nul", "a\tb.png", "\\\\host\\share\\x.png"})
        EXPECT_FALSE(alertPictureName({.graphic = refused})) << refused;
    EXPECT_FALSE(alertPictureName({}));

    using namespace std::string_view_literals;
    EXPECT_TRUE(looksLikePicture("\x89PNG\r\n\x1A\n\0\0\0\rIHDR"sv));
    EXPECT_TRUE(looksLikePicture("\xFF\xD8\xFF\xE0\0\x10JFIF"sv));
    for (const char* body : {"<html><body>404 Not Found</body></html>", "", "\x89PNG\r\n"})
        EXPECT_FALSE(looksLikePicture(body)) << body;
}

TEST(AlertText, ClipboardHoldsTitleAndText) {
    EXPECT_EQ(std::tuple(alertClipboardText({.title = "Title", .plainText = "Body\nmore"}),
                         alertClipboardText({.title = "Title"}),
                         alertClipboardText({.plainText = "Body"})),
              std::tuple("Title\n\nBody\nmore", "Title", "Body"));
}

// A changed feed must not be able to start a program through an item's URL,
// nor hand the browser options of its own.
TEST(UrlPolicy, OnlyWellFormedWebAddressesOpen) {
    for (const char* url : {"http://www.quenmark.com/", "https://www.quenmark.com/news?id=4",
                            "HTTP://WWW.QUENMARK.COM", "hTtPs://x", "http://127.0.0.1:47699/a%20b",
                            "http://x/o'brien#top"})
        EXPECT_TRUE(isWebAddress(url)) << url;
    for (const char* url :
         {"", "http:", "http://", "http:///x", "http:/www.quenmark.com", " http://www.quenmark.com",
          "file:///C:/Windows/System32/calc.exe", "C:\\Windows\\System32\\calc.exe",
          "\\\\server\\share\\setup.exe", "javascript:alert(1)"})
        EXPECT_FALSE(isWebAddress(url)) << url;
    for (const char* url :
         {"ms-settings:", "ftp://ftp.quenmark.com/", "httpx://www.quenmark.com",
          "http://127.0.0.1:47699/\" --evil-flag \"", "http://x/a b", "http://x/\\", "http://x/\tb",
          "http://x/\xE9t\xE9", "http://x/%zz", "http://x/%4", "http://x/<script>"})
        EXPECT_FALSE(isWebAddress(url)) << url;
}

// The report's pieces and margins: the buffer holds 1023 characters.
TEST(VersionReport, Pieces) {
    UpdateItem item = fooItem();
    item.type = ItemType::Version;
    item.beta = 2;
    FakeInstalled found;
    found.installed = InstalledVersion{544, 2, 0, "17.0a (revision 2)"};
    EXPECT_EQ(versionReport(item, found),
              "\n Foo\n\n INSTALLED VERSION: 17.0a (revision 2)\n CURRENT VERSION:  2.1b "
              "(Revision 3) (Beta 2)\n RELEASED: 07-15-2003");
    EXPECT_EQ(found.asked, 1);

    const std::string notInstalled =
        "\n Foo\n\n This application is not installed on your system.\n No version "
        "information is available for it.\n CURRENT VERSION:  2.1b (Revision 3) (Beta 2)\n "
        "RELEASED: 07-15-2003";
    found.installed->versionNumber = 0;  // installed with version 0 counts as not installed
    EXPECT_EQ(versionReport(item, found), notInstalled);
    FakeInstalled none;
    EXPECT_EQ(versionReport(item, none), notInstalled);

    item.application.reset();  // no product: only the date, and the lookup is not asked
    found.asked = 0;
    EXPECT_EQ(versionReport(item, found), " RELEASED: 07-15-2003");
    EXPECT_EQ(found.asked, 0);
    item.date = "";
    EXPECT_EQ(versionReport(item, found), "");
}

TEST(VersionReport, MarginsNearTheEnd) {
    FakeInstalled none;
    UpdateItem item{.version = 1, .revision = 'a'};
    // "\n " + name + "\n\n": with a name of 1013 the blank lines still fit (1015 + 8 < 1024),
    // with 1014 they do not, yet the smaller piece after them is still taken.
    item.application = std::string(1013, 'N');
    EXPECT_EQ(versionReport(item, none), "\n " + std::string(1013, 'N') + "\n\n 1.0a");
    item.application = std::string(1014, 'N');
    EXPECT_EQ(versionReport(item, none), "\n " + std::string(1014, 'N') + " 1.0a");
    // The not-installed text needs 100 of room although it is 96 long.
    item.application = std::string(920, 'N');  // 924 + 100 = 1024
    EXPECT_EQ(versionReport(item, none).find("not installed"), std::string::npos);
    item.application = std::string(919, 'N');  // 923 + 100 < 1024
    EXPECT_NE(versionReport(item, none).find("not installed"), std::string::npos);
}

TEST(PromptBox, PendingCountFillsTheFirstFormat) {
    EXPECT_EQ(std::tuple(fillPendingCount("there are %d items pending", 6),
                         fillPendingCount("%d", 32760), fillPendingCount("", 3),
                         fillPendingCount("%d and %d", 7), fillPendingCount("no count", 3)),
              std::tuple("there are 6 items pending", "32760", "", "7 and %d", "no count"));
}

// The type names are written out here: the browser's caption is where they show.
TEST(BrowseText, CaptionHasTheTypeNameOnlyWhileItFits) {
    // A suffix of nullptr: the title alone.
    const std::tuple<ItemType, std::size_t, const char*> cases[] = {
        {ItemType::Alert, 1, " [Alert]"},
        // "Alert" is 5 characters: title + 5 + 16 must stay below 260.
        {ItemType::Alert, 238, " [Alert]"},
        {ItemType::Alert, 239, nullptr},
        {ItemType::SettingUpdate, 228, " [Variable Update]"},
        {ItemType::SettingUpdate, 229, nullptr},
        {ItemType::OffTopic, 2, " [Off Topic]"},
        {ItemType::Unknown, 3, " [Unknown]"},
        {static_cast<ItemType>(0), 3, " [Unknown]"},
        {ItemType::Tip, 4000, nullptr},
    };
    for (const auto& [type, titleLength, suffix] : cases) {
        const std::string title(titleLength, 'T');
        EXPECT_EQ(browseCaption({.type = type, .title = title}), title + (suffix ? suffix : ""))
            << titleLength;
    }
    for (const ItemText& title : {ItemText(), ItemText("")})
        EXPECT_EQ(browseCaption({.type = ItemType::Alert, .title = title}), "");
}

TEST(BrowseText, AnnouncedAndInstalledVersions) {
    const std::pair<UpdateItem, const char*> announced[] = {
        {{.version = 3, .subVersion = 0, .revision = 'c', .patch = 2, .beta = 1},
         "3.0c (revision 2) (beta 1)"},
        {{.version = 17, .subVersion = 2, .revision = 'a'}, "17.2a"},
        {{.version = 5, .subVersion = 1, .patch = 3}, "5.1 (revision 3)"},  // no letter
        {{.version = 2, .subVersion = 4, .revision = 'b', .beta = 7}, "2.4b (beta 7)"},
        {{.patch = -1, .beta = -2}, "0.0"},  // only positive levels show
        {{.version = -1, .subVersion = 12, .revision = 'z'}, "-1.12z"},
    };
    for (const auto& [item, text] : announced) EXPECT_EQ(browseVersionText(item), text);

    // Bits 5-9 are the major number, 10-14 the minor one; the beta level never shows.
    EXPECT_EQ(std::tuple(installedBrowseText(InstalledVersion{0x0443, 5, 9, ""}),
                         installedBrowseText(InstalledVersion{0, 0, 9, ""}),
                         installedBrowseText(InstalledVersion{~0u, ~0u, 9, ""}),
                         installedBrowseText(std::nullopt)),
              std::tuple("2.1 revision 5", "0.0 revision 0", "31.31 revision -1", ""));
}
