// The icon button's size: the largest standard icon that fits the control.
#include <gtest/gtest.h>

#include "ui/icon_button.h"

TEST(IconButton, IconSizeIsTheLargestStandardSizeThatFits) {
    const int cases[][2] = {{0, 16},   {32, 16},   {33, 32},   {64, 32},   {65, 64},
                            {128, 64}, {129, 128}, {256, 128}, {257, 256}, {4000, 256}};
    for (const auto& c : cases) EXPECT_EQ(iconSizeFor(c[0]), c[1]) << c[0];
}
