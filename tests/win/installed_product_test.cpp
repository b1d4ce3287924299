// Installed product lookup against real INI files in the prefix's per-user,
// all-users and Windows folders, read by the platform's profile reader.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "base/win_headers.h"
#include "feed/installed_product.h"
#include "settings/file_locations.h"

namespace {

std::string windowsFolder() {
    char folder[MAX_PATH];
    std::string path(folder, GetWindowsDirectoryA(folder, MAX_PATH));
    return path.empty() || path.back() == '\\' ? path : path + '\\';
}

// Writes INI files of one test's name and deletes them (and the maker folders
// it had to create) afterwards.
class ProductFilesOnDisk {
  public:
    explicit ProductFilesOnDisk(const char* testName)
        : name("HeralderTest-" + std::string(testName) + "-" +
               std::to_string(GetCurrentProcessId()) + ".ini") {}
    ~ProductFilesOnDisk() {
        for (const std::string& path : written_) DeleteFileA(path.c_str());
        for (auto it = createdFolders_.rbegin(); it != createdFolders_.rend(); ++it)
            RemoveDirectoryA(it->c_str());
    }
    ProductFilesOnDisk(const ProductFilesOnDisk&) = delete;
    ProductFilesOnDisk& operator=(const ProductFilesOnDisk&) = delete;

    void write(const std::string& folder, const std::string& content) {
        if (GetFileAttributesA(folder.c_str()) == INVALID_FILE_ATTRIBUTES &&
            CreateDirectoryA(folder.c_str(), nullptr))
            createdFolders_.push_back(folder);
        std::FILE* f = std::fopen((folder + name).c_str(), "wb");
        ASSERT_TRUE(f) << folder + name;
        std::fwrite(content.data(), 1, content.size(), f);
        std::fclose(f);
        written_.push_back(folder + name);
    }

    const std::string name;

  private:
    std::vector<std::string> written_;
    std::vector<std::string> createdFolders_;
};

// The version text found for a product announced as `announced`.
std::string foundText(int32_t announced, const std::string& iniFile, const char* section = "Prod") {
    UpdateItem item;
    item.type = ItemType::Version;
    item.version = announced;
    item.iniFile = iniFile;
    item.section = section;
    auto found = lookupInstalledVersion(item);
    return found ? found->text : "(nothing)";
}

}  // namespace

TEST(InstalledProduct, MakerFoldersLieInTheShellFolders) {
    EXPECT_EQ(getUserQuenmarkFolder(), makerFolderPath(*getSpecialFolderPath(CSIDL_APPDATA)));
    EXPECT_EQ(getCommonQuenmarkFolder(),
              makerFolderPath(*getSpecialFolderPath(CSIDL_COMMON_APPDATA)));
}

TEST(InstalledProduct, FindsTheFileWhereTheAnnouncedVersionSays) {
    ProductFilesOnDisk files("where");
    files.write(*getUserQuenmarkFolder(), "[Prod]\r\nVersionNumber=160\r\n");  // 5.0a
    files.write(*getCommonQuenmarkFolder(), "[Prod]\r\nVersionNumber=1120\r\nPatchLevel=2\r\n");
    files.write(windowsFolder(), "[Prod]\r\nVersionNumber=32\r\n");
    // Installed at 5.0 but announced as 3: still the per-user file.
    EXPECT_EQ(foundText(3, files.name), "5.0a");
    EXPECT_EQ(foundText(4, files.name), "3.1a (revision 2)");
}

TEST(InstalledProduct, FallsBackToTheWindowsFolder) {
    ProductFilesOnDisk files("windows");
    files.write(windowsFolder(), "[Prod]\r\nVersionNumber=544\r\nBetaLevel=7\r\n");
    EXPECT_EQ(foundText(3, files.name), "17.0a (beta 7)");
    EXPECT_EQ(foundText(5, files.name), "17.0a (beta 7)");
    EXPECT_EQ(foundText(5, "HeralderTest-nowhere.ini"), "0.0a");
}

// Values as the platform's profile reader gives them: any case, "-1" and "2x".
TEST(InstalledProduct, ReadsValuesAsTheProfileReaderGivesThem) {
    ProductFilesOnDisk files("values");
    files.write(*getCommonQuenmarkFolder(),
                "[prod]\r\nversionnumber=544\r\nPatchLevel=-1\r\nBetaLevel=2x\r\n");
    EXPECT_EQ(foundText(5, files.name, "PROD"), "17.0a (revision -1) (beta 2)");
    EXPECT_EQ(foundText(5, files.name, "Absent"), "0.0a");
}
