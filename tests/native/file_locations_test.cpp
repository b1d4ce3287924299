// Joining data file paths: one separator, the 260-character cut, and the
// program's own folder, which is never cut.
#include <gtest/gtest.h>

#include "settings/file_locations.h"
#include "settings/settings.h"

TEST(JoinDataPath, JoinsWithOneBackslashAndCutsAt260) {
    const std::string longName(300, 'n');
    const struct {
        std::string folder, name, want;
    } cases[] = {
        {"C:\\A", "Heralder17.ini", "C:\\A\\Quenmark\\Heralder17.ini"},
        {"C:\\A\\", "Heralder17.ini", "C:\\A\\Quenmark\\Heralder17.ini"},
        {"", "Heralder17.ini", "Quenmark\\Heralder17.ini"},
        {"C:\\A", longName, ("C:\\A\\Quenmark\\" + longName).substr(0, 260)},
    };
    for (const auto& c : cases)
        EXPECT_EQ(joinDataPath(c.folder, {kMakerFolder, c.name}), c.want) << c.folder;
}

TEST(ApplicationFilePath, AddsABackslashOnlyWhenNeededAndIsNotCut) {
    EXPECT_EQ(getApplicationFilePath("C:\\P\\", "c.dll"), "C:\\P\\c.dll");
    EXPECT_EQ(getApplicationFilePath(std::string(300, 'p'), "c.dll"),
              std::string(300, 'p') + "\\c.dll");
}
