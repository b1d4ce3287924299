// The About box and the Shift action of its menu command (see about_box_win.h).
#include "dialogs/about_box_win.h"

#include <objbase.h>

#include "base/win_handles.h"
#include "dialogs/about_text.h"
#include "resources/resource.h"
#include "settings/settings.h"
#include "shell/sound_win.h"
#include "ui/dialog_win.h"
#include "ui/dpi_win.h"
#include "ui/res_string_win.h"
#include "ui/soft_button_win.h"

namespace {

constexpr int kMaxTemplateChars = 1024;

class AboutDialog : public Dialog {
  public:
    explicit AboutDialog(uint32_t softButtons) : softButtons_(softButtons) { drawsIconButton(); }

  protected:
    BOOL onInitDialog() override {
        makeSoftButtons(hwnd(), softButtons_, {IDC_BUTTON1});
        titleFont_.reset(CreateFontA(scaledFor(hwnd(), 24), 0, 0, 0, FW_BOLD, 0, 0, 0,
                                     DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                     DEFAULT_QUALITY, DEFAULT_PITCH | FF_ROMAN, "Times New Roman"));
        SetWindowFont(item(IDC_ABOUT_NAME), titleFont_.get(), FALSE);
        char text[kMaxTemplateChars + 1] = {};
        GetDlgItemTextA(hwnd(), IDC_ABOUT_TEXT, text, sizeof text);
        SetDlgItemTextA(hwnd(), IDC_ABOUT_TEXT, formatAboutText(text).c_str());
        SetDlgItemTextA(hwnd(), IDC_ABOUT_NAME, loadResString(IDS_APP_NAME).c_str());
        centreWindow(hwnd());
        return TRUE;
    }

    // Escape arrives as Cancel and is ignored: the box is read, then dismissed.
    void onCommand(int id, UINT, HWND) override {
        if (id != IDC_BUTTON1) return;
        titleFont_.reset();
        end(1);
    }

  private:
    uint32_t softButtons_;
    UniqueFont titleFont_;
};

}  // namespace

INT_PTR openAboutBox(HWND owner, const Settings& settings) {
    AboutDialog dialog(settings.SoftButtons);
    const INT_PTR result = dialog.runModal(owner, MAKEINTRESOURCEA(IDD_ABOUT));
    if (owner)
        RedrawWindow(owner, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    return result;
}

std::string newGuidText() {
    GUID guid;
    if (FAILED(CoCreateGuid(&guid))) return {};
    wchar_t wide[40] = {};
    if (StringFromGUID2(guid, wide, 40) == 0) return {};
    char ansi[80] = {};
    WideCharToMultiByte(CP_ACP, 0, wide, -1, ansi, sizeof ansi, nullptr, nullptr);
    return guidClipboardText(ansi);
}

bool copyNewGuid(HWND owner, const std::string& soundName) {
    const std::string text = newGuidText();
    const bool placed = !text.empty() && copyTextToClipboard(owner, text);
    playNotifySound(soundName);
    return placed;
}
