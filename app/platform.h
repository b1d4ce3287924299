#pragma once
// Which Windows release a version number stands for, and whether a release
// selector accepts it. Kept apart from the system calls so that every release,
// service pack and selector kind is tested on any machine.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

inline constexpr uint32_t kPlatformsAllKnown = 0xFFFFFFFF;   // codes 7 to 19
inline constexpr uint32_t kPlatformsXpOrLater = 0xFFFFFFFE;  // codes 12 to 19
inline constexpr int kMaxPlatformList = 20;

struct OsVersion {
    uint32_t major = 0;
    uint32_t minor = 0;
    uint32_t servicePackMajor = 0;
};

struct Platform {
    uint32_t code = 0;
    std::string name;  // with the service pack, e.g. "Windows XP SP3"
};

// True when version is known and is major.minor with at least servicePack, or
// any later major.minor.
bool isVersionAtLeast(const std::optional<OsVersion>& version, uint32_t major, uint32_t minor,
                      uint32_t servicePack);

// 0 unknown, 12 XP, 14 Vista, 15 7, 16 8, 17 8.1, 18 10, 19 11. currentBuild
// gives the build number text the registry holds; it is asked for only when
// the version says Windows 10, whose successor shares its version number.
Platform platformFromVersion(const std::optional<OsVersion>& version,
                             const std::function<std::string()>& currentBuild);

// selector points at kPlatformsAllKnown, at kPlatformsXpOrLater, or at a list
// of codes ended by 0 (at most kMaxPlatformList are read). Null selects nothing.
bool isPlatformSelected(uint32_t code, const uint32_t* selector);
