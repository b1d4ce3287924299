// The running release as Wine reports it, and the "not compatible" box.
#include <gtest/gtest.h>

#include <cstdlib>

#include "app/platform_win.h"
#include "resources/resource.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/process_driver.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"
#include "ui/dpi_win.h"

namespace {

constexpr char kVersionKey[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

bool setCurrentBuild(const std::string& text) {
    return RegSetKeyValueA(HKEY_LOCAL_MACHINE, kVersionKey, "CurrentBuild", REG_SZ, text.c_str(),
                           static_cast<DWORD>(text.size() + 1)) == ERROR_SUCCESS;
}

}  // namespace

// Wine reports Windows 7 unless told otherwise, which leaves the registry half
// of the rule unexercised: Wine takes a per-program version from AppDefaults
// when a process starts, so this test runs again in a child of this program
// that Wine presents as Windows 10, where Windows 11 is told from Windows 10
// (both version 10.0) only by the registry's build number.
TEST(PlatformUnderWine, CodeIsAKnownReleaseThatAgreesWithTheRegistry) {
    std::string name;
    const uint32_t code = getPlatformCode(&name);
    EXPECT_EQ(getPlatformCode(), code);
    EXPECT_TRUE(code == 12 || (code >= 14 && code <= 19)) << code;
    EXPECT_EQ(name.rfind("Windows ", 0), 0u) << name;
    EXPECT_EQ(name.find("unknown"), std::string::npos) << name;
    // The selectors themselves are the portable core's; here they meet the real code.
    const uint32_t justThis[] = {13, code, 0}, others[] = {13, code + 1, 0};
    EXPECT_TRUE(isPlatformSupported(justThis));
    EXPECT_FALSE(isPlatformSupported(others));
    const bool child = !testEnv("HERALDER_PLATFORM_CHILD").empty();
    if (code >= 18) {
        char saved[64] = {};
        DWORD size = sizeof saved - 1;
        ASSERT_EQ(RegGetValueA(HKEY_LOCAL_MACHINE, kVersionKey, "CurrentBuild", RRF_RT_REG_SZ,
                               nullptr, saved, &size),
                  ERROR_SUCCESS);
        EXPECT_EQ(std::atoi(saved) >= 22000, code == 19) << saved;
        // The rule itself is the portable core's table; here the value is read.
        for (auto [build, want, wantName] :
             {std::tuple{"21999", 18u, "Windows 10"}, {"22000", 19u, "Windows 11"}}) {
            ASSERT_TRUE(setCurrentBuild(build));
            EXPECT_EQ(getPlatformCode(&name), want) << build;
            EXPECT_EQ(name, wantName);
        }
        EXPECT_TRUE(setCurrentBuild(saved));
        return;
    }
    ASSERT_FALSE(child) << "Wine did not report Windows 10 or later to the child";
    const std::string program = testProgramFolder() + "heralder_win_tests.exe";
    const std::string appKey = "Software\\Wine\\AppDefaults\\heralder_win_tests.exe";
    ScratchKey key(HKEY_CURRENT_USER, appKey);
    ASSERT_TRUE(key.set("Version", "win10"));
    SetEnvironmentVariableA("HERALDER_PLATFORM_CHILD", "1");
    const ProcessRun run =
        runProcess(program, "--gtest_filter=PlatformUnderWine.*", nullptr, 60000);
    SetEnvironmentVariableA("HERALDER_PLATFORM_CHILD", nullptr);
    ASSERT_TRUE(run.exited);
    EXPECT_EQ(run.exitCode, 0u) << "the child's tests failed (its output is above)";
}

// The product's name goes into the text, which grows the box; one too long to
// format is left out. Focus on Web page, no caption, centred; Dismiss and
// Escape both end it as Dismiss.
TEST(IncompatiblePlatformBox, FormatsTheProductUnclippedAndEndsAsDismiss) {
    std::string longName;
    for (int i = 0; i < 12; ++i) longName += "Quenmark Heralder Professional Edition ";
    const struct {
        std::string product;
        bool formatted;
        UINT key;  // 0: Dismiss clicked
    } cases[] = {
        {"Quenmark Heralder", true, 0},
        {longName, true, 0},
        {std::string(900, 'n'), false, 0},  // 1024 characters or more once formatted
        {"Quenmark Heralder", true, VK_ESCAPE},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.product.substr(0, 40));
        DialogDriver driver([&](HWND box) {
            const std::string text = itemText(box, IDC_INCOMPATIBLE_TEXT);
            EXPECT_EQ(text.rfind("This version of ", 0), 0u);
            EXPECT_EQ(text.find(c.product) != std::string::npos, c.formatted);
            EXPECT_EQ(text.find("%s") != std::string::npos, !c.formatted);
            for (const std::string& fault : layoutFaults(box, windowDpi(box)))
                ADD_FAILURE() << fault;
            EXPECT_EQ(GetFocus(), GetDlgItem(box, IDC_BUTTON1));
            EXPECT_NE(GetWindowLongA(box, GWL_STYLE) & WS_CAPTION, WS_CAPTION);
            RECT w;
            GetWindowRect(box, &w);
            EXPECT_NEAR(w.left, (GetSystemMetrics(SM_CXSCREEN) - (w.right - w.left)) / 2, 1);
            EXPECT_NEAR(w.top, (GetSystemMetrics(SM_CYSCREEN) - (w.bottom - w.top)) / 2, 1);
            c.key ? pressKey(box, c.key) : clickItem(box, IDC_CANCELBUTTON);
        });
        EXPECT_EQ(showIncompatiblePlatformBox(nullptr, c.product.c_str(), Settings{}),
                  IDC_CANCELBUTTON);
        EXPECT_TRUE(driver.ran());
    }
}
