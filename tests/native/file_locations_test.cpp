// Joining data file paths: one separator, the 260-character cut, and the
// program's own folder.
#include <gtest/gtest.h>

#include "settings/file_locations.h"
#include "settings/settings.h"

TEST(JoinDataPath, JoinsWithOneBackslashAndCutsAt260) {
    const std::string longName(300, 'n');
    struct Case {
        std::string folder, name, want;
    } cases[] = {
        {"C:\\Users\\me\\AppData\\Roaming", "Heralder17.ini",
         "C:\\Users\\me\\AppData\\Roaming\\Quenmark\\Heralder17.ini"},
        {"C:\\A\\", "Heralder17.ini", "C:\\A\\Quenmark\\Heralder17.ini"},
        {"", "Heralder17.ini", "Quenmark\\Heralder17.ini"},
        {"C:\\A", longName, ("C:\\A\\Quenmark\\" + longName).substr(0, 260)},
        {std::string(259, 'f'), "x", std::string(259, 'f') + "\\"},
    };
    for (const Case& c : cases) {
        std::string got = joinDataPath(c.folder, {kMakerFolder, c.name});
        EXPECT_EQ(got, c.want) << c.folder << " + " << c.name;
        EXPECT_LE(got.size(), kMaxPathChars);
    }
    EXPECT_EQ(joinDataPath("C:\\A", {kMakerFolder, kProductFolder, "Heralder.lst"}),
              "C:\\A\\Quenmark\\Heralder\\Heralder.lst");
}

TEST(ApplicationFilePath, AddsABackslashOnlyWhenNeededAndIsNotCut) {
    const std::string saved = settings().ApplicationPath;
    for (const char* folder : {"C:\\Program Files\\Heralder\\", "C:\\Program Files\\Heralder"}) {
        settings().ApplicationPath = folder;
        EXPECT_EQ(getApplicationFilePath("codec.dll"), "C:\\Program Files\\Heralder\\codec.dll");
    }
    settings().ApplicationPath = std::string(300, 'p');
    EXPECT_EQ(getApplicationFilePath("c.dll").size(), 306u);
    settings().ApplicationPath = saved;
}
