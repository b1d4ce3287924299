// Item type names, shown to the user, and the version text an item announces.
#include <gtest/gtest.h>

#include "feed/update_item.h"

namespace {

TEST(ItemType, Names) {
    struct {
        ItemType type;
        const char* name;
    } cases[] = {
        {ItemType::Alert, "Alert"},
        {ItemType::Version, "Version"},
        {ItemType::Tip, "Tip"},
        {ItemType::Notice, "Notice"},
        {ItemType::OffTopic, "Off Topic"},
        {ItemType::SettingUpdate, "Variable Update"},
        {ItemType::GraphicUpdate, "Graphic Update"},
        {ItemType::Unknown, "Unknown"},
        {static_cast<ItemType>(0), "Unknown"},
    };
    for (const auto& c : cases) EXPECT_STREQ(itemTypeName(c.type), c.name);
    EXPECT_EQ(itemTypeTag(static_cast<ItemType>(0)), "????");
}

TEST(UpdateItem, AnnouncedVersionAndLevels) {
    struct {
        int32_t version, subVersion, revision, patch, beta;
        const char *versionText, *capitalised, *lower;
    } cases[] = {
        {3, 0, 'c', 2, 1, "3.0c", " (Revision 2) (Beta 1)", " (revision 2) (beta 1)"},
        {5, 2, 0, 0, 4, "5.2", " (Beta 4)", " (beta 4)"},
        {-1, 7, 'a', -2, -3, "-1.7a", "", ""},
    };
    for (const auto& c : cases) {
        UpdateItem item;
        item.version = c.version;
        item.subVersion = c.subVersion;
        item.revision = c.revision;
        EXPECT_EQ(announcedVersionText(item), c.versionText);
        EXPECT_EQ(levelsText(c.patch, c.beta, LevelWords::Capitalised), c.capitalised);
        EXPECT_EQ(levelsText(c.patch, c.beta, LevelWords::LowerCase), c.lower);
    }
}

}  // namespace
