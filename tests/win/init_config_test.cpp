// The first-run sign-up under Wine, from its template: the stored choice it
// shows, what it leaves in the settings and the Startup folder, the page it
// opens through the recorder and the warning about an older installation.
// Which switches run the sign-up is checked natively (CommandLine).
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "base/file_io.h"
#include "dialogs/init_config.h"
#include "dialogs/init_config_box_win.h"
#include "feed/http_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings.h"
#include "shell/startup_link_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/link_readers.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

namespace {

constexpr char kWarningStart[] =
    "There is an earlier installation of Heralder installed on your system.\n\nPlease open the ";

class InitConfig : public SettingsTest {
  protected:
    void SetUp() override {
        ASSERT_TRUE(ensureDataFolders());
        oldIni_ = getUserDataPath(kOldInstallationFile);
        removeFiles();
        settings_.InitConfigDone = 0;
    }
    void TearDown() override {
        removeFiles();
        SettingsTest::TearDown();
    }
    void removeFiles() {
        DeleteFileA(link_.c_str());
        DeleteFileA(oldIni_.c_str());
        DeleteFileA((oldFolder_ + kOldInstallationProgram).c_str());
    }
    // The old product's INI naming folder, and its program there when asked.
    void makeOldInstallation(const std::string& folder, bool withProgram) {
        WritePrivateProfileStringA(kOldInstallationSection, kOldInstallationKey, folder.c_str(),
                                   oldIni_.c_str());
        if (withProgram) {
            ASSERT_TRUE(writeFileBytes(oldFolder_ + kOldInstallationProgram, {}));
        }
    }

    std::string link_ = startupLinkPath(), oldIni_;
    std::string oldFolder_ = scratchFolder("heralder_init_config_test");
};

// The stored choice shows in the radios (Manual always, as the first run
// knows no better), in a window on top of whatever else starts at logon.
// Close stores and applies the choice; Escape only marks the sign-up done.
TEST_F(InitConfig, ShowsTheStoredChoiceAndCloseAppliesIt) {
    const struct {
        const char* what;
        uint32_t stored;
        bool linkBefore;
        int shown;   // checked besides Manual; 0 none
        int radio;   // clicked first; 0 none
        bool close;  // Close, else Escape
        uint32_t wantStored;
        bool wantLink;
    } cases[] = {
        {"Automatic stored, untouched: Manual", kStartupAutomatic, true, IDC_INITCONFIG_AUTOMATIC,
         0, true, kStartupManual, false},
        {"Automatic clicked", kStartupManual, false, 0, IDC_INITCONFIG_AUTOMATIC, true,
         kStartupAutomatic, true},
        {"none stored, Manual clicked", 0, false, 0, IDC_INITCONFIG_MANUAL, true, kStartupManual,
         false},
        {"Escape keeps the link", kStartupAutomatic, true, IDC_INITCONFIG_AUTOMATIC,
         IDC_INITCONFIG_MANUAL, false, kStartupAutomatic, true},
        {"Escape makes none", kStartupManual, false, 0, IDC_INITCONFIG_AUTOMATIC, false,
         kStartupManual, false},
        // The stored number marks the control of that id, whatever it is.
        {"a stored id", IDC_INITCONFIG_NEWSLETTER, false, IDC_INITCONFIG_NEWSLETTER, 0, false,
         IDC_INITCONFIG_NEWSLETTER, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        DeleteFileA(link_.c_str());
        if (c.linkBefore) applyStartupOption(nullptr, kStartupAutomatic);
        settings_.InitConfigDone = 0;
        settings_.StartupOptions = c.stored;
        DialogDriver driver([&](HWND box) {
            EXPECT_TRUE(GetWindowLongA(box, GWL_EXSTYLE) & WS_EX_TOPMOST);
            for (int id : {IDC_INITCONFIG_AUTOMATIC, IDC_INITCONFIG_NEWSLETTER})
                EXPECT_EQ(IsDlgButtonChecked(box, id), UINT(id == c.shown)) << id;
            EXPECT_EQ(IsDlgButtonChecked(box, IDC_INITCONFIG_MANUAL), UINT(BST_CHECKED));
            if (c.radio) clickItem(box, c.radio);
            c.close ? clickItem(box, IDC_BUTTON1) : pressKey(box, VK_ESCAPE);
        });
        EXPECT_EQ(runInitConfig(nullptr, settings_, 18), c.close ? 1 : 0);
        EXPECT_TRUE(driver.ran());
        EXPECT_EQ(settings_.InitConfigDone, 1u);
        EXPECT_EQ(settings_.StartupOptions, c.wantStored);
        EXPECT_EQ(pathExists(link_), c.wantLink);
    }
}

TEST_F(InitConfig, NewsletterOpensMaximisedOnClose) {
    settings_.DocumentBrowserPath = recorderPath();
    settings_.DocumentBrowserFlags = 0;
    Recording recording(oldFolder_ + "record.txt");
    const INT_PTR result = runDriven([&] { return runInitConfig(nullptr, settings_, 18); },
                                     [](HWND box) {
                                         clickItem(box, IDC_INITCONFIG_NEWSLETTER);
                                         clickItem(box, IDC_BUTTON1);
                                     });
    EXPECT_EQ(result, 1);
    const std::vector<Recorded> records = recording.wait();
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].commandLine,
              shellCommandLine(recorderPath(), newsletterAddress(publisherServerHost())));
    EXPECT_EQ(records[0].show, SW_SHOWMAXIMIZED);
}

// After the sign-up, even one closed with Escape, comes the check for an older
// installation: a warning only when its program is still there, worded for
// the system. A sign-up done before shows nothing and skips the check.
TEST_F(InitConfig, WarnsAboutAnOldInstallationAfterTheSignUp) {
    const std::string noBackslash = oldFolder_.substr(0, oldFolder_.size() - 1);
    const struct {
        const char* what;
        bool ini;
        std::string folder;
        bool program;
        uint32_t platform;
        bool done;
        const char* wantItem;  // nullptr: no warning
    } cases[] = {
        {"no INI file", false, "", true, 18, false, nullptr},
        {"no program there", true, oldFolder_, false, 18, false, nullptr},
        {"XP wording", true, oldFolder_, true, 12, false, "Add or Remove Programs"},
        {"later systems, no backslash", true, noBackslash, true, 19, false,
         "Programs and Features"},
        {"signed up before", true, oldFolder_, true, 18, true, nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        removeFiles();
        if (c.ini) makeOldInstallation(c.folder, c.program);
        settings_.InitConfigDone = c.done;
        settings_.StartupOptions = kStartupAutomatic;
        std::optional<DialogDriver> warning;
        std::string shown;
        DialogDriver signUp([&](HWND box) {
            warning.emplace([&](HWND message) {
                shown = itemText(message, IDC_MESSAGETEXT);
                if (c.platform == 12) saveWindowScreenshot(message, "init_config_old_xp");
                clickItem(message, IDC_BUTTON1);
            });
            pressKey(box, VK_ESCAPE);
        });
        runInitConfig(nullptr, settings_, c.platform);
        EXPECT_EQ(signUp.ran(), !c.done);
        EXPECT_EQ(shown, c.wantItem ? std::string(kWarningStart) + c.wantItem +
                                          " option in the Windows Control Panel and uninstall QMK "
                                          "Heralder."
                                    : "");
        EXPECT_EQ(settings_.InitConfigDone, 1u);
        EXPECT_EQ(settings_.StartupOptions, kStartupAutomatic);
    }
}

}  // namespace
