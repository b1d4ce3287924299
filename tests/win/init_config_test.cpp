// The first-run sign-up under Wine, from its template. Which switches run it
// is checked natively (CommandLine).
#include <optional>

#include "base/file_io.h"
#include "dialogs/init_config.h"
#include "dialogs/init_config_box_win.h"
#include "feed/http_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "shell/startup_link_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/link_readers.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

namespace {

class InitConfig : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(ensureDataFolders());
        TearDown();
    }
    void TearDown() override {
        for (const std::string& file : {link_, oldIni_, oldFolder_ + kOldInstallationProgram})
            DeleteFileA(file.c_str());
    }

    std::string link_ = startupLinkPath(), oldIni_ = getUserDataPath(kOldInstallationFile);
    std::string oldFolder_ = scratchFolder("heralder_init_config_test");
    Settings settings_;
};

// The stored choice shows in the radios (Manual always, as the first run
// knows no better), in a window on top of whatever else starts at logon.
// Close stores and applies the choice, and opens the newsletter's page
// maximised when its box is ticked; Escape only marks the sign-up done.
// After either comes the check for an older installation: a warning only when
// its program is still there, worded for the system. A sign-up done before
// shows nothing and skips the check.
TEST_F(InitConfig, ShowsTheStoredChoiceAppliesItAndWarnsOfAnOldInstallation) {
    const struct {
        uint32_t stored;      // with its link when Automatic
        int shown, radio;     // checked besides Manual, clicked first; 0 none
        bool close;           // Close, else Escape
        uint32_t wantStored;  // the link is there with Automatic only
        int old;  // an older installation: 0 none, 1 its INI, 2 its program too, 3 as 2 with
                  // no backslash after the folder in the INI
        uint32_t platform;
        const char* warning;  // the Control Panel item it names; nullptr none
    } cases[] = {
        // Automatic stored, untouched: Manual.
        {kStartupAutomatic, IDC_INITCONFIG_AUTOMATIC, 0, true, kStartupManual, 0, 18, nullptr},
        {kStartupManual, 0, IDC_INITCONFIG_AUTOMATIC, true, kStartupAutomatic, 1, 18, nullptr},
        {0, 0, IDC_INITCONFIG_MANUAL, true, kStartupManual, 2, 12, "Add or Remove Programs"},
        // Escape keeps the link, or makes none.
        {kStartupAutomatic, IDC_INITCONFIG_AUTOMATIC, IDC_INITCONFIG_MANUAL, false,
         kStartupAutomatic, 3, 19, "Programs and Features"},
        {kStartupManual, 0, IDC_INITCONFIG_AUTOMATIC, false, kStartupManual, 0, 18, nullptr},
        // The stored number marks the control of that id, whatever it is.
        {IDC_INITCONFIG_NEWSLETTER, IDC_INITCONFIG_NEWSLETTER, 0, true, kStartupManual, 0, 18,
         nullptr},
        {IDC_INITCONFIG_NEWSLETTER, IDC_INITCONFIG_NEWSLETTER, 0, false, IDC_INITCONFIG_NEWSLETTER,
         2, 18, "Programs and Features"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        TearDown();
        if (c.stored == kStartupAutomatic) applyStartupOption(nullptr, kStartupAutomatic);
        const std::string folder =
            c.old == 3 ? oldFolder_.substr(0, oldFolder_.size() - 1) : oldFolder_;
        if (c.old) {
            WritePrivateProfileStringA(kOldInstallationSection, kOldInstallationKey, folder.c_str(),
                                       oldIni_.c_str());
        }
        if (c.old >= 2) {
            ASSERT_TRUE(writeFileBytes(oldFolder_ + kOldInstallationProgram, {}));
        }
        settings_.InitConfigDone = 0;
        settings_.StartupOptions = c.stored;
        settings_.DocumentBrowserPath = recorderPath();
        Recording recording(oldFolder_ + "record.txt");
        std::optional<DialogDriver> warning;
        std::string shown;
        const INT_PTR result = runDriven(
            [&] { return runInitConfig(nullptr, settings_, c.platform); },
            [&](HWND box) {
                warning.emplace([&](HWND message) {
                    shown = itemText(message, IDC_MESSAGETEXT);
                    clickItem(message, IDC_BUTTON1);
                });
                EXPECT_TRUE(GetWindowLongA(box, GWL_EXSTYLE) & WS_EX_TOPMOST);
                for (int id : {IDC_INITCONFIG_AUTOMATIC, IDC_INITCONFIG_NEWSLETTER})
                    EXPECT_EQ(IsDlgButtonChecked(box, id), UINT(id == c.shown)) << id;
                EXPECT_EQ(IsDlgButtonChecked(box, IDC_INITCONFIG_MANUAL), UINT(BST_CHECKED));
                if (c.radio) clickItem(box, c.radio);
                c.close ? clickItem(box, IDC_BUTTON1) : pressKey(box, VK_ESCAPE);
            });
        EXPECT_EQ(result, c.close ? 1 : 0);
        EXPECT_EQ(settings_.InitConfigDone, 1u);
        EXPECT_EQ(settings_.StartupOptions, c.wantStored);
        EXPECT_EQ(pathExists(link_), c.wantStored == kStartupAutomatic);
        std::vector<std::pair<int, std::string>> opened, want;
        if (c.close && c.shown == IDC_INITCONFIG_NEWSLETTER)
            want = {{SW_SHOWMAXIMIZED,
                     shellCommandLine(recorderPath(), newsletterAddress(publisherServerHost()))}};
        for (const Recorded& r : want.empty() ? recording.read() : recording.wait())
            opened.emplace_back(r.show, r.commandLine);
        EXPECT_EQ(opened, want);
        EXPECT_EQ(shown, c.warning ? "There is an earlier installation of Heralder installed on "
                                     "your system.\n\nPlease open the " +
                                         std::string(c.warning) +
                                         " option in the Windows Control Panel and uninstall QMK "
                                         "Heralder."
                                   : "");
    }
    // The last old installation is still there.
    settings_.InitConfigDone = 1;
    DialogDriver none([](HWND box) { EndDialog(box, 0); });
    runInitConfig(nullptr, settings_, 18);
    EXPECT_FALSE(none.ran());
    EXPECT_EQ(settings_.StartupOptions, unsigned(IDC_INITCONFIG_NEWSLETTER));
}

}  // namespace
