#pragma once
// The program's own message box: every message, question and warning the user
// may switch off goes through one engine that builds a small modal dialog from a
// MessageBoxSpec. Results: 6 first button, 7 No, 2 Cancel or Escape.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/win_headers.h"

inline constexpr int kResultFirst = 6;
inline constexpr int kResultNo = 7;
inline constexpr int kResultCancel = 2;

// Style bits of MessageBoxSpec::style.
enum MessageBoxStyle : uint32_t {
    kMbStandard = 0x00000021,  // set by every operation; changes nothing
    kMbButton1Text = 0x00000002,
    kMbNoButton = 0x00000004,
    kMbCancelButton = 0x00000008,
    kMbHelpButton = 0x00000010,
    kMbTextFont = 0x00000400,
    kMbCheckBox1 = 0x00000800,
    kMbCheckBox2 = 0x00001000,
    kMbCheckBox3 = 0x00002000,
    kMbSound = 0x00004000,
    kMbNote1 = 0x00008000,
    kMbNote2 = 0x00010000,
    kMbNote3 = 0x00020000,
    kMbTitle = 0x00040000,
};

using MessageBoxHelpCallback = void (*)(HWND box, const char* argument);

// What one box shows; the caller value-initialises it and sets what it needs.
// result and checkStates are written back when the box closes.
struct MessageBoxSpec {
    HWND owner = nullptr;  // set by the engine
    uint32_t style = 0;
    std::string text;
    std::string button1Text;
    std::string noText;
    std::string cancelText;
    std::string helpText;
    std::string helpArgument;
    MessageBoxHelpCallback helpCallback = nullptr;
    int result = 0;
    UINT iconId = 0;
    HFONT textFont = nullptr;
    std::array<std::string, 3> checkTexts;
    std::array<int, 3> checkStates{};
    std::array<std::string, 3> notes;
    std::string title;
    HMODULE soundModule = nullptr;
    const char* soundName = nullptr;  // a name or MAKEINTRESOURCE id
};

// Runs the modal box and redraws the owner afterwards. Only one box is open at
// a time: while one is open, another call returns at once and leaves that
// descriptor's result as the caller set it, as does a box that cannot be created.
void showMessageBox(HWND owner, MessageBoxSpec& request);

void showMessage(HWND owner, std::string_view text);
int askYesNoCancel(HWND owner, std::string_view text);
int askYesNo(HWND owner, std::string_view text);
// The "once" operations: flag is the setting that says whether the box is still
// wanted; with 0 nothing is shown (the questions answer Yes), otherwise it takes
// the final state of "Show me this message again next time.".
void showMessageOnce(HWND owner, std::string_view text, uint32_t& flag);
bool askYesNoOnce(HWND owner, std::string_view text, uint32_t& flag);
bool askYesNoOnceTitled(HWND owner, std::string_view text, std::string_view title, uint32_t& flag);
