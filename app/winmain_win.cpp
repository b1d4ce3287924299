// The entry point of heralder.exe. Start-up runs its steps in a fixed order:
// platform check, settings, the alert look, the main window, then the
// command line turned into commands sent or posted to that window; after that
// everything happens in the one message loop.
#include <cstddef>
#include <optional>
#include <string>

#include "app/app_win.h"
#include "app/command_line.h"
#include "app/daily_run_guard_win.h"
#include "app/machine_policy_win.h"
#include "app/main_window_win.h"
#include "app/platform_win.h"
#include "app/window_edges.h"
#include "resources/resource.h"
#include "settings/settings_file.h"
#include "shell/sound_win.h"
#include "ui/message_box_win.h"
#include "ui/res_string_win.h"

// The C++ library's default terminate handler names an escaped exception's
// type on standard error, through a 44 KB demangler. A windowed program has
// no standard error, and every window procedure catches what it throws, so
// the mangled name will do.
extern "C" char* __cxa_demangle(const char*, char*, std::size_t*, int* status) {
    if (status) *status = -2;  // "not a valid mangled name"
    return nullptr;
}

namespace {

constexpr char kProductName[] = "Quenmark Heralder";

void restoreWindowEdges(HWND hwnd, const Settings& record) {
    const auto placement = restoredWindowPlacement(record, GetSystemMetrics(SM_CXSCREEN),
                                                   GetSystemMetrics(SM_CYSCREEN));
    if (placement)
        SetWindowPos(hwnd, nullptr, placement->x, placement->y, placement->width, placement->height,
                     SWP_NOZORDER | SWP_NOACTIVATE);
}

void runStep(HWND hwnd, const StartupStep& step) {
    switch (step.action) {
        case StartupAction::SetUpdateMode:
            app().updateMode = true;
            break;
        case StartupAction::ResetInitConfig:
            app().settings.InitConfigDone = 0;
            break;
        case StartupAction::Send:
            SendMessageA(hwnd, WM_COMMAND, step.command, 0);
            break;
        case StartupAction::Post:
            PostMessageA(hwnd, WM_COMMAND, step.command, 0);
            break;
    }
}

int messageLoop() {
    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    return 0;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int showState) {
    AppState& a = app();
    a.instance = instance;
    Settings& record = a.settings;

    // Before anything is shown: a daily run that the machine's policy turns
    // off must not even flash the platform box.
    CommandLinePlan plan = interpretCommandLine(commandLine ? commandLine : "");
    if (!applyMachinePolicy(plan, readMachinePolicy())) return 0;
    // Held until the process ends: the daily run is the whole process.
    std::optional<DailyRunGuard> dailyRun;
    if (plansDailyRun(plan) && !dailyRun.emplace().held() && !dropDailyRun(plan)) return 0;

    if (!isPlatformSupported(&kPlatformsXpOrLater)) {
        showIncompatiblePlatformBox(nullptr, kProductName, record);
        return 0;
    }
    a.platformCode = getPlatformCode();

    readSettings(record);
    describeAlertLook(record);
    setSoundMute(0);

    if (!registerMainWindowClass(instance)) {
        showMessage(nullptr, "There has been an error registering the application class.");
        return 0;
    }
    HWND hwnd = createMainWindow(instance, record, plan.hidden);
    a.mainWindow = hwnd;
    record.ApplicationPath = programFolder();

    ShowWindow(hwnd, plan.hidden ? SW_HIDE : showState);
    UpdateWindow(hwnd);
    // A hidden window takes no focus; asking for it would also start COM for
    // the input method, a cost every daily run would pay.
    if (!plan.hidden) SetFocus(hwnd);
    SetWindowTextA(hwnd, loadResString(IDS_APP_NAME).c_str());
    restoreWindowEdges(hwnd, record);
    if (record.StartMaximized) SendMessageA(hwnd, WM_SYSCOMMAND, SC_MAXIMIZE, 0);

    // Lives until the loop ends: the window reads it when the message arrives.
    const std::string documentPath = plan.documentPath.value_or("");
    if (plan.documentPath)
        PostMessageA(hwnd, WM_LOAD_DOCUMENT, 0, reinterpret_cast<LPARAM>(documentPath.c_str()));
    for (const StartupStep& step : plan.steps) runStep(hwnd, step);

    describeAlertBackground(record);
    const int result = messageLoop();

    deleteSharedDrawingObjects();
    UnregisterClassA(kMainWindowClass, instance);
    return result;
}
