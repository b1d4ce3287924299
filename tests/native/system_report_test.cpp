// The system information report's text.
#include <gtest/gtest.h>

#include <string>

#include "dialogs/system_report.h"

namespace {

SystemFacts sampleFacts() {
    SystemFacts f;
    f.programVersion = "17.0a (Revision 2)";
    f.buildDate = "Sep 17 2025";
    f.programFile = "C:\\Heralder\\heralder.exe";
    f.platformName = "Windows 10";
    f.platformCode = 18;
    f.screenWidth = 1920;
    f.screenHeight = 1080;
    f.dpi = 120;
    f.programFolder = "C:\\Heralder\\";
    f.dataFolder = "C:\\Data\\Quenmark";
    f.productFolder = "C:\\Data\\Quenmark\\Heralder";
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

TEST(SystemReport, EveryFactOnItsLine) {
    const std::string report = formatSystemReport(sampleFacts());
    for (const char* line : {
             "Quenmark Heralder system information",
             "  Version:          17.0a (Revision 2)",
             "  Build date:       Sep 17 2025",
             "  Platform:         Windows 10 (code 18)",
             "  Screen:           1920 x 1080 pixels, 120 dpi",
             "  Program:          C:\\Heralder\\",
             "  Settings:         C:\\Data\\Quenmark\\Heralder17.ini\r\n"
             "                    1234 bytes, modified 2026-01-02 03:04:05",
             "  Backup:           C:\\Data\\Quenmark\\Backup of Heralder17.ini\r\n"
             "                    99 bytes",
             "  Older backup:     C:\\Data\\Quenmark\\Backup of Backup of Heralder17.ini\r\n"
             "                    not present",
             "  Seen list:        C:\\Data\\Quenmark\\Heralder\\Heralder.lst\r\n"
             "                    40 bytes, 7 items",
             "  Server:           updates.quenmark.com",
             "  Proxy:            none (direct connection)",
             "  (none found)",
         })
        EXPECT_TRUE(has(report, line)) << line << "\n---\n" << report;
    // Line ends are CR LF throughout: the edit control shows a bare LF as a box.
    for (std::size_t i = 0; i < report.size(); ++i) {
        if (report[i] != '\n') continue;
        ASSERT_TRUE(i > 0 && report[i - 1] == '\r') << i;
    }
}

TEST(SystemReport, ProxySeenListAndProducts) {
    const struct {
        const char* what;
        ProxyFacts proxy;
        bool seenReadable;
        const char* proxyLine;
    } cases[] = {
        {"unknown", {}, true, "  Proxy:            (unknown)"},
        {"named", {true, false, "proxy:8080", ""}, true, "  Proxy:            proxy:8080"},
        {"with bypass",
         {true, false, "http=p:80", "<local>"},
         false,
         "  Proxy:            http=p:80 (not for <local>)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        SystemFacts f = sampleFacts();
        f.proxy = c.proxy;
        if (!c.seenReadable) f.seenEntries.reset();
        f.products = {{"C:\\Data\\Quenmark\\Heralder17.ini", "HERALDER", "17.0a"},
                      {"C:\\All\\Quenmark\\Ledger.ini", "Ledger", "4.2c (revision 3)"}};
        const std::string report = formatSystemReport(f);
        EXPECT_TRUE(has(report, c.proxyLine)) << report;
        EXPECT_TRUE(has(report, std::string("Heralder.lst\r\n                    40 bytes, ") +
                                    (c.seenReadable ? "7 items" : "unreadable")));
        EXPECT_TRUE(has(report, "  C:\\Data\\Quenmark\\Heralder17.ini [HERALDER]: 17.0a"));
        EXPECT_TRUE(has(report, "  C:\\All\\Quenmark\\Ledger.ini [Ledger]: 4.2c (revision 3)"));
        EXPECT_EQ(report.find("(none found)"), std::string::npos);
    }
}

}  // namespace
