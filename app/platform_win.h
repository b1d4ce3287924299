#pragma once
// Which Windows this is, and whether the program runs on it. The version comes
// from RtlGetVersion, which compatibility shims do not lie to.
#include <cstdint>
#include <string>

#include "app/platform.h"
#include "base/win_headers.h"
#include "settings/settings.h"

// 0 unknown, 12 XP, 14 Vista, 15 7, 16 8, 17 8.1, 18 10, 19 11. With name,
// also the platform's name and service pack ("Windows XP SP3").
uint32_t getPlatformCode(std::string* name = nullptr);
// selector: &kPlatformsAllKnown, &kPlatformsXpOrLater, or a list of at most
// 20 codes ended by 0; null selects nothing.
bool isPlatformSupported(const uint32_t* selector);
// The modal "not compatible" dialog (template IDD_INCOMPATIBLE) for
// productName: 1 when the user chose the web page (opened in the browser that
// settings name), 2 when dismissed.
INT_PTR showIncompatiblePlatformBox(HWND owner, const char* productName, const Settings& settings);
