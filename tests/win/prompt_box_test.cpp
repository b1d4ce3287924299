// The multiple-items prompt under Wine, from its template: its texts, the
// count field, OK waiting for a choice, Escape ignored, and each answer carried
// out on a real seen list and Startup folder. The threshold is checked by the
// run's own tests and in heralder.exe (prompt_process_test).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/file_io.h"
#include "feed/seen_list.h"
#include "notify/prompt_box_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings.h"
#include "shell/startup_link_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/link_readers.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

namespace {

constexpr char kExplanationBefore[] =
    "This is an Quenmark Heralder notification.\n\nIn most cases, Heralder will show you one or "
    "two notifications per week.\n\nAt the moment, there are ";
constexpr char kExplanationAfter[] =
    " items pending - possibly because this is the first time Heralder has run, or because it "
    "hasn't run recently.\n\nAs this may result in multiple notification windows appearing, we "
    "wanted to let you know what's happening and provide you with options to manage this "
    "feature.\n\nYou can view these items now, view them later or not view them at all. You can "
    "also disable the Heralder application, should you not wish to see any notifications in the "
    "future. Please select one of the following options.";

const struct {
    int id;
    const char* text;
} kChoiceTexts[] = {
    {IDC_PROMPT_SHOW_NOW,
     "Show the pending items now: When you click on Ok, each of the pending items will appear in "
     "a window, one after another. For each item, click on OK to proceed to the next window, or "
     "click on Cancel to prevent any further windows from appearing today."},
    {IDC_PROMPT_NONE_TODAY,
     "Don't show any pending items today: When you click on Ok, nothing further will happen, and "
     "Heralder will go to sleep. This window will appear again tomorrow, or the next time your "
     "computer starts up."},
    {IDC_PROMPT_IGNORE_ALL,
     "Don't show any of the currently pending items ever: All the currently pending items will "
     "be ignored. You'll see notifications for any new items that appear in the future. (The "
     "ignored items will be listed in Heralder's application window, should you wish to view "
     "them manually.}"},
    {IDC_PROMPT_DISABLE,
     "Disable all automatic notifications from Heralder: You'll never see this window or any "
     "notifications from Heralder again, unless you manually run Heralder and select Go from its "
     "File menu to have it check for notifications."},
};

constexpr char kCountLabel[] =
    "In future, show me this prompt if at least this many items are pending.";

// Types text into the count as keys would, replacing what it held.
void typeCount(HWND dialog, const char* text) {
    HWND edit = GetDlgItem(dialog, IDC_PROMPT_COUNT);
    SetFocus(edit);
    SendMessageA(edit, EM_SETSEL, 0, -1);
    SendMessageA(edit, WM_CHAR, VK_BACK, 1);
    for (const char* c = text; *c; ++c) SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(*c), 1);
}

std::vector<UpdateItem> alerts(int count, int32_t firstNumber = 3001) {
    std::vector<UpdateItem> items(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        items[i].type = ItemType::Alert;
        items[i].number = firstNumber + i;
        items[i].title = "Alert " + std::to_string(i + 1);
    }
    return items;
}

class MultipleItemPrompt : public SettingsTest {
  protected:
    void SetUp() override {
        DeleteFileA(list_.c_str());
        settings_.CurrentTransactionDate = "11-22-2026";
    }
    void TearDown() override {
        DeleteFileA(list_.c_str());
        DeleteFileA(link_.c_str());
        SettingsTest::TearDown();
    }

    std::string seenFile() { return readFileBytes(list_).value_or(""); }

    std::string list_ = scratchFolder("heralder_prompt_test") + "Heralder.lst";
    std::string link_ = startupLinkPath();
};

// Help opens the manual and leaves the box open.
TEST_F(MultipleItemPrompt, ShowsItsTextsAndOkWaitsForAChoiceWhileEscapeDoesNothing) {
    for (uint32_t soft : {0u, 2u}) {
        SCOPED_TRACE(soft);
        Settings record;
        record.SoftButtons = soft;
        record.PromptMultipleCount = 9;
        SeenList seen(list_);
        std::vector<UpdateItem> items = alerts(3);
        DialogDriver driver([&](HWND box) {
            EXPECT_EQ(windowText(box), "Multiple Items Pending");
            EXPECT_EQ(GetWindowLongA(box, GWL_STYLE) & (WS_CAPTION | WS_SYSMENU), WS_CAPTION);
            EXPECT_EQ(itemText(box, IDC_PROMPT_TEXT),
                      std::string(kExplanationBefore) + "27" + kExplanationAfter);
            for (const auto& c : kChoiceTexts) {
                EXPECT_EQ(itemText(box, c.id), c.text);
                EXPECT_EQ(IsDlgButtonChecked(box, c.id), BST_UNCHECKED);
            }
            EXPECT_EQ(windowText(GetNextWindow(GetDlgItem(box, IDC_PROMPT_DISABLE), GW_HWNDNEXT)),
                      kCountLabel);
            EXPECT_EQ(itemText(box, IDC_BUTTON1), "OK");
            EXPECT_EQ(itemText(box, IDC_HELPBUTTON), "Help");
            EXPECT_FALSE(GetDlgItem(box, IDC_CANCELBUTTON));
            // The user's own threshold, not the template's 6, within 2..32760.
            EXPECT_EQ(itemText(box, IDC_PROMPT_COUNT), "9");
            EXPECT_EQ(upDownRange(box, IDC_PROMPT_COUNT_UPDOWN), std::make_pair(2, 32760));

            EXPECT_FALSE(itemEnabled(box, IDC_BUTTON1));
            pressKey(box, VK_ESCAPE);
            pumpDialog(box, 50);
            // What Enter sends; OK is disabled, so nothing may come of it.
            PostMessageA(box, WM_COMMAND, IDOK, 0);
            pumpDialog(box, 50);
            EXPECT_TRUE(IsWindowVisible(box));
            clickItem(box, IDC_PROMPT_NONE_TODAY);
            EXPECT_TRUE(itemEnabled(box, IDC_BUTTON1));
            pressKey(box, VK_ESCAPE);
            pumpDialog(box, 50);
            EXPECT_TRUE(IsWindowVisible(box));
            saveWindowScreenshot(box, "prompt_soft" + std::to_string(soft));
            expectHelpOpensTopic(box, "NOTIFICATION", record);
            clickItem(box, IDC_BUTTON1);
        });
        EXPECT_EQ(showMultipleItemPrompt(nullptr, items, 27, record, seen), 0);
        EXPECT_TRUE(driver.ran());
        // Nothing marked today: the same items wait for the next run.
        EXPECT_EQ(seenFile(), "");
        EXPECT_EQ(record.PromptMultipleCount, 9u);
    }
}

TEST_F(MultipleItemPrompt, EachChoiceIsCarriedOut) {
    const struct {
        int choice;
        int goOn;
        const char* seenAfter;
        uint32_t startupAfter;
        bool linkAfter;
    } cases[] = {
        {IDC_PROMPT_SHOW_NOW, 1, "3001\r\n", kStartupAutomatic, true},
        {IDC_PROMPT_NONE_TODAY, 0, "3001\r\n", kStartupAutomatic, true},
        // Every item of the list, the one seen already and the filtered out too.
        {IDC_PROMPT_IGNORE_ALL, 0, "3001\r\n3001\r\n3002\r\n3003\r\n3004\r\n", kStartupAutomatic,
         true},
        {IDC_PROMPT_DISABLE, 0, "3001\r\n", kStartupManual, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.choice);
        DeleteFileA(list_.c_str());
        applyStartupOption(nullptr, kStartupAutomatic);
        ASSERT_TRUE(pathExists(link_));
        Settings record;
        record.StartupOptions = kStartupAutomatic;
        SeenList seen(list_);
        std::vector<UpdateItem> items = alerts(4);
        items[3].type = ItemType::Version;
        seen.markItemSeen(items[0]);
        DialogDriver driver([&](HWND box) {
            clickItem(box, c.choice);
            clickItem(box, IDC_BUTTON1);
        });
        EXPECT_EQ(showMultipleItemPrompt(nullptr, items, 3, record, seen), c.goOn);
        EXPECT_EQ(seenFile(), c.seenAfter);
        EXPECT_EQ(record.StartupOptions, c.startupAfter);
        EXPECT_EQ(pathExists(link_), c.linkAfter);
    }
}

// A count outside the range, from a hand-edited file or a feed, shows as it
// is stored and stays until the user types another; typed ones are bounded.
TEST_F(MultipleItemPrompt, CountShowsTheStoredValueAndKeepsTypedOnesInRange) {
    const struct {
        uint32_t before;
        const char* typed;  // nullptr: left as it opened
        uint32_t stored;
    } cases[] = {{6, "1", 2}, {6, "40000", 32760}, {6, "15", 15},          {6, "2", 2},
                 {6, "", 2},  {1, nullptr, 1},     {40000, nullptr, 40000}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed ? c.typed : std::to_string(c.before));
        Settings record;
        record.PromptMultipleCount = c.before;
        SeenList seen(list_);
        std::vector<UpdateItem> items = alerts(2);
        DialogDriver driver([&](HWND box) {
            EXPECT_EQ(itemText(box, IDC_PROMPT_COUNT), std::to_string(c.before));
            if (c.typed) typeCount(box, c.typed);
            clickItem(box, IDC_PROMPT_SHOW_NOW);
            clickItem(box, IDC_BUTTON1);
        });
        EXPECT_EQ(showMultipleItemPrompt(nullptr, items, 6, record, seen), 1);
        EXPECT_EQ(record.PromptMultipleCount, c.stored);
    }
}

}  // namespace
