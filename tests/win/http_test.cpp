// Fetching from loopback servers started by tests/win/fixtures.sh: a real web
// server for ordinary files and a raw one for replies a real server won't give.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "base/file_io.h"
#include "feed/http_reply.h"
#include "feed/http_win.h"
#include "feed/kept_document_win.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

#define REQUIRE_SERVER(var, name)          \
    const std::string name = testEnv(var); \
    if (name.empty()) GTEST_SKIP() << var " is not set: run through scripts/test_wine.sh"

namespace {

int loopRequests(const std::string& host) {
    return std::stoi(fetchServerFile(nullptr, host, "/count").value_or("-1000"));
}

// A kept copy of the tests' own, away from the user's product folder.
std::string testKeptPath() {
    const std::string path = scratchFolder("heralder_http_test") + "test.kept";
    DeleteFileA(path.c_str());
    return path;
}

std::string accessLog() {
    return readFileBytes(testEnv("HERALDER_HTTP_LOG")).value_or("");
}

// The bytes lighttpd sent (headers included) for the first request it logs
// after linesBefore lines, waiting briefly: the log arrives through a pipe.
long loggedBytesAfter(std::ptrdiff_t linesBefore) {
    for (int tries = 0; tries < 100; ++tries, Sleep(20)) {
        const std::string log = accessLog();
        if (std::count(log.begin(), log.end(), '\n') <= linesBefore) continue;
        const std::size_t end = log.find_last_not_of('\n');
        return std::atol(log.c_str() + log.find_last_of(' ', end) + 1);
    }
    return -1;
}

}  // namespace

// Larger than any packet and holding every byte value: one read must take it
// all, over HTTP and over HTTPS with a trusted certificate for the host. Any
// other certificate fails the fetch before a request is sent.
TEST(HttpRealServer, FilesArriveByteForByteAndOnlyATrustedCertificateGetsARequest) {
    REQUIRE_SERVER("HERALDER_HTTP_HOST", host);
    const auto want = readFileBytes(testEnv("HERALDER_HTTP_ROOT") + "\\update\\images\\large.bin");
    ASSERT_TRUE(want);
    const auto got = fetchServerFile(nullptr, host, "/update/images/large.bin");
    EXPECT_TRUE(got && *got == *want);  // not EXPECT_EQ: a megabyte diff helps nobody
    const std::string good = testEnv("HERALDER_HTTPS_GOOD");
    if (good.empty()) GTEST_SKIP() << "no TLS server";
    ASSERT_TRUE(trustTestAuthority());
    const auto overTls = fetchServerFile(nullptr, good, "/update/images/large.bin");
    EXPECT_TRUE(overTls && *overTls == *want);
    std::vector<std::string> refusedPorts;
    for (const char* var :
         {"HERALDER_HTTPS_EXPIRED", "HERALDER_HTTPS_WRONG_HOST", "HERALDER_HTTPS_UNTRUSTED"}) {
        const std::string refused = testEnv(var);
        EXPECT_FALSE(fetchServerFile(nullptr, refused, "/update/images/alert.png")) << var;
        refusedPorts.push_back(refused.substr(refused.rfind(':') + 1));
    }
    Sleep(500);  // the log goes through a pipe
    const std::string log = readFileBytes(testEnv("HERALDER_HTTPS_LOG")).value_or("");
    EXPECT_NE(log.find("/update/images/large.bin"), std::string::npos) << log;
    for (const std::string& port : refusedPorts)
        EXPECT_EQ(log.find(port + " /"), std::string::npos) << port << "\n" << log;
}

// What each reply gives, as its headers decide: bytes past the announced
// length are not the file's; a compressed reply is judged by its decoded text
// (a bomb past the length limit fails); redirects are followed a few times,
// and only within the server asked; a 304 needs a kept copy. The rules are the
// portable core's tables: here one case of each shows the real fetch applies them.
TEST(HttpRawServer, RepliesEndAsTheirHeadersDecide) {
    REQUIRE_SERVER("HERALDER_RAW_HOST", host);
    std::string decoded;
    for (int i = 0; i < 100; ++i) decoded += "decoded text ";
    const struct {
        const char* path;
        std::optional<std::string> want;
        bool compressed = false;  // asked with Accept-Encoding: gzip
    } cases[] = {
        {"/empty", ""},
        {"/no-length", std::nullopt},
        {"/no-length", "a body without a length", true},
        {"/missing", "<html><h1>404 Not Found</h1></html>"},
        {"/missing", "<html><h1>404 Not Found</h1></html>", true},
        {"/short", "only forty bytes of the hundred announce"},
        {"/huge", std::nullopt},
        {"/huge", std::nullopt, true},
        {"/extra", "Hello"},
        {"/echo", "GET /echo HTTP/1.1\r\nUser-Agent: Quenmark Heralder/17.0a"},
        {"/gzip", decoded, true},
        {"/gzip-bomb", std::nullopt, true},
        {"/hop/5", "arrived"},
        {"/hop/6", std::nullopt},
        {"/hop-absolute", "arrived"},
        {"/hop-other-port", std::nullopt},
        {"/hop-https", std::nullopt},
    };
    for (const auto& c : cases) {
        std::optional<std::string> got;
        if (!c.compressed) {
            got = fetchServerFile(nullptr, host, c.path);
        } else if (auto reply = fetchServerReply(nullptr, host,
                                                 {c.path, "Accept-Encoding: gzip\r\n", true})) {
            got = reply->body;
        }
        EXPECT_EQ(got, c.want) << c.path << (c.compressed ? " compressed" : "");
    }
    EXPECT_FALSE(fetchServerFile(nullptr, testEnv("HERALDER_CLOSED_HOST"), "/empty"));
    const int before = loopRequests(host);
    EXPECT_FALSE(fetchServerFile(nullptr, host, "/loop"));
    EXPECT_EQ(loopRequests(host) - before, 1 + maxRedirects);

    // A 304 stands for the kept copy only when one was asked about.
    const std::string kept = testKeptPath();
    EXPECT_FALSE(fetchDocument(nullptr, host, "/not-modified", kept));
    ASSERT_TRUE(writeKeptDocument(kept, {"the kept text", "\"k1\"", ""}));
    const auto fetched = fetchDocument(nullptr, host, "/not-modified", kept);
    EXPECT_TRUE(fetched && fetched->fromKeptCopy && fetched->document.text == "the kept text");
    DeleteFileA(kept.c_str());
}

// Shorter limits than the program's: a silent server ends at the idle limit,
// a trickling one at the whole-fetch limit, both as failures; a fetch given up
// at its deadline asks for nothing more, even when the server keeps
// redirecting; the next fetch is unharmed.
TEST(HttpRawServer, SlowServersEndAsFailuresWithinTheLimits) {
    REQUIRE_SERVER("HERALDER_RAW_HOST", host);
    const struct {
        const char* path;
        DWORD idleMs, totalMs, atLeastMs, atMostMs;
    } cases[] = {{"/silent", 1000, 3000, 900, 2900},
                 {"/trickle", 1000, 3000, 2900, 6000},
                 {"/slow-loop", 5000, 1000, 900, 2900}};  // 0.6 s a hop
    for (const auto& c : cases) {
        const int requestsBefore = loopRequests(host);
        setFetchLimits({c.idleMs, c.totalMs});
        const DWORD start = GetTickCount();
        EXPECT_FALSE(fetchServerFile(nullptr, host, c.path)) << c.path;
        const DWORD took = GetTickCount() - start;
        setFetchLimits({});
        EXPECT_GE(took, c.atLeastMs) << c.path;
        EXPECT_LE(took, c.atMostMs) << c.path;
        if (c.path != std::string("/slow-loop")) continue;
        Sleep(3000);  // time for the rest of the hops the worker must not ask for
        EXPECT_LE(loopRequests(host) - requestsBefore, 2);
    }
    EXPECT_EQ(fetchServerFile(nullptr, host, "/extra"), "Hello");
}

// A day's fetch of a 100 KB document from a server set up as a publisher's:
// compressed the first time, a few hundred bytes when nothing changed, and a
// kept copy of another document is a full fetch again. Nothing is kept until asked to.
TEST(HttpRealServer, KeptCopyMakesAnUnchangedDocumentCheap) {
    REQUIRE_SERVER("HERALDER_HTTP_HOST", host);
    const auto want = readFileBytes(testEnv("HERALDER_HTTP_ROOT") + "\\update\\large.txt");
    ASSERT_TRUE(want && want->size() > 100000);
    const std::string kept = testKeptPath();
    const struct {
        const char* what;
        std::optional<std::string> keptFile;  // written before the fetch; nullopt: as left
        bool fromKeptCopy;
        long atMostBytes;
    } days[] = {
        {"first day", std::nullopt, false, 40000},
        {"no news", std::nullopt, true, 1024},
        {"no news again", std::nullopt, true, 1024},
        {"copy of another document", formatKeptDocument({"old", "\"stale\"", ""}), false, 40000},
    };
    for (const auto& day : days) {
        SCOPED_TRACE(day.what);
        if (day.keptFile) std::ofstream(kept, std::ios::binary) << *day.keptFile;
        const std::string log = accessLog();
        const auto fetched = fetchDocument(nullptr, host, "/update/large.txt", kept);
        ASSERT_TRUE(fetched);
        EXPECT_EQ(fetched->fromKeptCopy, day.fromKeptCopy);
        EXPECT_TRUE(fetched->document.text == *want);
        const long bytes = loggedBytesAfter(std::count(log.begin(), log.end(), '\n'));
        EXPECT_GT(bytes, 0);
        EXPECT_LE(bytes, day.atMostBytes);
        keepFetchedDocument(kept, *fetched);
        EXPECT_FALSE(fetched->document.etag.empty());
    }
    DeleteFileA(kept.c_str());
    ASSERT_TRUE(fetchDocument(nullptr, host, "/update/large.txt", kept));
    EXPECT_FALSE(pathExists(kept));
}
