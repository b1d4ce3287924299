// Installed product lookup against real INI files in the prefix's per-user,
// all-users and Windows folders, read by the platform's profile reader.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/win_headers.h"
#include "feed/installed_product.h"
#include "settings/file_locations.h"

namespace {

std::string windowsFolder() {
    char folder[MAX_PATH];
    UINT n = GetWindowsDirectoryA(folder, MAX_PATH);
    std::string path(folder, n);
    if (!path.empty() && path.back() != '\\') path += '\\';
    return path;
}

// Writes INI files for one test and deletes them (and the maker folders it
// had to create) afterwards.
class ProductFilesOnDisk {
  public:
    explicit ProductFilesOnDisk(const char* testName)
        : name_("HeralderTest-" + std::string(testName) + "-" +
                std::to_string(GetCurrentProcessId()) + ".ini") {}
    ~ProductFilesOnDisk() {
        for (const std::string& path : written_) DeleteFileA(path.c_str());
        for (auto it = createdFolders_.rbegin(); it != createdFolders_.rend(); ++it)
            RemoveDirectoryA(it->c_str());
    }
    ProductFilesOnDisk(const ProductFilesOnDisk&) = delete;
    ProductFilesOnDisk& operator=(const ProductFilesOnDisk&) = delete;

    const std::string& name() const { return name_; }

    void write(const std::string& folder, const std::string& content) {
        if (GetFileAttributesA(folder.c_str()) == INVALID_FILE_ATTRIBUTES &&
            CreateDirectoryA(folder.c_str(), nullptr))
            createdFolders_.push_back(folder);
        std::string path = folder + name_;
        HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
        ASSERT_NE(file, INVALID_HANDLE_VALUE) << path;
        DWORD written = 0;
        WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
        CloseHandle(file);
        written_.push_back(path);
    }

  private:
    std::string name_;
    std::vector<std::string> written_;
    std::vector<std::string> createdFolders_;
};

UpdateItem productItem(int32_t version, const std::string& iniFile, const char* section) {
    UpdateItem item;
    item.type = ItemType::Version;
    item.version = version;
    item.iniFile = iniFile;
    item.section = section;
    return item;
}

std::string versionSection(const char* section, int version, int patch, int beta) {
    // Appended piece by piece: GCC 12 warns wrongly (-Wrestrict) about "..." + string&&.
    std::string text = "[";
    text.append(section).append("]\r\nVersionNumber=").append(std::to_string(version));
    text.append("\r\nPatchLevel=").append(std::to_string(patch));
    text.append("\r\nBetaLevel=").append(std::to_string(beta)).append("\r\n");
    return text;
}

}  // namespace

TEST(InstalledProduct, MakerFoldersLieInTheShellFolders) {
    auto user = getUserQuenmarkFolder();
    auto common = getCommonQuenmarkFolder();
    ASSERT_TRUE(user && common);
    EXPECT_EQ(*user, makerFolderPath(*getSpecialFolderPath(CSIDL_APPDATA)));
    EXPECT_EQ(*common, makerFolderPath(*getSpecialFolderPath(CSIDL_COMMON_APPDATA)));
    EXPECT_NE(*user, *common);
    EXPECT_EQ(user->substr(user->size() - 10), "\\Quenmark\\");
}

TEST(InstalledProduct, FindsTheFileWhereTheAnnouncedVersionSays) {
    ProductFilesOnDisk files("where");
    const uint32_t v5 = 5 << 5, v3 = (3 << 5) | (1 << 10), v1 = 1 << 5;
    files.write(*getUserQuenmarkFolder(), versionSection("Prod", v5, 0, 0));
    files.write(*getCommonQuenmarkFolder(), versionSection("Prod", v3, 2, 0));
    files.write(windowsFolder(), versionSection("Prod", v1, 0, 7));

    struct Case {
        const char* what;
        int32_t announced;
        uint32_t version;
        const char* text;
    } cases[] = {
        // Installed at 5.0 but announced as 3: still the per-user file.
        {"announced 3: per-user", 3, v5, "5.0a"},
        {"announced 4: all users", 4, v3, "3.1a (revision 2)"},
        {"announced 9: all users", 9, v3, "3.1a (revision 2)"},
    };
    for (const Case& c : cases) {
        auto found = lookupInstalledVersion(productItem(c.announced, files.name(), "Prod"));
        ASSERT_TRUE(found) << c.what;
        EXPECT_EQ(found->versionNumber, c.version) << c.what;
        EXPECT_EQ(found->text, c.text) << c.what;
    }
}

TEST(InstalledProduct, FallsBackToTheWindowsFolder) {
    ProductFilesOnDisk files("windows");
    files.write(windowsFolder(), versionSection("Prod", 544, 0, 7));
    for (int32_t announced : {3, 5}) {
        auto found = lookupInstalledVersion(productItem(announced, files.name(), "Prod"));
        ASSERT_TRUE(found) << announced;
        EXPECT_EQ(found->versionNumber, 544u);
        EXPECT_EQ(found->betaLevel, 7u);
        EXPECT_EQ(found->text, "17.0a (beta 7)");
    }
}

TEST(InstalledProduct, ReadsValuesAsTheProfileReaderGivesThem) {
    ProductFilesOnDisk files("values");
    files.write(*getCommonQuenmarkFolder(),
                "[Other]\r\nVersionNumber=99\r\n"
                "[prod]\r\nversionnumber=544\r\nVersionNumber=33\r\nPatchLevel=-1\r\n"
                "BetaLevel=2x\r\n");
    auto found = lookupInstalledVersion(productItem(5, files.name(), "PROD"));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->versionNumber, 544u);  // the first of duplicate keys, any case
    EXPECT_EQ(found->patchLevel, 0xFFFFFFFFu);
    EXPECT_EQ(found->betaLevel, 2u);
    EXPECT_EQ(found->text, "17.0a (revision -1) (beta 2)");

    auto missingSection = lookupInstalledVersion(productItem(5, files.name(), "Absent"));
    ASSERT_TRUE(missingSection);
    EXPECT_EQ(missingSection->versionNumber, 0u);
    EXPECT_EQ(missingSection->text, "0.0a");
}

TEST(InstalledProduct, NoFileAnywhereReadsAsNotInstalled) {
    auto found = lookupInstalledVersion(productItem(5, "HeralderTest-nowhere.ini", "Prod"));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->versionNumber, 0u);
    EXPECT_EQ(found->text, "0.0a");

    UpdateItem noFile = productItem(5, "x.ini", "Prod");
    noFile.iniFile.reset();
    EXPECT_FALSE(lookupInstalledVersion(noFile));
}
