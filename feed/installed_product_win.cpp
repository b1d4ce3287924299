// Installed product lookup, the Windows side: the shell's application-data
// folders, the Windows folder and the profile (INI) reader.
#include "base/win_headers.h"
#include "feed/installed_product.h"
#include "settings/file_locations_win.h"

namespace {

std::optional<std::string> quenmarkFolder(int csidl) {
    std::optional<std::string> folder = getSpecialFolderPath(csidl);
    if (!folder || folder->empty()) return std::nullopt;
    return makerFolderPath(*folder);
}

class WindowsProductFiles final : public ProductFiles {
  public:
    std::optional<std::string> makerFolder(bool allUsers) override {
        return allUsers ? getCommonQuenmarkFolder() : getUserQuenmarkFolder();
    }
    std::optional<std::string> windowsFolder() override {
        char folder[MAX_PATH];
        UINT n = GetWindowsDirectoryA(folder, MAX_PATH);
        if (n == 0 || n >= MAX_PATH) return std::nullopt;
        return std::string(folder, n);
    }
    bool fileExists(const std::string& path) override {
        DWORD attributes = GetFileAttributesA(path.c_str());
        return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
    }
    uint32_t readProfileNumber(const std::string& file, const std::string& section,
                               const char* key) override {
        return GetPrivateProfileIntA(section.c_str(), key, 0, file.c_str());
    }
};

}  // namespace

std::optional<std::string> getUserQuenmarkFolder() {
    return quenmarkFolder(CSIDL_APPDATA);
}

std::optional<std::string> getCommonQuenmarkFolder() {
    return quenmarkFolder(CSIDL_COMMON_APPDATA);
}

std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem& item) {
    WindowsProductFiles files;
    return lookupInstalledVersion(item, files);
}
