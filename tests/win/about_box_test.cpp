// The About box under Wine: its texts and title font, Escape ignored, and the
// staff's Shift action through the main window's command, read back from the
// clipboard.
#include <gtest/gtest.h>

#include <optional>
#include <regex>
#include <string>

#include "app/app_win.h"
#include "app/main_window_win.h"
#include "dialogs/about_box_win.h"
#include "resources/resource.h"
#include "settings/settings.h"
#include "shell/sound_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/test_support.h"
#include "ui/dialog_win.h"

namespace {

bool isGuidText(const std::string& text) {
    static const std::regex guid("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}");
    return std::regex_match(text, guid);
}

class AboutBox : public SettingsTest {
  protected:
    void SetUp() override { mute_ = setSoundMute(1); }
    void TearDown() override {
        setSoundMute(mute_);
        SettingsTest::TearDown();
    }
    uint32_t mute_ = 0;
};

TEST_F(AboutBox, ShowsNameVersionAndNoticeAndIgnoresEscape) {
    for (uint32_t soft : {0u, 1u}) {
        settings_.SoftButtons = soft;
        const INT_PTR result = runDriven(
            [&] { return openAboutBox(nullptr, settings_); },
            [&](HWND box) {
                EXPECT_EQ(windowText(box), "About");
                EXPECT_EQ(itemText(box, IDC_ABOUT_NAME), "Quenmark Heralder");
                const std::string text = itemText(box, IDC_ABOUT_TEXT);
                EXPECT_EQ(text.rfind("Version 17.0a (Revision 2)\n\nCopyright (C) ", 0), 0u)
                    << text;
                EXPECT_EQ(text.find('%'), std::string::npos) << text;
                EXPECT_EQ(itemText(box, IDC_BUTTON1), "OK");
                const LOGFONTA font = fontOf(GetDlgItem(box, IDC_ABOUT_NAME));
                EXPECT_STREQ(font.lfFaceName, "Times New Roman");
                EXPECT_EQ(font.lfHeight, 24);
                EXPECT_EQ(font.lfWeight, FW_BOLD);
                RECT r;
                GetWindowRect(box, &r);
                EXPECT_NEAR(r.left + r.right, GetSystemMetrics(SM_CXSCREEN), 1);
                saveWindowScreenshot(box, "about_soft" + std::to_string(soft));

                pressKey(box, VK_ESCAPE);
                pumpDialog(box, 100);
                EXPECT_TRUE(IsWindowVisible(box));
                clickItem(box, IDC_BUTTON1);
            });
        EXPECT_EQ(result, 1);
    }
}

// The command as the menu gives it: only with Shift held does the clipboard
// get a GUID, after the box has closed, and a new one each time.
TEST_F(AboutBox, ShiftPutsAFreshGuidOnTheClipboardAfterTheBoxCloses) {
    TestMainWindow main;
    ASSERT_TRUE(main.hwnd());
    auto about = [&](bool shift) {
        std::string duringBox;
        runDriven(
            [&] {
                std::optional<HeldKey> held;
                if (shift) held.emplace(VK_SHIFT);
                return SendMessageA(main.hwnd(), WM_COMMAND, IDM_ABOUT, 0);
            },
            [&](HWND box) {
                duringBox = clipboardText();
                clickItem(box, IDC_BUTTON1);
            });
        return duringBox;
    };
    ASSERT_TRUE(copyTextToClipboard(nullptr, "before"));
    EXPECT_EQ(about(false), "before");
    EXPECT_EQ(clipboardText(), "before");
    EXPECT_EQ(about(true), "before");
    const std::string first = clipboardText();
    EXPECT_TRUE(isGuidText(first)) << first;
    about(true);
    EXPECT_TRUE(isGuidText(clipboardText())) << clipboardText();
    EXPECT_NE(clipboardText(), first);
}

}  // namespace
