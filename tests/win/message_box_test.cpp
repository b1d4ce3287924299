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

constexpr char kText[] = "The update document has been read.";

// Runs open() while a driver plays script against the box it opens; false
// when no box appeared.
bool withBox(const std::function<void()>& open, const DialogDriver::Script& script) {
    DialogDriver driver(script);
    open();
    return driver.ran();
}

bool inside(HWND box, const RECT& inner) {
    RECT client;
    GetClientRect(box, &client);
    return inner.left >= 0 && inner.top >= 0 && inner.right <= client.right &&
           inner.bottom <= client.bottom;
}

using Action = std::function<void(HWND)>;
Action click(int id) {
    return [id](HWND box) { clickItem(box, id); };
}
Action key(UINT vk) {
    return [vk](HWND box) { pressKey(box, vk); };
}

uint32_t onceFlag = 1;

// Set up as showMessage's box but without a title bar; a sound that cannot be
// found stays silent and changes nothing else.
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

// The user reads these texts, so every operation is checked in full, then
// closed with its first button.
TEST(MessageBoxes, EachOperationShowsItsTextsButtonsAndTitle) {
    using Buttons = std::vector<std::pair<int, const char*>>;
    const Buttons yesNo{{1, "Yes"}, {7, "No"}};
    const struct {
        const char* name;
        std::function<void()> open;
        const char* caption;  // "": no title bar
        Buttons buttons;
        bool showAgain;
    } cases[] = {
        // clang-format off
        {"showMessage", [] { showMessage(nullptr, kText); }, "Message", {{1, "Dismiss"}}, false},
        {"askYesNoCancel", [] { askYesNoCancel(nullptr, kText); }, "Message",
            {{1, "Yes"}, {7, "No"}, {2, "Cancel"}}, false},
        {"askYesNo", [] { askYesNo(nullptr, kText); }, "Message", yesNo, false},
        {"showMessageOnce", [] { showMessageOnce(nullptr, kText, onceFlag = 1); }, "Message",
            {{1, "Ok"}}, true},
        {"askYesNoOnce", [] { askYesNoOnce(nullptr, kText, onceFlag = 1); }, "Message", yesNo, true},
        {"askYesNoOnceTitled", [] { askYesNoOnceTitled(nullptr, kText, "Remove it", onceFlag = 1); },
            "Remove it", yesNo, true},
        {"untitled", [] { untitledWithMissingSound(nullptr, kText); }, "", {{1, "Dismiss"}}, false},
        // clang-format on
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_TRUE(withBox(c.open, [&](HWND box) {
            saveWindowScreenshot(box, std::string("msgbox_") + c.name);
            EXPECT_EQ((GetWindowLongA(box, GWL_STYLE) & WS_CAPTION) == WS_CAPTION, *c.caption != 0);
            EXPECT_EQ(windowText(box), c.caption);
            EXPECT_EQ(itemText(box, IDC_MESSAGETEXT), kText);

            size_t pushButtons = 0;
            for (HWND b : childrenOfClass(box, "Button"))
                pushButtons += (GetWindowLongA(b, GWL_STYLE) & BS_TYPEMASK) <= BS_DEFPUSHBUTTON;
            EXPECT_EQ(pushButtons, c.buttons.size());
            RECT previous{};
            for (const auto& [id, text] : c.buttons) {
                EXPECT_EQ(itemText(box, id), text);
                const RECT r = itemRect(box, id);
                EXPECT_TRUE(inside(box, r)) << text;
                EXPECT_TRUE(id == 1 || (r.left == previous.left && r.top > previous.bottom))
                    << text;
                previous = r;
            }
            // The text control is raised so that three buttons fit beside it.
            const RECT text = itemRect(box, IDC_MESSAGETEXT);
            EXPECT_GE(text.bottom, previous.bottom);

            HWND check = GetDlgItem(box, IDC_CHECKBOX1);
            ASSERT_EQ(check != nullptr, c.showAgain);
            if (check) {
                EXPECT_EQ(windowText(check), "Show me this message again next time.");
                EXPECT_EQ(itemText(box, IDC_NOTE1),
                          "Note: if you disable this message now, you can re-enable it at any time "
                          "through the Setup window.");
                // Placed after the measured text, not after the raised control.
                const RECT note = itemRect(box, IDC_NOTE1);
                EXPECT_LT(itemRect(box, IDC_CHECKBOX1).top, text.bottom);
                EXPECT_GT(note.top, itemRect(box, IDC_CHECKBOX1).bottom);
                EXPECT_TRUE(inside(box, note));
            }

            RECT window;
            GetWindowRect(box, &window);
            EXPECT_NEAR((window.left + window.right) / 2, GetSystemMetrics(SM_CXSCREEN) / 2, 1);
            EXPECT_NEAR((window.top + window.bottom) / 2, GetSystemMetrics(SM_CYSCREEN) / 2, 1);
            clickItem(box, IDC_BUTTON1);
        }));
    }
}

TEST(MessageBoxes, EachWayOfClosingGivesItsResult) {
    const struct {
        const char* name;
        int (*ask)(HWND, std::string_view);
        Action action;
        int expected;
    } cases[] = {
        {"Yes", askYesNoCancel, click(1), 6},
        {"No", askYesNoCancel, click(7), 7},
        {"Cancel", askYesNoCancel, click(2), 2},
        {"Escape", askYesNoCancel, key(VK_ESCAPE), 2},
        {"Enter", askYesNoCancel, key(VK_RETURN), 6},
        {"askYesNo Escape", askYesNo, key(VK_ESCAPE), 2},
        {"Dismiss", untitledWithMissingSound, click(1), 6},
    };
    for (const auto& c : cases) {
        int result = -1;
        EXPECT_TRUE(withBox([&] { result = c.ask(nullptr, "Go on?"); }, c.action)) << c.name;
        EXPECT_EQ(result, c.expected) << c.name;
    }
}

TEST(MessageBoxes, OnceOperationsStoreTheCheckBoxAndStopShowingWhenUnticked) {
    const struct {
        const char* name;
        bool untick;
        Action close;
        bool expectedAnswer;
        uint32_t expectedFlag;
    } cases[] = {
        {"Yes kept", false, click(1), true, 1},
        {"Yes unticked", true, click(1), true, 0},
        {"No unticked", true, click(7), false, 0},
        {"Escape", false, key(VK_ESCAPE), false, 1},
    };
    for (const auto& c : cases) {
        uint32_t flag = 5;
        bool answer = !c.expectedAnswer;
        EXPECT_TRUE(withBox([&] { answer = askYesNoOnce(nullptr, "Delete it?", flag); },
                            [&](HWND box) {
                                if (c.untick) clickItem(box, IDC_CHECKBOX1);
                                c.close(box);
                            }))
            << c.name;
        EXPECT_EQ(answer, c.expectedAnswer) << c.name;
        EXPECT_EQ(flag, c.expectedFlag) << c.name;
        if (flag) continue;
        // Switched off: no box any more, and the question answers Yes.
        EXPECT_FALSE(withBox(
            [&] {
                showMessageOnce(nullptr, "Tip of the day", flag);
                answer = askYesNoOnceTitled(nullptr, "Sure?", "Title", flag);
            },
            click(7)))
            << c.name;
        EXPECT_TRUE(answer && flag == 0) << c.name;
    }
}

TEST(MessageBoxes, LongTextGrowsTheBoxDownward) {
    std::string longText;
    for (int i = 0; i < 60; ++i) longText += "A longer message that has to wrap over many lines. ";
    RECT window[2], text[2], note[2];
    for (int i = 0; i < 2; ++i) {
        uint32_t flag = 1;
        withBox([&] { askYesNoOnce(nullptr, i ? longText : kText, flag); },
                [&](HWND box) {
                    GetWindowRect(box, &window[i]);
                    text[i] = itemRect(box, IDC_MESSAGETEXT);
                    note[i] = itemRect(box, IDC_NOTE1);
                    EXPECT_TRUE(inside(box, note[i]));
                    if (i) saveWindowScreenshot(box, "msgbox_long_text");
                    clickItem(box, IDC_BUTTON1);
                });
    }
    EXPECT_EQ(window[1].right - window[1].left, window[0].right - window[0].left);
    EXPECT_GT(text[1].bottom - text[1].top, 4 * (text[0].bottom - text[0].top));
    EXPECT_GE(note[1].top, text[1].bottom);
    EXPECT_GT(window[1].bottom - window[1].top, window[0].bottom - window[0].top);
}

// Help opens the manual at the box's topic and leaves the box open; without a
// topic the button does nothing.
TEST(MessageBoxes, HelpCallsBackWithItsTopic) {
    static std::vector<std::pair<HWND, std::string>> calls;
    for (const char* topic : {"setup.html", ""}) {
        calls.clear();
        MessageBoxSpec request;
        request.style = kMbStandard | kMbHelpButton;
        request.helpText = "Help";
        request.helpArgument = topic;
        request.helpCallback = [](HWND box, const char* argument) {
            calls.emplace_back(box, argument);
        };
        HWND shown = nullptr;
        withBox([&] { showMessageBox(nullptr, request); },
                [&](HWND box) {
                    shown = box;
                    clickItem(box, IDC_HELPBUTTON);
                    EXPECT_TRUE(IsWindowVisible(box));
                    pressKey(box, VK_ESCAPE);
                });
        EXPECT_EQ(request.result, 2);
        if (*topic)
            EXPECT_EQ(calls, (std::vector<std::pair<HWND, std::string>>{{shown, topic}}));
        else
            EXPECT_TRUE(calls.empty());
    }
}

TEST(MessageBoxes, OnlyOneBoxAtATimeAndFailedBoxesLeaveTheResult) {
    MessageBoxSpec orphan, second;
    orphan.result = second.result = 42;
    // An owner that no longer exists: no box, and the engine is free again.
    HWND gone = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    DestroyWindow(gone);
    EXPECT_FALSE(withBox([&] { showMessageBox(gone, orphan); }, click(1)));
    EXPECT_EQ(orphan.result, 42);

    int answer = 0;
    EXPECT_TRUE(withBox([&] { answer = askYesNo(nullptr, "Go on?"); },
                        [&](HWND box) {
                            showMessageBox(nullptr, second);
                            clickItem(box, IDC_BUTTON1);
                        }));
    EXPECT_EQ(answer, 6);
    EXPECT_EQ(second.result, 42);
}

TEST(ResString, LoadsTheTableAndReportsMissingStrings) {
    EXPECT_EQ(loadResString(109), "Quenmark Heralder");
    EXPECT_EQ(loadResString(4242), "String table error - this application may be damaged");
}

}  // namespace
