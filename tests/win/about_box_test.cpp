// The About box under Wine: the version filled into its notice, and the
// staff's Shift action through the main window's command, read back from the
// clipboard. Its keys and looks are checked with every window (scale_test).
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

namespace {

bool isGuidText(const std::string& text) {
    static const std::regex guid("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}");
    return std::regex_match(text, guid);
}

using AboutBox = SettingsTest;

// The command as the menu gives it: only with Shift held does the clipboard
// get a GUID, after the box has closed, and a new one each time.
TEST_F(AboutBox, ShiftPutsAFreshGuidOnTheClipboardAfterTheBoxCloses) {
    const uint32_t mute = setSoundMute(1);
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
                // The version is filled into the notice's own words.
                const std::string text = itemText(box, IDC_ABOUT_TEXT);
                EXPECT_EQ(text.rfind("Version 17.0a (Revision 2)\n\nCopyright (C) ", 0), 0u);
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
    setSoundMute(mute);
}

}  // namespace
