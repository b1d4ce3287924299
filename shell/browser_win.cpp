// Opens the manual pages and web pages in a browser. The launcher tries, in a
// fixed order, the browser the user named, the known browsers the registry
// knows about, and finally whatever program the target's type is associated
// with; each failure silently hands over to the next way, and only when all of
// them fail does the user hear about it.
#include "shell/browser_win.h"

#include <cstdint>
#include <cstring>

#include "base/win_handles.h"
#include <shellapi.h>  // after windows.h; the lean build leaves it out
#include "settings/settings.h"
#include "shell/browser_address.h"
#include "ui/message_box_win.h"

namespace {

struct KnownBrowser {
    uint32_t bit;         // in DocumentBrowserFlags
    const char* program;  // also tried bare when the registry names nothing usable
    const char* key;      // under HKEY_LOCAL_MACHINE
    const char* value;    // nullptr: the key's default value
};

// In the order they are tried.
constexpr KnownBrowser kKnownBrowsers[] = {
    {1, "firefox.exe", "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\firefox.exe",
     nullptr},
    {2, "chrome.exe", "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\chrome.exe",
     nullptr},
    {4, "opera.exe", "SOFTWARE\\Opera Software\\", "Last CommandLine"},
    {8, "safari.exe", "SOFTWARE\\Apple Computer, Inc.\\Safari\\", "BrowserExe"},
    {16, "netscape.exe", "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\netscape.exe",
     nullptr},
    {32, "iexplore.exe", "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\iexplore.exe",
     nullptr},
    {64, "msedge.exe", "SOFTWARE\\Microsoft\\Edge\\Application\\msedge.exe", nullptr},
};

constexpr char kLauncherError[] =
    " There has been an error displaying the manual page. Please ensure that there is an "
    "application installed on your system capable of opening HTML documents associated with the "
    "file extension .HTM.";
// Shown only if the launcher ever reports failure, which it does not: it shows
// kLauncherError itself. Kept for the day it does.
constexpr char kManualError[] =
    "There has been an error displaying the manual page. Please ensure that there is an "
    "application installed on your system capable of opening HTML documents associated with the "
    "file extension .HTML.";

bool shellOpen(HWND owner, const char* program, const std::string& parameters, int show) {
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteA(owner, "open", program, parameters.c_str(), nullptr, show));
    return result > 32;
}

// The program a known browser's registry entry names; "" when the value is
// missing or unreadable. Registry strings need not be terminated.
std::string registeredProgram(HKEY key, const char* value) {
    char data[MAX_PATH + 1] = {};
    DWORD size = MAX_PATH;
    DWORD type = 0;
    if (RegQueryValueExA(key, value, nullptr, &type, reinterpret_cast<BYTE*>(data), &size) !=
        ERROR_SUCCESS) {
        return std::string();
    }
    return std::string(data, strnlen(data, size));
}

bool tryKnownBrowser(HWND owner, const KnownBrowser& browser, const std::string& address,
                     int show) {
    UniqueKey key;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, browser.key, 0, KEY_READ, key.put()) != ERROR_SUCCESS) {
        return false;
    }
    const std::string program = registeredProgram(key.get(), browser.value);
    if (!program.empty() && shellOpen(owner, program.c_str(), address, show)) return true;
    // An installed browser whose entry is empty or stale may still be on the path.
    return shellOpen(owner, browser.program, address, show);
}

// The program associated with the target itself, given the target unchanged:
// the associated program knows the file, not our address.
bool startAssociatedProgram(const std::string& target, bool maximised) {
    char executable[MAX_PATH] = {};
    if (reinterpret_cast<INT_PTR>(FindExecutableA(target.c_str(), nullptr, executable)) <= 32) {
        return false;
    }
    std::string commandLine = std::string(executable) + " " + target;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = maximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS,
                        nullptr, nullptr, &startup, &process)) {
        return false;
    }
    // Started and left to run: the handles are not wanted.
    UniqueKernelHandle thread(process.hThread), started(process.hProcess);
    return true;
}

int openManualPage(HWND owner, const Settings& settings, const char* page,
                   const std::string& suffix) {
    const std::string path = manualPagePath(settings.ApplicationPath, page);
    if (!launchBrowser(owner, settings, path, suffix.c_str(), true))
        showMessage(owner, kManualError);
    return 1;
}

}  // namespace

int openManualTopic(HWND owner, const Settings& settings, const char* topic) {
    return openManualPage(owner, settings, "referenc.html", std::string("#") + topic);
}

int openManual(HWND owner, const Settings& settings) {
    return openManualPage(owner, settings, "manual.html", "#DOCUMENTATION");
}

int launchBrowser(HWND owner, const Settings& s, const std::string& target, const char* suffix,
                  bool maximised) {
    const std::string address = buildBrowserAddress(target, suffix);
    const int show = maximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;

    if (!s.DocumentBrowserPath.empty() &&
        shellOpen(owner, s.DocumentBrowserPath.c_str(), address, show)) {
        return 1;
    }
    for (const KnownBrowser& browser : kKnownBrowsers) {
        if ((s.DocumentBrowserFlags & browser.bit) &&
            tryKnownBrowser(owner, browser, address, show)) {
            return 1;
        }
    }
    if (startAssociatedProgram(target, maximised)) return 1;
    showMessage(owner, kLauncherError);
    return 1;
}
