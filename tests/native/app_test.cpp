// Start-up's portable decisions: the command line, the machine policy, the
// platform, the quiet wait, and where the remembered rectangle puts the window.
#include <gtest/gtest.h>

#include <tuple>

#include "app/command_line.h"
#include "app/machine_policy.h"
#include "app/platform.h"
#include "app/quiet_wait.h"
#include "app/window_edges.h"
#include "resources/resource.h"

namespace {

using enum StartupAction;
using Steps = std::vector<StartupStep>;

const Steps kUpdate = {
    {SetUpdateMode}, {Send, IDM_GO}, {Send, IDM_SHOW_NOTIFICATIONS}, {Post, IDM_EXIT}};
const Steps kStartup = {{Send, IDM_STARTUP_MANAGER}, {Post, IDM_EXIT}};
const Steps kInitConfig = {{Send, IDM_INITIAL_CONFIG}, {Post, IDM_EXIT}};

Steps join(Steps first, const Steps& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

auto edgesOf(Settings& record) {
    return std::tie(record.StickyWindowLeft, record.StickyWindowTop, record.StickyWindowRight,
                    record.StickyWindowBottom);
}

Settings withEdges(uint32_t left, uint32_t top, uint32_t right, uint32_t bottom) {
    Settings record;
    edgesOf(record) = std::tie(left, top, right, bottom);
    return record;
}

}  // namespace

TEST(CommandLine, SwitchesRowsAndPath) {
    const std::string longPath(300, 'p');
    const Steps forced = {{ResetInitConfig}, {Send, IDM_INITIAL_CONFIG}, {Post, IDM_EXIT}};
    const std::tuple<std::string, bool, std::optional<std::string>, Steps> cases[] = {
        {"", false, std::nullopt, {}},
        {"/UPDATE", true, std::nullopt, kUpdate},
        {"/STARTUP", true, std::nullopt, kStartup},
        {"/INITCONFIG", true, std::nullopt, kInitConfig},
        // Contains "/INITCONFIG" too: the sign-up runs twice, two Exits posted.
        {"/INITCONFIG/F", true, std::nullopt, join(kInitConfig, forced)},
        // Table order, not the order on the line.
        {"/STARTUP /UPDATE", true, std::nullopt, join(kUpdate, kStartup)},
        {"x/UPDATE/STARTUP", true, "x", join(kUpdate, kStartup)},
        {"/update", false, std::nullopt, {}},
        {"C:/dir/file", false, "C:", {}},
        {"C:\\feeds\\update.txt", false, "C:\\feeds\\update.txt", {}},
        {"C:\\feeds\\update.txt /UPDATE", true, "C:\\feeds\\update.txt ", kUpdate},
        {"   ", false, "   ", {}},
        {"\\server\\share\\x/UPDATER", true, "\\server\\share\\x", kUpdate},
        // The path buffer keeps 259 characters; a switch beyond them still counts.
        {longPath + "/STARTUP", true, longPath.substr(0, kMaxDocumentPath), kStartup},
        {longPath.substr(0, 100) + "/" + longPath, false, longPath.substr(0, 100), {}},
        {std::string("doc\0/UPDATE", 11), false, "doc", {}},
    };
    for (const auto& [line, hidden, path, steps] : cases) {
        const CommandLinePlan plan = interpretCommandLine(line);
        EXPECT_EQ(std::tie(plan.hidden, plan.documentPath, plan.steps),
                  std::tie(hidden, path, steps))
            << '"' << line << '"';
    }
}

// Only the daily run is switched off, and a run left with nothing to do ends at once.
TEST(MachinePolicy, UpdateCheckSwitchedOff) {
    // The command line, switched off, whether start-up goes on, the steps left.
    const std::tuple<std::string, bool, bool, Steps> cases[] = {
        {"/UPDATE", true, false, {}},
        {"/UPDATE", false, true, kUpdate},
        // A document with the switch would stay hidden with nobody to close it.
        {"C:\\feeds\\update.txt /UPDATE", true, false, {}},
        {"/STARTUP /UPDATE", true, true, kStartup},
        {"/INITCONFIG", true, true, kInitConfig},
        // The main window is the user asking: Go still works there.
        {"", true, true, {}},
        {"C:\\feeds\\update.txt", true, true, {}},
    };
    for (const auto& [line, disabled, goesOn, steps] : cases) {
        CommandLinePlan plan = interpretCommandLine(line);
        const bool hidden = plan.hidden;
        EXPECT_EQ(applyMachinePolicy(plan, MachinePolicy{disabled}), goesOn) << line << disabled;
        EXPECT_EQ(std::tie(plan.steps, plan.hidden), std::tie(steps, hidden)) << line << disabled;
    }
}

// The registry's CurrentBuild is asked for from Windows 10 on only.
TEST(Platform, CodeAndNameByVersion) {
    const std::tuple<std::optional<OsVersion>, const char*, uint32_t, const char*> cases[] = {
        {std::nullopt, "22631", 0, "Windows (unknown version)"},
        {OsVersion{5, 0, 4}, "", 0, "Windows (unknown version)"},
        {OsVersion{5, 1, 0}, "", 12, "Windows XP"},
        {OsVersion{5, 1, 1}, "", 12, "Windows XP SP1"},
        {OsVersion{5, 1, 4}, "", 12, "Windows XP SP3"},
        {OsVersion{5, 2, 0}, "", 12, "Windows XP SP3"},
        {OsVersion{6, 0, 0}, "", 14, "Windows Vista"},
        {OsVersion{6, 0, 2}, "", 14, "Windows Vista SP2"},
        {OsVersion{6, 1, 1}, "", 15, "Windows 7 SP1"},
        {OsVersion{6, 2, 0}, "", 16, "Windows 8"},
        {OsVersion{6, 3, 0}, "22000", 17, "Windows 8"},
        {OsVersion{10, 0, 0}, "", 18, "Windows 10"},
        {OsVersion{10, 0, 0}, "21999", 18, "Windows 10"},
        {OsVersion{10, 0, 0}, "22000", 19, "Windows 11"},
        {OsVersion{10, 0, 0}, " 26100\n", 19, "Windows 11"},
        {OsVersion{11, 0, 3}, "30000", 19, "Windows 11"},
    };
    for (const auto& [version, build, code, name] : cases) {
        int asked = 0;
        const Platform p =
            platformFromVersion(version, [&] { return ++asked, std::string(build); });
        EXPECT_EQ(std::tie(p.code, p.name, asked), std::tuple(code, name, code >= 18 ? 1 : 0))
            << name;
    }
}

TEST(Platform, Selectors) {
    const uint32_t none[] = {0};
    const uint32_t vistaAnd10[] = {14, 18, 0, 12};
    uint32_t twentyOne[21];
    for (uint32_t i = 0; i < 21; ++i) twentyOne[i] = 100 + i;  // no terminator within 20
    twentyOne[20] = 12;
    // The codes from 0 to 20 each selector accepts.
    const std::tuple<const char*, const uint32_t*, std::vector<uint32_t>> cases[] = {
        {"null", nullptr, {}},
        {"empty list", none, {}},
        {"all known", &kPlatformsAllKnown, {7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19}},
        {"XP or later", &kPlatformsXpOrLater, {12, 13, 14, 15, 16, 17, 18, 19}},
        {"list stops at 0", vistaAnd10, {14, 18}},
        {"at most 20 read", twentyOne, {}},
    };
    for (const auto& [name, selector, want] : cases) {
        std::vector<uint32_t> accepted;
        for (uint32_t code = 0; code <= 20; ++code)
            if (isPlatformSelected(code, selector)) accepted.push_back(code);
        EXPECT_EQ(accepted, want) << name;
    }
    EXPECT_TRUE(isPlatformSelected(119, twentyOne));
    EXPECT_FALSE(isPlatformSelected(kPlatformsAllKnown, vistaAnd10));
}

// Stored edges are unsigned: negative coordinates come back as huge numbers.
TEST(WindowEdges, RestoredPlacement) {
    constexpr uint32_t kNone = kNoWindowEdge;
    const struct {
        const char* name;
        uint32_t left, top, right, bottom;
        std::optional<WindowPlacement> want;  // on a 1024 x 768 screen
    } cases[] = {
        {"never saved", kNone, kNone, kNone, kNone, std::nullopt},
        {"one field unsaved", 10, 10, 500, kNone, std::nullopt},
        {"as stored", 100, 50, 600, 450, WindowPlacement{100, 50, 500, 400}},
        {"whole screen", 0, 0, 1024, 768, WindowPlacement{0, 0, 1024, 768}},
        {"raised to the minimum", 100, 50, 200, 100, WindowPlacement{100, 50, 360, 160}},
        {"cut at the screen's edge", 600, 500, 1500, 1200, WindowPlacement{600, 500, 424, 268}},
        {"pulled back from the right", 900, 700, 1000, 760, WindowPlacement{664, 608, 360, 160}},
        {"far off screen", 4000000, 3000000, 4000500, 3000400, WindowPlacement{664, 608, 360, 160}},
        {"right before left", 500, 400, 100, 50, WindowPlacement{500, 400, 360, 160}},
        {"negative start", uint32_t(-5), uint32_t(-20), 500, 300, WindowPlacement{0, 0, 505, 320}},
        {"negative start, wide", uint32_t(-300), 0, 2000, 100, WindowPlacement{0, 0, 1024, 160}},
        {"all negative", uint32_t(-900), uint32_t(-800), uint32_t(-500), uint32_t(-400),
         WindowPlacement{0, 0, 400, 400}},
        {"extremes", 0x80000000u, 0x80000000u, 0x7FFFFFFEu, 0x7FFFFFFEu,
         WindowPlacement{0, 0, 1024, 768}},
        {"largest start", 0x7FFFFFFEu, 0x7FFFFFFEu, 0x80000000u, 0x80000000u,
         WindowPlacement{664, 608, 360, 160}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(restoredWindowPlacement(withEdges(c.left, c.top, c.right, c.bottom), 1024, 768),
                  c.want)
            << c.name;
    // A screen smaller than the minimum keeps the window at its corner.
    EXPECT_EQ(restoredWindowPlacement(withEdges(50, 40, 250, 140), 320, 120),
              (WindowPlacement{0, 0, 360, 160}));
}

TEST(WindowEdges, StoredRectangleIsClippedToTheScreen) {
    const std::tuple<ScreenRect, uint32_t, uint32_t, uint32_t, uint32_t> cases[] = {
        {{100, 50, 600, 450}, 100, 50, 600, 450},
        {{-8, -8, 1032, 776}, 0, 0, 1024, 768},  // maximised frames overhang
        {{-500, -400, -100, -50}, 0, 0, uint32_t(-100), uint32_t(-50)},
    };
    for (const auto& [window, left, top, right, bottom] : cases) {
        Settings record;
        storeWindowEdges(record, window, 1024, 768);
        EXPECT_EQ(edgesOf(record), std::tie(left, top, right, bottom)) << left << "," << top;
    }
}

// Answers over time: the run shows its windows at the first answer that is not
// busy, waits a check between answers, and gives up after four hours of them
// (or when the session ends) without showing anything.
TEST(QuietWait, WaitsWhileBusyAndGivesUpAfterFourHours) {
    using S = UserNotificationState;
    const std::vector<S> busyForEver(300, S::PresentationMode),
        busyThenFree = {S::Busy, S::Direct3dFullScreen, S::QuietTime, S::PresentationMode,
                        S::AcceptsNotifications};
    // The answers (the last one repeats), the waits after which the session ends
    // (-1: never), whether the user was found free, the waits made.
    const std::tuple<const char*, std::vector<S>, int, bool, std::size_t> cases[] = {
        {"free at once", {S::AcceptsNotifications}, -1, true, 0},
        {"no answer", {S::Unknown}, -1, true, 0},
        {"locked, or an app", {S::NotPresent, S::App}, -1, true, 0},
        {"busy, then free", busyThenFree, -1, true, 4},
        {"busy for ever", busyForEver, -1, false, 240},
        {"busy until the session ends", busyForEver, 3, false, 3},
    };
    for (const auto& [name, answers, stopAfterWaits, wantFree, wantWaits] : cases) {
        std::size_t asked = 0;
        std::vector<uint32_t> waits;
        const bool free =
            waitUntilUserIsFree([&] { return answers[std::min(asked++, answers.size() - 1)]; },
                                [&](uint32_t ms) {
                                    waits.push_back(ms);
                                    return static_cast<int>(waits.size()) != stopAfterWaits;
                                });
        EXPECT_EQ(free, wantFree) << name;
        EXPECT_EQ(waits, std::vector<uint32_t>(wantWaits, 60000u)) << name;
    }
}
