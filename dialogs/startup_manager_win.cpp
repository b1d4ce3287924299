// The startup manager (see startup_manager_win.h). The dialog shows the stored
// choice, not what the Startup folder holds: the folder is made to agree with
// the choice only when the user closes the dialog, and by the other places
// that apply a choice (first-run sign-up, multiple-items prompt).
#include "dialogs/startup_manager_win.h"

#include <wrl/client.h>

#include <cstdlib>

#include "dialogs/manual_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings.h"
#include "ui/dialog_win.h"
#include "ui/icon_button_win.h"
#include "ui/res_string_win.h"
#include "ui/soft_button_win.h"

namespace {

using Microsoft::WRL::ComPtr;

constexpr char kLinkName[] = "Heralder";
constexpr char kLinkExtension[] = ".lnk";
constexpr char kUpdateArgument[] = "/UPDATE";

class StartupManagerDialog : public Dialog {
  public:
    explicit StartupManagerDialog(const Settings& settings)
        : settings_(settings), option_(settings.StartupOptions) {}
    uint32_t option() const { return option_; }

  protected:
    BOOL onInitDialog() override {
        // Any other stored value checks nothing; Close then means Automatic.
        if (option_ == kStartupManual || option_ == kStartupAutomatic) {
            CheckRadioButton(hwnd(), IDC_STARTUP_MANUAL, IDC_STARTUP_AUTOMATIC,
                             static_cast<int>(option_));
        }
        if (settings_.SoftButtons != 0) {
            makeSoftButtons(hwnd(), settings_.SoftButtons,
                            {IDC_BUTTON1, IDC_CANCELBUTTON, IDC_HELPBUTTON});
        }
        SetFocus(item(IDC_BUTTON1));
        centreWindow(hwnd());
        return FALSE;
    }

    void onCommand(int id, UINT code, HWND) override {
        if (code != BN_CLICKED) return;
        switch (id) {
            case IDC_BUTTON1:
                option_ = IsDlgButtonChecked(hwnd(), IDC_STARTUP_MANUAL) == BST_CHECKED
                              ? kStartupManual
                              : kStartupAutomatic;
                end(1);
                break;
            case IDC_CANCELBUTTON:
                end(0);
                break;
            case IDC_HELPBUTTON:
                openManualTopic(hwnd(), settings_, "STARTUP");
                break;
        }
    }

    bool onDrawItem(const DRAWITEMSTRUCT& item) override {
        if (item.CtlID != IDC_ICONBUTTON) return false;
        drawIconButton(item, GetSysColor(COLOR_BTNFACE));
        return true;
    }

  private:
    const Settings& settings_;
    uint32_t option_;
};

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

int openStartupManager(HWND owner, Settings& s) {
    StartupManagerDialog dialog(s);
    if (dialog.runModal(owner, "StartupOptionsBox") != 1) return 0;
    s.StartupOptions = dialog.option();
    applyStartupOption(owner, s.StartupOptions);
    return 1;
}

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
