// System information under Wine, gathered from a data folder the test lays out.
#include "base/file_io.h"
#include "dialogs/system_info_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings_file.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/test_support.h"

namespace {

class SystemInfo : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(ensureDataFolders());
        TearDown();
    }
    void TearDown() override {
        for (const std::string& file : files_) DeleteFileA(file.c_str());
    }
    const std::string settingsFile_ = getUserDataPath(kSettingsFileName);
    const std::vector<std::string> files_ = {
        settingsFile_, backupPathFor(settingsFile_), backupPathFor(backupPathFor(settingsFile_)),
        getUserHeralderPath("Heralder.lst"), getUserDataPath("SysInfoLedger.ini")};
};

TEST_F(SystemInfo, GathersWhatTheAgentItselfWouldUse) {
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(writeSettingsFile(Settings{}, settingsFile_));
    ASSERT_TRUE(writeFileBytes(files_[3], {"5\r\n7\r\n5\r\n"}));
    // 4.2c: minor 2 in bits 10-14, major 4 in bits 5-9, letter c.
    WritePrivateProfileStringA("Ledger", "VersionNumber", "2178", files_[4].c_str());
    WritePrivateProfileStringA("Ledger", "PatchLevel", "3", files_[4].c_str());
    WritePrivateProfileStringA("Notes", "Colour", "red", files_[4].c_str());

    Settings record;
    record.ApplicationPath = "C:\\Program Files\\Heralder\\";
    const SystemFacts f = gatherSystemFacts(record, 18, "Windows 10");
    EXPECT_EQ(f.settingsFile.path, settingsFile_);
    EXPECT_TRUE(f.settingsFile.exists && f.settingsBackup.exists && f.settingsOlderBackup.exists);
    EXPECT_EQ(f.settingsFile.size, readFileBytes(settingsFile_).value_or("").size());
    EXPECT_EQ(f.seenEntries, 2u);
    // Found once, with its one section that names a version.
    std::vector<std::string> ledger;
    for (const ProductFacts& p : f.products)
        if (p.file == files_[4]) ledger.push_back(p.section + " " + p.version);
    EXPECT_EQ(ledger, std::vector<std::string>{"Ledger 4.2c (revision 3)"});
}

// Opened as the menu opens it; Copy takes the whole report, not a selection.
TEST_F(SystemInfo, MenuCommandShowsTheReportAndCopyTakesAllOfIt) {
    TestMainWindow main;
    main.record().SoftButtons = 1;
    std::string shown;
    runDriven([&] { return SendMessageA(main.hwnd(), WM_COMMAND, IDM_SYSTEM_INFO, 0); },
              [&](HWND box) {
                  HWND edit = GetDlgItem(box, IDC_SYSINFO_REPORT);
                  shown = windowText(edit);
                  EXPECT_TRUE(GetWindowLongA(edit, GWL_STYLE) & ES_READONLY);
                  SendMessageA(edit, EM_SETSEL, 0, 5);
                  clickItem(box, IDC_SYSINFO_COPY);
                  EXPECT_EQ(clipboardText(), shown);
                  EXPECT_TRUE(IsWindowVisible(box));
                  clickItem(box, IDC_BUTTON1);
              });
    EXPECT_TRUE(shown.starts_with("Quenmark Heralder system information\r\n")) << shown;
    EXPECT_NE(shown.find("17.0a (Revision 2)"), std::string::npos);
}

}  // namespace
