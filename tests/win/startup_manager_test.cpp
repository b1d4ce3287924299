// The startup manager under Wine: the dialog opened from its template and
// driven as a user would, and the shortcut it leaves in the prefix's Startup
// folder, read back both through the shell's own link object and with an
// independent reader (exiftool, run as a Unix program from the test).
#include <gtest/gtest.h>

#include <string>

#include "dialogs/startup_manager_win.h"
#include "resources/resource.h"
#include "settings/settings.h"
#include "shell/startup_link_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/link_readers.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

namespace {

constexpr char kExplanation[] =
    "This dialog will automatically configure how Heralder behaves when your system starts up.";
constexpr char kManualText[] =
    "Manual: Heralder will not run automatically. You will need to run it from time to time. You "
    "should choose this option if you use a dial-up modem, and your system is not permanently "
    "connected to the Internet.";
constexpr char kAutomaticText[] =
    "Automatic: Heralder will run each time Windows boots up, and download the current "
    "netification file from the Quenmark server. It will remain invisible unless it encounters "
    "one or more relevant notifications. You should choose this option if you have a DSL, ADSL, "
    "T1 or other full-time connection to the Internet";

bool fileExists(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

int countLinks(const std::string& folder) {
    WIN32_FIND_DATAA found;
    HANDLE search = FindFirstFileA((folder + "Heralder*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return 0;
    int count = 0;
    do ++count;
    while (FindNextFileA(search, &found));
    FindClose(search);
    return count;
}

class StartupManager : public testing::Test {
  protected:
    void SetUp() override {
        link_ = startupLinkPath();
        ASSERT_NE(link_, "Heralder.lnk") << "no Startup folder";
        folder_ = link_.substr(0, link_.find_last_of('\\') + 1);
        DeleteFileA(link_.c_str());
        char path[MAX_PATH] = {};
        GetModuleFileNameA(nullptr, path, MAX_PATH);
        program_ = path;
    }
    void TearDown() override { DeleteFileA(link_.c_str()); }

    void expectLink(const std::string& arguments) { expectStartupLink(link_, program_, arguments); }

    std::string folder_, link_, program_;
    Settings settings_;
};

TEST_F(StartupManager, ShowsItsTextsAndTheStoredChoiceAndHelpOpensItsTopic) {
    const struct {
        uint32_t stored;
        uint32_t softButtons;
        UINT manual, automatic;
    } cases[] = {
        {kStartupManual, 0, BST_CHECKED, BST_UNCHECKED},
        {kStartupAutomatic, 1, BST_UNCHECKED, BST_CHECKED},
        {0, 1, BST_UNCHECKED, BST_UNCHECKED},
        {7, 0, BST_UNCHECKED, BST_UNCHECKED},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.stored);
        settings_.StartupOptions = c.stored;
        settings_.SoftButtons = c.softButtons;
        DialogDriver driver([&](HWND box) {
            EXPECT_EQ(windowText(box), "Startup manager");
            EXPECT_EQ(GetWindowLongA(box, GWL_STYLE) & (WS_CAPTION | WS_SYSMENU), WS_CAPTION);
            EXPECT_EQ(IsDlgButtonChecked(box, IDC_STARTUP_MANUAL), c.manual);
            EXPECT_EQ(IsDlgButtonChecked(box, IDC_STARTUP_AUTOMATIC), c.automatic);
            EXPECT_EQ(GetFocus(), GetDlgItem(box, IDC_BUTTON1));
            EXPECT_EQ(itemText(box, IDC_STARTUP_MANUAL), kManualText);
            EXPECT_EQ(itemText(box, IDC_STARTUP_AUTOMATIC), kAutomaticText);
            EXPECT_EQ(itemText(box, IDC_BUTTON1), "Close");
            EXPECT_EQ(itemText(box, IDC_CANCELBUTTON), "Cancel");
            EXPECT_EQ(itemText(box, IDC_HELPBUTTON), "Help");
            EXPECT_FALSE(IsWindowEnabled(GetDlgItem(box, IDC_ICONBUTTON)));
            // The texts without ids, in template order.
            HWND explanation = GetNextWindow(GetDlgItem(box, IDC_ICONBUTTON), GW_HWNDNEXT);
            EXPECT_EQ(windowText(explanation), kExplanation);
            EXPECT_EQ(windowText(GetNextWindow(explanation, GW_HWNDNEXT)), "Startup Options");
            // Tab order follows the eye: the choice, then the buttons left to right.
            HWND next = GetNextDlgTabItem(box, GetDlgItem(box, IDC_HELPBUTTON), FALSE);
            EXPECT_TRUE(next == GetDlgItem(box, IDC_STARTUP_MANUAL) ||
                        next == GetDlgItem(box, IDC_STARTUP_AUTOMATIC));
            for (int id : {IDC_BUTTON1, IDC_CANCELBUTTON, IDC_HELPBUTTON}) {
                next = GetNextDlgTabItem(box, next, FALSE);
                EXPECT_EQ(GetDlgCtrlID(next), id);
            }
            if (c.stored == kStartupManual || c.stored == kStartupAutomatic)
                saveWindowScreenshot(box, "startup_manager_soft" + std::to_string(c.softButtons));
            // Help opens its topic and the dialog stays.
            if (c.stored == 0) expectHelpOpensTopic(box, "STARTUP", settings_);
            clickItem(box, IDC_CANCELBUTTON);
        });
        EXPECT_EQ(openStartupManager(nullptr, settings_), 0);
        EXPECT_TRUE(driver.ran());
    }
}

TEST_F(StartupManager, CloseStoresAndAppliesTheChoiceCancelChangesNothing) {
    const struct {
        const char* what;
        uint32_t stored;
        bool linkBefore;
        int radio;  // clicked before closing; 0 none
        int button;
        int wantResult;
        uint32_t wantStored;
        bool wantLink;
    } cases[] = {
        {"Automatic creates", kStartupManual, false, IDC_STARTUP_AUTOMATIC, IDC_BUTTON1, 1,
         kStartupAutomatic, true},
        {"Manual deletes", kStartupAutomatic, true, IDC_STARTUP_MANUAL, IDC_BUTTON1, 1,
         kStartupManual, false},
        {"neither checked means Automatic", 0, false, 0, IDC_BUTTON1, 1, kStartupAutomatic, true},
        {"Cancel keeps the link and the setting", kStartupAutomatic, true, IDC_STARTUP_MANUAL,
         IDC_CANCELBUTTON, 0, kStartupAutomatic, true},
        {"Cancel creates nothing", kStartupManual, false, IDC_STARTUP_AUTOMATIC, IDC_CANCELBUTTON,
         0, kStartupManual, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        DeleteFileA(link_.c_str());
        // Cancel must leave even a link that disagrees with the setting alone.
        if (c.linkBefore) applyStartupOption(nullptr, 7);
        settings_.StartupOptions = c.stored;
        DialogDriver driver([&](HWND box) {
            if (c.radio) clickItem(box, c.radio);
            clickItem(box, c.button);
        });
        EXPECT_EQ(openStartupManager(nullptr, settings_), c.wantResult);
        EXPECT_EQ(settings_.StartupOptions, c.wantStored);
        EXPECT_EQ(fileExists(link_), c.wantLink);
        if (c.wantLink) expectLink(c.wantResult == 1 ? "/UPDATE" : "");
    }
}

TEST_F(StartupManager, ApplyingRewritesOneLinkAndManualRemovesIt) {
    EXPECT_EQ(applyStartupOption(nullptr, 7), 1);
    expectLink("");
    EXPECT_EQ(applyStartupOption(nullptr, kStartupAutomatic), 1);
    EXPECT_EQ(applyStartupOption(nullptr, kStartupAutomatic), 1);
    expectLink("/UPDATE");
    EXPECT_EQ(countLinks(folder_), 1);
    for (int i = 0; i < 2; ++i) {  // the second time there is nothing to delete
        EXPECT_EQ(applyStartupOption(nullptr, kStartupManual), 1);
        EXPECT_EQ(countLinks(folder_), 0);
    }
}

TEST_F(StartupManager, ShortcutIntoAMissingFolderReportsFailure) {
    EXPECT_TRUE(FAILED(createShortcut(program_, folder_ + "no such folder\\Heralder.lnk",
                                      "Quenmark Heralder", "")));
}

}  // namespace
