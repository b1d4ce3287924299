// The message boxes opened for real from their templates and driven as a user
// would. Where each part goes and how the box grows with its text are checked
// natively.
#include "resources/resource.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/test_support.h"
#include "ui/message_box_win.h"
#include "ui/res_string_win.h"

namespace {

constexpr char kText[] = "The update document has been read.";

// Whether a box appeared while open() ran, script playing against it.
bool withBox(const std::function<void()>& open, const DialogDriver::Script& script) {
    DialogDriver driver(script);
    open();
    return driver.ran();
}

// What the user sees of a control: "" when it is absent or hidden.
std::string shownText(HWND box, int id) {
    HWND item = GetDlgItem(box, id);
    return item && IsWindowVisible(item) ? windowText(item) : "";
}

uint32_t onceFlag = 1;

// Set up as showMessage's box but without the title bit; a sound that cannot
// be found stays silent and changes nothing else.
int untitledWithMissingSound(HWND, std::string_view text) {
    MessageBoxSpec request;
    request.style = kMbStandard | kMbButton1Text | kMbSound;
    request.text = text;
    request.button1Text = "Dismiss";
    request.iconId = IDI_HERALDER;
    request.soundModule = GetModuleHandleA(nullptr);
    request.soundName = "NOSUCHSOUND";
    showMessageBox(nullptr, request);
    return request.result;
}

// Each operation builds its own box: caption, buttons and the "show again"
// box, and gives the answer of a way of closing it (Enter and Escape on the
// three-button question are checked with every window). The "show again"
// box, unticked, switches the once operations off: no box any more, and the
// question answers Yes.
TEST(MessageBoxes, EachOperationShowsItsButtonsAndAnswers) {
    const struct {
        const char* name;
        std::function<int()> open;  // the answer; -1 for none
        const char* caption;        // "": no title bar
        const char* buttons[3];     // first, No, Cancel
        bool showAgain, untick;
        int press, result;  // press: the button clicked; 0: Escape
    } cases[] = {
        // clang-format off
        {"showMessage", [] { return showMessage(nullptr, kText), -1; }, "Message",
            {"Dismiss", "", ""}, false, false, IDC_BUTTON1, -1},
        {"askYesNoCancel", [] { return askYesNoCancel(nullptr, kText); }, "Message",
            {"Yes", "No", "Cancel"}, false, false, IDC_NOBUTTON, 7},
        {"askYesNo", [] { return askYesNo(nullptr, kText); }, "Message",
            {"Yes", "No", ""}, false, false, 0, 2},
        {"showMessageOnce", [] { return showMessageOnce(nullptr, kText, onceFlag = 1), -1; },
            "Message", {"Ok", "", ""}, true, true, IDC_BUTTON1, -1},
        {"askYesNoOnce", [] { return int(askYesNoOnce(nullptr, kText, onceFlag = 1)); },
            "Message", {"Yes", "No", ""}, true, true, IDC_NOBUTTON, 0},
        {"askYesNoOnce ticked", [] { return int(askYesNoOnce(nullptr, kText, onceFlag = 5)); },
            "Message", {"Yes", "No", ""}, true, false, IDC_BUTTON1, 1},
        {"askYesNoOnceTitled",
            [] { return int(askYesNoOnceTitled(nullptr, kText, "Remove it", onceFlag = 1)); },
            "Remove it", {"Yes", "No", ""}, true, true, IDC_BUTTON1, 1},
        {"untitled", [] { return untitledWithMissingSound(nullptr, kText); }, "",
            {"Dismiss", "", ""}, false, false, IDC_BUTTON1, 6},
        // clang-format on
    };
    const int ids[] = {IDC_BUTTON1, IDC_NOBUTTON, IDC_CANCELBUTTON};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const INT_PTR result =
            runDriven([&] { return INT_PTR(c.open()); },
                      [&](HWND box) {
                          EXPECT_EQ((GetWindowLongA(box, GWL_STYLE) & WS_CAPTION) == WS_CAPTION,
                                    *c.caption != 0);
                          EXPECT_EQ(windowText(box), c.caption);
                          EXPECT_EQ(itemText(box, IDC_MESSAGETEXT), kText);
                          for (int i = 0; i < 3; ++i)
                              EXPECT_EQ(shownText(box, ids[i]), c.buttons[i]) << i;
                          EXPECT_EQ(!shownText(box, IDC_CHECKBOX1).empty(), c.showAgain);
                          EXPECT_EQ(!shownText(box, IDC_NOTE1).empty(), c.showAgain);
                          if (c.untick) clickItem(box, IDC_CHECKBOX1);
                          c.press ? clickItem(box, c.press) : pressKey(box, VK_ESCAPE);
                      });
        EXPECT_EQ(result, c.result);
        if (c.showAgain) EXPECT_EQ(onceFlag, c.untick ? 0u : 1u);
        if (!c.untick) continue;
        bool answer = false;
        EXPECT_FALSE(withBox(
            [&] {
                showMessageOnce(nullptr, "Tip of the day", onceFlag);
                answer = askYesNoOnceTitled(nullptr, "Sure?", "Title", onceFlag);
            },
            [](HWND) {}));
        EXPECT_TRUE(answer);
    }
}

// While a box is open, Help opens the manual at the box's topic and leaves the
// box open, and a second box is refused with its result left as it was.
// Ctrl+C copies the message with CR LF line ends, as the system's box does.
TEST(MessageBoxes, WhileOpenHelpCallsBackCtrlCCopiesAndNoSecondBoxOpens) {
    static std::vector<std::pair<HWND, std::string>> calls;
    MessageBoxSpec request, second;
    request.style = kMbStandard | kMbHelpButton;
    request.text = "First line\nsecond line";
    request.helpText = "Help";
    request.helpArgument = "setup.html";
    request.helpCallback = [](HWND box, const char* topic) { calls.emplace_back(box, topic); };
    second.result = 42;
    HWND shown = nullptr;
    EXPECT_TRUE(withBox([&] { showMessageBox(nullptr, request); },
                        [&](HWND box) {
                            shown = box;
                            clickItem(box, IDC_HELPBUTTON);
                            showMessageBox(nullptr, second);
                            withKeyHeld(VK_CONTROL, [&] {
                                pressKey(box, 'C');
                                pumpDialog(box);
                            });
                            EXPECT_TRUE(IsWindowVisible(box));
                            pressKey(box, VK_ESCAPE);
                        }));
    EXPECT_EQ(calls, (std::vector<std::pair<HWND, std::string>>{{shown, "setup.html"}}));
    EXPECT_EQ(second.result, 42);
    EXPECT_EQ(clipboardText(), "First line\r\nsecond line");
}

TEST(ResString, LoadsTheTableAndReportsMissingStrings) {
    EXPECT_EQ(loadResString(109), "Quenmark Heralder");
    EXPECT_EQ(loadResString(4242), "String table error - this application may be damaged");
}

}  // namespace
