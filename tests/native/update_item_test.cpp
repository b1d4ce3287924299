// Item type names shown to the user.
#include <gtest/gtest.h>

#include "feed/update_item.h"

namespace {

// Only the names that are not the type's own, and what no type at all shows.
TEST(ItemType, Names) {
    EXPECT_STREQ(itemTypeName(ItemType::OffTopic), "Off Topic");
    EXPECT_STREQ(itemTypeName(ItemType::SettingUpdate), "Variable Update");
    EXPECT_STREQ(itemTypeName(static_cast<ItemType>(0)), "Unknown");
}

}  // namespace
