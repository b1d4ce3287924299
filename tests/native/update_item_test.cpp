// Item type names and tags, and the version text an item announces.
#include <gtest/gtest.h>

#include "feed/update_item.h"

namespace {

TEST(ItemType, NamesAndTags) {
    struct {
        ItemType type;
        const char* name;
        const char* tag;
    } cases[] = {
        {ItemType::Alert, "Alert", "ALRT"},
        {ItemType::Version, "Version", "VERS"},
        {ItemType::Tip, "Tip", "TIP_"},
        {ItemType::Notice, "Notice", "NOTC"},
        {ItemType::OffTopic, "Off Topic", "OFFT"},
        {ItemType::SettingUpdate, "Variable Update", "CINI"},
        {ItemType::GraphicUpdate, "Graphic Update", "GRPN"},
        {ItemType::Unknown, "Unknown", "????"},
        {static_cast<ItemType>(0), "Unknown", "????"},
        {static_cast<ItemType>(0x4E4F4F4D), "Unknown", "????"},
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(itemTypeName(c.type), c.name) << c.tag;
        EXPECT_EQ(itemTypeTag(c.type), c.tag) << c.name;
    }
}

TEST(UpdateItem, AnnouncedVersionAndLevels) {
    struct {
        int32_t version, subVersion, revision, patch, beta;
        const char* version_text;
        const char* capitalised;
        const char* lower;
    } cases[] = {
        {2, 1, 'b', 3, 0, "2.1b", " (Revision 3)", " (revision 3)"},
        {3, 0, 'c', 2, 1, "3.0c", " (Revision 2) (Beta 1)", " (revision 2) (beta 1)"},
        {5, 2, 0, 0, 4, "5.2", " (Beta 4)", " (beta 4)"},
        {-1, 7, 'a', -2, -3, "-1.7a", "", ""},
    };
    for (const auto& c : cases) {
        UpdateItem item;
        item.version = c.version;
        item.subVersion = c.subVersion;
        item.revision = c.revision;
        EXPECT_EQ(announcedVersionText(item), c.version_text);
        EXPECT_EQ(levelsText(c.patch, c.beta, LevelWords::Capitalised), c.capitalised);
        EXPECT_EQ(levelsText(c.patch, c.beta, LevelWords::LowerCase), c.lower);
    }
}

}  // namespace
