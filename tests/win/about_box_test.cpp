// The About box under Wine. Its keys and looks are checked with every window
// (scale_test).
#include <regex>

#include "resources/resource.h"
#include "shell/sound_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/test_support.h"

namespace {

// The command as the menu gives it: only with Shift held does the clipboard
// get a GUID, after the box has closed, and a new one each time.
TEST(AboutBox, ShiftPutsAFreshGuidOnTheClipboardAfterTheBoxCloses) {
    const uint32_t mute = setSoundMute(1);
    TestMainWindow main;
    const std::regex guid("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}");
    ASSERT_TRUE(copyTextToClipboard(nullptr, "before"));
    std::string previous = "before";
    for (const bool shift : {false, true, true}) {
        runDriven(
            [&] {
                withKeyHeld(shift ? VK_SHIFT : 0,
                            [&] { SendMessageA(main.hwnd(), WM_COMMAND, IDM_ABOUT, 0); });
                return 0;
            },
            [&](HWND box) {
                EXPECT_EQ(clipboardText(), previous);
                EXPECT_TRUE(itemText(box, IDC_ABOUT_TEXT)
                                .starts_with("Version 17.0a (Revision 2)\n\nCopyright (C) "));
                clickItem(box, IDC_BUTTON1);
            });
        const std::string now = clipboardText();
        EXPECT_EQ(std::regex_match(now, guid), shift) << now;
        EXPECT_EQ(now != previous, shift) << now;
        previous = now;
    }
    setSoundMute(mute);
}

}  // namespace
