// The item browser's texts: the caption's length rule, the announced version
// in lower case, the installed version from its packed number, and the fields
// that stay empty.
#include <gtest/gtest.h>

#include <string>

#include "notify/browse_text.h"

namespace {

UpdateItem titled(ItemType type, std::size_t length) {
    UpdateItem item;
    item.type = type;
    if (length > 0) item.title = std::string(length, 'T');
    return item;
}

}  // namespace

TEST(BrowseText, CaptionHasTheTypeNameOnlyWhileItFits) {
    const struct {
        ItemType type;
        std::size_t titleLength;  // 0: no TITLE
        bool withType;
    } cases[] = {
        {ItemType::Alert, 0, false},
        {ItemType::Alert, 1, true},
        // "Alert" is 5 characters: title + 5 + 16 must stay below 260.
        {ItemType::Alert, 238, true},
        {ItemType::Alert, 239, false},
        {ItemType::SettingUpdate, 228, true},  // "Variable Update", 15
        {ItemType::SettingUpdate, 229, false},
        {ItemType::Tip, 250, false},
        {ItemType::Tip, 4000, false},
    };
    for (const auto& c : cases) {
        const UpdateItem item = titled(c.type, c.titleLength);
        const std::string title(c.titleLength, 'T');
        const std::string expected = c.titleLength == 0 ? ""
                                     : c.withType       ? title + " [" + itemTypeName(c.type) + "]"
                                                        : title;
        EXPECT_EQ(browseCaption(item), expected) << c.titleLength;
    }
    UpdateItem empty;
    empty.title = "";
    EXPECT_EQ(browseCaption(empty), "");
    UpdateItem unknown = titled(ItemType::Unknown, 3);
    EXPECT_EQ(browseCaption(unknown), "TTT [Unknown]");
}

TEST(BrowseText, AnnouncedVersionInLowerCase) {
    const struct {
        int32_t version, subVersion, revision, patch, beta;
        const char* expected;
    } cases[] = {
        {3, 0, 'c', 2, 1, "3.0c (revision 2) (beta 1)"},
        {17, 2, 'a', 0, 0, "17.2a"},
        {5, 1, 0, 0, 0, "5.1"},  // no REVISION: no letter
        {5, 1, 0, 3, 0, "5.1 (revision 3)"},
        {2, 4, 'b', 0, 7, "2.4b (beta 7)"},
        {0, 0, 0, -1, -2, "0.0"},  // only positive levels show
        {-1, 12, 'z', 0, 0, "-1.12z"},
    };
    for (const auto& c : cases) {
        UpdateItem item;
        item.version = c.version;
        item.subVersion = c.subVersion;
        item.revision = c.revision;
        item.patch = c.patch;
        item.beta = c.beta;
        EXPECT_EQ(announcedVersionText(item), c.expected);
    }
}

TEST(BrowseText, InstalledVersionFromThePackedNumber) {
    const struct {
        uint32_t versionNumber, patchLevel;
        const char* expected;
    } cases[] = {
        {0x0443, 5, "2.1 revision 5"},  // bits 5-9 major 2, bits 10-14 minor 1
        {544, 0, "17.0 revision 0"},
        {0, 0, "0.0 revision 0"},
        {0xFFFFFFFF, 0xFFFFFFFF, "31.31 revision -1"},
    };
    for (const auto& c : cases) {
        InstalledVersion installed;
        installed.versionNumber = c.versionNumber;
        installed.patchLevel = c.patchLevel;
        installed.betaLevel = 9;  // never shown here
        EXPECT_EQ(installedBrowseText(installed), c.expected);
    }
    EXPECT_EQ(installedBrowseText(std::nullopt), "");
}

TEST(BrowseText, EveryFieldFromItsKeyAndNumbersAlwaysShow) {
    UpdateItem item;
    item.type = ItemType::Notice;
    item.title = "Office closed";
    item.date = "12-24-2026";
    item.originator = "Quenmark";
    item.application = "Ledger";
    item.keywords = "holiday";
    item.plainText = "Closed.\r\nBack on the 2nd.";
    item.iniFile = "ledger.ini";
    item.section = "Ledger";
    item.url = "http://www.quenmark.com/";
    item.ignoreUntil = "12-20-2026";
    item.ifRegistered = -1;
    item.importance = 3;
    item.version = 4;
    item.revision = 'b';

    InstalledVersion installed;
    installed.versionNumber = 0x0443;
    installed.patchLevel = 2;
    const BrowseTexts t = browseTexts(item, installed);
    EXPECT_EQ(t.caption, "Office closed [Notice]");
    EXPECT_EQ(t.date, "12-24-2026");
    EXPECT_EQ(t.originator, "Quenmark");
    EXPECT_EQ(t.application, "Ledger");
    EXPECT_EQ(t.version, "4.0b");
    EXPECT_EQ(t.keywords, "holiday");
    EXPECT_EQ(t.plainText, "Closed.\r\nBack on the 2nd.");
    EXPECT_EQ(t.registered, "-1");
    EXPECT_EQ(t.evaluation, "0");
    EXPECT_EQ(t.iniFile, "ledger.ini");
    EXPECT_EQ(t.installed, "2.1 revision 2");
    EXPECT_EQ(t.section, "Ledger");
    EXPECT_EQ(t.url, "http://www.quenmark.com/");
    EXPECT_EQ(t.importance, "3");
    EXPECT_EQ(t.ignoreUntil, "12-20-2026");

    const BrowseTexts bare = browseTexts(UpdateItem{}, std::nullopt);
    for (const std::string* empty : {&bare.caption, &bare.date, &bare.originator, &bare.application,
                                     &bare.keywords, &bare.plainText, &bare.iniFile,
                                     &bare.installed, &bare.section, &bare.url, &bare.ignoreUntil})
        EXPECT_EQ(*empty, "");
    EXPECT_EQ(bare.version, "0.0");
    EXPECT_EQ(bare.importance, "0");
    EXPECT_EQ(bare.registered, "0");
}
