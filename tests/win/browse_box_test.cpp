// The item browser under Wine: the real box from its template with every
// field and label, the caption rule, the version texts, the installed version
// read from a product file the test writes, the height that shows every
// field, Go only for web addresses, and the main window's Shift + double
// click that opens it.
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
        char old[1024] = {};
        DWORD size = sizeof old;
        had_ = RegGetValueA(HKEY_LOCAL_MACHINE, kKey, nullptr, RRF_RT_REG_SZ, nullptr, old,
                            &size) == ERROR_SUCCESS;
        old_ = old;
        set(command);
        char now[1024] = {};
        size = sizeof now;
        active_ = RegGetValueA(HKEY_CLASSES_ROOT, "http\\shell\\open\\command", nullptr,
                               RRF_RT_REG_SZ, nullptr, now, &size) == ERROR_SUCCESS &&
                  command == now;
        HKEY dde = nullptr;
        if (RegOpenKeyExA(HKEY_CLASSES_ROOT, "http\\shell\\open\\ddeexec", 0, KEY_READ, &dde) ==
            ERROR_SUCCESS) {
            RegCloseKey(dde);
            active_ = false;  // the shell would talk to a running browser instead
        }
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
    void set(const std::string& command) {
        RegSetKeyValueA(HKEY_LOCAL_MACHINE, kKey, nullptr, REG_SZ, command.c_str(),
                        static_cast<DWORD>(command.size() + 1));
    }
    bool had_ = false, active_ = false;
    std::string old_;
};

class BrowseBox : public testing::Test {
  protected:
    void TearDown() override { settings() = saved_; }
    Settings saved_ = settings();
};

TEST_F(BrowseBox, ShowsEveryFieldAndLabelAtAHeightWhereAllShow) {
    for (uint32_t soft : {0u, 3u}) {
        SCOPED_TRACE(soft);
        Settings record;
        record.SoftButtons = soft;
        const UpdateItem item = fullItem();
        DialogDriver driver([&](HWND box) {
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
            pressKey(box, VK_RETURN);
        });
        EXPECT_EQ(showBrowseBox(nullptr, item, record,
                                [](const UpdateItem&) {
                                    return InstalledVersion{0x0443, 7};
                                }),
                  1);
        EXPECT_TRUE(driver.ran());
    }
}

TEST_F(BrowseBox, CaptionVersionAndGoFollowTheItem) {
    const struct {
        const char* what;
        std::string title;
        int32_t version, subVersion, revision, patch, beta;
        ItemText url;
        std::optional<InstalledVersion> installed;
        std::string caption, versionText, installedText;
        bool go;
    } cases[] = {
        {"long title alone", std::string(250, 'L'), 3, 0, 'c', 2, 1,
         std::string("HTTPS://WWW.QUENMARK.COM/"), std::nullopt, std::string(250, 'L'),
         "3.0c (revision 2) (beta 1)", "", true},
        {"no title, no letter", "", 5, 1, 0, 0, 0, std::nullopt, InstalledVersion{544, 0}, "",
         "5.1", "17.0 revision 0", false},
        {"file address", "Tip", 1, 2, 'a', 0, 3, std::string("file:///C:/Windows/notepad.exe"),
         std::nullopt, "Tip [Alert]", "1.2a (beta 3)", "", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        UpdateItem item;
        item.type = ItemType::Alert;
        if (!c.title.empty()) item.title = c.title;
        item.version = c.version;
        item.subVersion = c.subVersion;
        item.revision = c.revision;
        item.patch = c.patch;
        item.beta = c.beta;
        item.url = c.url;
        DialogDriver driver([&](HWND box) {
            EXPECT_EQ(windowText(box), c.caption);
            EXPECT_EQ(itemText(box, IDC_BROWSE_VERSION), c.versionText);
            EXPECT_EQ(itemText(box, IDC_BROWSE_INSTALLED), c.installedText);
            EXPECT_EQ(itemText(box, IDC_BROWSE_URL), c.url.value_or(""));
            EXPECT_EQ(itemEnabled(box, IDC_BROWSE_GO), c.go);
            clickItem(box, IDC_BUTTON1);
        });
        showBrowseBox(nullptr, item, Settings{}, [&](const UpdateItem&) { return c.installed; });
        EXPECT_TRUE(driver.ran());
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
    DialogDriver driver([&](HWND box) {
        installed = itemText(box, IDC_BROWSE_INSTALLED);
        clickItem(box, IDC_BUTTON1);
    });
    showBrowseBox(nullptr, item, Settings{});
    DeleteFileA((folder + name).c_str());
    if (madeFolder) RemoveDirectoryA(folder.c_str());
    EXPECT_TRUE(driver.ran());
    EXPECT_EQ(installed, "2.1 revision 4");
}

TEST_F(BrowseBox, HelpOpensTheBrowseTopicAndTheBoxStays) {
    DialogDriver driver([&](HWND box) {
        expectHelpOpensTopic(box, "BROWSE");
        clickItem(box, IDC_BUTTON1);
    });
    showBrowseBox(nullptr, fullItem(), settings(), [](const UpdateItem&) { return std::nullopt; });
    EXPECT_TRUE(driver.ran());
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
        std::string message;
        DialogDriver driver([&](HWND box) {
            // The error box is a dialog of this thread too; it is answered here.
            std::optional<DialogDriver> errorBox;
            if (!c.recorded)
                errorBox.emplace([&](HWND error) {
                    message = itemText(error, IDC_MESSAGETEXT);
                    clickItem(error, IDC_BUTTON1);
                });
            clickItem(box, IDC_BROWSE_GO);
            const std::vector<Recorded> records =
                c.recorded ? recording.wait() : std::vector<Recorded>{};
            if (c.recorded) {
                ASSERT_EQ(records.size(), 1u);
                EXPECT_NE(
                    records[0].commandLine.find("http://www.quenmark.com/ledger?from=browser"),
                    std::string::npos);
            }
            EXPECT_TRUE(IsWindowVisible(box));
            clickItem(box, IDC_BUTTON1);
        });
        showBrowseBox(nullptr, item, record, [](const UpdateItem&) { return std::nullopt; });
        EXPECT_TRUE(driver.ran());
        EXPECT_EQ(message, c.message);
    }
}

// Shift + double click on a row of the main window opens the browser on that
// row's item.
TEST_F(BrowseBox, ShiftDoubleClickInTheMainWindowOpensIt) {
    if (testEnv("HERALDER_SOURCE_DIR").empty()) GTEST_SKIP() << "run through scripts/test_wine.sh";
    // Registered once per process, by whichever test needs it first.
    WNDCLASSEXA known = {sizeof known};
    if (!GetClassInfoExA(GetModuleHandleA(nullptr), kMainWindowClass, &known))
        ASSERT_TRUE(registerMainWindowClass(GetModuleHandleA(nullptr)));
    createSharedDrawingObjects(settings());
    HWND main = createMainWindow(GetModuleHandleA(nullptr));
    ASSERT_TRUE(main);
    const std::string document = testEnv("HERALDER_SOURCE_DIR") + "\\examples\\update.txt";
    SendMessageA(main, WM_LOAD_DOCUMENT, 0, reinterpret_cast<LPARAM>(document.c_str()));
    const std::vector<UpdateItem>& items = mainWindowItems(main);
    ASSERT_GE(items.size(), 2u);
    HWND list = GetDlgItem(main, IDC_ITEMLIST);
    ListBox_SetCurSel(list, 1);

    BYTE keys[256] = {};
    GetKeyboardState(keys);
    const BYTE shiftBefore = keys[VK_SHIFT];
    keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys);
    std::string caption;
    DialogDriver driver([&](HWND box) {
        caption = windowText(box);
        clickItem(box, IDC_BUTTON1);
    });
    SendMessageA(main, WM_COMMAND, MAKEWPARAM(IDC_ITEMLIST, LBN_DBLCLK),
                 reinterpret_cast<LPARAM>(list));
    keys[VK_SHIFT] = shiftBefore;
    SetKeyboardState(keys);

    EXPECT_TRUE(driver.ran());
    EXPECT_EQ(caption, *items[1].title + " [" + itemTypeName(items[1].type) + "]");
    DestroyWindow(main);
    MSG msg;  // the window's quit message must not end a later test's dialog
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
    }
}

}  // namespace
