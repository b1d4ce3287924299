// Fetching from loopback servers started by tests/win/fixtures.sh: a real web
// server for ordinary files and a raw one for replies a real server won't give.
#include <gtest/gtest.h>

#include <chrono>

#include "base/crt_text.h"
#include "feed/http.h"
#include "feed/http_reply.h"
#include "tests/win/test_support.h"

#define REQUIRE_SERVER(var, name)          \
    const std::string name = testEnv(var); \
    if (name.empty()) GTEST_SKIP() << var " is not set: run through scripts/test_wine.sh"

TEST(HttpRealServer, FilesArriveByteForByte) {
    REQUIRE_SERVER("HERALDER_HTTP_HOST", host);
    for (const char* path : {"/update/update.txt", "/update/images/large.bin"}) {
        std::string local = testEnv("HERALDER_HTTP_ROOT") + path;
        for (char& c : local) c = c == '/' ? '\\' : c;
        auto want = readFileBytes(local);
        ASSERT_TRUE(want) << local;
        auto got = fetchServerFile(nullptr, host, path);
        ASSERT_TRUE(got) << path;
        EXPECT_TRUE(*got == *want) << path;  // not EXPECT_EQ: a megabyte diff helps nobody
    }
}

TEST(HttpRawServer, RepliesAsTheHeadersDecide) {
    REQUIRE_SERVER("HERALDER_RAW_HOST", host);
    const struct {
        const char* path;
        std::optional<std::string> want;
    } cases[] = {
        {"/empty", ""},
        {"/no-length", std::nullopt},
        {"/missing", "<html><h1>404 Not Found</h1></html>"},
        {"/short", "only forty bytes of the hundred announce"},
        {"/negative", std::nullopt},
        {"/not-a-number", std::nullopt},
        {"/long-length", std::nullopt},  // does not fit the 32-byte header buffer
        {"/huge", std::nullopt},
        {"/extra", "Hello"},
        {"/endless", std::string(4096, 'x')},
        {"/stall", "12345"},
        {"/trickle", "0123456789"},
    };
    for (const auto& c : cases) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(fetchServerFile(nullptr, host, c.path), c.want) << c.path;
        // The raw server gives up on a connection after 3 s.
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(8)) << c.path;
    }
}

TEST(HttpRawServer, SendsAnHttp10GetWithTheAgentName) {
    REQUIRE_SERVER("HERALDER_RAW_HOST", host);
    auto head = fetchServerFile(nullptr, host, "/echo");
    ASSERT_TRUE(head);
    EXPECT_EQ(head->substr(0, head->find("\r\n")), "GET /echo HTTP/1.0");
    EXPECT_NE(head->find("\r\nUser-Agent: Quenmark Heralder\r\n"), std::string::npos) << *head;
}

TEST(HttpClosedPort, FailsQuickly) {
    REQUIRE_SERVER("HERALDER_CLOSED_HOST", host);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(fetchServerFile(nullptr, host, "/update/update.txt"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(HttpServerName, BuildOptionIsAUsableAddress) {
    EXPECT_TRUE(splitServerAddress(publisherServerHost())) << publisherServerHost();
}
