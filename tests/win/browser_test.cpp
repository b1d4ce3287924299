// The browser launcher and the manual under Wine, for real: copies of the
// recorder stand in for browsers and for the program associated with a test
// file type, registered in the throw-away prefix's registry for the length of
// each case, so that no real browser is ever started. What a stand-in writes
// down is the command line it got and the show command it was asked for.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "resources/resource.h"
#include "settings/settings.h"
#include "shell/browser_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/recorder/recording.h"

namespace {

constexpr char kAppPaths[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
constexpr char kFirefoxKey[] =
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\firefox.exe";
constexpr char kOperaKey[] = "SOFTWARE\\Opera Software";
constexpr char kSafariKey[] = "SOFTWARE\\Apple Computer, Inc.\\Safari";
constexpr char kTestExtension[] = ".qmtest";
constexpr char kTestClass[] = "Heralder.QmTestPage";

// A registry key made for one test, removed with all it holds afterwards. It
// must not exist beforehand: a test never deletes what it did not make.
class ScratchKey {
  public:
    explicit ScratchKey(std::string path) : path_(std::move(path)) {
        HKEY key = nullptr;
        DWORD disposition = 0;
        EXPECT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, path_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                                  nullptr, &key, &disposition),
                  ERROR_SUCCESS)
            << path_;
        EXPECT_EQ(disposition, static_cast<DWORD>(REG_CREATED_NEW_KEY)) << path_;
        if (key) RegCloseKey(key);
    }
    ~ScratchKey() { RegDeleteTreeA(HKEY_LOCAL_MACHINE, path_.c_str()); }
    ScratchKey(const ScratchKey&) = delete;
    ScratchKey& operator=(const ScratchKey&) = delete;

    // name nullptr: the default value; subKey "": the key itself.
    void set(const char* name, const std::string& data, const std::string& subKey = "") {
        const std::string path = subKey.empty() ? path_ : path_ + "\\" + subKey;
        EXPECT_EQ(RegSetKeyValueA(HKEY_LOCAL_MACHINE, path.c_str(), name, REG_SZ, data.c_str(),
                                  static_cast<DWORD>(data.size() + 1)),
                  ERROR_SUCCESS)
            << path;
    }

  private:
    std::string path_;
};

using ScratchKeys = std::vector<std::unique_ptr<ScratchKey>>;

void addKey(ScratchKeys& keys, const std::string& path, const char* name, const std::string& data) {
    keys.push_back(std::make_unique<ScratchKey>(path));
    keys.back()->set(name, data);
}

std::string copyOfRecorder(const std::string& folder, const char* name) {
    const std::string path = folder + name;
    EXPECT_TRUE(CopyFileA(recorderPath().c_str(), path.c_str(), FALSE)) << path;
    return path;
}

constexpr char kLauncherError[] =
    " There has been an error displaying the manual page. Please ensure that there is an "
    "application installed on your system capable of opening HTML documents associated with the "
    "file extension .HTM.";

// Runs open() with a driver standing by: a message box where none is expected
// fails the test and is dismissed instead of hanging it.
template <class Open>
void withoutBoxes(Open open) {
    DialogDriver driver([](HWND box) {
        ADD_FAILURE() << "unexpected box: " << itemText(box, IDC_MESSAGETEXT);
        clickItem(box, IDC_BUTTON1);
    });
    open();
}

class BrowserLauncher : public testing::Test {
  protected:
    void SetUp() override {
        folder_ = scratchFolder("heralder_browser_test");
        fakefox_ = copyOfRecorder(folder_, "fakefox.exe");
        // The bare names are found through the system's App Paths, as a browser
        // installed without a usable entry of its own would be.
        opera_ = copyOfRecorder(folder_, "opera.exe");
        safari_ = copyOfRecorder(folder_, "safari.exe");
        addKey(keys_, std::string(kAppPaths) + "opera.exe", nullptr, opera_);
        addKey(keys_, std::string(kAppPaths) + "safari.exe", nullptr, safari_);

        // A file type of our own, opened by the recorder itself. Registered for
        // the machine: Wine 8's HKEY_CLASSES_ROOT does not show the user's
        // Software\Classes, so an association there is never found.
        page_ = folder_ + "test page.qmtest";
        std::ofstream(page_) << "<p>test</p>";
        addKey(keys_, std::string("Software\\Classes\\") + kTestExtension, nullptr, kTestClass);
        keys_.push_back(
            std::make_unique<ScratchKey>(std::string("Software\\Classes\\") + kTestClass));
        keys_.back()->set(nullptr, shellCommandLine(recorderPath(), "\"%1\""),
                          "shell\\open\\command");
    }
    std::string folder_, fakefox_, opera_, safari_, page_;
    ScratchKeys keys_;
    Settings settings_;
};

TEST_F(BrowserLauncher, TriesTheNamedBrowserTheKnownBrowsersThenTheAssociatedProgram) {
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
        std::string target;
        const char* suffix;
        bool maximised;
        std::string wantCommandLine;
    } cases[] = {
        // clang-format off
        {"named browser, local page with spaces", recorderPath(), 127, {}, local, "#SETUP", true,
         shellCommandLine(recorderPath(),
                          "file:///C:\\Program%20Files\\Heralder\\html\\referenc.html#SETUP")},
        {"named browser, web address loses the suffix", recorderPath(), 0, {}, web, "#X", false,
         shellCommandLine(recorderPath(), webSeen)},
        {"named browser missing, first known browser in table order", folder_ + "nowhere.exe", 1 | 4,
         {{kFirefoxKey, nullptr, fakefox_}, {kOperaKey, "Last CommandLine", opera_}}, web, nullptr,
         true, shellCommandLine(fakefox_, webSeen)},
        {"absent key skipped, empty value tries the bare name", "", 1 | 4,
         {{kOperaKey, "Last CommandLine", ""}}, web, nullptr, true, shellCommandLine(opera_, webSeen)},
        {"failed start tries the bare name", "", 8,
         {{kSafariKey, "BrowserExe", folder_ + "gone\\safari.exe"}}, web, nullptr, false,
         shellCommandLine(safari_, webSeen)},
        {"absent key: bare name not tried, associated program", "", 4, {}, page_, "#TOPIC", true,
         recorderPath() + " " + page_},
        {"no flags: only the associated program", "", 0, {{kFirefoxKey, nullptr, fakefox_}}, page_,
         nullptr, false, recorderPath() + " " + page_},
        // clang-format on
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ScratchKeys keys;
        for (const Value& v : c.keys) addKey(keys, v.key, v.name, v.data);
        settings_.DocumentBrowserPath = c.browserPath;
        settings_.DocumentBrowserFlags = c.flags;
        Recording recording(folder_ + "record.txt");
        withoutBoxes([&] {
            EXPECT_EQ(launchBrowser(nullptr, settings_, c.target, c.suffix, c.maximised), 1);
        });
        const std::vector<Recorded> records = recording.wait();
        EXPECT_EQ(records.size(), 1u);
        if (records.empty()) continue;
        EXPECT_EQ(records[0].commandLine, c.wantCommandLine) << records[0].commandLine;
        EXPECT_EQ(records[0].show, c.maximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
    }
}

TEST_F(BrowserLauncher, ReportsWhenNothingCanOpenTheTarget) {
    settings_.DocumentBrowserPath = folder_ + "nowhere.exe";
    settings_.DocumentBrowserFlags = 4;  // no key: not even the bare name is tried
    Recording recording(folder_ + "record.txt");
    std::string shown;
    DialogDriver driver([&](HWND box) {
        shown = itemText(box, IDC_MESSAGETEXT);
        clickItem(box, IDC_BUTTON1);
    });
    EXPECT_EQ(launchBrowser(nullptr, settings_, folder_ + "page.qmnothing", "#X", true), 1);
    EXPECT_TRUE(driver.ran());
    EXPECT_EQ(shown, kLauncherError);
    EXPECT_TRUE(recording.read().empty());
}

TEST_F(BrowserLauncher, ManualPagesOpenFromTheApplicationFolderAtTheirAnchor) {
    const struct {
        int (*open)(HWND, const Settings&);
        const char* applicationPath;
        const char* wantAddress;
    } cases[] = {
        {[](HWND owner, const Settings& s) { return openManualTopic(owner, s, "STARTUP"); },
         "C:\\Program Files\\Quenmark Heralder",
         "file:///C:\\Program%20Files\\Quenmark%20Heralder\\html\\referenc.html#STARTUP"},
        {openManual, "C:\\Heralder\\", "file:///C:\\Heralder\\html\\manual.html#DOCUMENTATION"},
        {[](HWND owner, const Settings& s) { return openManualTopic(owner, s, "NOTIFICATION"); },
         "", "file:///html\\referenc.html#NOTIFICATION"},
    };
    settings_.DocumentBrowserPath = recorderPath();
    settings_.DocumentBrowserFlags = 0;
    for (const auto& c : cases) {
        settings_.ApplicationPath = c.applicationPath;
        Recording recording(folder_ + "record.txt");
        withoutBoxes([&] { EXPECT_EQ(c.open(nullptr, settings_), 1); });
        const std::vector<Recorded> records = recording.wait();
        EXPECT_EQ(records.size(), 1u) << c.wantAddress;
        if (records.empty()) continue;
        EXPECT_EQ(records[0].commandLine, shellCommandLine(recorderPath(), c.wantAddress));
        EXPECT_EQ(records[0].show, SW_SHOWMAXIMIZED);
    }
}

}  // namespace
