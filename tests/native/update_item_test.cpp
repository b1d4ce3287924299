// Item type names shown to the user, and the version text an item announces.
#include <gtest/gtest.h>

#include "feed/update_item.h"

namespace {

// Only the names that are not the type's own, and what no type at all shows.
TEST(ItemType, Names) {
    EXPECT_STREQ(itemTypeName(ItemType::OffTopic), "Off Topic");
    EXPECT_STREQ(itemTypeName(ItemType::SettingUpdate), "Variable Update");
    EXPECT_STREQ(itemTypeName(static_cast<ItemType>(0)), "Unknown");
}

TEST(UpdateItem, AnnouncedVersionAndLevels) {
    const struct {
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
