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
    std::optional<std::string> commonFolder = "C:\\ProgramData\\Quenmark\\";  // 24 characters
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

UpdateItem productItem(int32_t version, std::optional<std::string> iniFile = "p.ini",
                       std::optional<std::string> section = "P") {
    UpdateItem item;
    item.type = ItemType::Version;
    item.version = version;
    item.iniFile = iniFile;
    item.section = section;
    return item;
}

}  // namespace

TEST(InstalledProduct, MakerFolderPath) {
    EXPECT_EQ(makerFolderPath("C:\\Data"), "C:\\Data\\Quenmark\\");
    EXPECT_EQ(makerFolderPath("C:\\"), "C:\\Quenmark\\");
    std::string longFolder(255, 'd');
    EXPECT_EQ(makerFolderPath(longFolder), longFolder + "\\Quen\\");  // 260, then the "\"
}

TEST(InstalledProduct, LooksInTheMakerFolderByAnnouncedVersionThenInWindows) {
    const std::string user = "C:\\Users\\u\\AppData\\Roaming\\Quenmark\\p.ini";
    const std::string common = "C:\\ProgramData\\Quenmark\\p.ini";
    const std::string windows = "C:\\windows\\p.ini";
    struct Case {
        int32_t version;
        std::set<std::string> existing;
        std::string expectRead;
    } cases[] = {
        {3, {user, common}, user},
        {4, {user, common}, common},
        {3, {common, windows}, windows},
        {5, {}, windows},
    };
    for (const Case& c : cases) {
        FakeProductFiles fake;
        fake.files = c.existing;
        ASSERT_TRUE(lookupInstalledVersion(productItem(c.version), fake)) << c.expectRead;
        EXPECT_EQ(fake.readFrom, c.expectRead) << c.version;
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
    EXPECT_EQ(found->text, "17.0a (revision 2)");
}

TEST(InstalledProduct, GivesNothingWithoutFileSectionOrRoom) {
    FakeProductFiles fake;
    const std::string fits(260 - fake.commonFolder->size(), 'n');
    fake.files = {*fake.commonFolder + fits, *fake.commonFolder + fits + "n"};
    EXPECT_TRUE(lookupInstalledVersion(productItem(5, fits), fake));
    struct Case {
        const char* what;
        UpdateItem item;
    } cases[] = {
        {"no INIFILE", productItem(5, std::nullopt)},
        {"no SECTION", productItem(5, "p.ini", std::nullopt)},
        {"path over 260", productItem(5, fits + "n")},
        {"a serial port, not a file", productItem(5, "COM1.ini")},
        {"a device below a folder", productItem(5, "old\\nul.ini")},
    };
    for (const Case& c : cases) EXPECT_FALSE(lookupInstalledVersion(c.item, fake)) << c.what;

    fake.windows.reset();
    EXPECT_FALSE(lookupInstalledVersion(productItem(5), fake)) << "no Windows folder";
}
