// The main window inside the test program, fetching from the test's own
// loopback server with the retries of update mode shortened.

#include "app/app_win.h"
#include "app/main_window_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings_file.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/loopback_server.h"
#include "tests/win/test_support.h"

namespace {

class MainWindowTest : public testing::Test {
  protected:
    void SetUp() override {
        if (testEnv("HERALDER_SOURCE_DIR").empty())
            GTEST_SKIP() << "run through scripts/test_wine.sh";
        DeleteFileA(getUserDataPath(kSettingsFileName).c_str());
        setFetchRetryDelays({50, 50, 50});
    }
    void TearDown() override {
        setFetchRetryDelays({5000, 15000, 40000});
        app().updateMode = false;
        DeleteFileA(getUserDataPath(kSettingsFileName).c_str());
    }
};

bool menuEnabled(HWND hwnd, int id) {
    return !(GetMenuState(GetMenu(hwnd), id, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED));
}

// Only the run started at logon waits for the network; Go by hand tells the
// user at once.
TEST_F(MainWindowTest, GoRetriesOnlyInUpdateModeAndPostsTheAutomaticRunOnlyByHand) {
    const struct {
        bool updateMode;
        int refused;  // connections dropped before the server answers
        bool networkError;
        DWORD atLeastMs;
        bool posted;  // the automatic notification run
    } cases[] = {
        {true, 2, false, 100, false},
        {true, 4, true, 150, false},
        {false, 1, true, 0, false},
        {false, 0, false, 0, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.updateMode << " " << c.refused);
        // A fresh window for each case: the list and the menu start over.
        TestMainWindow window;
        HWND hwnd = window.hwnd();
        LoopbackServer server(testEnv("HERALDER_SOURCE_DIR") + "\\examples", c.refused);
        app().updateMode = c.updateMode;
        window.record().DoNoticationsAutomatically = 1;
        const DWORD start = GetTickCount();
        const std::string boxText =
            messageShownBy([&] { SendMessageA(hwnd, WM_COMMAND, IDM_GO, 0); });
        EXPECT_GE(GetTickCount() - start, c.atLeastMs);
        EXPECT_EQ(boxText, c.networkError ? "There has been a network error. The update "
                                            "document is not available."
                                          : "");
        EXPECT_EQ(mainWindowItems(hwnd).size(), c.networkError ? 0u : 10u);
        EXPECT_EQ(menuEnabled(hwnd, IDM_SHOW_NOTIFICATIONS), !c.networkError);
        EXPECT_TRUE(menuEnabled(hwnd, IDM_GO));
        MSG msg;
        const bool posted = PeekMessageA(&msg, hwnd, WM_COMMAND, WM_COMMAND, PM_REMOVE) &&
                            msg.wParam == IDM_SHOW_NOTIFICATIONS;
        EXPECT_EQ(posted, c.posted);
    }
}

// A double click on a row opens the alert window for that row's item, whatever
// its type, and a ticked "never show" stays with the item for the run; with
// Shift held it opens the item browser instead.
TEST_F(MainWindowTest, DoubleClickOpensTheRowsItem) {
    TestMainWindow window;
    HWND hwnd = window.hwnd();
    const std::string document = testEnv("HERALDER_SOURCE_DIR") + "\\examples\\update.txt";
    SendMessageA(hwnd, WM_LOAD_DOCUMENT, 0, reinterpret_cast<LPARAM>(document.c_str()));
    const std::vector<UpdateItem>& items = mainWindowItems(hwnd);
    ASSERT_EQ(items.size(), 10u);
    HWND list = GetDlgItem(hwnd, IDC_ITEMLIST);
    window.record().BeNoisy = 0;
    // An alert, a version notice, a setting update; the browser first.
    for (auto [row, shift] : {std::pair{1, true}, {0, false}, {1, false}, {6, false}}) {
        SendMessageA(list, LB_SETCURSEL, row, 0);
        std::string caption;
        runDriven(
            [&] {
                withKeyHeld(shift ? VK_SHIFT : 0,
                            [&] { notifyDialog(hwnd, IDC_ITEMLIST, LBN_DBLCLK); });
                return 0;
            },
            [&](HWND dialog) {
                caption = windowText(dialog);
                if (!shift) clickItem(dialog, IDC_ALERT_NEVERAGAIN);
                clickItem(dialog, IDC_BUTTON1);
            });
        EXPECT_EQ(caption,
                  *items[row].title +
                      (shift ? std::string(" [") + itemTypeName(items[row].type) + "]" : ""));
        EXPECT_EQ(items[row].neverShowAgain, !shift);
    }
}

TEST_F(MainWindowTest, EndingTheSessionSavesNothing) {
    TestMainWindow window;
    EXPECT_TRUE(SendMessageA(window.hwnd(), WM_QUERYENDSESSION, 0, 0));
    EXPECT_EQ(GetFileAttributesA(getUserDataPath(kSettingsFileName).c_str()),
              INVALID_FILE_ATTRIBUTES);
}

}  // namespace
