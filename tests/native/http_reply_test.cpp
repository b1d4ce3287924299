// The checks a reply passes before its body is read, and the server name.
#include <gtest/gtest.h>

#include "feed/http_reply.h"

TEST(SplitServerAddress, AcceptsHostAndOptionalPort) {
    struct Case {
        const char* text;
        const char* host;
        uint16_t port;
    } cases[] = {
        {"updates.quenmark.com", "updates.quenmark.com", 0},
        {"127.0.0.1:8080", "127.0.0.1", 8080},
        {"localhost:1", "localhost", 1},
        {"10.0.0.2:65535", "10.0.0.2", 65535},
        {"host:00080", "host", 80},
    };
    for (const Case& c : cases) {
        auto address = splitServerAddress(c.text);
        ASSERT_TRUE(address) << c.text;
        EXPECT_EQ(address->host, c.host) << c.text;
        EXPECT_EQ(address->port, c.port) << c.text;
    }
}

TEST(SplitServerAddress, RefusesMalformedNamesInsteadOfFallingBackToPort80) {
    for (const char* text :
         {"", ":8080", "host:", "host:0", "host:65536", "host:99999999999999", "host:-1",
          "host:+80", "host:80x", "host: 80", "host:8 0", "host:80:81", "::1"}) {
        EXPECT_FALSE(splitServerAddress(text)) << '"' << text << '"';
    }
}

TEST(ParseContentLength, AcceptsPlainDecimalUpToTheLimit) {
    struct Case {
        const char* text;
        std::size_t want;
    } cases[] = {
        {"0", 0}, {"12", 12}, {" 12\r\n", 12}, {"\t007", 7}, {"67108864", maxContentLength},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(parseContentLength(c.text), std::optional<std::size_t>(c.want))
            << '"' << c.text << '"';
    }
}

TEST(ParseContentLength, RefusesWhatWouldBeAWrongOrHugeAllocation) {
    for (const char* text :
         {"", "  ", "-1", "-0", "+5", "abc", "12abc", "1 2", "0x10", "1e3", "67108865", "100000000",
          "4294967297", "18446744073709551617", "99999999999999999999999999999"}) {
        EXPECT_FALSE(parseContentLength(text)) << '"' << text << '"';
    }
}
