#pragma once
// The shortcut in the user's Startup folder that runs the daily job at logon.
// The startup manager, the first-run sign-up and the multiple-items prompt
// all make the folder agree with a StartupOptions value through here.
#include <cstdint>
#include <string>

#include "base/win_headers.h"

// Creates or deletes "Heralder.lnk" in the user's Startup folder to match
// option (kStartupManual or kStartupAutomatic). Failures are silent; always 1.
int applyStartupOption(HWND owner, uint32_t option);
// A shell link at linkPath to target; the COM result of the last step.
HRESULT createShortcut(const std::string& target, const std::string& linkPath,
                       const std::string& description, const std::string& arguments);
