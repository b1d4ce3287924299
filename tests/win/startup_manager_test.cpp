// The startup manager under Wine; its shortcut is read back through the
// shell's own link object and with an independent reader (exiftool).
#include "dialogs/startup_manager_win.h"
#include "resources/resource.h"
#include "shell/startup_link_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/link_readers.h"
#include "tests/win/test_support.h"

namespace {

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

    std::string folder_, link_, program_;
    Settings settings_;
};

// The stored choice shows in the radios; Close stores and applies what they
// hold, leaving one link at most; Cancel changes nothing.
TEST_F(StartupManager, CloseStoresAndAppliesTheChoiceCancelChangesNothing) {
    const struct {
        const char* what;
        uint32_t stored;  // with a link when Automatic
        int radio;        // clicked before closing; 0 none
        int button;
        uint32_t wantStored;  // the link is there with Automatic only
    } cases[] = {
        {"Automatic creates", kStartupManual, IDC_STARTUP_AUTOMATIC, IDC_BUTTON1,
         kStartupAutomatic},
        {"Automatic rewrites the one link", kStartupAutomatic, 0, IDC_BUTTON1, kStartupAutomatic},
        {"Manual deletes", kStartupAutomatic, IDC_STARTUP_MANUAL, IDC_BUTTON1, kStartupManual},
        {"Manual with nothing to delete", kStartupManual, 0, IDC_BUTTON1, kStartupManual},
        {"neither checked means Automatic", 0, 0, IDC_BUTTON1, kStartupAutomatic},
        {"Cancel keeps the link and the setting", kStartupAutomatic, IDC_STARTUP_MANUAL,
         IDC_CANCELBUTTON, kStartupAutomatic},
        {"Cancel creates nothing", kStartupManual, IDC_STARTUP_AUTOMATIC, IDC_CANCELBUTTON,
         kStartupManual},
        {"an unknown value shows neither", 7, 0, IDC_CANCELBUTTON, 7},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        DeleteFileA(link_.c_str());
        // Cancel must leave even a link that disagrees with the setting alone.
        if (c.stored == kStartupAutomatic) applyStartupOption(nullptr, 7);
        settings_.StartupOptions = c.stored;
        const bool ok = c.button == IDC_BUTTON1, link = c.wantStored == kStartupAutomatic;
        const INT_PTR result =
            runDriven([&] { return openStartupManager(nullptr, settings_); },
                      [&](HWND box) {
                          EXPECT_EQ(IsDlgButtonChecked(box, IDC_STARTUP_MANUAL),
                                    UINT(c.stored == kStartupManual));
                          EXPECT_EQ(IsDlgButtonChecked(box, IDC_STARTUP_AUTOMATIC),
                                    UINT(c.stored == kStartupAutomatic));
                          if (c.radio) clickItem(box, c.radio);
                          clickItem(box, c.button);
                      });
        EXPECT_EQ(result, ok ? 1 : 0);
        EXPECT_EQ(settings_.StartupOptions, c.wantStored);
        EXPECT_EQ(countLinks(folder_), link ? 1 : 0);
        if (link) expectStartupLink(link_, program_, ok ? "/UPDATE" : "");
    }
}

TEST_F(StartupManager, ShortcutIntoAMissingFolderReportsFailure) {
    EXPECT_TRUE(FAILED(createShortcut(program_, folder_ + "no such folder\\Heralder.lnk",
                                      "Quenmark Heralder", "")));
}

}  // namespace
