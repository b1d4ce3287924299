#pragma once
// The program's own message box: every message, question and warning the user
// may switch off goes through one engine that builds a small modal dialog from a
// MessageBoxSpec. Results: 6 first button, 7 No, 2 Cancel or Escape.
#include <cstdint>
#include <string>
#include <string_view>

#include "base/win_headers.h"

inline constexpr int kResultFirst = 6;
inline constexpr int kResultNo = 7;
inline constexpr int kResultCancel = 2;

void showMessage(HWND owner, std::string_view text);
int askYesNoCancel(HWND owner, std::string_view text);
int askYesNo(HWND owner, std::string_view text);
// The "once" operations: flag is the setting that says whether the box is still
// wanted; with 0 nothing is shown (the questions answer Yes), otherwise it takes
// the final state of "Show me this message again next time.".
void showMessageOnce(HWND owner, std::string_view text, uint32_t& flag);
bool askYesNoOnce(HWND owner, std::string_view text, uint32_t& flag);
bool askYesNoOnceTitled(HWND owner, std::string_view text, std::string_view title,
                        uint32_t& flag);

// A string resource of the program; the fixed error text when it is missing.
std::string loadResString(UINT id);
