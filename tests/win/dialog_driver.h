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
#include "ui/dialog_win.h"

class DialogDriver {
  public:
    using Script = std::function<void(HWND dialog)>;

    // The script runs once, when a dialog box of this thread is visible. It
    // should close the dialog; one still open about a second after the script
    // is reported as a test failure and ended, so that no test hangs.
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

std::string windowText(HWND hwnd);
std::string itemText(HWND dialog, int id);

// Presses a button as a mouse click would.
void clickItem(HWND dialog, int id);
// Posts a key press to the focused control, so that it goes through the
// dialog's own keyboard handling (Escape cancels, Enter presses the default).
void pressKey(HWND dialog, UINT vk);
bool itemEnabled(HWND dialog, int id);
// Handles what is queued (keys included) as the dialog's own modal loop
// would, for at least ms milliseconds.
void pumpDialog(HWND dialog, DWORD ms = 0);

// Runs open() while a driver plays script against the dialog it shows; a
// dialog that never appears fails the test. Gives back what open() returned.
INT_PTR runDriven(const std::function<INT_PTR()>& open, const DialogDriver::Script& script);
// The text of the message box that action opens, answered with its first
// button; "" when none opened.
std::string messageShownBy(const std::function<void()>& action);

// Sends control id's notification code to the dialog, as the control does.
void notifyDialog(HWND dialog, int id, UINT code);
// The entries of a combo box or of a list box, in list order.
std::vector<std::string> comboEntries(HWND dialog, int id);
std::vector<std::string> listEntries(HWND dialog, int id);
// The font a control draws its text with.
LOGFONTA fontOf(HWND control);

// Holds a key down in this thread's keyboard state while alive, as a user
// holding Shift or Ctrl would; the previous state comes back afterwards.
class HeldKey {
  public:
    explicit HeldKey(UINT vk);
    ~HeldKey();
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;

  private:
    BYTE saved_[256] = {};
};

// A test whose dialogs read and change a settings record: a fresh one for
// each test.
class SettingsTest : public testing::Test {
  protected:
    Settings settings_;
};

// Clicks Help and checks that the manual opened at referenc.html#topic (a
// recorder stands in for the browser) and that the dialog stayed open.
// settings is the record the dialog was opened with.
void expectHelpOpensTopic(HWND dialog, const std::string& topic, Settings& settings);

// The program's main window as the menu commands reach it, hidden, with its
// item list. Registers the window class when nobody has yet, and gives it back
// when it did; on destruction the window's quit message is taken off the
// queue so that it cannot end a later test's dialog.
class TestMainWindow {
  public:
    TestMainWindow();
    ~TestMainWindow();
    TestMainWindow(const TestMainWindow&) = delete;
    TestMainWindow& operator=(const TestMainWindow&) = delete;
    HWND hwnd() const { return hwnd_; }
    // What the window reads and changes, as the program's record.
    Settings& record() { return record_; }

  private:
    Settings record_;
    bool ownClass_ = false;
    HWND hwnd_ = nullptr;
};

// Everything a run leaves in the user's folders, gone: settings, backups, seen
// list, pictures.
void clearUserData();
