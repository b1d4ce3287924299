// Windows releases by version number. The tests are nested the way the
// releases came out: each later release that the version reaches replaces the
// code and name found so far, together with any service pack suffix, and a
// release's service packs are only looked at while it is the latest reached.
// Windows 8.1 keeps the name "Windows 8", and 5.2 (XP x64, Server 2003) passes
// every XP service pack test, so it reads "Windows XP SP3": both are the names
// the program has always shown.
#include "app/platform.h"

#include <algorithm>

#include "base/crt_text.h"

namespace {

struct Release {
    uint32_t major;
    uint32_t minor;
    uint32_t code;
    const char* name;
    uint32_t servicePacks;  // " SP1" to " SPn" are looked for
};

constexpr Release kReleases[] = {
    {5, 1, 12, "Windows XP", 3}, {6, 0, 14, "Windows Vista", 2}, {6, 1, 15, "Windows 7", 1},
    {6, 2, 16, "Windows 8", 0},  {6, 3, 17, "Windows 8", 0},     {10, 0, 18, "Windows 10", 0},
};

constexpr uint32_t kWindows11 = 19;
constexpr int32_t kFirstWindows11Build = 22000;

}  // namespace

bool isVersionAtLeast(const std::optional<OsVersion>& version, uint32_t major, uint32_t minor,
                      uint32_t servicePack) {
    if (!version) return false;
    if (version->major != major) return version->major > major;
    if (version->minor != minor) return version->minor > minor;
    return version->servicePackMajor >= servicePack;
}

Platform platformFromVersion(const std::optional<OsVersion>& version,
                             const std::function<std::string()>& currentBuild) {
    Platform found{0, "Windows (unknown version)"};
    std::string suffix;
    for (const Release& release : kReleases) {
        if (!isVersionAtLeast(version, release.major, release.minor, 0)) break;
        found = {release.code, release.name};
        suffix.clear();
        for (uint32_t sp = 1; sp <= release.servicePacks; ++sp) {
            if (isVersionAtLeast(version, release.major, release.minor, sp))
                suffix = " SP" + std::to_string(sp);
        }
    }
    if (found.code == 18 && currentBuild && atoiLike(currentBuild()) >= kFirstWindows11Build)
        found = {kWindows11, "Windows 11"};
    found.name += suffix;
    return found;
}

bool isPlatformSelected(uint32_t code, const uint32_t* selector) {
    if (!selector) return false;
    if (*selector == kPlatformsAllKnown) return code >= 7 && code <= kWindows11;
    if (*selector == kPlatformsXpOrLater) return code >= 12 && code <= kWindows11;
    for (int i = 0; i < kMaxPlatformList && selector[i] != 0; ++i) {
        if (selector[i] == code) return true;
    }
    return false;
}
