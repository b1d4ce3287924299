// The dialog driver of the Windows tests. A thread timer is dispatched by
// whatever message loop runs, a modal dialog's included, so the script runs
// inside the dialog's loop without a second thread.
#include "tests/win/dialog_driver.h"

#include <algorithm>

#include "app/app_win.h"
#include "app/main_window_win.h"
#include "base/win_handles.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "ui/dpi_win.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

namespace {

thread_local DialogDriver* activeDriver = nullptr;
constexpr UINT kTickMs = 10;
constexpr int kGraceTicks = 100;

std::vector<std::string> entriesOf(HWND dialog, int id, UINT countMessage, UINT textMessage) {
    std::vector<std::string> entries;
    const LRESULT count = SendDlgItemMessageA(dialog, id, countMessage, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        char text[300] = {};
        SendDlgItemMessageA(dialog, id, textMessage, i, reinterpret_cast<LPARAM>(text));
        entries.push_back(text);
    }
    return entries;
}

RECT childRect(HWND parent, HWND child) {
    RECT r;
    GetWindowRect(child, &r);
    MapWindowPoints(HWND_DESKTOP, parent, reinterpret_cast<POINT*>(&r), 2);
    return r;
}

// Frames, group boxes and pictures may lie over other controls by design, an
// up-down control over its edit; everything else owns its rectangle.
bool mayOverlap(HWND control, HWND other) {
    const LONG style = GetWindowLongA(control, GWL_STYLE);
    const std::string cls = className(control);
    if (cls == UPDOWN_CLASSA)
        return reinterpret_cast<HWND>(SendMessageA(control, UDM_GETBUDDY, 0, 0)) == other;
    if (cls == "Button") return (style & BS_TYPEMASK) == BS_GROUPBOX;
    if (cls == "Static") {
        const LONG type = style & SS_TYPEMASK;
        return (type >= SS_BLACKRECT && type <= SS_WHITEFRAME) || type == SS_ETCHEDHORZ ||
               type == SS_ETCHEDVERT || type == SS_ETCHEDFRAME || type == SS_OWNERDRAW;
    }
    return false;
}

// The room the control's text needs, or an empty string when it draws no
// text of its own that the check can measure.
std::string textOverflow(HWND control, unsigned dpi) {
    const std::string text = windowText(control);
    if (text.empty() || !IsWindowVisible(control)) return "";
    const LONG style = GetWindowLongA(control, GWL_STYLE);
    const std::string cls = className(control);
    UINT format = DT_CALCRECT;
    int room = 0;  // pixels of the rectangle the control keeps for itself
    if (cls == "Button") {
        const LONG type = style & BS_TYPEMASK;
        if (type == BS_OWNERDRAW || type == BS_GROUPBOX) return "";
        const bool box = type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_RADIOBUTTON ||
                         type == BS_AUTORADIOBUTTON || type == BS_3STATE || type == BS_AUTO3STATE;
        room = scaleForDpi(box ? 16 : 4, dpi);
        format |= (style & BS_MULTILINE) ? DT_WORDBREAK : DT_SINGLELINE;
    } else if (cls == "Static") {
        const LONG type = style & SS_TYPEMASK;
        if (type == SS_LEFT || type == SS_CENTER || type == SS_RIGHT)
            format |= DT_WORDBREAK;
        else if (type == SS_LEFTNOWORDWRAP || type == SS_SIMPLE)
            format |= DT_SINGLELINE;
        else
            return "";
        if (style & SS_ELLIPSISMASK) return "";  // shortened to fit by the control
        if (style & SS_NOPREFIX) format |= DT_NOPREFIX;
    } else {
        return "";
    }
    RECT r;
    GetClientRect(control, &r);
    const int width = r.right - room;
    RECT need{0, 0, width, 0};
    WindowDc dc(control);
    ScopedSelect font(dc.get(), GetWindowFont(control));
    DrawTextA(dc.get(), text.c_str(), static_cast<int>(text.size()), &need, format);
    if (need.right <= width && need.bottom <= r.bottom) return "";
    return "\"" + text.substr(0, 40) + "\" needs " + std::to_string(need.right) + " x " +
           std::to_string(need.bottom) + " in " + std::to_string(width) + " x " +
           std::to_string(r.bottom);
}

// The version notice's check box is one line too short for its text in
// Wine's fonts at every scale, 96 DPI included: its window has no room to
// widen it, and its wording and size are the notice's own.
bool knownCut(HWND window, int id) {
    return id == IDC_VERSION_NEVERAGAIN && GetDlgItem(window, IDC_VERSION_REPORT);
}

}  // namespace

DialogDriver::DialogDriver(Script script) : script_(std::move(script)) {
    activeDriver = this;
    timer_ = SetTimer(nullptr, 0, kTickMs, &DialogDriver::onTimer);
}

DialogDriver::~DialogDriver() {
    if (timer_) KillTimer(nullptr, timer_);
    activeDriver = nullptr;
}

void CALLBACK DialogDriver::onTimer(HWND, UINT, UINT_PTR, DWORD) {
    if (activeDriver) activeDriver->poll();
}

void DialogDriver::poll() {
    if (!dialog_) {
        const auto find = [](HWND hwnd, LPARAM found) -> BOOL {
            if (className(hwnd) != "#32770" || !IsWindowVisible(hwnd) || !IsWindowEnabled(hwnd))
                return TRUE;
            *reinterpret_cast<HWND*>(found) = hwnd;
            return FALSE;
        };
        EnumThreadWindows(GetCurrentThreadId(), find, reinterpret_cast<LPARAM>(&dialog_));
        if (dialog_) script_(dialog_);
    } else if (IsWindow(dialog_) && ++ticksSinceScript_ == kGraceTicks) {
        ADD_FAILURE() << "the script left the dialog open";
        EndDialog(dialog_, 0);
    }
}

std::string itemText(HWND dialog, int id) {
    return windowText(GetDlgItem(dialog, id));
}

void clickItem(HWND dialog, int id) {
    SendMessageA(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
}

void pressKey(HWND dialog, UINT vk) {
    HWND target = GetFocus();
    if (!target || (target != dialog && !IsChild(dialog, target))) target = dialog;
    PostMessageA(target, WM_KEYDOWN, vk, 1);
}

bool itemEnabled(HWND dialog, int id) {
    return IsWindowEnabled(GetDlgItem(dialog, id)) != FALSE;
}

void pumpDialog(HWND dialog, DWORD ms) {
    const DWORD start = GetTickCount();
    do {
        MSG msg;
        while (IsWindow(dialog) && PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
            if (!IsDialogMessageA(dialog, &msg)) {
                TranslateMessage(&msg);
                DispatchMessageA(&msg);
            }
        if (ms) Sleep(5);
    } while (GetTickCount() - start < ms);
}

INT_PTR runDriven(const std::function<INT_PTR()>& open, const DialogDriver::Script& script) {
    DialogDriver driver(script);
    const INT_PTR result = open();
    EXPECT_TRUE(driver.ran()) << "no dialog appeared";
    return result;
}

std::string messageShownBy(const std::function<void()>& action) {
    std::string text;
    DialogDriver driver([&](HWND box) {
        text = itemText(box, IDC_MESSAGETEXT);
        clickItem(box, IDC_BUTTON1);
    });
    action();
    return text;
}

void notifyDialog(HWND dialog, int id, UINT code) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, code),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

std::vector<std::string> comboEntries(HWND dialog, int id) {
    return entriesOf(dialog, id, CB_GETCOUNT, CB_GETLBTEXT);
}

std::vector<std::string> listEntries(HWND dialog, int id) {
    return entriesOf(dialog, id, LB_GETCOUNT, LB_GETTEXT);
}

LOGFONTA fontOf(HWND control) {
    LOGFONTA font = {};
    GetObjectA(reinterpret_cast<HFONT>(SendMessageA(control, WM_GETFONT, 0, 0)), sizeof font,
               &font);
    return font;
}

void withKeyHeld(UINT vk, const std::function<void()>& action) {
    BYTE saved[256], held[256];
    GetKeyboardState(saved);
    std::copy(saved, saved + 256, held);
    if (vk) held[vk] = 0x80;
    SetKeyboardState(held);
    action();
    SetKeyboardState(saved);
}

void expectHelpOpensTopic(HWND dialog, const std::string& topic, Settings& settings) {
    const Settings saved = settings;
    settings.DocumentBrowserPath = recorderPath();
    settings.DocumentBrowserFlags = 0;
    settings.ApplicationPath = "C:\\Heralder\\";
    Recording recording(scratchFolder("heralder_help_test") + "record.txt");
    clickItem(dialog, IDC_HELPBUTTON);
    const std::vector<Recorded> records = recording.wait();
    settings = saved;
    ASSERT_EQ(records.size(), 1u) << topic;
    EXPECT_EQ(
        records[0].commandLine,
        shellCommandLine(recorderPath(), "file:///C:\\Heralder\\html\\referenc.html#" + topic));
    EXPECT_TRUE(IsWindowVisible(dialog)) << topic;
}

TestMainWindow::TestMainWindow() {
    HINSTANCE instance = GetModuleHandleA(nullptr);
    WNDCLASSEXA known = {};
    known.cbSize = sizeof known;
    if (!GetClassInfoExA(instance, kMainWindowClass, &known))
        ownClass_ = registerMainWindowClass(instance);
    describeAlertLook(record_);
    hwnd_ = createMainWindow(instance, record_);
}

TestMainWindow::~TestMainWindow() {
    if (hwnd_) DestroyWindow(hwnd_);
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
    }
    if (ownClass_) UnregisterClassA(kMainWindowClass, GetModuleHandleA(nullptr));
}

void clearUserData() {
    deleteFilesIn(getUserHeralderPath("images\\"));
    deleteFilesIn(getUserHeralderPath(""));
    deleteFilesIn(getUserDataPath(""));
}

// The faults of window's layout, one line each.
std::vector<std::string> layoutFaults(HWND window, unsigned dpi) {
    std::vector<std::string> faults;
    RECT client;
    GetClientRect(window, &client);
    std::vector<HWND> controls;
    for (HWND c = GetWindow(window, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT))
        if (IsWindowVisible(c)) controls.push_back(c);
    const auto name = [](HWND c) {
        return className(c) + " " + std::to_string(GetDlgCtrlID(c)) + " \"" +
               windowText(c).substr(0, 20) + "\"";
    };
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const RECT r = childRect(window, controls[i]);
        // A picture larger than its place is cut by the window, as at 96 DPI.
        const bool picture =
            (GetWindowLongA(controls[i], GWL_STYLE) & BS_TYPEMASK) == BS_OWNERDRAW &&
            className(controls[i]) == "Button";
        if (!picture &&
            (r.left < 0 || r.top < 0 || r.right > client.right || r.bottom > client.bottom))
            faults.push_back(name(controls[i]) + " leaves the window");
        if (const std::string over = textOverflow(controls[i], dpi);
            !over.empty() && !knownCut(window, GetDlgCtrlID(controls[i])))
            faults.push_back(name(controls[i]) + ": " + over);
        for (std::size_t j = i + 1; j < controls.size(); ++j) {
            RECT both;
            const RECT other = childRect(window, controls[j]);
            if (!mayOverlap(controls[i], controls[j]) && !mayOverlap(controls[j], controls[i]) &&
                IntersectRect(&both, &r, &other))
                faults.push_back(name(controls[i]) + " overlaps " + name(controls[j]));
        }
    }
    return faults;
}
