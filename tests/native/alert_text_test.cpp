// The alert window's and the version notice's texts: the header line and its
// 260-character rules, the report and its margins, the fit, the part of a huge
// text that can show, which GRAPHIC names may reach the disk and which
// addresses Go may open.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "notify/alert_text.h"
#include "notify/url_policy.h"
#include "notify/version_box_text.h"

namespace {

// Answers every question with installed (or nothing) and counts them.
struct FakeInstalled : InstalledLookup {
    std::optional<InstalledVersion> installed;
    int asked = 0;
    std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem&) override {
        ++asked;
        return installed;
    }
};

UpdateItem fooItem() {
    UpdateItem item;
    item.type = ItemType::Alert;
    item.application = "Foo";
    item.version = 2;
    item.subVersion = 1;
    item.revision = 'b';
    item.patch = 3;
    item.date = "07-15-2003";
    return item;
}

TEST(AlertText, HeaderLine) {
    struct Case {
        const char* name;
        void (*change)(UpdateItem&);
        std::optional<std::string> line;
    };
    const std::string longName(240, 'L');
    const Case cases[] = {
        {"every piece", [](UpdateItem&) {}, " Foo 2.1b (Revision 3) Released 07-15-2003"},
        {"beta", [](UpdateItem& i) { i.beta = 4; },
         " Foo 2.1b (Revision 3) (Beta 4) Released 07-15-2003"},
        {"revision 0 ends the version", [](UpdateItem& i) { i.revision = 0; },
         " Foo 2.1 (Revision 3) Released 07-15-2003"},
        {"patch and beta 0 or below",
         [](UpdateItem& i) {
             i.patch = 0;
             i.beta = -1;
         },
         " Foo 2.1b Released 07-15-2003"},
        {"no date", [](UpdateItem& i) { i.date.reset(); }, " Foo 2.1b (Revision 3)"},
        {"empty date", [](UpdateItem& i) { i.date = ""; }, " Foo 2.1b (Revision 3)"},
        {"no application: two blanks", [](UpdateItem& i) { i.application.reset(); },
         "  Released 07-15-2003"},
        {"neither",
         [](UpdateItem& i) {
             i.application = "";
             i.date.reset();
         },
         std::nullopt},
        {"off topic never", [](UpdateItem& i) { i.type = ItemType::OffTopic; }, std::nullopt},
        {"tip and notice too", [](UpdateItem& i) { i.type = ItemType::Notice; },
         " Foo 2.1b (Revision 3) Released 07-15-2003"},
    };
    for (const Case& c : cases) {
        UpdateItem item = fooItem();
        c.change(item);
        EXPECT_EQ(alertHeaderLine(item), c.line) << c.name;
    }
}

// Each piece is dropped when the line would reach 260 characters.
TEST(AlertText, HeaderLineKeepsBelow260Characters) {
    UpdateItem item = fooItem();
    item.application = std::string(300, 'A');  // the version is cut off with it
    EXPECT_EQ(alertHeaderLine(item), " " + std::string(258, 'A'));  // the buffer is full

    // " " + name + " 2.1b" is the name and 6; " Released " needs 12 of room, the date its own 10.
    item.patch = 0;
    struct Case {
        std::size_t name;
        const char* tail;
    };
    for (const Case& c : {Case{233, " 2.1b Released 07-15-2003"}, Case{234, " 2.1b Released "},
                          Case{241, " 2.1b Released "},
                          // the date has its own check, even without " Released "
                          Case{242, " 2.1b07-15-2003"}, Case{244, " 2.1b"}}) {
        item.application = std::string(c.name, 'A');
        EXPECT_EQ(alertHeaderLine(item), " " + std::string(c.name, 'A') + c.tail) << c.name;
    }
}

TEST(AlertText, CaptionTopAndFit) {
    UpdateItem item;
    EXPECT_EQ(alertCaption(item), "Alert");
    item.title = "";
    EXPECT_EQ(alertCaption(item), "Alert");
    item.title = "Support hours";
    EXPECT_EQ(alertCaption(item), "Support hours");

    EXPECT_EQ(alertTextTop(true, true), 48);
    EXPECT_EQ(alertTextTop(true, false), 28);
    EXPECT_EQ(alertTextTop(false, true), 8);
    EXPECT_EQ(alertTextTop(false, false), 8);

    // caption 19, frames 3: 19 + 6 + 48 + text + 8
    EXPECT_EQ(fitAlertHeight(19, 3, 48, 16, 768), 208);
    EXPECT_EQ(fitAlertHeight(19, 3, 48, 127, 768), 208);
    EXPECT_EQ(fitAlertHeight(19, 3, 48, 128, 768), 209);
    EXPECT_EQ(fitAlertHeight(19, 3, 48, 681, 768), 762);
    EXPECT_EQ(fitAlertHeight(19, 3, 48, 682, 768), 763);
    EXPECT_EQ(fitAlertHeight(19, 3, 48, 683, 768), 764);
    EXPECT_EQ(fitAlertHeight(19, 3, 48, 684, 768), 764);
    EXPECT_EQ(fitAlertHeight(19, 3, 48, 1 << 20, 768), 764);
}

TEST(AlertText, VisibleTextStopsAfterTheScreenful) {
    struct Case {
        const char* name;
        std::string text;
        int lines;
        std::string shown;
    };
    const std::string word600(600, 'w');
    const Case cases[] = {
        {"short text whole", "one\ntwo\nthree", 10, "one\ntwo\nthree"},
        {"stops at the last line that can show", "a\nb\nc\nd", 2, "a\nb"},
        {"a long word keeps one column and a pixel", word600 + " end", 5,
         std::string(571, 'w') + " end"},
        {"characters beyond lines x column", std::string(5000, 'x'), 2, std::string(571, 'x')},
        {"blank text", std::string(3000, ' '), 2, std::string(1140, ' ')},
    };
    for (const Case& c : cases) EXPECT_EQ(alertVisibleText(c.text, c.lines), c.shown) << c.name;

    std::string huge;
    for (int i = 0; i < 200000; ++i) huge += "Twenty words of a long notice. ";
    EXPECT_LE(alertVisibleText(huge, 60).size(), 60u * 570u);
}

TEST(AlertText, PictureNameMustBePlain) {
    struct Case {
        const char* graphic;
        bool kept;
    };
    const Case cases[] = {
        {"alert.png", true},         {"photo.JPG", true},
        {"noextension", true},       {"", false},
        {"..\\heralder.exe", false}, {"images/alert.png", false},
        {"C:alert.png", false},      {"alert.png:stream", false},
        {"alert.png.", false},       {"..", false},
        {"CON.png", false},          {"nul", false},
        {"a\tb.png", false},         {"\\\\host\\share\\x.png", false},
    };
    for (const Case& c : cases) {
        UpdateItem item;
        item.graphic = c.graphic;
        EXPECT_EQ(alertPictureName(item).has_value(), c.kept) << c.graphic;
        if (c.kept) EXPECT_EQ(*alertPictureName(item), c.graphic);
    }
    EXPECT_FALSE(alertPictureName(UpdateItem{}));
}

TEST(AlertText, OnlyPicturesAreKept) {
    using namespace std::string_view_literals;
    EXPECT_TRUE(looksLikePicture("\x89PNG\r\n\x1A\n\0\0\0\rIHDR"sv));
    EXPECT_TRUE(looksLikePicture("\xFF\xD8\xFF\xE0\0\x10JFIF"sv));
    EXPECT_FALSE(looksLikePicture("<html><body>404 Not Found</body></html>"));
    EXPECT_FALSE(looksLikePicture(""));
    EXPECT_FALSE(looksLikePicture("\x89PNG\r\n"));  // cut short
}

TEST(AlertText, ClipboardHoldsTitleAndText) {
    UpdateItem item;
    item.title = "Title";
    item.plainText = "Body\nmore";
    EXPECT_EQ(alertClipboardText(item), "Title\n\nBody\nmore");
    item.plainText.reset();
    EXPECT_EQ(alertClipboardText(item), "Title");
    item.title.reset();
    item.plainText = "Body";
    EXPECT_EQ(alertClipboardText(item), "Body");
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
    UpdateItem item;
    item.version = 1;
    item.revision = 'a';
    // "\n " + name + "\n\n": with a name of 1013 the blank lines still fit (1015 + 8 < 1024),
    // with 1014 they do not.
    // A piece that fits is taken even after a larger one was dropped.
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

}  // namespace
