// The message boxes opened for real from their templates and driven like a
// user would: what each operation shows, what each way of closing returns, the
// "show again" round trip, the fitted layout, and the string loader.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/test_support.h"
#include "ui/message_box.h"

namespace {

constexpr char kShowAgain[] = "Show me this message again next time.";
constexpr char kShowAgainNote[] =
    "Note: if you disable this message now, you can re-enable it at any time through the "
    "Setup window.";
constexpr char kShortText[] = "The update document has been read.";

std::string longText() {
    std::string text;
    for (int i = 0; i < 60; ++i) text += "A longer message that has to wrap over many lines. ";
    return text;
}

bool contains(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

bool overlaps(const RECT& a, const RECT& b) {
    RECT both;
    return IntersectRect(&both, &a, &b) != FALSE;
}

// Runs open() while a driver plays script against the box it opens.
bool withBox(const std::function<void()>& open, const DialogDriver::Script& script) {
    DialogDriver driver(script);
    open();
    return driver.ran();
}

struct ButtonExpect {
    int id;
    const char* text;
};

struct ShowCase {
    const char* name;
    std::function<void()> open;
    std::string caption;  // empty: no title bar
    std::vector<ButtonExpect> buttons;
    bool showAgain;
};

void PrintTo(const ShowCase& c, std::ostream* os) {
    *os << c.name;
}

class MessageBoxShows : public testing::TestWithParam<ShowCase> {};

// Every operation: its exact texts and ids, buttons stacked down the right
// inside the box, the box centred on the screen, and a screenshot.
TEST_P(MessageBoxShows, TextsButtonsAndPlacement) {
    const ShowCase& c = GetParam();
    bool ran = withBox(c.open, [&](HWND box) {
        saveWindowScreenshot(box, std::string("msgbox_") + c.name);
        LONG style = GetWindowLongA(box, GWL_STYLE);
        EXPECT_EQ((style & WS_CAPTION) == WS_CAPTION, !c.caption.empty());
        if (!c.caption.empty()) {
            EXPECT_EQ(windowText(box), c.caption);
        }
        EXPECT_EQ(itemText(box, IDC_MESSAGETEXT), kShortText);

        RECT client;
        GetClientRect(box, &client);
        const RECT text = itemRect(box, IDC_MESSAGETEXT);
        EXPECT_TRUE(contains(client, text));
        std::vector<HWND> pushButtons;
        for (HWND b : childrenOfClass(box, "Button")) {
            LONG type = GetWindowLongA(b, GWL_STYLE) & BS_TYPEMASK;
            if (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON) pushButtons.push_back(b);
        }
        ASSERT_EQ(pushButtons.size(), c.buttons.size());
        RECT previous{};
        for (size_t i = 0; i < c.buttons.size(); ++i) {
            const ButtonExpect& want = c.buttons[i];
            EXPECT_EQ(GetDlgCtrlID(pushButtons[i]), want.id);
            EXPECT_EQ(itemText(box, want.id), want.text);
            RECT r = itemRect(box, want.id);
            EXPECT_TRUE(contains(client, r)) << want.text;
            EXPECT_FALSE(overlaps(r, text)) << want.text;
            if (i > 0) {
                EXPECT_EQ(r.left, previous.left) << want.text;
                EXPECT_GT(r.top, previous.bottom) << want.text;
            }
            previous = r;
        }
        EXPECT_EQ(GetFocus(), GetDlgItem(box, IDC_BUTTON1));

        HWND check = GetDlgItem(box, IDC_CHECKBOX1);
        EXPECT_EQ(check != nullptr, c.showAgain);
        if (check) {
            EXPECT_EQ(windowText(check), kShowAgain);
            EXPECT_TRUE(isChecked(box, IDC_CHECKBOX1));
            EXPECT_EQ(itemText(box, IDC_NOTE1), kShowAgainNote);
            RECT checkRect = itemRect(box, IDC_CHECKBOX1), note = itemRect(box, IDC_NOTE1);
            EXPECT_GT(note.top, checkRect.bottom);
            EXPECT_TRUE(contains(client, note));
        }

        RECT window;
        GetWindowRect(box, &window);
        EXPECT_NEAR((window.left + window.right) / 2, GetSystemMetrics(SM_CXSCREEN) / 2, 1);
        EXPECT_NEAR((window.top + window.bottom) / 2, GetSystemMetrics(SM_CYSCREEN) / 2, 1);
        pressKey(box, VK_ESCAPE);
    });
    EXPECT_TRUE(ran);
}

uint32_t onceFlag = 1;

void openPlainBox() {
    MessageBoxSpec spec;
    spec.style = kMbStandard | kMbButton1Text;
    spec.text = kShortText;
    spec.button1Text = "Close";
    spec.iconId = IDI_HERALDER;
    showMessageBox(nullptr, spec);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Operations, MessageBoxShows,
    testing::Values(
        ShowCase{"showMessage", [] { showMessage(nullptr, kShortText); },
                 "Message", {{1, "Dismiss"}}, false},
        ShowCase{"askYesNoCancel", [] { askYesNoCancel(nullptr, kShortText); },
                 "Message", {{1, "Yes"}, {7, "No"}, {2, "Cancel"}}, false},
        ShowCase{"askYesNo", [] { askYesNo(nullptr, kShortText); },
                 "Message", {{1, "Yes"}, {7, "No"}}, false},
        ShowCase{"showMessageOnce", [] { showMessageOnce(nullptr, kShortText, onceFlag = 1); },
                 "Message", {{1, "Ok"}}, true},
        ShowCase{"askYesNoOnce", [] { askYesNoOnce(nullptr, kShortText, onceFlag = 1); },
                 "Message", {{1, "Yes"}, {7, "No"}}, true},
        ShowCase{"askYesNoOnceTitled",
                 [] { askYesNoOnceTitled(nullptr, kShortText, "Remove it", onceFlag = 1); },
                 "Remove it", {{1, "Yes"}, {7, "No"}}, true},
        ShowCase{"untitled", openPlainBox, "", {{1, "Close"}}, false}),
    [](const testing::TestParamInfo<ShowCase>& info) { return std::string(info.param.name); });
// clang-format on

using Action = std::function<void(HWND)>;
Action click(int id) {
    return [id](HWND box) { clickItem(box, id); };
}
Action key(UINT vk) {
    return [vk](HWND box) { pressKey(box, vk); };
}

struct ResultCase {
    const char* name;
    std::function<int()> ask;
    Action action;
    int expected;
};

TEST(MessageBoxes, EachWayOfClosingGivesItsResult) {
    const ResultCase cases[] = {
        {"Yes", [] { return askYesNoCancel(nullptr, "Go on?"); }, click(1), 6},
        {"No", [] { return askYesNoCancel(nullptr, "Go on?"); }, click(7), 7},
        {"Cancel", [] { return askYesNoCancel(nullptr, "Go on?"); }, click(2), 2},
        {"Escape", [] { return askYesNoCancel(nullptr, "Go on?"); }, key(VK_ESCAPE), 2},
        {"Enter", [] { return askYesNoCancel(nullptr, "Go on?"); }, key(VK_RETURN), 6},
        {"askYesNo Escape", [] { return askYesNo(nullptr, "Go on?"); }, key(VK_ESCAPE), 2},
        {"askYesNo No", [] { return askYesNo(nullptr, "Go on?"); }, click(7), 7},
        {"Dismiss",
         [] {
             MessageBoxSpec spec;
             spec.style = kMbStandard | kMbTitle | kMbButton1Text;
             spec.button1Text = "Dismiss";
             showMessageBox(nullptr, spec);
             return spec.result;
         },
         click(1), 6},
        // A sound that cannot be found stays silent and changes nothing else.
        {"missing sound",
         [] {
             MessageBoxSpec spec;
             spec.style = kMbStandard | kMbSound;
             spec.soundModule = GetModuleHandleA(nullptr);
             spec.soundName = "NOSUCHSOUND";
             showMessageBox(nullptr, spec);
             return spec.result;
         },
         key(VK_ESCAPE), 2},
    };
    for (const ResultCase& c : cases) {
        int result = -1;
        EXPECT_TRUE(withBox([&] { result = c.ask(); }, c.action)) << c.name;
        EXPECT_EQ(result, c.expected) << c.name;
    }
}

struct OnceCase {
    const char* name;
    bool untick;
    Action close;
    bool expectedAnswer;
    uint32_t expectedFlag;
};

TEST(MessageBoxes, OnceQuestionsStoreTheCheckBoxAndAnswerOnlyYes) {
    const OnceCase cases[] = {
        {"Yes kept", false, click(1), true, 1},
        {"Yes unticked", true, click(1), true, 0},
        {"No unticked", true, click(7), false, 0},
        {"Escape", false, key(VK_ESCAPE), false, 1},
    };
    for (const OnceCase& c : cases) {
        uint32_t flag = 5;
        bool answer = !c.expectedAnswer;
        bool ran = withBox([&] { answer = askYesNoOnce(nullptr, "Delete it?", flag); },
                           [&](HWND box) {
                               if (c.untick) clickItem(box, IDC_CHECKBOX1);
                               c.close(box);
                           });
        EXPECT_TRUE(ran) << c.name;
        EXPECT_EQ(answer, c.expectedAnswer) << c.name;
        EXPECT_EQ(flag, c.expectedFlag) << c.name;
    }
}

TEST(MessageBoxes, UntickedMessageIsNotShownAgain) {
    uint32_t flag = 1;
    EXPECT_TRUE(withBox([&] { showMessageOnce(nullptr, "Tip of the day", flag); },
                        [](HWND box) {
                            clickItem(box, IDC_CHECKBOX1);
                            clickItem(box, IDC_BUTTON1);
                        }));
    EXPECT_EQ(flag, 0u);
    EXPECT_FALSE(withBox([&] { showMessageOnce(nullptr, "Tip of the day", flag); },
                         [](HWND box) { clickItem(box, IDC_BUTTON1); }));
    bool answer = false;
    EXPECT_FALSE(withBox([&] { answer = askYesNoOnceTitled(nullptr, "Sure?", "Title", flag); },
                         [](HWND box) { clickItem(box, 7); }));
    EXPECT_TRUE(answer);
    EXPECT_EQ(flag, 0u);
}

struct Geometry {
    RECT window{}, client{}, text{}, lastButton{}, note{};
};

Geometry measureOnceBox(const char* shot, const std::string& text, HFONT font = nullptr) {
    Geometry g;
    MessageBoxSpec spec;
    spec.style = kMbStandard | kMbTitle | kMbNoButton | kMbCancelButton | kMbCheckBox1 | kMbNote1 |
                 (font ? uint32_t{kMbTextFont} : 0u);
    spec.text = text;
    spec.textFont = font;
    spec.noText = "No";
    spec.cancelText = "Cancel";
    spec.checkTexts[0] = kShowAgain;
    spec.notes[0] = kShowAgainNote;
    withBox([&] { showMessageBox(nullptr, spec); },
            [&](HWND box) {
                GetWindowRect(box, &g.window);
                GetClientRect(box, &g.client);
                g.text = itemRect(box, IDC_MESSAGETEXT);
                g.lastButton = itemRect(box, IDC_CANCELBUTTON);
                g.note = itemRect(box, IDC_NOTE1);
                saveWindowScreenshot(box, std::string("msgbox_layout_") + shot);
                clickItem(box, IDC_BUTTON1);
            });
    return g;
}

TEST(MessageBoxes, LongTextGrowsTheBoxDownwardShortTextLeavesRoomForButtons) {
    const Geometry shortBox = measureOnceBox("short", kShortText);
    const Geometry longBox = measureOnceBox("long", longText());
    for (const Geometry* g : {&shortBox, &longBox}) {
        EXPECT_TRUE(contains(g->client, g->lastButton));
        EXPECT_TRUE(contains(g->client, g->note));
        EXPECT_GE(g->note.top, g->text.top);
    }
    // Raised to fit three buttons, yet what follows starts below the text itself.
    EXPECT_GE(shortBox.text.bottom, shortBox.lastButton.bottom);
    EXPECT_LT(shortBox.note.top, shortBox.text.bottom);

    EXPECT_EQ(longBox.window.right - longBox.window.left,
              shortBox.window.right - shortBox.window.left);
    EXPECT_GT(longBox.text.bottom - longBox.text.top,
              4 * (shortBox.text.bottom - shortBox.text.top));
    EXPECT_GE(longBox.note.top, longBox.text.bottom);
    EXPECT_GT(longBox.window.bottom - longBox.window.top,
              shortBox.window.bottom - shortBox.window.top);
}

TEST(MessageBoxes, OwnFontMeasuresTheTextInThatFont) {
    HFONT big = CreateFontA(-40, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Arial");
    ASSERT_TRUE(big);
    std::string text;
    for (int i = 0; i < 8; ++i) text += "Several words that wrap. ";
    const Geometry plain = measureOnceBox("font_plain", text);
    const Geometry large = measureOnceBox("font_large", text, big);
    EXPECT_GT(large.text.bottom - large.text.top, 2 * (plain.text.bottom - plain.text.top));
    EXPECT_GE(large.note.top, large.text.bottom);
    DeleteObject(big);
}

struct HelpLog {
    HWND box = nullptr;
    std::string argument;
    int calls = 0;
} helpLog;

void recordHelp(HWND box, const char* argument) {
    helpLog.box = box;
    helpLog.argument = argument;
    ++helpLog.calls;
}

TEST(MessageBoxes, HelpCallsBackWithATopicAndKeepsTheBoxOpen) {
    for (const char* topic : {"setup.html", ""}) {
        helpLog = {};
        MessageBoxSpec spec;
        spec.style = kMbStandard | kMbHelpButton;
        spec.helpText = "Help";
        spec.helpArgument = topic;
        spec.helpCallback = recordHelp;
        HWND seen = nullptr;
        withBox([&] { showMessageBox(nullptr, spec); },
                [&](HWND box) {
                    seen = box;
                    clickItem(box, IDC_HELPBUTTON);
                    EXPECT_TRUE(IsWindowVisible(box));
                    pressKey(box, VK_ESCAPE);
                });
        EXPECT_EQ(spec.result, 2);
        EXPECT_EQ(helpLog.calls, *topic ? 1 : 0) << topic;
        if (*topic) {
            EXPECT_EQ(helpLog.box, seen);
            EXPECT_EQ(helpLog.argument, topic);
        }
    }
}

TEST(MessageBoxes, OnlyOneBoxAtATimeAndFailedBoxesLeaveTheResult) {
    MessageBoxSpec second;
    second.result = 42;
    HWND owner = CreateWindowExA(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200,
                                 100, nullptr, nullptr, nullptr, nullptr);
    ASSERT_TRUE(owner);
    MessageBoxSpec first;
    first.style = kMbStandard | kMbTitle;
    withBox([&] { showMessageBox(owner, first); },
            [&](HWND box) {
                EXPECT_FALSE(IsWindowEnabled(owner));
                showMessageBox(nullptr, second);
                clickItem(box, IDC_BUTTON1);
            });
    EXPECT_EQ(first.result, 6);
    EXPECT_EQ(first.owner, owner);
    EXPECT_EQ(second.result, 42);
    EXPECT_TRUE(IsWindowEnabled(owner));
    DestroyWindow(owner);

    // An owner that no longer exists: no box, result untouched, and the engine
    // is free again afterwards.
    MessageBoxSpec orphan;
    orphan.result = 42;
    EXPECT_FALSE(withBox([&] { showMessageBox(owner, orphan); },
                         [](HWND box) { clickItem(box, IDC_BUTTON1); }));
    EXPECT_EQ(orphan.result, 42);
    int answer = 0;
    EXPECT_TRUE(withBox([&] { answer = askYesNo(nullptr, "Still there?"); }, click(1)));
    EXPECT_EQ(answer, 6);
}

TEST(ResString, LoadsTheTableAndReportsMissingStrings) {
    const struct {
        UINT id;
        const char* text;
    } cases[] = {
        {IDS_APP_NAME, "Quenmark Heralder"},
        {IDS_SHOW_AGAIN_NOTE, kShowAgainNote},
        {4242, "String table error - this application may be damaged"},
    };
    for (const auto& c : cases) EXPECT_EQ(loadResString(c.id), c.text) << c.id;
}

}  // namespace
