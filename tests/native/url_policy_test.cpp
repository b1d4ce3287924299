// Only web addresses may be handed to the shell: a changed feed must not be
// able to start a program through an item's URL.
#include <gtest/gtest.h>

#include "notify/url_policy.h"

TEST(UrlPolicy, OnlyHttpAndHttpsAddressesOpen) {
    const struct {
        const char* url;
        bool openable;
    } cases[] = {
        {"http://www.quenmark.com/", true},
        {"https://www.quenmark.com/news?id=4", true},
        {"HTTP://WWW.QUENMARK.COM", true},
        {"hTtPs://x", true},
        {"http://", true},
        {"", false},
        {"http:", false},
        {"http:/www.quenmark.com", false},
        {" http://www.quenmark.com", false},
        {"file:///C:/Windows/System32/calc.exe", false},
        {"C:\\Windows\\System32\\calc.exe", false},
        {"\\\\server\\share\\setup.exe", false},
        {"javascript:alert(1)", false},
        {"ms-settings:", false},
        {"ftp://ftp.quenmark.com/", false},
        {"httpx://www.quenmark.com", false},
    };
    for (const auto& c : cases) EXPECT_EQ(isWebAddress(c.url), c.openable) << c.url;
}
