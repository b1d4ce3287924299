#pragma once
// Runs a program of ours as a whole process and answers its dialogs as a person
// would: each goes to a callback (which may read and answer it); one left
// unanswered gets Enter. For the whole-process tests and the autopilot.
#include <functional>
#include <string>
#include <vector>

#include "base/win_headers.h"

struct SeenWindow {
    std::string title;
    std::string text;  // all static texts of the dialog, joined by "\n"
};

struct ProcessRun {
    bool started = false;
    bool exited = false;  // false: killed at the time limit
    DWORD exitCode = 0;
    std::vector<SeenWindow> windows;  // every dialog met, in order
};

// Once for each new dialog, visible and painted; true: the callback answered it.
using WindowHandler = std::function<bool(HWND dialog, int index)>;
// On every poll, for acting on windows other than dialogs (the main window).
using IdleHandler = std::function<void(DWORD processId)>;

ProcessRun runProcess(const std::string& program, const std::string& arguments,
                      const WindowHandler& handler, DWORD timeLimitMs,
                      const IdleHandler& idle = nullptr);

// The process's visible top-level window of class cls, or null.
HWND findProcessWindow(DWORD processId, const char* cls);
