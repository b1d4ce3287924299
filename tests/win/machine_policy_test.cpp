// The administrator's switch for the daily run, read from the registry of the
// test prefix: the reader against the value types an administrator may leave,
// then heralder.exe as a whole process with the switch on and off, and while
// another daily run holds its place.
#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

#include "app/daily_run_guard_win.h"
#include "app/machine_policy_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/loopback_server.h"
#include "tests/win/process_driver.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

namespace {

constexpr char kPolicyKey[] = "Software\\Policies\\Quenmark\\Heralder";
constexpr char kMainWindowClass[] = "QuenmarkHeralderApplication";

void clearPolicy() {
    RegDeleteKeyA(HKEY_LOCAL_MACHINE, kPolicyKey);
}

void setPolicyValue(DWORD type, const void* data, DWORD size) {
    ASSERT_EQ(
        RegSetKeyValueA(HKEY_LOCAL_MACHINE, kPolicyKey, "DisableUpdateCheck", type, data, size),
        ERROR_SUCCESS);
}

class MachinePolicyTest : public testing::Test {
  protected:
    void SetUp() override { clearPolicy(); }
    void TearDown() override {
        clearPolicy();
        clearUserData();
    }
};

}  // namespace

TEST_F(MachinePolicyTest, ReaderTakesOnlyANonZeroDword) {
    EXPECT_FALSE(readMachinePolicy().disableUpdateCheck) << "no key";
    const DWORD zero = 0, one = 1, two = 2;
    const unsigned long long wideOne = 1;
    const struct {
        const char* name;
        DWORD type;
        const void* data;
        DWORD size;
        bool disabled;
    } cases[] = {
        {"dword 1", REG_DWORD, &one, 4, true},      {"dword 0", REG_DWORD, &zero, 4, false},
        {"dword 2", REG_DWORD, &two, 4, true},      {"text 1", REG_SZ, "1", 2, false},
        {"qword 1", REG_QWORD, &wideOne, 8, false},
    };
    for (const auto& c : cases) {
        setPolicyValue(c.type, c.data, c.size);
        EXPECT_EQ(readMachinePolicy().disableUpdateCheck, c.disabled) << c.name;
        clearPolicy();
    }
}

// The administrator's switch, and another daily run under way (one waiting
// for a busy user, say), each end a daily run at once.
TEST_F(MachinePolicyTest, DailyRunEndsAtOnceWithoutTheNetworkOrAWindow) {
    if (testEnv("HERALDER_SOURCE_DIR").empty()) GTEST_SKIP() << "run through scripts/test_wine.sh";
    LoopbackServer server(testEnv("HERALDER_SOURCE_DIR") + "\\examples");
    ASSERT_TRUE(server.listening());
    const std::string program = testProgramFolder() + "heralder.exe";

    for (const char* reason : {"policy", "another daily run"}) {
        const DWORD one = 1;
        std::optional<DailyRunGuard> otherRun;
        if (reason == std::string("policy"))
            setPolicyValue(REG_DWORD, &one, sizeof one);
        else
            ASSERT_TRUE(otherRun.emplace().held());
        bool mainWindowSeen = false;
        const auto start = std::chrono::steady_clock::now();
        const ProcessRun off = runProcess(program, "/UPDATE", nullptr, 30000, [&](DWORD pid) {
            mainWindowSeen = mainWindowSeen || findProcessWindow(pid, kMainWindowClass);
        });
        const auto took = std::chrono::steady_clock::now() - start;
        ASSERT_TRUE(off.exited) << reason;
        EXPECT_EQ(off.exitCode, 0u) << reason;
        EXPECT_TRUE(off.windows.empty()) << reason;
        EXPECT_FALSE(mainWindowSeen) << reason;
        EXPECT_EQ(server.requests(), 0) << reason;
        EXPECT_LT(took, std::chrono::seconds(10)) << reason;
        clearPolicy();
    }

    // Without either the same command line is the usual daily run.
    const ProcessRun on = runProcess(program, "/UPDATE", nullptr, 60000);
    ASSERT_TRUE(on.exited);
    EXPECT_EQ(on.exitCode, 0u);
    EXPECT_GT(server.requests(), 0);
    EXPECT_FALSE(on.windows.empty());
}
