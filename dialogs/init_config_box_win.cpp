// The first-run sign-up (see init_config_box_win.h). The window is topmost:
// it is started from the installer or a logon, when nothing of ours is on
// screen to own it, and must not open behind whatever the user is doing.
#include "dialogs/init_config_box_win.h"

#include <optional>

#include "base/win_handles.h"
#include "dialogs/init_config.h"
#include "feed/http_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings.h"
#include "shell/browser_win.h"
#include "shell/item_graphics_win.h"
#include "shell/startup_link_win.h"
#include "ui/dialog_win.h"
#include "ui/dpi_win.h"
#include "ui/message_box_win.h"
#include "ui/soft_button_win.h"

namespace {

// Checks a radio button without unchecking the others of its group, which an
// automatic radio button does when it is checked, even by a message.
void checkRadioAlone(HWND button) {
    const LONG_PTR style = GetWindowLongPtrA(button, GWL_STYLE);
    SetWindowLongPtrA(button, GWL_STYLE, (style & ~LONG_PTR{BS_TYPEMASK}) | BS_RADIOBUTTON);
    SendMessageA(button, BM_SETCHECK, BST_CHECKED, 0);
    SetWindowLongPtrA(button, GWL_STYLE, style);
}

class InitConfigDialog : public Dialog {
  public:
    explicit InitConfigDialog(const Settings& settings)
        : settings_(settings),
          option_(settings.StartupOptions),
          softButtons_(settings.SoftButtons) {
        drawsIconButton();
    }
    uint32_t option() const { return option_; }

  protected:
    BOOL onInitDialog() override {
        // The stored choice marks the control of its number: Automatic for
        // 102, nothing visible for Manual's 101 (the banner). Manual is
        // checked below whatever it was, and stays the choice unless the user
        // clicks Automatic, even though both then show as checked.
        if (option_ <= 0xFFFF) CheckDlgButton(hwnd(), static_cast<int>(option_), BST_CHECKED);
        makeSoftButtons(hwnd(), softButtons_, {IDC_BUTTON1, IDC_HELPBUTTON});
        checkRadioAlone(item(IDC_INITCONFIG_MANUAL));

        headingFont_.reset(CreateFontA(
            scaledFor(hwnd(), 20), 0, 0, 0, FW_BOLD, 0, 0, 0, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
            CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH | FF_ROMAN, "Times New Roman"));
        SetWindowFont(item(IDC_INITCONFIG_HEADING), headingFont_.get(), FALSE);
        SetDlgItemTextA(hwnd(), IDC_INITCONFIG_TEXT, kInitConfigText);
        banner_ = loadBitmapResourceDib(IDR_INITCONFIG_BANNER);

        SetWindowPos(hwnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        return focusAndCentre();
    }

    void onCommand(int id, UINT code, HWND) override {
        switch (id) {
            case IDC_BUTTON1:
                if (code != BN_CLICKED) return;
                option_ = IsDlgButtonChecked(hwnd(), IDC_INITCONFIG_MANUAL) == BST_CHECKED
                              ? kStartupManual
                              : kStartupAutomatic;
                if (IsDlgButtonChecked(hwnd(), IDC_INITCONFIG_NEWSLETTER) == BST_CHECKED)
                    launchBrowser(hwnd(), settings_, newsletterAddress(publisherServerHost()), "",
                                  true);
                end(1);
                break;
            case IDC_CANCELBUTTON:  // Escape: there is no Cancel button
                end(0);
                break;
            case IDC_HELPBUTTON:
                if (code == BN_CLICKED) openManualTopic(hwnd(), settings_, "STARTUP");
                break;
        }
    }

    bool onDrawItem(const DRAWITEMSTRUCT& item) override {
        if (item.CtlID != IDC_INITCONFIG_BANNER) return false;
        const COLORREF face = GetSysColor(COLOR_BTNFACE);
        FillRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_BTNFACE));
        if (banner_)
            drawPictureOverAt(item.hDC, item.rcItem.left, item.rcItem.top, *banner_, face,
                              windowDpi(hwnd()));
        return true;
    }

  private:
    const Settings& settings_;
    uint32_t option_;
    uint32_t softButtons_;
    UniqueFont headingFont_;
    std::optional<Picture> banner_;
};

}  // namespace

int runInitConfig(HWND owner, Settings& s, uint32_t platformCode) {
    if (s.InitConfigDone) return 1;
    InitConfigDialog dialog(s);
    const INT_PTR shown = dialog.runModal(owner, "InitConfigBox");
    // A window that could not be made was never seen: it is offered again.
    if (shown < 0) return 0;
    const int result = shown == 1 ? 1 : 0;
    if (settleInitConfig(s, result, dialog.option())) applyStartupOption(owner, s.StartupOptions);
    checkOldInstallation(owner, platformCode);
    return result;
}

bool checkOldInstallation(HWND owner, uint32_t platformCode) {
    const std::string ini = getUserDataPath(kOldInstallationFile);
    if (ini.empty()) return false;  // a bare name would be looked for in the Windows folder
    char folder[MAX_PATH] = {};
    GetPrivateProfileStringA(kOldInstallationSection, kOldInstallationKey, "", folder, MAX_PATH,
                             ini.c_str());
    const std::string program = oldInstallationProgramPath(folder);
    if (program.empty()) return false;
    const DWORD attributes = GetFileAttributesA(program.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY))
        return false;
    showMessage(owner, oldInstallationMessage(platformCode));
    return true;
}
