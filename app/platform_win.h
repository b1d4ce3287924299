#pragma once
// Which Windows this is, and whether the program runs on it. The version comes
// from RtlGetVersion, which compatibility shims do not lie to.
#include <cstdint>
#include <string>

#include "base/win_headers.h"

inline constexpr uint32_t kPlatformsAllKnown = 0xFFFFFFFF;   // codes 7 to 19
inline constexpr uint32_t kPlatformsXpOrLater = 0xFFFFFFFE;  // codes 12 to 19

// 0 unknown, 12 XP, 14 Vista, 15 7, 16 8, 17 8.1, 18 10, 19 11. With name,
// also the platform's name and service pack ("Windows XP SP3").
uint32_t getPlatformCode(std::string* name = nullptr);
// selector: 0, kPlatformsAllKnown, kPlatformsXpOrLater, or a zero-terminated
// list of at most 20 codes.
bool isPlatformSupported(const uint32_t* selector);
// The modal "not compatible" dialog (template 9992) for productName.
INT_PTR showIncompatiblePlatformBox(HWND owner, const char* productName);
