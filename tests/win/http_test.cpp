// Fetching from loopback servers started by tests/win/fixtures.sh: a real web
// server for ordinary files and a raw one for replies a real server won't give.
#include <gtest/gtest.h>

#include <chrono>

#include "base/crt_text.h"
#include "feed/http.h"
#include "feed/http_reply.h"
#include "tests/win/test_support.h"

namespace {

using Clock = std::chrono::steady_clock;

#define REQUIRE_SERVER(var, name)          \
    const std::string name = testEnv(var); \
    if (name.empty()) GTEST_SKIP() << var " is not set: run through scripts/test_wine.sh"

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

TEST(HttpRealServer, FilesArriveByteForByte) {
    REQUIRE_SERVER("HERALDER_HTTP_HOST", host);
    const std::string root = testEnv("HERALDER_HTTP_ROOT");
    for (const char* path : {"/update/update.txt", "/update/images/large.bin"}) {
        std::string local = root + path;
        for (char& c : local) c = c == '/' ? '\\' : c;
        auto want = readFileBytes(local);
        ASSERT_TRUE(want) << local;
        auto got = fetchServerFile(nullptr, host, path);
        ASSERT_TRUE(got) << path;
        EXPECT_EQ(got->size(), want->size()) << path;
        EXPECT_TRUE(*got == *want) << path;  // not EXPECT_EQ: a megabyte diff helps nobody
    }
}

TEST(HttpRealServer, NotFoundGivesTheErrorPage) {
    REQUIRE_SERVER("HERALDER_HTTP_HOST", host);
    auto page = fetchServerFile(nullptr, host, "/update/no-such-file.txt");
    ASSERT_TRUE(page);
    EXPECT_NE(page->find("404 Not Found"), std::string::npos) << *page;
}

TEST(HttpRawServer, RepliesAsTheHeadersDecide) {
    REQUIRE_SERVER("HERALDER_RAW_HOST", host);
    struct Case {
        const char* path;
        std::optional<std::string> want;
    } cases[] = {
        {"/empty", ""},
        {"/no-length", std::nullopt},
        {"/missing", "<html><h1>404 Not Found</h1></html>"},
        {"/short", "only forty bytes of the hundred announce"},
        {"/negative", std::nullopt},
        {"/not-a-number", std::nullopt},
        {"/trailing-garbage", std::nullopt},
        {"/long-length", std::nullopt},  // does not fit the 32-byte header buffer
        {"/huge", std::nullopt},
        {"/extra", "Hello"},
        {"/endless", std::string(4096, 'x')},
        {"/stall", "12345"},
        {"/trickle", "0123456789"},
    };
    for (const Case& c : cases) {
        const auto start = Clock::now();
        auto got = fetchServerFile(nullptr, host, c.path);
        const double seconds = secondsSince(start);
        EXPECT_EQ(got, c.want) << c.path;
        // The raw server gives up on a connection after 3 s.
        EXPECT_LT(seconds, 8.0) << c.path;
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
    const auto start = Clock::now();
    EXPECT_FALSE(fetchServerFile(nullptr, host, "/update/update.txt"));
    EXPECT_LT(secondsSince(start), 5.0);
}

TEST(HttpServerName, BuildOptionIsAUsableAddress) {
    EXPECT_TRUE(splitServerAddress(publisherServerHost())) << publisherServerHost();
}
