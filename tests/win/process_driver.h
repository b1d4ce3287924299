#pragma once
// Runs a program of ours as a whole process and answers the windows it opens,
// as a person at the screen would: each dialog that appears is handed to a
// callback (which may read it, save a screenshot and answer it), and a dialog
// left unanswered is answered with Enter. Used by the whole-process tests and
// by scripts/run.sh's autopilot.
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

// Called once for each new dialog of the process, when it is visible and
// painted. Return true when the callback answered it itself.
using WindowHandler = std::function<bool(HWND dialog, int index)>;
// Called on every poll with the process id, for tests that act on windows
// other than dialogs (the main window).
using IdleHandler = std::function<void(DWORD processId)>;

ProcessRun runProcess(const std::string& program, const std::string& arguments,
                      const WindowHandler& handler, DWORD timeLimitMs,
                      const IdleHandler& idle = nullptr);

// The process's visible top-level window of class cls, or null.
HWND findProcessWindow(DWORD processId, const char* cls);
