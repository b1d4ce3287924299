// Release codes and names by version number, and the three kinds of release
// selector.
#include <gtest/gtest.h>

#include "app/platform.h"

TEST(Platform, CodeAndNameByVersion) {
    const struct {
        std::optional<OsVersion> version;
        const char* build;  // the registry's CurrentBuild
        uint32_t code;
        const char* name;
    } cases[] = {
        {std::nullopt, "22631", 0, "Windows (unknown version)"},
        {OsVersion{5, 0, 4}, "", 0, "Windows (unknown version)"},
        {OsVersion{5, 1, 0}, "", 12, "Windows XP"},
        {OsVersion{5, 1, 1}, "", 12, "Windows XP SP1"},
        {OsVersion{5, 1, 2}, "", 12, "Windows XP SP2"},
        {OsVersion{5, 1, 3}, "", 12, "Windows XP SP3"},
        {OsVersion{5, 1, 4}, "", 12, "Windows XP SP3"},
        {OsVersion{5, 2, 0}, "", 12, "Windows XP SP3"},
        {OsVersion{6, 0, 0}, "", 14, "Windows Vista"},
        {OsVersion{6, 0, 2}, "", 14, "Windows Vista SP2"},
        {OsVersion{6, 1, 0}, "", 15, "Windows 7"},
        {OsVersion{6, 1, 1}, "", 15, "Windows 7 SP1"},
        {OsVersion{6, 2, 0}, "", 16, "Windows 8"},
        {OsVersion{6, 3, 0}, "22000", 17, "Windows 8"},
        {OsVersion{10, 0, 0}, "19045", 18, "Windows 10"},
        {OsVersion{10, 0, 0}, "", 18, "Windows 10"},
        {OsVersion{10, 0, 0}, "21999", 18, "Windows 10"},
        {OsVersion{10, 0, 0}, "22000", 19, "Windows 11"},
        {OsVersion{10, 0, 0}, " 26100\n", 19, "Windows 11"},
        {OsVersion{11, 0, 3}, "30000", 19, "Windows 11"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        int asked = 0;
        const Platform p = platformFromVersion(c.version, [&] {
            ++asked;
            return std::string(c.build);
        });
        EXPECT_EQ(p.code, c.code);
        EXPECT_EQ(p.name, c.name);
        EXPECT_EQ(asked, c.code >= 18 ? 1 : 0);
    }
}

TEST(Platform, Selectors) {
    const uint32_t none[] = {0};
    const uint32_t vistaAnd10[] = {14, 18, 0, 12};
    uint32_t twentyOne[21];
    for (uint32_t i = 0; i < 21; ++i) twentyOne[i] = 100 + i;  // no terminator within 20
    twentyOne[20] = 12;
    const struct {
        const char* name;
        const uint32_t* selector;
        std::vector<uint32_t> accepted;  // among 0 to 20 and 120
    } cases[] = {
        {"null", nullptr, {}},
        {"empty list", none, {}},
        {"all known", &kPlatformsAllKnown, {7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19}},
        {"XP or later", &kPlatformsXpOrLater, {12, 13, 14, 15, 16, 17, 18, 19}},
        {"list stops at 0", vistaAnd10, {14, 18}},
        {"at most 20 read", twentyOne, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<uint32_t> accepted;
        for (uint32_t code = 0; code <= 20; ++code)
            if (isPlatformSelected(code, c.selector)) accepted.push_back(code);
        EXPECT_EQ(accepted, c.accepted);
    }
    EXPECT_TRUE(isPlatformSelected(119, twentyOne));
    EXPECT_FALSE(isPlatformSelected(kPlatformsAllKnown, vistaAnd10));
}
