// Shell special folders and the program's data file locations.  Paths are
// returned by value, so a caller may hold several at once.
#include "settings/file_locations_win.h"

#include "base/win_headers.h"

std::optional<std::string> getSpecialFolderPath(int csidl) {
    LPITEMIDLIST idList = nullptr;
    if (FAILED(SHGetSpecialFolderLocation(nullptr, csidl, &idList)) || !idList) return std::nullopt;
    char path[MAX_PATH] = "";
    bool ok = SHGetPathFromIDListA(idList, path) != FALSE;
    IMalloc* shellMalloc = nullptr;
    if (SUCCEEDED(SHGetMalloc(&shellMalloc)) && shellMalloc) {
        shellMalloc->Free(idList);
        shellMalloc->Release();
    }
    if (!ok) return std::string();
    return std::string(path);
}

std::string getUserDataPath(std::string_view name) {
    std::optional<std::string> appData = getSpecialFolderPath(CSIDL_APPDATA);
    if (!appData) return std::string();
    return joinDataPath(*appData, {kMakerFolder, name});
}

std::string getUserHeralderPath(std::string_view name) {
    std::optional<std::string> appData = getSpecialFolderPath(CSIDL_APPDATA);
    if (!appData) return std::string();
    return joinDataPath(*appData, {kMakerFolder, kProductFolder, name});
}

namespace {

bool isFolder(const std::string& path) {
    DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace

bool ensureDataFolders() {
    std::optional<std::string> appData = getSpecialFolderPath(CSIDL_APPDATA);
    if (!appData || appData->empty()) return false;
    bool ok = true;
    for (const std::string& folder : {joinDataPath(*appData, {kMakerFolder}),
                                      joinDataPath(*appData, {kMakerFolder, kProductFolder})}) {
        if (!isFolder(folder)) CreateDirectoryA(folder.c_str(), nullptr);
        ok = ok && isFolder(folder);
    }
    return ok;
}
