#pragma once
// The startup manager: the dialog that chooses between running Heralder by
// hand and at every logon, and the operation that makes the user's Startup
// folder agree with that choice.
#include <cstdint>
#include <string>

#include "base/win_headers.h"
#include "settings/settings.h"

inline constexpr uint32_t kStartupManual = 101;     // no shortcut
inline constexpr uint32_t kStartupAutomatic = 102;  // shortcut with "/UPDATE"

// Shows "StartupOptionsBox"; on Close stores StartupOptions and applies it.
// 1 for Close, 0 for Cancel. Writes no file: the main window saves later.
int openStartupManager(HWND owner, Settings& settings);
// Creates or deletes "Heralder.lnk" in the user's Startup folder to match
// option. Failures are silent; always 1.
int applyStartupOption(HWND owner, uint32_t option);
// A shell link at linkPath to target; the COM result of the last step.
HRESULT createShortcut(const std::string& target, const std::string& linkPath,
                       const std::string& description, const std::string& arguments);
