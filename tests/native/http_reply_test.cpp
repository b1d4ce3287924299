// The checks a reply passes before its body is read, and the server name.
#include <gtest/gtest.h>

#include "feed/http_reply.h"

// A malformed name is refused rather than sent to port 80 of the same host.
TEST(SplitServerAddress, HostAndOptionalPort) {
    for (const auto& [text, port] :
         {std::pair{"host", 0}, {"host:8080", 8080}, {"host:65535", 65535}}) {
        auto address = splitServerAddress(text);
        ASSERT_TRUE(address) << text;
        EXPECT_TRUE(address->host == "host" && address->port == port) << text;
    }
    for (const char* text : {"", ":8080", "host:", "host:0", "host:65536", "host:99999999999999",
                             "host:-1", "host:+80", "host: 80", "host:80x", "host:80:81"})
        EXPECT_FALSE(splitServerAddress(text)) << '"' << text << '"';
}

// Anything but a plain decimal up to 64 MiB would be a wrong or huge allocation.
TEST(ParseContentLength, PlainDecimalUpToTheLimit) {
    const std::pair<const char*, std::size_t> accepted[] = {
        {"0", 0}, {" 12\r\n", 12}, {"\t007", 7}, {"67108864", 64 << 20}};
    for (const auto& [text, want] : accepted) EXPECT_EQ(parseContentLength(text), want) << text;
    for (const char* text :
         {"", "  ", "-1", "+5", "12abc", "1 2", "0x10", "67108865", "18446744073709551617"})
        EXPECT_FALSE(parseContentLength(text)) << '"' << text << '"';
}
