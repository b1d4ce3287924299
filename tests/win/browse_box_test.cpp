// The item browser under Wine, from its template: every field and label, the
// caption and version texts, Go through the shell, and the main window's
// Shift + double click.
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
#include "tests/win/test_support.h"

namespace {

// Static texts of the box in template order.
std::vector<std::string> labelsOf(HWND box) {
    std::vector<std::string> labels;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        char cls[16] = {};
        GetClassNameA(child, cls, sizeof cls);
        if (lstrcmpiA(cls, "Static") == 0) labels.push_back(windowText(child));
    }
    return labels;
}

UpdateItem fullItem() {
    UpdateItem item;
    item.type = ItemType::Version;
    item.title = "Ledger 3.0c is out";
    item.date = "11-20-2026";
    item.originator = "Quenmark Software";
    item.application = "Ledger & Co";  // no mnemonic may eat the "&"
    item.keywords = "ledger, update";
    item.plainText = "Ledger 3.0c mends the totals.\r\nUpgrade from the web page.";
    item.iniFile = "ledger.ini";
    item.section = "Ledger";
    item.url = "http://www.quenmark.com/ledger";
    item.ignoreUntil = "12-01-2026";
    item.version = 3;
    item.subVersion = 0;
    item.revision = 'c';
    item.patch = 2;
    item.beta = 1;
    item.importance = 2;
    item.ifRegistered = -1;
    item.ifEval = 0;
    item.number = 4101;
    return item;
}

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

    // The shell will run our command for an http address.
    bool active() const { return active_; }

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

TEST_F(BrowseBox, ShowsEveryFieldAndLabelAtAHeightWhereAllShow) {
    for (uint32_t soft : {0u, 3u}) {
        SCOPED_TRACE(soft);
        Settings record;
        record.SoftButtons = soft;
        const int result = runDriven(
            [&] {
                return showBrowseBox(nullptr, fullItem(), record, [](const UpdateItem&) {
                    return InstalledVersion{0x0443, 7, 0, {}};
                });
            },
            [&](HWND box) {
                EXPECT_EQ(windowText(box), "Ledger 3.0c is out [Version]");
                EXPECT_EQ(GetWindowLongA(box, GWL_STYLE) & (WS_CAPTION | WS_SYSMENU), WS_CAPTION);
                const struct {
                    int id;
                    const char* text;
                } fields[] = {
                    {IDC_BROWSE_DATE, "11-20-2026"},
                    {IDC_BROWSE_ORIGINATOR, "Quenmark Software"},
                    {IDC_BROWSE_APPLICATION, "Ledger & Co"},
                    {IDC_BROWSE_VERSION, "3.0c (revision 2) (beta 1)"},
                    {IDC_BROWSE_KEYWORDS, "ledger, update"},
                    {IDC_BROWSE_TEXT,
                     "Ledger 3.0c mends the totals.\r\nUpgrade from the web page."},
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
                EXPECT_EQ(labelsOf(box),
                          (std::vector<std::string>{
                              "Date:", "Originator:", "Apprlication:", "Version:", "Keywords:",
                              "Registered:", "Evaluation:", "INI file:", "Inst. ver:", "Section:",
                              "URL:", "Importance:", "Ignore until:"}));
                EXPECT_EQ(itemText(box, IDC_BUTTON1), "Close");
                EXPECT_EQ(itemText(box, IDC_BROWSE_GO), "Go");
                EXPECT_EQ(itemText(box, IDC_HELPBUTTON), "Help");
                EXPECT_TRUE(itemEnabled(box, IDC_BROWSE_GO));
                EXPECT_EQ(GetFocus(), GetDlgItem(box, IDC_BUTTON1));

                RECT window;
                GetWindowRect(box, &window);
                EXPECT_EQ(window.bottom - window.top, kBrowseBoxHeight);
                EXPECT_EQ(window.top, (GetSystemMetrics(SM_CYSCREEN) - kBrowseBoxHeight) / 2);

                pressKey(box, VK_ESCAPE);  // no Cancel: the browser stays
                pumpDialog(box, 50);
                EXPECT_TRUE(IsWindowVisible(box));
                saveWindowScreenshot(box, "browse_soft" + std::to_string(soft));
                expectHelpOpensTopic(box, "BROWSE", record);
                pressKey(box, VK_RETURN);
            });
        EXPECT_EQ(result, 1);
    }
}

// The texts' other forms are checked without a window; Go follows the address
// rule, web addresses in any case only.
TEST_F(BrowseBox, GoOnlyForWebAddresses) {
    const struct {
        ItemText url;
        bool go;
    } cases[] = {
        {std::string("HTTPS://WWW.QUENMARK.COM/"), true},
        {std::string("file:///C:/Windows/notepad.exe"), false},
        {std::nullopt, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.url.value_or("(none)"));
        UpdateItem item = fullItem();
        item.url = c.url;
        runDriven([&] { return showBrowseBox(nullptr, item, Settings{}); },
                  [&](HWND box) {
                      EXPECT_EQ(itemText(box, IDC_BROWSE_URL), c.url.value_or(""));
                      EXPECT_EQ(itemEnabled(box, IDC_BROWSE_GO), c.go);
                      clickItem(box, IDC_BUTTON1);
                  });
    }
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
        UpdateItem item = fullItem();
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
