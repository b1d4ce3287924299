// The checks a reply passes before its body is read, and the server name.
#include <gtest/gtest.h>

#include "feed/http_reply.h"

// A malformed name is refused rather than sent to port 80 of the same host.
TEST(SplitServerAddress, HostAndOptionalPort) {
    const struct {
        const char* text;
        const char* host;
        uint16_t port;
    } accepted[] = {
        {"updates.quenmark.com", "updates.quenmark.com", 0},
        {"127.0.0.1:8080", "127.0.0.1", 8080},
        {"10.0.0.2:65535", "10.0.0.2", 65535},
        {"host:00080", "host", 80},
    };
    for (const auto& c : accepted) {
        auto address = splitServerAddress(c.text);
        ASSERT_TRUE(address) << c.text;
        EXPECT_TRUE(address->host == c.host && address->port == c.port) << c.text;
    }
    for (const char* text : {"", ":8080", "host:", "host:0", "host:65536", "host:99999999999999",
                             "host:-1", "host:+80", "host: 80", "host:80x", "host:80:81", "::1"})
        EXPECT_FALSE(splitServerAddress(text)) << '"' << text << '"';
}

// Anything but a plain decimal up to 64 MiB would be a wrong or huge allocation.
TEST(ParseContentLength, PlainDecimalUpToTheLimit) {
    const std::pair<const char*, std::size_t> accepted[] = {
        {"0", 0}, {" 12\r\n", 12}, {"\t007", 7}, {"67108864", 64 << 20}};
    for (const auto& [text, want] : accepted) EXPECT_EQ(parseContentLength(text), want) << text;
    for (const char* text : {"", "  ", "-1", "+5", "abc", "12abc", "1 2", "0x10", "67108865",
                             "4294967297", "18446744073709551617"})
        EXPECT_FALSE(parseContentLength(text)) << '"' << text << '"';
}
