// The multiple-items prompt under Wine, from its template, on a real seen list
// and Startup folder. When it comes is checked by the run's own tests.
#include "base/file_io.h"
#include "feed/seen_list.h"
#include "notify/prompt_box_win.h"
#include "resources/resource.h"
#include "shell/startup_link_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/link_readers.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_items.h"
#include "tests/win/test_support.h"

namespace {

// Types text into the count as keys would, replacing what it held.
void typeCount(HWND dialog, const char* text) {
    HWND edit = GetDlgItem(dialog, IDC_PROMPT_COUNT);
    SetFocus(edit);
    SendMessageA(edit, EM_SETSEL, 0, -1);
    SendMessageA(edit, WM_CHAR, VK_BACK, 1);
    for (const char* c = text; *c; ++c) SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(*c), 1);
}

class MultipleItemPrompt : public testing::Test {
  protected:
    void TearDown() override {
        DeleteFileA(list_.c_str());
        DeleteFileA(link_.c_str());
    }

    std::string list_ = scratchFolder("heralder_prompt_test") + "Heralder.lst";
    std::string link_ = startupLinkPath();
};

// The count of waiting items goes into the explanation; OK waits for a choice
// (Enter and Escape are checked with every window), and each choice is carried
// out. The threshold shows as stored, even out of range from a hand-edited
// file or a feed, and stays until the user types another; typed ones are
// bounded.
TEST_F(MultipleItemPrompt, EachChoiceIsCarriedOutAndTheThresholdKept) {
    const struct {
        int choice, goOn;
        const char* seenAfter;
        uint32_t startupAfter;  // the link is there with Automatic only
        uint32_t countBefore;
        const char* typed;  // nullptr: left as it opened
        uint32_t countAfter;
    } cases[] = {
        {IDC_PROMPT_SHOW_NOW, 1, "3001\r\n", kStartupAutomatic, 6, "1", 2},
        {IDC_PROMPT_NONE_TODAY, 0, "3001\r\n", kStartupAutomatic, 6, "40000", 32760},
        // Every item of the list, the one seen already and the filtered out too.
        {IDC_PROMPT_IGNORE_ALL, 0, "3001\r\n3001\r\n3002\r\n3003\r\n3004\r\n", kStartupAutomatic, 6,
         "15", 15},
        {IDC_PROMPT_DISABLE, 0, "3001\r\n", kStartupManual, 40000, nullptr, 40000},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.choice);
        DeleteFileA(list_.c_str());
        applyStartupOption(nullptr, kStartupAutomatic);
        ASSERT_TRUE(pathExists(link_));
        Settings record;
        record.StartupOptions = kStartupAutomatic;
        record.PromptMultipleCount = c.countBefore;
        SeenList seen(list_);
        std::vector<UpdateItem> items = sampleAlerts(4);
        items[3].type = ItemType::Version;
        seen.markItemSeen(items[0]);
        const INT_PTR goOn = runDriven(
            [&] { return showMultipleItemPrompt(nullptr, items, 27, record, seen); },
            [&](HWND box) {
                EXPECT_NE(itemText(box, IDC_PROMPT_TEXT).find("there are 27 items pending"),
                          std::string::npos);
                EXPECT_EQ(itemText(box, IDC_PROMPT_COUNT), std::to_string(c.countBefore));
                if (c.typed) typeCount(box, c.typed);
                EXPECT_FALSE(itemEnabled(box, IDC_BUTTON1));
                clickItem(box, c.choice);
                clickItem(box, IDC_BUTTON1);
            });
        EXPECT_EQ(goOn, c.goOn);
        EXPECT_EQ(readFileBytes(list_).value_or(""), c.seenAfter);
        EXPECT_EQ(record.StartupOptions, c.startupAfter);
        EXPECT_EQ(pathExists(link_), c.startupAfter == kStartupAutomatic);
        EXPECT_EQ(record.PromptMultipleCount, c.countAfter);
    }
}

}  // namespace
