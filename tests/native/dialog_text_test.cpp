// The configuration and help windows' decisions and texts without a window, and
// what a browser is handed.
#include <gtest/gtest.h>

#include <tuple>

#include "base/file_io.h"
#include "dialogs/about_text.h"
#include "dialogs/init_config.h"
#include "dialogs/setup_box.h"
#include "dialogs/system_report.h"
#include "shell/browser_address.h"
#include "tests/native/feed_test_support.h"

namespace {

SystemFacts sampleFacts() {
    SystemFacts f;
    f.programVersion = "17.0a (Revision 2)";
    f.buildDate = "Sep 17 2025";
    f.platformName = "Windows 10";
    f.platformCode = 18;
    f.screenWidth = 1920;
    f.screenHeight = 1080;
    f.dpi = 120;
    f.programFolder = "C:\\Heralder\\";
    f.settingsFile = {"C:\\Data\\Quenmark\\Heralder17.ini", true, 1234,
                      ReportTime{2026, 1, 2, 3, 4, 5}};
    f.settingsBackup = {"C:\\Data\\Quenmark\\Backup of Heralder17.ini", true, 99, std::nullopt};
    f.settingsOlderBackup.path = "C:\\Data\\Quenmark\\Backup of Backup of Heralder17.ini";
    f.seenList = {"C:\\Data\\Quenmark\\Heralder\\Heralder.lst", true, 40, std::nullopt};
    f.seenEntries = 7;
    f.serverHost = "updates.quenmark.com";
    f.proxy = {true, true, "", ""};
    return f;
}

bool has(const std::string& report, const std::string& line) {
    return report.find(line + "\r\n") != std::string::npos;
}

}  // namespace

TEST(AboutText, VersionLineAndGuid) {
    const std::pair<const char*, const char*> templates[] = {
        {"Version %d.%d%c%s\n\nNotice.", "Version 17.0a (Revision 2)\n\nNotice."},
        {"Version %d.%d%c%s, 100%% ours", "Version 17.0a (Revision 2), 100% ours"},
        // Anything past the four values, or out of their order, stays as written.
        {"%d.%d%c%s %d %s", "17.0a (Revision 2) %d %s"},
        {"%s %d", "%s 17"},
        {"50% off%", "50% off%"},
        {"", ""},
    };
    for (auto [text, want] : templates) EXPECT_EQ(formatAboutText(text), want) << text;

    // The GUID loses its braces and whatever follows them.
    const std::string guid = "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0";
    for (const std::string& registry : {"{" + guid + "}", "{" + guid + "}  ", guid})
        EXPECT_EQ(guidClipboardText(registry), guid) << registry;
    EXPECT_EQ(guidClipboardText("{}"), "");
    EXPECT_EQ(guidClipboardText(""), "");
}

TEST(InitConfig, OldProgramPathAndClosing) {
    const std::string folder255(255, 'f');
    const std::pair<std::string, std::string> paths[] = {
        {"", ""},
        {"C:\\Old", "C:\\Old\\QMK-heralder.exe"},
        {"C:\\Old\\", "C:\\Old\\QMK-heralder.exe"},
        {"\\", "\\QMK-heralder.exe"},
        {folder255, (folder255 + "\\QMK-heralder.exe").substr(0, 260)},
    };
    for (const auto& [folder, path] : paths) EXPECT_EQ(oldInstallationProgramPath(folder), path);

    // Closing marks the sign-up done; only Close (1) stores the choice.
    const std::tuple<int, uint32_t, uint32_t, bool, uint32_t> closes[] = {
        {1, 102, 101, true, 101},
        {1, 101, 102, true, 102},
        {0, 102, 101, false, 102},
        {0, 7, 101, false, 7},
    };
    for (const auto& [result, stored, chosen, apply, want] : closes) {
        Settings record;
        record.InitConfigDone = 0;
        record.StartupOptions = stored;
        EXPECT_EQ(settleInitConfig(record, result, chosen), apply) << result << stored;
        EXPECT_EQ(std::tie(record.InitConfigDone, record.StartupOptions), std::tuple(1u, want));
    }
}

// What OK stores and resets is checked on the real dialog; here the texts'
// bound and the keys that no control edits.
TEST(SetupCommit, CutsTextsAndLeavesKeysWithoutAControlAlone) {
    Settings record;
    record.SetupNoticeReport = 5;
    record.AllowGraphicUpdates = 1;
    record.NoiseType = 77;
    record.AlertTextColor = 0x123456;
    SetupValues v;
    v.transactionDate = std::string(300, 'd');
    v.fontName = std::string(260, 'f');
    commitSetup(record, v);
    EXPECT_EQ(std::tie(record.CurrentTransactionDate, record.AlertFontName),
              std::tuple(std::string(259, 'd'), std::string(259, 'f')));
    // Colours are the picker's business.
    EXPECT_EQ(std::tie(record.AllowINIUpdates, record.SetupNoticeReport, record.AllowGraphicUpdates,
                       record.NoiseType, record.AlertTextColor),
              std::tuple(0u, 5u, 1u, 77u, 0x123456u));
}

TEST(SetupFontList, OpensOnTheFirstFaceThatBeginsWithTheStoredName) {
    const std::vector<std::string> faces = {"Arial", "Arial Black", "Courier New", "Georgia",
                                            "Georgia Pro"};
    const std::pair<const char*, int> cases[] = {
        {"Georgia", 3},  {"georgia", 3}, {"Arial Black", 1},       {"Cour", 2},
        {"Verdana", -1}, {"", -1},       {"Georgia Pro Bold", -1},
    };
    for (auto [stored, want] : cases) EXPECT_EQ(initialFontIndex(faces, stored), want) << stored;
}

TEST(SetupSwatch, DarkColoursGetWhiteLabels) {
    // Each share is truncated on its own: grey 129 sums to 128 and is dark,
    // grey 130 to 129 and is not. The top byte means nothing.
    for (uint32_t dark : {0x000000u, 0x818181u, 0x0000FFu, 0xFF0000u, 0x00DA00u, 0xFF000000u})
        EXPECT_TRUE(isDarkColour(dark)) << std::hex << dark;
    for (uint32_t light : {0xFFFFFFu, 0x828282u, 0x00FF00u, 0x00DB00u})
        EXPECT_FALSE(isDarkColour(light)) << std::hex << light;
}

TEST(SystemReport, EveryFactOnItsLineProxiesAndProducts) {
    // The whole report, in CR LF throughout: the edit control shows a bare LF as a box.
    EXPECT_EQ(formatSystemReport(sampleFacts()),
              withCrLf(readFileBytes(HERALDER_SOURCE_DIR "/tests/data/system_report/sample.txt")
                           .value_or("<missing>")));

    const std::pair<ProxyFacts, const char*> proxies[] = {
        {{}, "(unknown)"},
        {{true, false, "proxy:8080", ""}, "proxy:8080"},
        {{true, false, "http=p:80", "<local>"}, "http=p:80 (not for <local>)"},
    };
    for (const auto& [proxy, text] : proxies) {
        SystemFacts f = sampleFacts();
        f.proxy = proxy;
        EXPECT_TRUE(has(formatSystemReport(f), std::string("  Proxy:            ") + text)) << text;
    }
    SystemFacts f = sampleFacts();
    f.seenEntries.reset();
    f.products = {{"C:\\Data\\Quenmark\\Heralder17.ini", "HERALDER", "17.0a"},
                  {"C:\\All\\Quenmark\\Ledger.ini", "Ledger", "4.2c (revision 3)"}};
    const std::string other = formatSystemReport(f);
    for (const char* line : {"Heralder.lst\r\n                    40 bytes, unreadable",
                             "  C:\\Data\\Quenmark\\Heralder17.ini [HERALDER]: 17.0a",
                             "  C:\\All\\Quenmark\\Ledger.ini [Ledger]: 4.2c (revision 3)"})
        EXPECT_TRUE(has(other, line)) << line << "\n---\n" << other;
    EXPECT_EQ(other.find("(none found)"), std::string::npos);
}

// Only the exact lower-case "http" prefix makes a web address; nothing but the
// space is escaped; the cut comes after escaping and does not care about escapes.
TEST(BrowserAddress, WebAddressesLocalFilesEscapingAndCut) {
    const std::tuple<std::string, const char*, std::string> cases[] = {
        {"http://example.com/a b", "#X", "http://example.com/a%20b"},
        {"https://example.com/", nullptr, "https://example.com/"},
        {"HTTP://example.com/", "#X", "file:///HTTP://example.com/#X"},
        {"Http://example.com/", nullptr, "file:///Http://example.com/"},
        {"htt", nullptr, "file:///htt"},
        {"", nullptr, "file:///"},
        {"C:\\Program Files\\Quenmark Heralder\\html\\referenc.html", "#STARTUP",
         "file:///C:\\Program%20Files\\Quenmark%20Heralder\\html\\referenc.html#STARTUP"},
        {"C:\\a\\b.html", "#MY TOPIC", "file:///C:\\a\\b.html#MY%20TOPIC"},
        {"C:\\%20\t#?&\"\xE9.html", nullptr, "file:///C:\\%20\t#?&\"\xE9.html"},
        // 340 spaces become 1020 characters; "file:///" pushes the total past the cut.
        {std::string(340, ' '), "#TOPIC", "file:///" + repeat("%20", 338) + "%2"},
        {"http://x/" + std::string(2000, 'a'), nullptr,
         "http://x/" + std::string(kBrowserAddressMax - 9, 'a')},
    };
    for (const auto& [target, suffix, want] : cases)
        EXPECT_EQ(buildBrowserAddress(target, suffix), want) << target.substr(0, 60);
}

TEST(ManualPagePath, AddsTheSeparatorOnlyWhenMissing) {
    const std::pair<const char*, const char*> cases[] = {
        {"C:\\Program Files\\Heralder\\", "C:\\Program Files\\Heralder\\html\\manual.html"},
        {"C:\\Heralder", "C:\\Heralder\\html\\manual.html"},
        {"", "html\\manual.html"},
    };
    for (auto [folder, want] : cases)
        EXPECT_EQ(manualPagePath(folder, "manual.html"), want) << folder;
}
