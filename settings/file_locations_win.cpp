// Shell special folders and the program's data file locations.  Paths are
// returned by value, so a caller may hold several at once.
#include "settings/file_locations_win.h"

#include <map>
#include <memory>
#include <mutex>

#include "base/win_headers.h"

namespace {

// An item list goes back to the shell's allocator, which made it.
struct ShellFree {
    void operator()(ITEMIDLIST* idList) const noexcept {
        IMalloc* shellMalloc = nullptr;
        if (SUCCEEDED(SHGetMalloc(&shellMalloc)) && shellMalloc) {
            shellMalloc->Free(idList);
            shellMalloc->Release();
        }
    }
};

std::optional<std::string> askShellForFolder(int csidl) {
    // A file-system folder is asked for by path: the item-list route below
    // allocates through COM and so loads ole32, rpcrt4 and combase into every
    // daily run. Only a folder the shell cannot name as a path takes it.
    char direct[MAX_PATH] = "";
    if (SUCCEEDED(SHGetFolderPathA(nullptr, csidl, nullptr, SHGFP_TYPE_CURRENT, direct)))
        return std::string(direct);
    LPITEMIDLIST found = nullptr;
    if (FAILED(SHGetSpecialFolderLocation(nullptr, csidl, &found)) || !found) return std::nullopt;
    const std::unique_ptr<ITEMIDLIST, ShellFree> idList(found);
    char path[MAX_PATH] = "";
    if (!SHGetPathFromIDListA(idList.get(), path)) return std::string();
    return std::string(path);
}

}  // namespace

// A folder the shell found stays where it is for the life of the process;
// asking again costs a walk over its parents each time, several times a run.
std::optional<std::string> getSpecialFolderPath(int csidl) {
    static std::mutex guard;
    static std::map<int, std::string> found;
    {
        std::lock_guard<std::mutex> lock(guard);
        if (auto it = found.find(csidl); it != found.end()) return it->second;
    }
    std::optional<std::string> path = askShellForFolder(csidl);
    if (path && !path->empty()) {
        std::lock_guard<std::mutex> lock(guard);
        found.emplace(csidl, *path);
    }
    return path;
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
