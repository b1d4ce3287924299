// The autopilot of scripts/run.sh on a display nobody watches: runs a program,
// saves a screenshot of each window it opens into HERALDER_SHOT_DIR and
// answers it as a user pressing Enter would, then reports what it met.
//   autopilot.exe PROGRAM [ARGUMENTS...]
//   autopilot.exe --browse ROW PROGRAM DOCUMENT
// The second form opens DOCUMENT in the program's main window, photographs it,
// Shift+double-clicks row ROW (the item browser) and closes the window after.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "resources/resource.h"
#include "tests/win/process_driver.h"
#include "tests/win/test_support.h"

namespace {

void pressShift(bool down) {
    INPUT input{.type = INPUT_KEYBOARD};
    input.ki = {.wVk = VK_SHIFT, .dwFlags = DWORD(down ? 0 : KEYEVENTF_KEYUP)};
    SendInput(1, &input, sizeof input);
}

// Acts on the main window once its document has loaded: first the row's
// double click with Shift held, then, when the browser has closed, Close.
IdleHandler browseRow(int row) {
    return [row, shownAt = DWORD{0}, step = 0](DWORD pid) mutable {
        HWND main = findProcessWindow(pid, "QuenmarkHeralderApplication");
        if (!main || step == 2) return;
        if (!shownAt) shownAt = GetTickCount();
        if (GetTickCount() - shownAt < 700) return;  // the posted load has run
        HWND list = GetDlgItem(main, IDC_ITEMLIST);
        if (step == 0) {
            SendMessageA(list, LB_SETCURSEL, row, 0);
            saveWindowScreenshot(main, "main_window");
            SetForegroundWindow(main);
            pressShift(true);
            Sleep(200);  // the key reaches the program's queue before the click
            PostMessageA(main, WM_COMMAND, MAKEWPARAM(IDC_ITEMLIST, LBN_DBLCLK),
                         reinterpret_cast<LPARAM>(list));
            Sleep(300);
            pressShift(false);
            step = 1;
        } else if (IsWindowEnabled(main)) {  // the modal browser has closed
            PostMessageA(main, WM_CLOSE, 0, 0);
            step = 2;
        }
    };
}

}  // namespace

int main(int argc, char** argv) {
    const bool browsing = argc >= 5 && std::strcmp(argv[1], "--browse") == 0;
    const int row = browsing ? std::atoi(argv[2]) : -1;
    argv += browsing ? 2 : 0, argc -= browsing ? 2 : 0;
    if (argc < 2) {
        std::fprintf(stderr, "usage: autopilot [--browse ROW] PROGRAM [ARGUMENTS...]\n");
        return 2;
    }
    std::string arguments;
    for (int i = 2; i < argc; ++i) arguments += (i > 2 ? " " : "") + std::string(argv[i]);
    const ProcessRun run = runProcess(
        argv[1], arguments,
        [browsing](HWND dialog, int index) {
            char name[64];
            std::snprintf(name, sizeof name, browsing ? "browse_%02d" : "window_%02d", index + 1);
            saveWindowScreenshot(dialog, name);
            return false;  // answered with Enter
        },
        15 * 60 * 1000, browsing ? browseRow(row) : IdleHandler());
    if (!run.started) {
        std::fprintf(stderr, "autopilot: cannot start %s\n", argv[1]);
        return 2;
    }
    for (std::size_t i = 0; i < run.windows.size(); ++i) {
        std::string firstLine = run.windows[i].text.substr(0, run.windows[i].text.find('\n'));
        std::printf("window %zu: \"%s\" %s\n", i + 1, run.windows[i].title.c_str(),
                    firstLine.substr(0, 70).c_str());
    }
    std::printf("exit code: %lu%s\n", static_cast<unsigned long>(run.exitCode),
                run.exited ? "" : " (stopped at the time limit)");
    return run.exited ? static_cast<int>(run.exitCode) : 1;
}
