// Installed product lookup against real INI files in the prefix's per-user,
// all-users and Windows folders, read by the platform's profile reader.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "base/win_headers.h"
#include "feed/installed_product.h"
#include "settings/file_locations_win.h"

namespace {

// Writes INI files of one name and deletes them (and the maker folders it had
// to create) afterwards.
class ProductFilesOnDisk {
  public:
    ~ProductFilesOnDisk() {
        for (auto it = created_.rbegin(); it != created_.rend(); ++it)
            if (!DeleteFileA(it->c_str())) RemoveDirectoryA(it->c_str());
    }
    ProductFilesOnDisk() = default;
    ProductFilesOnDisk(const ProductFilesOnDisk&) = delete;
    ProductFilesOnDisk& operator=(const ProductFilesOnDisk&) = delete;

    // Into the folder itself, not where the lookup says, so that a lookup in
    // the wrong folder fails.
    void write(std::string folder, const std::string& content) {
        if (folder.back() != '\\') folder += '\\';
        if (CreateDirectoryA(folder.c_str(), nullptr)) created_.push_back(folder);
        std::ofstream(folder + name_, std::ios::binary) << content;
        created_.push_back(folder + name_);
    }

    // The version text found for a product announced as `announced`.
    std::string found(int32_t announced, const char* section = "Prod") {
        UpdateItem item;
        item.version = announced;
        item.iniFile = name_;
        item.section = section;
        auto version = lookupInstalledVersion(item);
        return version ? version->text : "(nothing)";
    }

  private:
    const std::string name_ = "HeralderTest-" + std::to_string(GetCurrentProcessId()) + ".ini";
    std::vector<std::string> created_;  // files and folders, in order of creation
};

}  // namespace

// Values as the platform's profile reader gives them: any case, "-1" and "2x".
TEST(InstalledProduct, FindsTheFileWhereTheAnnouncedVersionSaysElseInWindows) {
    ProductFilesOnDisk files;
    char windows[MAX_PATH];
    files.write(std::string(windows, GetWindowsDirectoryA(windows, MAX_PATH)),
                "[prod]\r\nversionnumber=544\r\nPatchLevel=-1\r\nBetaLevel=2x\r\n");
    EXPECT_EQ(files.found(3, "PROD"), "17.0a (revision -1) (beta 2)");
    EXPECT_EQ(files.found(5, "PROD"), "17.0a (revision -1) (beta 2)");
    EXPECT_EQ(files.found(5, "Absent"), "0.0a");

    files.write(makerFolderPath(*getSpecialFolderPath(CSIDL_APPDATA)),
                "[Prod]\r\nVersionNumber=160\r\n");  // 5.0a
    files.write(makerFolderPath(*getSpecialFolderPath(CSIDL_COMMON_APPDATA)),
                "[Prod]\r\nVersionNumber=1120\r\nPatchLevel=2\r\n");
    // Installed at 5.0 but announced as 3: still the per-user file.
    EXPECT_EQ(files.found(3), "5.0a");
    EXPECT_EQ(files.found(4), "3.1a (revision 2)");
}
