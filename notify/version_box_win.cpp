// The version notice (see version_box_win.h). Its report is a plain static
// control in the dialog's own font, so screen readers and the keyboard reach it
// like any other text; only the product icon is drawn by the window.
#include "notify/version_box_win.h"

#include "notify/alert_text.h"
#include "notify/item_commands_win.h"
#include "notify/url_policy.h"
#include "resources/resource.h"
#include "shell/sound_win.h"
#include "ui/dialog_win.h"
#include "ui/dpi_win.h"
#include "ui/soft_button_win.h"

namespace {

constexpr char kTemplate[] = "VersionBox";

class VersionBox : public Dialog {
  public:
    VersionBox(UpdateItem& item, const NotifyLook& look, const Settings& settings,
               InstalledLookup& lookup)
        : item_(item), look_(look), settings_(settings), lookup_(lookup) {
        drawsIconButton(settings.AlertBackgroundColor);
    }

  protected:
    BOOL onInitDialog() override {
        // Its pixel geometry scales exactly, not only as far as its font does.
        sizeAsScaledTemplate(hwnd(), kTemplate);
        makeSoftButtons(hwnd(), settings_.SoftButtons,
                        {IDC_BUTTON1, IDC_CANCELBUTTON, IDC_HELPBUTTON, IDC_VERSION_GO});
        if (item_.title && !item_.title->empty()) SetWindowTextA(hwnd(), item_.title->c_str());
        SetDlgItemTextA(hwnd(), IDC_VERSION_REPORT, versionReport(item_, lookup_).c_str());
        // Go is enabled in the template; an address the shell must not be
        // given (a file, a program) disables it.
        if (item_.url && !item_.url->empty() && !isWebAddress(*item_.url))
            EnableWindow(item(IDC_VERSION_GO), FALSE);
        if (settings_.BeNoisy) playNotifySound(settings_.ChangeFolderSound);
        return focusAndCentre();
    }

    void onCommand(int id, UINT code, HWND) override {
        if (code != BN_CLICKED) return;
        if (const auto result = itemWindowCommand(
                hwnd(), id, {IDC_VERSION_NEVERAGAIN, IDC_VERSION_GO, 0}, item_, settings_))
            end(*result);
    }

    bool onMessage(UINT msg, WPARAM wp, LPARAM, INT_PTR& result) override {
        return answerNotifyColours(msg, wp, look_, settings_, result);
    }

  private:
    UpdateItem& item_;
    NotifyLook look_;
    const Settings& settings_;
    InstalledLookup& lookup_;
};

}  // namespace

int showVersionBox(HWND owner, UpdateItem& item, const NotifyLook& look, const Settings& settings,
                   InstalledLookup& lookup) {
    VersionBox box(item, look, settings, lookup);
    const INT_PTR result = box.runModal(owner, kTemplate);
    if (owner) UpdateWindow(owner);
    return result == 1 ? 1 : 0;
}
