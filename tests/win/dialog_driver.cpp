// The dialog driver of the Windows tests. A thread timer is dispatched by
// whatever message loop runs, a modal dialog's included, so the script runs
// inside the dialog's loop without a second thread.
#include "tests/win/dialog_driver.h"

#include <algorithm>

#include "app/app_win.h"
#include "app/main_window_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
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
            char cls[16] = {};
            GetClassNameA(hwnd, cls, sizeof cls);
            if (std::string(cls) != "#32770" || !IsWindowVisible(hwnd) || !IsWindowEnabled(hwnd))
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

std::string windowText(HWND hwnd) {
    char text[4096] = {};
    GetWindowTextA(hwnd, text, sizeof text);
    return text;
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
