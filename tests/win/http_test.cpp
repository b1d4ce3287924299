// Fetching from loopback servers started by tests/win/fixtures.sh: a real web
// server for ordinary files and a raw one for replies a real server won't give.
#include <gtest/gtest.h>

#include "base/file_io.h"
#include "feed/http_win.h"
#include "feed/http_reply.h"
#include "tests/win/test_support.h"

#define REQUIRE_SERVER(var, name)          \
    const std::string name = testEnv(var); \
    if (name.empty()) GTEST_SKIP() << var " is not set: run through scripts/test_wine.sh"

// Larger than any packet and holding every byte value: one read must take it all.
TEST(HttpRealServer, FilesArriveByteForByte) {
    REQUIRE_SERVER("HERALDER_HTTP_HOST", host);
    auto want = readFileBytes(testEnv("HERALDER_HTTP_ROOT") + "\\update\\images\\large.bin");
    ASSERT_TRUE(want);
    auto got = fetchServerFile(nullptr, host, "/update/images/large.bin");
    ASSERT_TRUE(got);
    EXPECT_TRUE(*got == *want);  // not EXPECT_EQ: a megabyte diff helps nobody
}

TEST(HttpRawServer, RepliesAsTheHeadersDecide) {
    REQUIRE_SERVER("HERALDER_RAW_HOST", host);
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"/empty", ""},
        {"/no-length", std::nullopt},
        {"/missing", "<html><h1>404 Not Found</h1></html>"},
        {"/short", "only forty bytes of the hundred announce"},
        {"/negative", std::nullopt},
        {"/not-a-number", std::nullopt},
        {"/huge", std::nullopt},
        {"/extra", "Hello"},  // bytes past the announced length are not the file's
        {"/echo", "GET /echo HTTP/1.0\r\nUser-Agent: Quenmark Heralder"},
    };
    for (const auto& [path, want] : cases)
        EXPECT_EQ(fetchServerFile(nullptr, host, path), want) << path;
    EXPECT_FALSE(fetchServerFile(nullptr, testEnv("HERALDER_CLOSED_HOST"), "/empty"));
}

// Shorter limits than the program's: a silent server ends at the idle limit,
// a trickling one at the whole-fetch limit, both as failures.
TEST(HttpRawServer, SlowServersEndAsFailuresWithinTheLimits) {
    REQUIRE_SERVER("HERALDER_RAW_HOST", host);
    setFetchLimits({1000, 3000});
    const struct {
        const char* path;
        DWORD atLeastMs, atMostMs;
    } cases[] = {{"/silent", 900, 2900}, {"/trickle", 2900, 6000}};
    for (const auto& c : cases) {
        const DWORD start = GetTickCount();
        EXPECT_FALSE(fetchServerFile(nullptr, host, c.path)) << c.path;
        const DWORD took = GetTickCount() - start;
        EXPECT_GE(took, c.atLeastMs) << c.path;
        EXPECT_LE(took, c.atMostMs) << c.path;
    }
    setFetchLimits({});
    EXPECT_EQ(fetchServerFile(nullptr, host, "/extra"), "Hello");  // the next fetch is unharmed
}

TEST(HttpServerName, BuildOptionIsAUsableAddress) {
    EXPECT_TRUE(splitServerAddress(publisherServerHost())) << publisherServerHost();
}
