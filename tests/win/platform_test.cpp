// The running release as Wine reports it, checked against the registry the
// code also reads, the Windows 11 rule exercised through a scratch registry
// value, and the "not compatible" dialog opened from its template.
#include <gtest/gtest.h>

#include <cstdlib>

#include "app/platform_win.h"
#include "base/win_handles.h"
#include "resources/resource.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/process_driver.h"
#include "tests/win/test_support.h"

namespace {

constexpr char kVersionKey[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

std::optional<std::string> currentBuild() {
    char text[64] = {};
    DWORD size = sizeof text - 1;
    if (RegGetValueA(HKEY_LOCAL_MACHINE, kVersionKey, "CurrentBuild", RRF_RT_REG_SZ, nullptr, text,
                     &size) != ERROR_SUCCESS)
        return std::nullopt;
    return std::string(text);
}

bool setCurrentBuild(const std::string& text) {
    return RegSetKeyValueA(HKEY_LOCAL_MACHINE, kVersionKey, "CurrentBuild", REG_SZ, text.c_str(),
                           static_cast<DWORD>(text.size() + 1)) == ERROR_SUCCESS;
}

const std::string kExpectedText =
    "This version of Quenmark Heralder is not compatible with your installation of Windows. "
    "You need newer software.\n\nPlease click on Web Page to visit us on line and download an "
    "upgrade for this application.";

// Height the text needs in its control's width and font.
int neededTextHeight(HWND box) {
    HWND control = GetDlgItem(box, IDC_INCOMPATIBLE_TEXT);
    const RECT r = clientRectOf(box, IDC_INCOMPATIBLE_TEXT);
    const std::string text = windowText(control);
    WindowDc dc(control);
    ScopedSelect font(dc.get(), reinterpret_cast<HGDIOBJ>(SendMessageA(control, WM_GETFONT, 0, 0)));
    RECT need{0, 0, r.right - r.left, 0};
    DrawTextA(dc.get(), text.c_str(), -1, &need, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    return need.bottom;
}

// The box's controls all lie inside its client area, the text tall enough.
void expectNothingClipped(HWND box) {
    RECT client;
    GetClientRect(box, &client);
    for (int id : {IDC_INCOMPATIBLE_TEXT, IDC_BUTTON1, IDC_CANCELBUTTON}) {
        const RECT r = clientRectOf(box, id);
        EXPECT_GE(r.left, 0) << id;
        EXPECT_GE(r.top, 0) << id;
        EXPECT_LE(r.right, client.right) << id;
        EXPECT_LE(r.bottom, client.bottom) << id;
    }
    const RECT text = clientRectOf(box, IDC_INCOMPATIBLE_TEXT);
    EXPECT_GE(text.bottom - text.top, neededTextHeight(box));
}

}  // namespace

TEST(PlatformUnderWine, CodeIsAKnownReleaseThatAgreesWithTheRegistry) {
    std::string name;
    const uint32_t code = getPlatformCode(&name);
    EXPECT_EQ(getPlatformCode(), code);
    EXPECT_TRUE(code == 12 || (code >= 14 && code <= 19)) << code;
    EXPECT_EQ(name.rfind("Windows ", 0), 0u) << name;
    EXPECT_EQ(name.find("unknown"), std::string::npos) << name;
    if (code >= 18) {
        const std::optional<std::string> build = currentBuild();
        ASSERT_TRUE(build);
        EXPECT_EQ(std::atoi(build->c_str()) >= 22000, code == 19) << *build;
        EXPECT_EQ(name, code == 19 ? "Windows 11" : "Windows 10");
    }
    // The selectors themselves are the portable core's; here they meet the real code.
    const uint32_t justThis[] = {13, code, 0};
    const uint32_t others[] = {13, code + 1, 0};
    EXPECT_TRUE(isPlatformSupported(justThis));
    EXPECT_FALSE(isPlatformSupported(others));
}

// Windows 11 reports version 10.0: only the registry's build number tells.
TEST(PlatformUnderWine, BuildNumberFromTheRegistryMakesWindows11) {
    const std::optional<std::string> saved = currentBuild();
    if (!saved || getPlatformCode() < 18) {
        // The child below exists to run this test: there it must not skip.
        if (!testEnv("HERALDER_PLATFORM_CHILD").empty()) FAIL() << "not Windows 10 or later";
        GTEST_SKIP() << "Wine does not report Windows 10 or later";
    }
    const struct {
        const char* build;
        uint32_t code;
        const char* name;
    } cases[] = {
        {"21999", 18, "Windows 10"}, {"22000", 19, "Windows 11"}, {"26100", 19, "Windows 11"}};
    for (const auto& c : cases) {
        ASSERT_TRUE(setCurrentBuild(c.build));
        std::string name;
        EXPECT_EQ(getPlatformCode(&name), c.code) << c.build;
        EXPECT_EQ(name, c.name);
    }
    EXPECT_TRUE(setCurrentBuild(*saved));
}

// Wine reports Windows 7 unless told otherwise, which leaves the registry
// half of the rule unexercised. Wine takes a per-program version from
// AppDefaults when a process starts, so the tests above run again in a child
// of this program that Wine presents as Windows 10.
TEST(PlatformUnderWine, SameChecksWhenWineReportsWindows10) {
    if (!testEnv("HERALDER_PLATFORM_CHILD").empty() || getPlatformCode() >= 18)
        GTEST_SKIP() << "already running as Windows 10 or later";
    char exe[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, exe, sizeof exe);
    const std::string program = exe;
    const std::string appKey =
        "Software\\Wine\\AppDefaults\\" + program.substr(program.find_last_of("\\/") + 1);
    ASSERT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, appKey.c_str(), "Version", REG_SZ, "win10", 6),
              ERROR_SUCCESS);
    SetEnvironmentVariableA("HERALDER_PLATFORM_CHILD", "1");
    const ProcessRun child =
        runProcess(program, "--gtest_filter=PlatformUnderWine.*", nullptr, 60000);
    SetEnvironmentVariableA("HERALDER_PLATFORM_CHILD", nullptr);
    RegDeleteKeyA(HKEY_CURRENT_USER, appKey.c_str());
    ASSERT_TRUE(child.started);
    EXPECT_TRUE(child.exited);
    EXPECT_EQ(child.exitCode, 0u) << "the child's tests failed (its output is above)";
}

// Long product names grow the box; one too long to format is left out.
TEST(IncompatiblePlatformBox, ShowsTheFormattedTextUnclippedWithFocusOnWebPage) {
    std::string longName;
    for (int i = 0; i < 12; ++i) longName += "Quenmark Heralder Professional Edition ";
    const struct {
        std::string product;
        bool formatted;
        const char* screenshot;
    } cases[] = {
        {"Quenmark Heralder", true, "incompatible_platform"},
        {longName, true, "incompatible_platform_long_name"},
        {std::string(900, 'n'), false, nullptr},  // 1024 characters or more once formatted
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.product.substr(0, 40));
        DialogDriver driver([&](HWND box) {
            if (c.screenshot) saveWindowScreenshot(box, c.screenshot);
            const std::string text = itemText(box, IDC_INCOMPATIBLE_TEXT);
            if (c.product == "Quenmark Heralder") {
                EXPECT_EQ(text, kExpectedText);
            }
            EXPECT_EQ(text.find(c.product) != std::string::npos, c.formatted);
            EXPECT_EQ(text.find("%s") != std::string::npos, !c.formatted);
            expectNothingClipped(box);
            EXPECT_EQ(itemText(box, IDC_BUTTON1), "Web page");
            EXPECT_EQ(itemText(box, IDC_CANCELBUTTON), "Dismiss");
            EXPECT_EQ(GetFocus(), GetDlgItem(box, IDC_BUTTON1));
            EXPECT_NE(GetWindowLongA(box, GWL_STYLE) & WS_CAPTION, WS_CAPTION);
            // Centred on the primary screen.
            RECT r;
            GetWindowRect(box, &r);
            EXPECT_NEAR(r.left, (GetSystemMetrics(SM_CXSCREEN) - (r.right - r.left)) / 2, 1);
            EXPECT_NEAR(r.top, (GetSystemMetrics(SM_CYSCREEN) - (r.bottom - r.top)) / 2, 1);
            clickItem(box, IDC_CANCELBUTTON);
        });
        EXPECT_EQ(showIncompatiblePlatformBox(nullptr, c.product.c_str(), Settings{}),
                  IDC_CANCELBUTTON);
        EXPECT_TRUE(driver.ran());
    }

    DialogDriver escape([](HWND box) { pressKey(box, VK_ESCAPE); });
    EXPECT_EQ(showIncompatiblePlatformBox(nullptr, "Quenmark Heralder", Settings{}),
              IDC_CANCELBUTTON);
}
