// The startup manager (see startup_manager_win.h). The dialog shows the stored
// choice, not what the Startup folder holds: the folder is made to agree with
// the choice only when the user closes the dialog, and by the other places
// that apply a choice (first-run sign-up, multiple-items prompt).
#include "dialogs/startup_manager_win.h"

#include "resources/resource.h"
#include "settings/settings.h"
#include "shell/browser_win.h"
#include "shell/startup_link_win.h"
#include "ui/dialog_win.h"
#include "ui/soft_button_win.h"

namespace {

class StartupManagerDialog : public Dialog {
  public:
    explicit StartupManagerDialog(const Settings& settings)
        : settings_(settings), option_(settings.StartupOptions) {
        drawsIconButton();
    }
    uint32_t option() const { return option_; }

  protected:
    BOOL onInitDialog() override {
        // Any other stored value checks nothing; Close then means Automatic.
        if (option_ == kStartupManual || option_ == kStartupAutomatic) {
            CheckRadioButton(hwnd(), IDC_STARTUP_MANUAL, IDC_STARTUP_AUTOMATIC,
                             static_cast<int>(option_));
        }
        makeSoftButtons(hwnd(), settings_.SoftButtons,
                        {IDC_BUTTON1, IDC_CANCELBUTTON, IDC_HELPBUTTON});
        return focusAndCentre();
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

  private:
    const Settings& settings_;
    uint32_t option_;
};

}  // namespace

int openStartupManager(HWND owner, Settings& s) {
    StartupManagerDialog dialog(s);
    if (dialog.runModal(owner, "StartupOptionsBox") != 1) return 0;
    s.StartupOptions = dialog.option();
    applyStartupOption(owner, s.StartupOptions);
    return 1;
}
