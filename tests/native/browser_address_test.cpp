// What a browser is handed: the web-address test, the escaping, the suffix
// rule and the length cut, and where the manual pages are looked for.
#include <gtest/gtest.h>

#include <string>

#include "dialogs/browser_address.h"

TEST(BrowserAddress, WebAddressesLocalFilesEscapingAndSuffix) {
    const struct {
        const char* target;
        const char* suffix;
        const char* want;
    } cases[] = {
        {"http://example.com/a b", "#X", "http://example.com/a%20b"},
        {"https://example.com/", nullptr, "https://example.com/"},
        // Only the exact lower-case prefix counts as a web address.
        {"HTTP://example.com/", "#X", "file:///HTTP://example.com/#X"},
        {"Http://example.com/", nullptr, "file:///Http://example.com/"},
        {"htt", nullptr, "file:///htt"},
        {"", nullptr, "file:///"},
        {"C:\\Program Files\\Quenmark Heralder\\html\\referenc.html", "#STARTUP",
         "file:///C:\\Program%20Files\\Quenmark%20Heralder\\html\\referenc.html#STARTUP"},
        {"C:\\a\\b.html", "#MY TOPIC", "file:///C:\\a\\b.html#MY%20TOPIC"},
        // Nothing but the space is escaped.
        {"C:\\%20\t#?&\"\xE9.html", nullptr, "file:///C:\\%20\t#?&\"\xE9.html"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(buildBrowserAddress(c.target, c.suffix), c.want) << c.target;
    }
}

TEST(BrowserAddress, IsCutAfterEscaping) {
    // 340 spaces become 1020 characters; "file:///" pushes the total past the cut.
    const std::string spaces(340, ' ');
    const std::string local = buildBrowserAddress(spaces, "#TOPIC");
    std::string want = "file:///";
    for (int i = 0; i < 338; ++i) want += "%20";
    want += "%2";  // the cut does not care about escapes
    EXPECT_EQ(local, want);

    const std::string web = "http://x/" + std::string(2000, 'a');
    EXPECT_EQ(buildBrowserAddress(web, nullptr), web.substr(0, kBrowserAddressMax));
    const std::string exact = "http://x/" + std::string(kBrowserAddressMax - 9, 'b');
    EXPECT_EQ(buildBrowserAddress(exact, nullptr), exact);
}

TEST(ManualPagePath, AddsTheSeparatorOnlyWhenMissing) {
    const struct {
        const char* applicationPath;
        const char* want;
    } cases[] = {
        {"C:\\Program Files\\Heralder\\", "C:\\Program Files\\Heralder\\html\\manual.html"},
        {"C:\\Heralder", "C:\\Heralder\\html\\manual.html"},
        {"", "html\\manual.html"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(manualPagePath(c.applicationPath, "manual.html"), c.want) << c.applicationPath;
    }
}
