// Splitting the ";"-separated choice lists that fill combo boxes.
#include <gtest/gtest.h>

#include "ui/choice_combo.h"

TEST(ChoiceList, SplitsAtRunsOfSemicolons) {
    using V = std::vector<std::string>;
    const struct {
        const char* list;
        V entries;
    } cases[] = {
        {"Always;;;Never", {"Always", "Never"}},
        {";;Always;Never", {"", "Always", "Never"}},
        {"Always;Never;", {"Always", "Never"}},
        {"", {}},
        {";", {""}},
        {"High, medium and low importance;x", {"High, medium and low importance", "x"}},
    };
    for (const auto& c : cases) EXPECT_EQ(splitChoiceList(c.list), c.entries) << c.list;
}
