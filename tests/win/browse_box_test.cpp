// The item browser under Wine, from its template. The main window's Shift +
// double click is checked with the main window.
#include <optional>

#include "notify/browse_box_win.h"
#include "resources/resource.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_items.h"
#include "tests/win/test_support.h"

namespace {

// While alive, the machine's "http" protocol is opened by command; only the
// recorder or a missing program ever stands there, so no browser can start.
class HttpHandler {
  public:
    explicit HttpHandler(const std::string& command) : old_(read(HKEY_LOCAL_MACHINE, kKey)) {
        set(command);
        HKEY dde = nullptr;
        // With a DDE key the shell would talk to a running browser instead.
        active_ = read(HKEY_CLASSES_ROOT, "http\\shell\\open\\command") == command &&
                  RegOpenKeyExA(HKEY_CLASSES_ROOT, "http\\shell\\open\\ddeexec", 0, KEY_READ,
                                &dde) != ERROR_SUCCESS;
        if (dde) RegCloseKey(dde);
    }
    ~HttpHandler() {
        if (old_) set(*old_);
    }
    bool active() const { return active_; }  // the shell will run our command

  private:
    static constexpr char kKey[] = "Software\\Classes\\http\\shell\\open\\command";
    static std::optional<std::string> read(HKEY root, const char* key) {
        char text[1024] = {};
        DWORD size = sizeof text;
        if (RegGetValueA(root, key, nullptr, RRF_RT_REG_SZ, nullptr, text, &size) != ERROR_SUCCESS)
            return std::nullopt;
        return text;
    }
    void set(const std::string& command) {
        RegSetKeyValueA(HKEY_LOCAL_MACHINE, kKey, nullptr, REG_SZ, command.c_str(),
                        static_cast<DWORD>(command.size() + 1));
    }
    std::optional<std::string> old_;
    bool active_ = false;
};

// Every field of the item in its read-only control; the installed version
// through the lookup (the product's own file is read in installed_product_test).
TEST(BrowseBox, ShowsEveryFieldOfTheItem) {
    runDriven(
        [&] {
            return showBrowseBox(nullptr, sampleVersion(), Settings{}, [](const UpdateItem&) {
                return InstalledVersion{0x0443, 7, 0, {}};
            });
        },
        [&](HWND box) {
            const int ids[] = {IDC_BROWSE_DATE,    IDC_BROWSE_ORIGINATOR, IDC_BROWSE_APPLICATION,
                               IDC_BROWSE_VERSION, IDC_BROWSE_KEYWORDS,   IDC_BROWSE_TEXT,
                               IDC_BROWSE_SPARE,   IDC_BROWSE_REGISTERED, IDC_BROWSE_EVALUATION,
                               IDC_BROWSE_INIFILE, IDC_BROWSE_INSTALLED,  IDC_BROWSE_SECTION,
                               IDC_BROWSE_URL,     IDC_BROWSE_IMPORTANCE, IDC_BROWSE_IGNOREUNTIL};
            std::string shown;
            for (int id : ids) {
                shown += itemText(box, id) + "|";
                EXPECT_TRUE(GetWindowLongA(GetDlgItem(box, id), GWL_STYLE) & ES_READONLY) << id;
            }
            EXPECT_EQ(
                shown,
                "11-20-2026|Quenmark Software|Ledger & Co|3.0c (revision 2) (beta 1)|ledger, "
                "update|Ledger 3.0c mends the totals.\r\nUpgrade from the web page.||-1|0|"
                "ledger.ini|2.1 revision 7|Ledger|http://www.quenmark.com/ledger|2|12-01-2026|");
            EXPECT_TRUE(itemEnabled(box, IDC_BROWSE_GO));
            clickItem(box, IDC_BUTTON1);
        });
}

// Go hands the address to the shell, which starts the program registered for
// it; when that fails the user is told, and the box stays either way.
TEST(BrowseBox, GoOpensTheAddressThroughTheShell) {
    const std::string folder = scratchFolder("heralder_browse_test");
    for (const bool works : {true, false}) {
        HttpHandler handler("\"" + (works ? recorderPath() : folder + "missing.exe") + "\" \"%1\"");
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
                EXPECT_EQ(messageShownBy([&] { clickItem(box, IDC_BROWSE_GO); }),
                          works ? "" : "There has been an error accessing your web browser.");
                if (works) {
                    const std::vector<Recorded> records = recording.wait();
                    ASSERT_EQ(records.size(), 1u);
                    EXPECT_NE(records[0].commandLine.find(*item.url), std::string::npos);
                }
                EXPECT_TRUE(IsWindowVisible(box));
                clickItem(box, IDC_BUTTON1);
            });
    }
}

}  // namespace
