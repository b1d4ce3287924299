// Splitting the ";"-separated choice lists that fill combo boxes.
#include <gtest/gtest.h>

#include "ui/choice_combo.h"

TEST(ChoiceList, SplitsAtRunsOfSemicolons) {
    using V = std::vector<std::string>;
    const std::pair<const char*, V> cases[] = {
        {"Always;;;Never", {"Always", "Never"}},
        {";;Always;Never", {"", "Always", "Never"}},  // a leading run gives one empty entry
        {"Always;Never;", {"Always", "Never"}},
        {"", {}},
        {";", {""}},
    };
    for (const auto& [list, entries] : cases) EXPECT_EQ(splitChoiceList(list), entries) << list;
}
