// The item browser (see browse_box_win.h). The box uses the system's dialog
// colours throughout: it shows data, not a notification. It has no Cancel and
// no close box; Escape's IDCANCEL is ignored, so only Close or Enter end it.
#include "notify/browse_box_win.h"

#include <algorithm>
#include <string>

#include <shellapi.h>  // after windows.h; the lean build leaves it out

#include "notify/browse_text.h"
#include "notify/url_policy.h"
#include "resources/resource.h"
#include "shell/browser_win.h"
#include "ui/dialog_win.h"
#include "ui/dpi_win.h"
#include "ui/message_box_win.h"
#include "ui/soft_button_win.h"

namespace {

constexpr char kTemplate[] = "BrowseBox";
constexpr char kHelpTopic[] = "BROWSE";
constexpr char kBrowserError[] = "There has been an error accessing your web browser.";
// Sent by whoever wants the box at its working height again.
constexpr UINT WM_FIT_DIALOG = WM_USER + 100;

// Which text goes into which field.
constexpr struct {
    int id;
    std::string BrowseTexts::*text;
} kFields[] = {
    {IDC_BROWSE_DATE, &BrowseTexts::date},
    {IDC_BROWSE_ORIGINATOR, &BrowseTexts::originator},
    {IDC_BROWSE_APPLICATION, &BrowseTexts::application},
    {IDC_BROWSE_VERSION, &BrowseTexts::version},
    {IDC_BROWSE_KEYWORDS, &BrowseTexts::keywords},
    {IDC_BROWSE_TEXT, &BrowseTexts::plainText},
    {IDC_BROWSE_REGISTERED, &BrowseTexts::registered},
    {IDC_BROWSE_EVALUATION, &BrowseTexts::evaluation},
    {IDC_BROWSE_INIFILE, &BrowseTexts::iniFile},
    {IDC_BROWSE_INSTALLED, &BrowseTexts::installed},
    {IDC_BROWSE_SECTION, &BrowseTexts::section},
    {IDC_BROWSE_URL, &BrowseTexts::url},
    {IDC_BROWSE_IMPORTANCE, &BrowseTexts::importance},
    {IDC_BROWSE_IGNOREUNTIL, &BrowseTexts::ignoreUntil},
};

class BrowseBox : public Dialog {
  public:
    BrowseBox(const Settings& settings, BrowseTexts texts)
        : settings_(settings), texts_(std::move(texts)) {}

  protected:
    BOOL onInitDialog() override {
        makeSoftButtons(hwnd(), settings_.SoftButtons,
                        {IDC_BUTTON1, IDC_BROWSE_GO, IDC_HELPBUTTON});
        SetWindowTextA(hwnd(), texts_.caption.c_str());
        for (const auto& field : kFields)
            if (!(texts_.*field.text).empty())
                SetDlgItemTextA(hwnd(), field.id, (texts_.*field.text).c_str());
        if (canGo()) {
            HWND go = item(IDC_BROWSE_GO);
            EnableWindow(go, TRUE);
            if (isSoftButton(go)) InvalidateRect(go, nullptr, TRUE);
        }
        SetFocus(item(IDC_BUTTON1));
        fitHeight();
        return FALSE;
    }

    void onCommand(int id, UINT code, HWND) override {
        if (code != BN_CLICKED) return;
        switch (id) {
            case IDC_BUTTON1:
                end(1);
                return;
            case IDC_BROWSE_GO:
                openUrl();
                return;
            case IDC_HELPBUTTON:
                openManualTopic(hwnd(), settings_, kHelpTopic);
                return;
        }
    }

    bool onMessage(UINT msg, WPARAM, LPARAM, INT_PTR& result) override {
        if (msg != WM_FIT_DIALOG) return false;
        fitHeight();
        result = 0;
        return true;
    }

  private:
    bool canGo() const { return isWebAddress(texts_.url); }

    int workAreaHeight() const {
        MONITORINFO monitor{};
        monitor.cbSize = sizeof monitor;
        if (!GetMonitorInfoA(MonitorFromWindow(hwnd(), MONITOR_DEFAULTTONEAREST), &monitor))
            return GetSystemMetrics(SM_CYSCREEN);
        return static_cast<int>(monitor.rcWork.bottom - monitor.rcWork.top);
    }

    // On a short screen at a large scale the two text boxes give up height,
    // down to three lines each, and everything below them moves up, so that
    // the whole box stays on the screen. The pixels given up, at most excess.
    int shrinkTextBoxes(int excess) {
        if (excess <= 0) return 0;
        const RECT text = clientRectOf(hwnd(), IDC_BROWSE_TEXT);
        const RECT spare = clientRectOf(hwnd(), IDC_BROWSE_SPARE);
        RECT lines{0, 0, 0, 24};  // three lines of the dialog's font
        MapDialogRect(hwnd(), &lines);
        const int room = static_cast<int>(text.bottom - text.top - lines.bottom);
        const int each = std::min((excess + 1) / 2, std::max(room, 0));
        if (each == 0) return 0;
        for (HWND c = GetWindow(hwnd(), GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
            RECT r;
            GetWindowRect(c, &r);
            MapWindowPoints(HWND_DESKTOP, hwnd(), reinterpret_cast<POINT*>(&r), 2);
            if (c == item(IDC_BROWSE_TEXT)) {
                r.bottom -= each;
            } else if (c == item(IDC_BROWSE_SPARE)) {
                OffsetRect(&r, 0, -each);
                r.bottom -= each;
            } else if (r.top >= spare.bottom) {
                OffsetRect(&r, 0, -2 * each);
            } else if (r.top >= text.bottom) {
                OffsetRect(&r, 0, -each);
            } else {
                continue;
            }
            SetWindowPos(c, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                         SWP_NOZORDER | SWP_NOACTIVATE);
        }
        return 2 * each;
    }

    // The template is shorter than its fields; the box opens at the height
    // that shows them all, and taller only where large fonts need it.
    void fitHeight() {
        RECT window{}, client{};
        GetWindowRect(hwnd(), &window);
        GetClientRect(hwnd(), &client);
        const int frame =
            static_cast<int>((window.bottom - window.top) - (client.bottom - client.top));
        RECT margin{0, 0, 4, 4};
        MapDialogRect(hwnd(), &margin);
        const int lowest = static_cast<int>(clientRectOf(hwnd(), IDC_BROWSE_IMPORTANCE).bottom);
        int height = std::max(scaledFor(hwnd(), kBrowseBoxHeight) - shrunkBy_,
                              lowest + static_cast<int>(margin.bottom) + frame);
        const int shrunk = shrinkTextBoxes(height - workAreaHeight());
        shrunkBy_ += shrunk;
        height -= shrunk;
        SetWindowPos(hwnd(), nullptr, 0, 0, window.right - window.left, height,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        centreWindow(hwnd());
    }

    void openUrl() {
        if (!canGo()) return;
        const std::string& folder = settings_.ApplicationPath;
        const auto result = reinterpret_cast<INT_PTR>(
            ShellExecuteA(hwnd(), "open", texts_.url.c_str(), nullptr,
                          folder.empty() ? nullptr : folder.c_str(), SW_SHOWNORMAL));
        if (result <= 32) showMessage(hwnd(), kBrowserError);
    }

    const Settings& settings_;
    BrowseTexts texts_;
    int shrunkBy_ = 0;  // height the text boxes gave up to fit the screen
};

}  // namespace

int showBrowseBox(HWND owner, const UpdateItem& item, const Settings& settings,
                  const InstalledVersionLookup& lookup) {
    const std::optional<InstalledVersion> installed =
        lookup ? lookup(item) : lookupInstalledVersion(item);
    BrowseBox box(settings, browseTexts(item, installed));
    box.runModal(owner, kTemplate);
    if (owner) UpdateWindow(owner);
    return 1;
}
