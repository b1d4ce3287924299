// The browser launcher and the manual under Wine, for real: copies of the
// recorder stand in for browsers and for the program associated with a test
// file type, registered in the throw-away prefix's registry for the length of
// each case, so that no real browser is ever started. What a stand-in writes
// down is the command line it got and the show command it was asked for.
#include <gtest/gtest.h>

#include <deque>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "settings/settings.h"
#include "shell/browser_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

namespace {

constexpr char kAppPaths[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
constexpr char kFirefoxKey[] =
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\firefox.exe";
constexpr char kOperaKey[] = "SOFTWARE\\Opera Software";
constexpr char kSafariKey[] = "SOFTWARE\\Apple Computer, Inc.\\Safari";
constexpr char kLauncherError[] =
    " There has been an error displaying the manual page. Please ensure that there is an "
    "application installed on your system capable of opening HTML documents associated with the "
    "file extension .HTM.";

using ScratchKeys = std::deque<ScratchKey>;

void addKey(ScratchKeys& keys, const std::string& path, const char* name, const std::string& data) {
    ScratchKey& key = keys.emplace_back(HKEY_LOCAL_MACHINE, path);
    EXPECT_TRUE(key.created()) << path;  // a test never deletes what it did not make
    EXPECT_TRUE(key.set(name, data)) << path;
}

std::string copyOfRecorder(const std::string& path) {
    EXPECT_TRUE(CopyFileA(recorderPath().c_str(), path.c_str(), FALSE)) << path;
    return path;
}

using Opener = std::function<int(Settings&)>;

Opener launch(std::string target, const char* suffix, bool maximised) {
    return [=](Settings& s) { return launchBrowser(nullptr, s, target, suffix, maximised); };
}

Opener manual(const char* applicationPath, const char* topic) {
    return [=](Settings& s) {
        s.ApplicationPath = applicationPath;
        return topic ? openManualTopic(nullptr, s, topic) : openManual(nullptr, s);
    };
}

TEST(BrowserLauncher, TriesTheNamedBrowserTheKnownBrowsersThenTheAssociatedProgram) {
    Settings settings;
    const std::string folder = scratchFolder("heralder_browser_test");
    const std::string fakefox = copyOfRecorder(folder + "fakefox.exe");
    const std::string opera = copyOfRecorder(folder + "opera.exe");
    const std::string safari = copyOfRecorder(folder + "safari.exe");
    const std::string page = folder + "test page.qmtest";
    ScratchKeys machineKeys;
    // The bare names are found through the system's App Paths, as a browser
    // installed without a usable entry of its own would be.
    addKey(machineKeys, std::string(kAppPaths) + "opera.exe", nullptr, opera);
    addKey(machineKeys, std::string(kAppPaths) + "safari.exe", nullptr, safari);
    // A file type of our own, opened by the recorder itself. Registered for
    // the machine: Wine 8's HKEY_CLASSES_ROOT does not show the user's
    // Software\Classes, so an association there is never found.
    std::ofstream(page) << "<p>test</p>";
    addKey(machineKeys, "Software\\Classes\\.qmtest", nullptr, "Heralder.QmTestPage");
    machineKeys.emplace_back(HKEY_LOCAL_MACHINE, "Software\\Classes\\Heralder.QmTestPage");
    EXPECT_TRUE(machineKeys.back().set(nullptr, shellCommandLine(recorderPath(), "\"%1\""),
                                       "shell\\open\\command"));
    struct Value {
        const char* key;
        const char* name;  // nullptr: the default value
        std::string data;
    };
    const std::string web = "http://example.com/a b?q=1", webSeen = "http://example.com/a%20b?q=1";
    const std::string local = "C:\\Program Files\\Heralder\\html\\referenc.html";
    const struct {
        const char* what;
        std::string browserPath;
        uint32_t flags;
        std::vector<Value> keys;
        Opener open;
        bool maximised;
        std::string want;  // the command line started; "": none, the launcher's error shown
    } cases[] = {
        // clang-format off
        {"named browser, local page with spaces", recorderPath(), 127, {},
         launch(local, "#SETUP", true), true,
         shellCommandLine(recorderPath(),
                          "file:///C:\\Program%20Files\\Heralder\\html\\referenc.html#SETUP")},
        {"named browser, web address loses the suffix", recorderPath(), 0, {},
         launch(web, "#X", false), false, shellCommandLine(recorderPath(), webSeen)},
        {"named browser missing, first known browser in table order", folder + "nowhere.exe", 1 | 4,
         {{kFirefoxKey, nullptr, fakefox}, {kOperaKey, "Last CommandLine", opera}},
         launch(web, nullptr, true), true, shellCommandLine(fakefox, webSeen)},
        {"absent key skipped, empty value tries the bare name", "", 1 | 4,
         {{kOperaKey, "Last CommandLine", ""}}, launch(web, nullptr, true), true,
         shellCommandLine(opera, webSeen)},
        {"failed start tries the bare name", "", 8,
         {{kSafariKey, "BrowserExe", folder + "gone\\safari.exe"}}, launch(web, nullptr, false),
         false, shellCommandLine(safari, webSeen)},
        {"absent key: bare name not tried, associated program", "", 4, {},
         launch(page, "#TOPIC", true), true, recorderPath() + " " + page},
        {"no flags: only the associated program", "", 0, {{kFirefoxKey, nullptr, fakefox}},
         launch(page, nullptr, false), false, recorderPath() + " " + page},
        {"nothing can open the target", folder + "nowhere.exe", 4, {},
         launch(folder + "page.qmnothing", "#X", true), true, ""},
        // The manual, from the application folder, at its anchor, maximised (the
        // page's address is the portable core's).
        {"manual topic", recorderPath(), 0, {},
         manual("C:\\Program Files\\Quenmark Heralder", "STARTUP"), true,
         shellCommandLine(recorderPath(), "file:///C:\\Program%20Files\\Quenmark%20Heralder"
                                          "\\html\\referenc.html#STARTUP")},
        {"manual", recorderPath(), 0, {}, manual("C:\\Heralder\\", nullptr), true,
         shellCommandLine(recorderPath(), "file:///C:\\Heralder\\html\\manual.html#DOCUMENTATION")},
        // clang-format on
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ScratchKeys keys;
        for (const Value& v : c.keys) addKey(keys, v.key, v.name, v.data);
        settings.DocumentBrowserPath = c.browserPath;
        settings.DocumentBrowserFlags = c.flags;
        Recording recording(folder + "record.txt");
        int result = 0;
        EXPECT_EQ(messageShownBy([&] { result = c.open(settings); }),
                  c.want.empty() ? kLauncherError : "");
        EXPECT_EQ(result, 1);
        std::vector<std::pair<int, std::string>> started, want;
        for (const Recorded& r : c.want.empty() ? recording.read() : recording.wait())
            started.emplace_back(r.show, r.commandLine);
        if (!c.want.empty()) want = {{c.maximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL, c.want}};
        EXPECT_EQ(started, want);
    }
}

}  // namespace
