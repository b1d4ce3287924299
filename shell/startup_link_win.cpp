// The Startup folder's shortcut (see startup_link_win.h). The link's working
// folder is the program's own, so that a logon run finds its files as a run
// from the Start menu does.
#include "shell/startup_link_win.h"

#include <wrl/client.h>

#include <cstdlib>

#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings.h"
#include "ui/res_string_win.h"

namespace {

using Microsoft::WRL::ComPtr;

constexpr char kLinkName[] = "Heralder";
constexpr char kLinkExtension[] = ".lnk";
constexpr char kUpdateArgument[] = "/UPDATE";

// Drive and folder of path, ending in a backslash unless empty.
std::string folderOf(const std::string& path) {
    char drive[_MAX_DRIVE] = {};
    char folder[_MAX_DIR] = {};
    _splitpath(path.c_str(), drive, folder, nullptr, nullptr);
    std::string result = std::string(drive) + folder;
    if (!result.empty() && result.back() != '\\') result += '\\';
    return result;
}

}  // namespace

int applyStartupOption(HWND owner, uint32_t option) {
    // A thread that already has COM in another mode still gets its shortcut
    // attempt; only a successful initialisation is balanced.
    const HRESULT com = CoInitialize(nullptr);

    // Without a Startup folder the bare name lands in the current directory;
    // that has always been so and nobody has been hurt by it.
    std::string linkPath = getSpecialFolderPath(CSIDL_STARTUP).value_or(std::string());
    if (!linkPath.empty() && linkPath.back() != '\\') linkPath += '\\';
    linkPath += kLinkName;
    linkPath += kLinkExtension;

    char executable[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, executable, MAX_PATH);
    const std::string arguments = option == kStartupAutomatic ? kUpdateArgument : "";

    if (option == kStartupManual) {
        DeleteFileA(linkPath.c_str());
    } else {
        createShortcut(executable, linkPath, loadResString(IDS_APP_NAME), arguments);
    }
    if (SUCCEEDED(com)) CoUninitialize();
    return 1;
}

HRESULT createShortcut(const std::string& target, const std::string& linkPath,
                       const std::string& description, const std::string& arguments) {
    const std::string workingDirectory = folderOf(target);

    ComPtr<IShellLinkA> link;
    HRESULT result =
        CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&link));
    if (FAILED(result)) return result;
    link->SetPath(target.c_str());
    link->SetDescription(description.c_str());
    link->SetArguments(arguments.c_str());
    link->SetWorkingDirectory(workingDirectory.c_str());

    ComPtr<IPersistFile> file;
    result = link.As(&file);
    if (SUCCEEDED(result)) {
        WCHAR widePath[MAX_PATH + 1] = {};  // stays terminated when the path is too long
        MultiByteToWideChar(CP_ACP, 0, linkPath.c_str(), -1, widePath, MAX_PATH);
        result = file->Save(widePath, TRUE);
    }
    return result;
}
