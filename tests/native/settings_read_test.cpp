// Reading a settings file into a record that already holds values. The reading
// rules themselves are pinned by the tool's settings cases, which start from
// the defaults and so cannot tell keeping a value from resetting it.
#include <gtest/gtest.h>

#include "settings/settings_file.h"

TEST(SettingsRead, KeepsWhatTheRecordHadForKeysNotInTheFile) {
    Settings record;
    record.NoiseType = 5;
    record.AlertFontName = "Arial";
    readSettingsText(record, "BeNoisy = 0\n");
    EXPECT_EQ(record.NoiseType, 5u);
    EXPECT_EQ(record.AlertFontName, "Arial");
    EXPECT_EQ(record.BeNoisy, 0u);
}
