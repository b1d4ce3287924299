// Installed product lookup: where the product's file is looked for, the
// limits on the path, and how the version is written out.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "feed/installed_product.h"

namespace {

// Folders, files and values of a pretend machine.
class FakeProductFiles : public ProductFiles {
  public:
    std::optional<std::string> userFolder = "C:\\Users\\u\\AppData\\Roaming\\Quenmark\\";
    std::optional<std::string> commonFolder = "C:\\ProgramData\\Quenmark\\";
    std::optional<std::string> windows = "C:\\windows";
    std::set<std::string> files;
    std::map<std::string, uint32_t> values;  // "file|section|key"
    std::string readFrom;

    std::optional<std::string> makerFolder(bool allUsers) override {
        return allUsers ? commonFolder : userFolder;
    }
    std::optional<std::string> windowsFolder() override { return windows; }
    bool fileExists(const std::string& path) override { return files.count(path) != 0; }
    uint32_t readProfileNumber(const std::string& file, const std::string& section,
                               const char* key) override {
        readFrom = file;
        auto found = values.find(file + "|" + section + "|" + key);
        return found == values.end() ? 0 : found->second;
    }
};

UpdateItem productItem(int32_t version, const char* iniFile, const char* section) {
    UpdateItem item;
    item.type = ItemType::Version;
    item.version = version;
    if (iniFile) item.iniFile = iniFile;
    if (section) item.section = section;
    return item;
}

}  // namespace

TEST(InstalledProduct, VersionText) {
    struct Case {
        uint32_t version, patch, beta;
        const char* text;
    } cases[] = {
        {544, 2, 0, "17.0a (revision 2)"},
        {0, 0, 0, "0.0a"},
        {(5 << 5) | (1 << 10) | 3, 0, 0, "5.1d"},
        {5 << 5, 0, 4, "5.0a (beta 4)"},
        {5 << 5, 1, 2, "5.0a (revision 1) (beta 2)"},
        {5 << 5, 0xFFFFFFFF, 0, "5.0a (revision -1)"},  // the profile reader's "-1"
    };
    for (const Case& c : cases)
        EXPECT_EQ(installedVersionText(c.version, c.patch, c.beta), c.text) << c.text;
}

TEST(InstalledProduct, MakerFolderPath) {
    EXPECT_EQ(makerFolderPath("C:\\Data"), "C:\\Data\\Quenmark\\");
    EXPECT_EQ(makerFolderPath("C:\\"), "C:\\Quenmark\\");
    std::string longFolder(255, 'd');
    std::string cut = makerFolderPath(longFolder);
    EXPECT_EQ(cut, longFolder + "\\Quen\\");  // 260 characters, then the final "\"
}

TEST(InstalledProduct, LooksInTheMakerFolderByAnnouncedVersionThenInWindows) {
    const std::string user = "C:\\Users\\u\\AppData\\Roaming\\Quenmark\\p.ini";
    const std::string common = "C:\\ProgramData\\Quenmark\\p.ini";
    const std::string windows = "C:\\windows\\p.ini";
    struct Case {
        const char* what;
        int32_t version;
        std::set<std::string> existing;
        std::string expectRead;
    } cases[] = {
        {"version 3: per-user", 3, {user, common}, user},
        {"version 4: all users", 4, {user, common}, common},
        {"negative version: per-user", -1, {user, common}, user},
        {"version 3 not in per-user: Windows", 3, {common, windows}, windows},
        {"nowhere: Windows still read", 5, {}, windows},
    };
    for (const Case& c : cases) {
        FakeProductFiles fake;
        fake.files = c.existing;
        auto found = lookupInstalledVersion(productItem(c.version, "p.ini", "P"), fake);
        ASSERT_TRUE(found) << c.what;
        EXPECT_EQ(fake.readFrom, c.expectRead) << c.what;
    }
}

TEST(InstalledProduct, ReadsTheThreeValues) {
    FakeProductFiles fake;
    const std::string file = "C:\\ProgramData\\Quenmark\\p.ini";
    fake.files = {file};
    fake.values = {{file + "|Prod|VersionNumber", 544}, {file + "|Prod|PatchLevel", 2}};
    auto found = lookupInstalledVersion(productItem(17, "p.ini", "Prod"), fake);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->versionNumber, 544u);
    EXPECT_EQ(found->patchLevel, 2u);
    EXPECT_EQ(found->betaLevel, 0u);
    EXPECT_EQ(found->text, "17.0a (revision 2)");

    auto otherSection = lookupInstalledVersion(productItem(17, "p.ini", "Other"), fake);
    ASSERT_TRUE(otherSection);
    EXPECT_EQ(otherSection->versionNumber, 0u);
    EXPECT_EQ(otherSection->text, "0.0a");
}

TEST(InstalledProduct, GivesNothingWithoutFileSectionOrRoom) {
    struct Case {
        const char* what;
        UpdateItem item;
        bool windowsFolder;
    } cases[] = {
        {"no INIFILE", productItem(5, nullptr, "P"), true},
        {"no SECTION", productItem(5, "p.ini", nullptr), true},
        {"maker path over 260", productItem(5, std::string(240, 'n').c_str(), "P"), true},
        {"no Windows folder to fall back to", productItem(5, "p.ini", "P"), false},
        {"a serial port, not a file", productItem(5, "COM1.ini", "P"), true},
        {"a device below a folder", productItem(5, "old\\nul.ini", "P"), true},
    };
    for (const Case& c : cases) {
        FakeProductFiles fake;
        if (!c.windowsFolder) fake.windows.reset();
        EXPECT_FALSE(lookupInstalledVersion(c.item, fake)) << c.what;
    }
}

TEST(InstalledProduct, PathLimitIs260Characters) {
    FakeProductFiles fake;
    const std::string folder = *fake.commonFolder;  // 24 characters
    std::string fits(260 - folder.size(), 'n');
    fake.files = {folder + fits};
    EXPECT_TRUE(lookupInstalledVersion(productItem(5, fits.c_str(), "P"), fake));
    std::string over = fits + "n";
    fake.files = {folder + over};
    EXPECT_FALSE(lookupInstalledVersion(productItem(5, over.c_str(), "P"), fake));
}

TEST(InstalledProduct, WithoutMakerFolderOnlyWindowsIsSearched) {
    FakeProductFiles fake;
    fake.commonFolder.reset();
    ASSERT_TRUE(lookupInstalledVersion(productItem(5, "p.ini", "P"), fake));
    EXPECT_EQ(fake.readFrom, "C:\\windows\\p.ini");
}
