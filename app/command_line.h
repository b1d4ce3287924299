#pragma once
// What the command line asks start-up to do. Each switch is found by a
// case-sensitive substring search, in a fixed order, so "/INITCONFIG/F" also
// runs the "/INITCONFIG" row; independently, the text up to its first "/" is a
// local document to load.
//
// The path goes through a 260-character buffer (259 characters and the
// terminator). The program never checked that copy; here a longer line keeps
// its first 259 characters as the path (before the cut at "/"), while the
// switches are still searched for in the whole line. A NUL ends the line, as
// it ends the C string the system hands over.
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

inline constexpr std::size_t kMaxDocumentPath = 259;

enum class StartupAction {
    SetUpdateMode,    // updateModeFlag = 1
    ResetInitConfig,  // InitConfigDone = 0
    Send,             // WM_COMMAND command, delivered at once
    Post,             // WM_COMMAND command, queued
};

struct StartupStep {
    StartupAction action;
    int command = 0;  // for Send and Post

    bool operator==(const StartupStep&) const = default;
};

struct CommandLinePlan {
    bool hidden = false;  // any switch hides the main window
    // The command line cut at its first "/", when anything remains; posted to
    // the main window before the switches run.
    std::optional<std::string> documentPath;
    std::vector<StartupStep> steps;  // in the order they run
};

CommandLinePlan interpretCommandLine(std::string_view commandLine);

// Whether the plan holds the daily run ("/UPDATE").
bool plansDailyRun(const CommandLinePlan& plan);
// Takes the daily run's steps out of the plan. False when nothing is left to
// do, so start-up can end at once, before any window exists. A document path
// alone does not keep the run going: with a switch on the line the window is
// hidden, and nobody could close it.
bool dropDailyRun(CommandLinePlan& plan);
