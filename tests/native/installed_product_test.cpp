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

    std::optional<std::string> makerFolder(bool allUsers) override {
        return allUsers ? commonFolder : userFolder;
    }
    std::optional<std::string> windowsFolder() override { return windows; }
    bool fileExists(const std::string& path) override { return files.count(path) != 0; }
    uint32_t readProfileNumber(const std::string& file, const std::string& section,
                               const char* key) override {
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
        const char* text;
    } cases[] = {
        {3, {user, common}, "1.0a"},
        {4, {user, common}, "2.0a"},
        {3, {common, windows}, "17.0a (revision 2)"},
        {5, {}, "17.0a (revision 2)"},
    };
    for (const Case& c : cases) {
        FakeProductFiles fake;
        fake.files = c.existing;
        fake.values = {{user + "|P|VersionNumber", 1 << 5},
                       {common + "|P|VersionNumber", 2 << 5},
                       {windows + "|P|VersionNumber", 544},
                       {windows + "|P|PatchLevel", 2}};
        auto found = lookupInstalledVersion(productItem(c.version), fake);
        ASSERT_TRUE(found) << c.text;
        EXPECT_EQ(found->text, c.text) << c.version;
    }
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
