// The About box under Wine: its texts and title font, Escape ignored, and the
// staff's Shift action through the main window's command, read back from the
// clipboard.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <string>

#include "app/app_win.h"
#include "app/main_window_win.h"
#include "dialogs/about_box_win.h"
#include "notify/sound_win.h"
#include "resources/resource.h"
#include "settings/settings.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/test_support.h"
#include "ui/dialog_win.h"

namespace {

bool isGuidText(const std::string& text) {
    if (text.size() != 36) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        const char c = text[i];
        if (dash ? c != '-'
                 : !(std::isdigit(static_cast<unsigned char>(c)) || (c >= 'A' && c <= 'F')))
            return false;
    }
    return true;
}

void pumpFor(DWORD ms) {
    MSG msg;
    for (DWORD start = GetTickCount(); GetTickCount() - start < ms;) {
        if (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&msg);
            DispatchMessageA(&msg);
        } else {
            Sleep(5);
        }
    }
}

void setShift(bool down) {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_SHIFT] = down ? 0x80 : 0;
    keys[VK_LSHIFT] = down ? 0x80 : 0;
    SetKeyboardState(keys);
}

class AboutBox : public testing::Test {
  protected:
    void SetUp() override { mute_ = setSoundMute(1); }
    void TearDown() override {
        setSoundMute(mute_);
        setShift(false);
        settings() = saved_;
    }
    uint32_t mute_ = 0;
    Settings saved_ = settings();
};

TEST_F(AboutBox, ShowsNameVersionAndNoticeAndIgnoresEscape) {
    for (uint32_t soft : {0u, 1u}) {
        settings().SoftButtons = soft;
        DialogDriver driver([&](HWND box) {
            EXPECT_EQ(windowText(box), "About");
            EXPECT_EQ(itemText(box, IDC_ABOUT_NAME), "Quenmark Heralder");
            const std::string text = itemText(box, IDC_ABOUT_TEXT);
            EXPECT_EQ(text.rfind("Version 17.0a (Revision 2)\n\nCopyright (C) ", 0), 0u) << text;
            EXPECT_EQ(text.find('%'), std::string::npos) << text;
            EXPECT_EQ(itemText(box, IDC_BUTTON1), "OK");
            LOGFONTA font = {};
            GetObjectA(reinterpret_cast<HFONT>(
                           SendMessageA(GetDlgItem(box, IDC_ABOUT_NAME), WM_GETFONT, 0, 0)),
                       sizeof font, &font);
            EXPECT_STREQ(font.lfFaceName, "Times New Roman");
            EXPECT_EQ(font.lfHeight, 24);
            EXPECT_EQ(font.lfWeight, FW_BOLD);
            RECT r;
            GetWindowRect(box, &r);
            EXPECT_NEAR(r.left + r.right, GetSystemMetrics(SM_CXSCREEN), 1);
            saveWindowScreenshot(box, "about_soft" + std::to_string(soft));

            pressKey(box, VK_ESCAPE);
            pumpFor(100);
            EXPECT_TRUE(IsWindowVisible(box));
            clickItem(box, IDC_BUTTON1);
        });
        EXPECT_EQ(openAboutBox(nullptr), 1);
        EXPECT_TRUE(driver.ran());
    }
}

// The command as the menu gives it: only with Shift held does the clipboard
// get a GUID, and a new one each time.
TEST_F(AboutBox, ShiftPutsAFreshGuidOnTheClipboardAfterTheBoxCloses) {
    TestMainWindow main;
    HWND window = main.hwnd();
    ASSERT_TRUE(window);
    auto about = [&](bool shift) {
        std::string duringBox;
        DialogDriver driver([&](HWND box) {
            duringBox = clipboardText();
            clickItem(box, IDC_BUTTON1);
        });
        setShift(shift);
        SendMessageA(window, WM_COMMAND, IDM_ABOUT, 0);
        setShift(false);
        EXPECT_TRUE(driver.ran());
        return duringBox;
    };

    ASSERT_TRUE(copyTextToClipboard(nullptr, "before"));
    EXPECT_EQ(about(false), "before");
    EXPECT_EQ(clipboardText(), "before");

    EXPECT_EQ(about(true), "before");  // nothing happens until the box has closed
    const std::string first = clipboardText();
    EXPECT_TRUE(isGuidText(first)) << first;
    about(true);
    const std::string second = clipboardText();
    EXPECT_TRUE(isGuidText(second)) << second;
    EXPECT_NE(first, second);

}

}  // namespace
