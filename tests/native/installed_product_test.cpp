// Installed product lookup: where the product's file is looked for, the limits
// on the path, and how the version is written out.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <tuple>

#include "feed/installed_product.h"

namespace {

const std::string kUser = "C:\\Users\\u\\AppData\\Roaming\\Quenmark\\";
const std::string kCommon = "C:\\ProgramData\\Quenmark\\";

// Folders, files and values of a pretend machine.
struct FakeProductFiles : ProductFiles {
    std::set<std::string> files;
    std::map<std::string, uint32_t> values;  // "file|key", any section

    std::optional<std::string> makerFolder(bool allUsers) override {
        return allUsers ? kCommon : kUser;
    }
    std::optional<std::string> windowsFolder() override { return "C:\\windows"; }
    bool fileExists(const std::string& path) override { return files.count(path) != 0; }
    uint32_t readProfileNumber(const std::string& file, const std::string&,
                               const char* key) override {
        return values[file + "|" + key];
    }
};

UpdateItem productItem(int32_t version, std::optional<std::string> iniFile = "p.ini",
                       std::optional<std::string> section = "P") {
    UpdateItem item;
    item.version = version;
    item.iniFile = iniFile;
    item.section = section;
    return item;
}

}  // namespace

TEST(InstalledProduct, MakerFolderPath) {
    const std::string longFolder(255, 'd');
    EXPECT_EQ(makerFolderPath("C:\\"), "C:\\Quenmark\\");
    EXPECT_EQ(makerFolderPath(longFolder), longFolder + "\\Quen\\");  // 260, then the "\"
}

TEST(InstalledProduct, LooksInTheMakerFolderByAnnouncedVersionThenInWindows) {
    const std::string user = kUser + "p.ini", common = kCommon + "p.ini";
    const std::string windows = "C:\\windows\\p.ini";
    // The announced version, the files that exist, what is found.
    const std::tuple<int32_t, std::set<std::string>, const char*> cases[] = {
        {3, {user, common}, "1.0a"},
        {4, {user, common}, "2.0a"},
        {3, {common, windows}, "17.0a (revision 2)"},
        {5, {}, "17.0a (revision 2)"}};
    for (const auto& [version, existing, text] : cases) {
        FakeProductFiles fake;
        fake.files = existing;
        fake.values = {{user + "|VersionNumber", 1 << 5},
                       {common + "|VersionNumber", 2 << 5},
                       {windows + "|VersionNumber", 544},
                       {windows + "|PatchLevel", 2}};
        auto found = lookupInstalledVersion(productItem(version), fake);
        EXPECT_EQ(found ? found->text : "(nothing)", text) << version;
    }
}

TEST(InstalledProduct, GivesNothingWithoutFileSectionOrRoom) {
    FakeProductFiles fake;
    const std::string fits(260 - kCommon.size(), 'n');
    fake.files = {kCommon + fits, kCommon + fits + "n"};
    EXPECT_TRUE(lookupInstalledVersion(productItem(5, fits), fake));
    for (const UpdateItem& item :
         {productItem(5, std::nullopt), productItem(5, "p.ini", std::nullopt),
          productItem(5, fits + "n"), productItem(5, "COM1.ini"), productItem(5, "old\\nul.ini")})
        EXPECT_FALSE(lookupInstalledVersion(item, fake)) << item.iniFile.value_or("(none)");
}
