// Shell special folders and the program's data file locations.
#include "settings/file_locations.h"

#include "base/win_headers.h"

std::optional<std::string> getSpecialFolderPath(int csidl) {
    LPITEMIDLIST idList = nullptr;
    if (FAILED(SHGetSpecialFolderLocation(nullptr, csidl, &idList)) || !idList)
        return std::nullopt;
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
