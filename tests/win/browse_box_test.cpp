// The item browser under Wine, from its template: every field of the item,
// the installed version from the product's own file, Go through the shell,
// and the main window's Shift + double click.
#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "app/app_win.h"
#include "app/main_window_win.h"
#include "feed/installed_product.h"
#include "notify/browse_box_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_items.h"
#include "tests/win/test_support.h"

namespace {

// While alive, the machine's "http" protocol is opened by command (the value
// the shell reads); the prefix's own command comes back afterwards. Only the
// recorder or a program that does not exist ever stands there, so no real
// browser can start.
class HttpHandler {
  public:
    explicit HttpHandler(const std::string& command) {
        had_ = read(HKEY_LOCAL_MACHINE, kKey, old_);
        set(command);
        std::string now;
        HKEY dde = nullptr;
        // With a DDE key the shell would talk to a running browser instead.
        active_ = read(HKEY_CLASSES_ROOT, "http\\shell\\open\\command", now) && command == now &&
                  RegOpenKeyExA(HKEY_CLASSES_ROOT, "http\\shell\\open\\ddeexec", 0, KEY_READ,
                                &dde) != ERROR_SUCCESS;
        if (dde) RegCloseKey(dde);
    }
    ~HttpHandler() {
        if (had_) set(old_);
    }
    HttpHandler(const HttpHandler&) = delete;
    HttpHandler& operator=(const HttpHandler&) = delete;
    bool active() const { return active_; }  // the shell will run our command

  private:
    static constexpr char kKey[] = "Software\\Classes\\http\\shell\\open\\command";
    static bool read(HKEY root, const char* key, std::string& value) {
        char text[1024] = {};
        DWORD size = sizeof text;
        const bool found =
            RegGetValueA(root, key, nullptr, RRF_RT_REG_SZ, nullptr, text, &size) == ERROR_SUCCESS;
        value = text;
        return found;
    }
    void set(const std::string& command) {
        RegSetKeyValueA(HKEY_LOCAL_MACHINE, kKey, nullptr, REG_SZ, command.c_str(),
                        static_cast<DWORD>(command.size() + 1));
    }
    bool had_ = false, active_ = false;
    std::string old_;
};

using BrowseBox = SettingsTest;

// Every field of the item in its read-only control, whole inside the box at
// the height where all of them show; the installed version through the lookup.
TEST_F(BrowseBox, ShowsEveryFieldOfTheItem) {
    runDriven(
        [&] {
            return showBrowseBox(nullptr, sampleVersion(), Settings{}, [](const UpdateItem&) {
                return InstalledVersion{0x0443, 7, 0, {}};
            });
        },
        [&](HWND box) {
            const struct {
                int id;
                const char* text;
            } fields[] = {
                {IDC_BROWSE_DATE, "11-20-2026"},
                {IDC_BROWSE_ORIGINATOR, "Quenmark Software"},
                {IDC_BROWSE_APPLICATION, "Ledger & Co"},
                {IDC_BROWSE_VERSION, "3.0c (revision 2) (beta 1)"},
                {IDC_BROWSE_KEYWORDS, "ledger, update"},
                {IDC_BROWSE_TEXT, "Ledger 3.0c mends the totals.\r\nUpgrade from the web page."},
                {IDC_BROWSE_SPARE, ""},
                {IDC_BROWSE_REGISTERED, "-1"},
                {IDC_BROWSE_EVALUATION, "0"},
                {IDC_BROWSE_INIFILE, "ledger.ini"},
                {IDC_BROWSE_INSTALLED, "2.1 revision 7"},
                {IDC_BROWSE_SECTION, "Ledger"},
                {IDC_BROWSE_URL, "http://www.quenmark.com/ledger"},
                {IDC_BROWSE_IMPORTANCE, "2"},
                {IDC_BROWSE_IGNOREUNTIL, "12-01-2026"},
            };
            RECT client;
            GetClientRect(box, &client);
            for (const auto& f : fields) {
                SCOPED_TRACE(f.id);
                EXPECT_EQ(itemText(box, f.id), f.text);
                // Read-only, and whole inside the box.
                EXPECT_TRUE(GetWindowLongA(GetDlgItem(box, f.id), GWL_STYLE) & ES_READONLY);
                const RECT r = clientRectOf(box, f.id);
                EXPECT_LE(r.bottom, client.bottom);
                EXPECT_LE(r.right, client.right);
            }
            EXPECT_EQ(windowHeight(box), kBrowseBoxHeight);
            EXPECT_TRUE(itemEnabled(box, IDC_BROWSE_GO));
            clickItem(box, IDC_BUTTON1);
        });
}

// The installed version as the product itself records it: VersionNumber 0x0443
// (1091) is 2.1, whatever its revision letter.
TEST_F(BrowseBox, InstalledVersionComesFromTheProductsOwnFile) {
    const std::string name = "HeralderBrowse-" + std::to_string(GetCurrentProcessId()) + ".ini";
    const std::string folder = makerFolderPath(*getSpecialFolderPath(CSIDL_APPDATA));
    const bool madeFolder = CreateDirectoryA(folder.c_str(), nullptr) != FALSE;
    std::ofstream(folder + name, std::ios::binary)
        << "[Ledger]\r\nVersionNumber=1091\r\nPatchLevel=4\r\nBetaLevel=2\r\n";
    UpdateItem item;
    item.type = ItemType::Version;
    item.version = 2;  // announced below 4: the per-user file
    item.iniFile = name;
    item.section = "Ledger";
    std::string installed;
    runDriven([&] { return showBrowseBox(nullptr, item, Settings{}); },
              [&](HWND box) {
                  installed = itemText(box, IDC_BROWSE_INSTALLED);
                  clickItem(box, IDC_BUTTON1);
              });
    DeleteFileA((folder + name).c_str());
    if (madeFolder) RemoveDirectoryA(folder.c_str());
    EXPECT_EQ(installed, "2.1 revision 4");
}

// Go hands the address to the shell, which starts the program registered for
// it; when that fails the user is told, and the box stays either way.
TEST_F(BrowseBox, GoOpensTheAddressThroughTheShell) {
    const std::string folder = scratchFolder("heralder_browse_test");
    const struct {
        const char* what;
        std::string handler;
        bool recorded;
        const char* message;  // "" none
    } cases[] = {
        {"recorded", "\"" + recorderPath() + "\" \"%1\"", true, ""},
        {"no such program", "\"" + folder + "missing.exe\" \"%1\"", false,
         "There has been an error accessing your web browser."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        HttpHandler handler(c.handler);
        if (!handler.active()) GTEST_SKIP() << "the shell would not use the test's http handler";
        Recording recording(folder + "record.txt");
        UpdateItem item = sampleVersion();
        item.url = "http://www.quenmark.com/ledger?from=browser";
        Settings record;
        record.ApplicationPath = folder;
        runDriven(
            [&] {
                return showBrowseBox(nullptr, item, record,
                                     [](const UpdateItem&) { return std::nullopt; });
            },
            [&](HWND box) {
                EXPECT_EQ(messageShownBy([&] { clickItem(box, IDC_BROWSE_GO); }), c.message);
                if (c.recorded) {
                    const std::vector<Recorded> records = recording.wait();
                    ASSERT_EQ(records.size(), 1u);
                    EXPECT_NE(records[0].commandLine.find(*item.url), std::string::npos);
                }
                EXPECT_TRUE(IsWindowVisible(box));
                clickItem(box, IDC_BUTTON1);
            });
    }
}

// Shift + double click on a row of the main window opens the browser on that
// row's item.
TEST_F(BrowseBox, ShiftDoubleClickInTheMainWindowOpensIt) {
    if (testEnv("HERALDER_SOURCE_DIR").empty()) GTEST_SKIP() << "run through scripts/test_wine.sh";
    TestMainWindow window;
    HWND main = window.hwnd();
    ASSERT_TRUE(main);
    const std::string document = testEnv("HERALDER_SOURCE_DIR") + "\\examples\\update.txt";
    SendMessageA(main, WM_LOAD_DOCUMENT, 0, reinterpret_cast<LPARAM>(document.c_str()));
    const std::vector<UpdateItem>& items = mainWindowItems(main);
    ASSERT_GE(items.size(), 2u);
    ListBox_SetCurSel(GetDlgItem(main, IDC_ITEMLIST), 1);
    std::string caption;
    runDriven(
        [&] {
            HeldKey shift(VK_SHIFT);
            notifyDialog(main, IDC_ITEMLIST, LBN_DBLCLK);
            return 0;
        },
        [&](HWND box) {
            caption = windowText(box);
            clickItem(box, IDC_BUTTON1);
        });
    EXPECT_EQ(caption, *items[1].title + " [" + itemTypeName(items[1].type) + "]");
}

}  // namespace
