// The alert window and the version notice under Wine, from their templates. A
// stand-in opener takes the place of the shell, so no test starts a browser.
#include "base/win_handles.h"
#include "notify/alert_box_win.h"
#include "notify/url_policy_win.h"
#include "notify/version_box_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "shell/item_graphics_win.h"
#include "shell/sound_win.h"
#include "tests/native/fake_installed.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/loopback_server.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_items.h"
#include "tests/win/test_support.h"

namespace {

class NotifyWindows : public testing::Test {
  protected:
    void SetUp() override {
        settings_.BeNoisy = 0;
        settings_.AlertBackgroundColor = RGB(255, 250, 235);
        settings_.ApplicationPath = "C:\\Program Files\\Quenmark\\Heralder\\";
        brush_.reset(CreateSolidBrush(settings_.AlertBackgroundColor));
        previous_ =
            setWebAddressOpener([this](HWND, const std::string& url, const std::string& folder) {
                opened_.push_back(url + " in " + folder);
                return openerSucceeds_;
            });
        deleteFilesIn(imagesFolder());
    }
    void TearDown() override {
        setWebAddressOpener(previous_);
        deleteFilesIn(imagesFolder());
    }

    int runWindow(bool version, UpdateItem& item, const DialogDriver::Script& script) {
        const NotifyLook look{nullptr, brush_.get()};
        return runDriven(
            [&] {
                return version ? showVersionBox(nullptr, item, look, settings_, installed_)
                               : showAlertBox(nullptr, item, look, settings_);
            },
            script);
    }

    static std::string imagesFolder() { return getUserHeralderPath("images") + "\\"; }

    Settings settings_;
    UniqueBrush brush_;
    FakeInstalled installed_;
    std::vector<std::string> opened_;  // what the opener was asked: "URL in FOLDER"
    bool openerSucceeds_ = true;
    WebAddressOpener previous_;
};

RECT dialogUnits(HWND dialog, int x, int y, int w, int h) {
    RECT r{x, y, w, h};
    MapDialogRect(dialog, &r);
    return {r.left, r.top, r.left + r.right, r.top + r.bottom};
}

// The header line is made from the item, the painted text is its control's
// text for screen readers, and Ctrl+C copies title and text. The height
// follows the text between the minimum and the screen, and the window is
// centred again. Off-topic items have no header line: their text starts 8
// pixels from the top instead of below the header and check box.
TEST_F(NotifyWindows, AlertShowsTheItemFittedToItsText) {
    const int screen = GetSystemMetrics(SM_CYSCREEN);
    std::string hugeText;
    while (hugeText.size() < 5u << 20) hugeText += "Several megabytes of words, wrapped. ";
    const struct {
        ItemType type;
        std::optional<std::string> text;
        int height;  // 0: the template's own
    } cases[] = {
        {ItemType::Alert, sampleAlert().plainText, 208},
        {ItemType::OffTopic, std::string("Twenty years ago\n\nThank you!"), 208},
        {ItemType::Alert, hugeText, screen - 4},
        {ItemType::Alert, std::nullopt, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.height);
        const bool offTopic = c.type == ItemType::OffTopic, sample = &c == cases;
        UpdateItem item = sampleAlert();
        item.type = c.type;
        item.plainText = c.text;
        const DWORD start = GetTickCount();
        DWORD shown = 0;
        runWindow(false, item, [&](HWND dialog) {
            shown = GetTickCount() - start;
            UpdateWindow(dialog);
            RECT r, client;
            GetWindowRect(dialog, &r);
            GetClientRect(dialog, &client);
            const int frame = r.bottom - r.top - client.bottom;
            const int want = c.height ? c.height : dialogUnits(dialog, 0, 0, 0, 260).bottom + frame;
            EXPECT_EQ(r.bottom - r.top, want);
            EXPECT_EQ(r.top, (screen - want) / 2);  // centred again
            HWND header = GetDlgItem(dialog, IDC_ALERT_HEADER);
            EXPECT_EQ(header ? windowText(header) : "none",
                      offTopic ? "none" : " Foo 2.1b (Revision 3) Released 07-15-2003");
            if (c.text) {
                EXPECT_EQ(clientRectOf(dialog, IDC_ALERT_TEXT).top, offTopic ? 8 : 48);
            }
            if (sample) {
                EXPECT_EQ(itemText(dialog, IDC_ALERT_TEXT), *item.plainText);
                SendMessageA(dialog, WM_COPY, 0, 0);
                EXPECT_EQ(clipboardText(),
                          "Please install the 2.1b update\r\n\r\nFoo 2.1b "
                          "rounds currency totals correctly.");
            }
            clickItem(dialog, IDC_BUTTON1);
        });
        EXPECT_LT(shown, 2000u);
    }
}

// What each answer leaves in the item, in both windows; each window announces
// itself with the user's sound, and only when the user wants sounds. The
// notice reports the installed version (its other forms are checked natively).
TEST_F(NotifyWindows, AnswersTheCheckBoxAndTheSound) {
    UpdateItem ledger = sampleAlert();
    ledger.type = ItemType::Version;
    ledger.application = "Quenmark Ledger";
    ledger.title = "Quenmark Ledger 5.2b is available";
    std::tie(ledger.version, ledger.subVersion, ledger.patch) = std::tuple(5, 2, 1);
    ledger.date = "11-18-2026";
    installed_.installed = InstalledVersion{5 << 5 | 1 << 10, 2, 0, "5.1a (revision 2)"};
    std::vector<std::string> heard;
    const SoundOutput previous = setSoundOutput([&](const SoundAttempt& attempt) {
        heard.push_back(attempt.path);
        return 1;
    });
    const uint32_t mute = setSoundMute(0);
    settings_.ChangeFolderSound = "C:\\sounds\\ding.wav";
    const struct {
        bool tick;
        int press, result;  // press: a control to click, or 0 for Escape
        uint32_t noisy;
    } cases[] = {{true, IDC_BUTTON1, 1, 1}, {false, IDC_CANCELBUTTON, 0, 0}, {true, 0, 0, 1}};
    for (bool version : {false, true})
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << c.press << (version ? " (version)" : ""));
            settings_.BeNoisy = c.noisy;
            heard.clear();
            UpdateItem item = version ? ledger : sampleAlert();
            const int result = runWindow(version, item, [&](HWND dialog) {
                if (version) {
                    EXPECT_EQ(itemText(dialog, IDC_VERSION_REPORT),
                              "\n Quenmark Ledger\n\n INSTALLED VERSION: 5.1a (revision 2)\n "
                              "CURRENT VERSION:  5.2b (Revision 1)\n RELEASED: 11-18-2026");
                }
                if (version && &c == cases) saveWindowScreenshot(dialog, "version_installed");
                if (c.tick)
                    clickItem(dialog, version ? IDC_VERSION_NEVERAGAIN : IDC_ALERT_NEVERAGAIN);
                SetFocus(GetDlgItem(dialog, IDC_BUTTON1));
                c.press ? clickItem(dialog, c.press) : pressKey(dialog, VK_ESCAPE);
            });
            EXPECT_EQ(result, c.result);
            EXPECT_EQ(item.neverShowAgain, c.tick);
            EXPECT_EQ(heard, std::vector<std::string>(c.noisy, "C:\\sounds\\ding.wav"));
        }
    EXPECT_EQ(installed_.asked, 3);
    setSoundMute(mute);
    setSoundOutput(previous);
}

// Go opens web addresses only (the rule's other cases are checked natively),
// the alert's picture acts as Go, and a browser that cannot start is
// reported. A tick with Go, even a refused one, is recorded at once: unticking
// and Cancel afterwards do not take it back. An empty address enables nothing in the
// alert window; the version notice's Go stays as its template has it.
TEST_F(NotifyWindows, GoOpensWebAddressesAndRecordsATickAtOnce) {
    const std::string sample = *sampleAlert().url, calc = "file:///C:/Windows/system32/calc.exe";
    const struct {
        std::string url;
        bool version, enabled, opens, works;
    } cases[] = {
        {sample, false, true, true, true},  {sample, true, true, true, true},
        {calc, false, false, false, true},  {calc, true, false, false, true},
        {"", false, false, false, true},    {"", true, true, false, true},
        {sample, false, true, true, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.url << (c.version ? " (version)" : "") << c.works);
        opened_.clear();
        openerSucceeds_ = c.works;
        UpdateItem item = sampleAlert();
        item.url = c.url;
        const int box = c.version ? IDC_VERSION_NEVERAGAIN : IDC_ALERT_NEVERAGAIN;
        const int go = c.version ? IDC_VERSION_GO : IDC_ALERT_GO;
        std::string message;
        const int result = runWindow(c.version, item, [&](HWND dialog) {
            EXPECT_EQ(itemEnabled(dialog, go), c.enabled);
            clickItem(dialog, box);
            message = messageShownBy(
                [&] { c.enabled ? clickItem(dialog, go) : notifyDialog(dialog, go, BN_CLICKED); });
            if (!c.version && c.works) notifyDialog(dialog, IDC_ICONBUTTON, BN_CLICKED);
            EXPECT_TRUE(IsWindow(dialog));  // Go leaves the window open
            clickItem(dialog, box);
            clickItem(dialog, IDC_CANCELBUTTON);
        });
        EXPECT_EQ(result, 0);
        const std::size_t opens = c.opens ? (c.version || !c.works ? 1 : 2) : 0;
        EXPECT_EQ(opened_, std::vector(opens, c.url + " in " + settings_.ApplicationPath));
        EXPECT_TRUE(item.neverShowAgain);
        EXPECT_EQ(message, c.works ? "" : "There has been an error accessing your web browser.");
    }
}

// The picture comes from the images folder, fetched once from the server when
// DownloadGraphics is on; a name that is not a plain file name fetches nothing.
// It sits under Help, never scaled: a narrow picture centred, a wide one from
// Help's left edge; a 32-bit picture's transparent corners show the background.
TEST_F(NotifyWindows, PicturesAreFetchedOnceWhenAllowedAndSitUnderHelp) {
    const std::string root = scratchFolder("heralder_alert_server");
    CreateDirectoryA((root + "images").c_str(), nullptr);
    const std::string source = testEnv("HERALDER_SOURCE_DIR") + "\\tests\\data\\alert\\";
    ASSERT_TRUE(
        CopyFileA((source + "wide.png").c_str(), (root + "images\\served.png").c_str(), FALSE));
    const bool decodes = loadGraphicFile(source + "wide.png").has_value();
    LoopbackServer server(root);
    ASSERT_TRUE(server.listening());
    ensureDataFolders();
    CreateDirectoryA(getUserHeralderPath("images").c_str(), nullptr);

    const struct {
        const char* graphic;
        bool local, download;  // local: copied into the images folder first
        int requests;
        bool stored;
        int width, height;  // 0: no picture of ours to place
    } cases[] = {
        {"served.png", false, true, 1, true, 100, 40},  // missing: fetched
        {"served.png", false, true, 0, true, 100, 40},  // kept: not again
        {"narrow.png", true, false, 0, true, 20, 30},
        {"other.png", false, false, 0, false, 0, 0},      // DownloadGraphics off
        {"absent.png", false, true, 1, false, 0, 0},      // not on the server
        {"..\\served.png", false, true, 0, false, 0, 0},  // others: natively
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.graphic << " " << c.requests);
        if (c.local) {
            ASSERT_TRUE(CopyFileA((source + c.graphic).c_str(),
                                  (imagesFolder() + c.graphic).c_str(), FALSE));
        }
        settings_.DownloadGraphics = c.download;
        UpdateItem item = sampleAlert();
        item.graphic = c.graphic;
        const int before = server.requests();
        runWindow(false, item, [&](HWND dialog) {
            const RECT help = clientRectOf(dialog, IDC_HELPBUTTON);
            const RECT picture = clientRectOf(dialog, IDC_ICONBUTTON);
            const bool centred = c.width < help.right - help.left;
            if (decodes && c.width) {
                EXPECT_EQ(std::tuple(picture.left, picture.top, picture.right - picture.left,
                                     picture.bottom - picture.top),
                          std::tuple(centred ? (help.left + help.right - c.width) / 2 : help.left,
                                     dialogUnits(dialog, 404, 88, 50, 20).top, c.width, c.height));
            }
            if (decodes && c.width && !centred) {
                UpdateWindow(dialog);
                HDC dc = GetDC(dialog);
                EXPECT_EQ(GetPixel(dc, picture.left, picture.top),
                          settings_.AlertBackgroundColor);  // a transparent corner
                EXPECT_EQ(GetPixel(dc, picture.left + 50, picture.top + 20), RGB(192, 48, 48));
                ReleaseDC(dialog, dc);
            }
            clickItem(dialog, IDC_BUTTON1);
        });
        EXPECT_EQ(server.requests() - before, c.requests);
        EXPECT_EQ(pathExists(imagesFolder() + c.graphic), c.stored);
    }
    EXPECT_FALSE(pathExists(getUserHeralderPath("") + "served.png"));
}

}  // namespace
