#pragma once
// Drives the program's real dialogs from the Windows tests. A DialogDriver
// waits, from inside the dialog's own modal loop, for the next dialog box of
// this thread and runs a script against it; the helpers below read what the
// dialog shows and act on it the way a user would (clicks, keys).
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/win_headers.h"
#include "settings/settings.h"
#include "tests/win/test_support.h"
#include "ui/dialog_win.h"

class DialogDriver {
  public:
    using Script = std::function<void(HWND dialog)>;

    // The script runs once, when a dialog box of this thread is visible; a
    // dialog it leaves open is a failure, ended after a second so none hangs.
    explicit DialogDriver(Script script);
    ~DialogDriver();
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;

    bool ran() const { return dialog_ != nullptr; }

  private:
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD);
    void poll();

    Script script_;
    UINT_PTR timer_ = 0;
    HWND dialog_ = nullptr;
    int ticksSinceScript_ = 0;
};

std::string itemText(HWND dialog, int id);

void clickItem(HWND dialog, int id);
// Posts a key press to the focused control, through the dialog's own keys.
void pressKey(HWND dialog, UINT vk);
bool itemEnabled(HWND dialog, int id);
// Handles what is queued as the dialog's modal loop would, for ms at least.
void pumpDialog(HWND dialog, DWORD ms = 0);

// open()'s result, while a driver plays script against the dialog it shows.
INT_PTR runDriven(const std::function<INT_PTR()>& open, const DialogDriver::Script& script);
// The text of the message box action opens ("" none), answered with OK.
std::string messageShownBy(const std::function<void()>& action);

void notifyDialog(HWND dialog, int id, UINT code);
std::vector<std::string> comboEntries(HWND dialog, int id);
std::vector<std::string> listEntries(HWND dialog, int id);
LOGFONTA fontOf(HWND control);

// What is wrong with window's layout at dpi, one line a fault: a control
// leaving the window, overlapping another, or too small for its text.
std::vector<std::string> layoutFaults(HWND window, unsigned dpi);

// Runs action with key vk (none when 0) held down in this thread's keyboard state.
void withKeyHeld(UINT vk, const std::function<void()>& action);

// Clicks Help and checks that the manual opened at referenc.html#topic (a
// recorder stands in for the browser) and the dialog, opened with settings, stayed.
void expectHelpOpensTopic(HWND dialog, const std::string& topic, Settings& settings);

// The program's main window, hidden, with its item list. Its quit message is
// taken off the queue at the end, so that it cannot end a later test's dialog.
class TestMainWindow {
  public:
    TestMainWindow();
    ~TestMainWindow();
    TestMainWindow(const TestMainWindow&) = delete;
    TestMainWindow& operator=(const TestMainWindow&) = delete;
    HWND hwnd() const { return hwnd_; }
    Settings& record() { return record_; }

  private:
    Settings record_;
    bool ownClass_ = false;
    HWND hwnd_ = nullptr;
};

// Deletes what a run leaves in the user's folders.
void clearUserData();
