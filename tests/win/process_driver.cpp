// The whole-process driver (see process_driver.h). It polls the other
// process's top-level windows; dialogs are class "#32770". Answers go through
// posted messages, never through the other process's keyboard focus, which a
// virtual display does not always give.
#include "tests/win/process_driver.h"

#include <algorithm>

namespace {

struct Finder {
    DWORD pid;
    const char* cls;
    std::vector<HWND> found;  // in the system's order, topmost first
};

BOOL CALLBACK collectWindow(HWND hwnd, LPARAM lp) {
    auto& f = *reinterpret_cast<Finder*>(lp);
    DWORD pid = 0;
    GetWindowThreadProcessId(hwnd, &pid);
    char cls[64] = {};
    GetClassNameA(hwnd, cls, sizeof cls);
    if (pid == f.pid && IsWindowVisible(hwnd) && lstrcmpA(cls, f.cls) == 0) f.found.push_back(hwnd);
    return TRUE;
}

std::vector<HWND> processWindows(DWORD processId, const char* cls) {
    Finder f{processId, cls, {}};
    EnumWindows(collectWindow, reinterpret_cast<LPARAM>(&f));
    return f.found;
}

BOOL CALLBACK collectStatic(HWND hwnd, LPARAM lp) {
    char cls[16] = {};
    GetClassNameA(hwnd, cls, sizeof cls);
    if (lstrcmpiA(cls, "Static") == 0 && IsWindowVisible(hwnd)) {
        char text[4096] = {};
        GetWindowTextA(hwnd, text, sizeof text);
        if (*text) {
            auto& out = *reinterpret_cast<std::string*>(lp);
            if (!out.empty()) out += '\n';
            out += text;
        }
    }
    return TRUE;
}

std::string titleOf(HWND hwnd) {
    char text[512] = {};
    GetWindowTextA(hwnd, text, sizeof text);
    return text;
}

}  // namespace

HWND findProcessWindow(DWORD processId, const char* cls) {
    const std::vector<HWND> windows = processWindows(processId, cls);
    return windows.empty() ? nullptr : windows.front();
}

void pressDefaultButton(HWND dialog) {
    const LRESULT def = SendMessageA(dialog, DM_GETDEFID, 0, 0);
    const int id = HIWORD(def) == DC_HASDEFID ? LOWORD(def) : IDOK;
    // A default button that waits for a choice (the multiple-items prompt):
    // a person takes the first one offered before pressing Enter.
    HWND button = GetDlgItem(dialog, id);
    if (button && !IsWindowEnabled(button)) {
        EnumChildWindows(
            dialog,
            [](HWND child, LPARAM) -> BOOL {
                const LONG type = GetWindowLongA(child, GWL_STYLE) & BS_TYPEMASK;
                char cls[16] = {};
                GetClassNameA(child, cls, sizeof cls);
                if (lstrcmpiA(cls, "Button") != 0 || type != BS_AUTORADIOBUTTON) return TRUE;
                SendMessageA(child, BM_CLICK, 0, 0);
                return FALSE;
            },
            0);
    }
    PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

std::string dialogStaticText(HWND dialog) {
    std::string out;
    EnumChildWindows(dialog, collectStatic, reinterpret_cast<LPARAM>(&out));
    return out;
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
        handled.erase(
            std::remove_if(handled.begin(), handled.end(), [](HWND h) { return !IsWindow(h); }),
            handled.end());
        for (HWND dialog : processWindows(pi.dwProcessId, "#32770")) {
            if (std::find(handled.begin(), handled.end(), dialog) != handled.end()) continue;
            handled.push_back(dialog);
            Sleep(150);  // let it finish painting
            run.windows.push_back({titleOf(dialog), dialogStaticText(dialog)});
            const int index = static_cast<int>(run.windows.size()) - 1;
            if (!(handler && handler(dialog, index))) pressDefaultButton(dialog);
        }
        if (idle) idle(pi.dwProcessId);
    }
    DWORD code = 0;
    if (GetExitCodeProcess(pi.hProcess, &code) && code != STILL_ACTIVE) {
        run.exited = code != 255 || GetTickCount() - start <= timeLimitMs;
        run.exitCode = code;
    }
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    return run;
}
