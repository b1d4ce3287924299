// The item browser's texts: the caption's length rule, the announced version
// in lower case and the installed version from its packed number. Which text
// lands in which field is checked on the real box (tests/win).
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
        EXPECT_EQ(browseVersionText(item), c.expected);
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
