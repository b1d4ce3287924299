// The whole-process driver (see process_driver.h). It polls the other
// process's top-level windows; dialogs are class "#32770". Answers go through
// posted messages, never through the other process's keyboard focus, which a
// virtual display does not always give.
#include "tests/win/process_driver.h"

#include <algorithm>
#include <tuple>

#include "tests/win/test_support.h"

namespace {

bool hasClass(HWND hwnd, const char* cls) {
    return lstrcmpiA(className(hwnd).c_str(), cls) == 0;
}

// The process's visible top-level windows of a class, topmost first.
std::vector<HWND> processWindows(DWORD processId, const char* cls) {
    std::tuple<DWORD, const char*, std::vector<HWND>> f{processId, cls, {}};
    EnumWindows(
        [](HWND hwnd, LPARAM lp) -> BOOL {
            auto& [pid, cls, found] = *reinterpret_cast<decltype(f)*>(lp);
            DWORD owner = 0;
            GetWindowThreadProcessId(hwnd, &owner);
            if (owner == pid && IsWindowVisible(hwnd) && hasClass(hwnd, cls)) found.push_back(hwnd);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&f));
    return std::get<2>(f);
}

// The dialog's visible static texts, joined by "\n".
std::string staticTexts(HWND dialog) {
    std::string out;
    EnumChildWindows(
        dialog,
        [](HWND hwnd, LPARAM lp) -> BOOL {
            const std::string text = windowText(hwnd);
            auto& out = *reinterpret_cast<std::string*>(lp);
            if (hasClass(hwnd, "Static") && IsWindowVisible(hwnd) && !text.empty())
                out += (out.empty() ? "" : "\n") + text;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&out));
    return out;
}

// Enter: the default button, as the dialog manager presses it. A default
// button that waits for a choice (the multiple-items prompt): a person takes
// the first one offered before pressing Enter.
void pressDefaultButton(HWND dialog) {
    const LRESULT def = SendMessageA(dialog, DM_GETDEFID, 0, 0);
    const int id = HIWORD(def) == DC_HASDEFID ? LOWORD(def) : IDOK;
    HWND button = GetDlgItem(dialog, id);
    if (button && !IsWindowEnabled(button))
        EnumChildWindows(
            dialog,
            [](HWND child, LPARAM) -> BOOL {
                if (!hasClass(child, "Button") ||
                    (GetWindowLongA(child, GWL_STYLE) & BS_TYPEMASK) != BS_AUTORADIOBUTTON)
                    return TRUE;
                SendMessageA(child, BM_CLICK, 0, 0);
                return FALSE;
            },
            0);
    PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), LPARAM(button));
}

}  // namespace

HWND findProcessWindow(DWORD processId, const char* cls) {
    const std::vector<HWND> windows = processWindows(processId, cls);
    return windows.empty() ? nullptr : windows.front();
}

ProcessRun runProcess(const std::string& program, const std::string& arguments,
                      const WindowHandler& handler, DWORD timeLimitMs, const IdleHandler& idle) {
    ProcessRun run;
    std::string commandLine = "\"" + program + "\" " + arguments;
    STARTUPINFOA si = {sizeof si};
    PROCESS_INFORMATION pi = {};
    if (!CreateProcessA(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        nullptr, &si, &pi))
        return run;
    run.started = true;
    std::vector<HWND> handled;
    const DWORD start = GetTickCount();
    while (WaitForSingleObject(pi.hProcess, 50) == WAIT_TIMEOUT) {
        if (GetTickCount() - start > timeLimitMs) {
            TerminateProcess(pi.hProcess, 255);
            WaitForSingleObject(pi.hProcess, 5000);
            break;
        }
        // A window handle may be given again to a later dialog.
        std::erase_if(handled, [](HWND h) { return !IsWindow(h); });
        for (HWND dialog : processWindows(pi.dwProcessId, "#32770")) {
            if (std::find(handled.begin(), handled.end(), dialog) != handled.end()) continue;
            handled.push_back(dialog);
            Sleep(150);  // let it finish painting
            run.windows.push_back({windowText(dialog), staticTexts(dialog)});
            if (!(handler && handler(dialog, int(run.windows.size()) - 1)))
                pressDefaultButton(dialog);
        }
        if (idle) idle(pi.dwProcessId);
    }
    if (GetExitCodeProcess(pi.hProcess, &run.exitCode) && run.exitCode != STILL_ACTIVE)
        run.exited = run.exitCode != 255 || GetTickCount() - start <= timeLimitMs;
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    return run;
}
