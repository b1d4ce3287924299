// Fetching from loopback servers started by tests/win/fixtures.sh: a real web
// server for ordinary files and a raw one for replies a real server won't give.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "base/crt_text.h"
#include "base/file_io.h"
#include "feed/http_win.h"
#include "feed/http_reply.h"
#include "feed/kept_document_win.h"
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
        {"/echo", "GET /echo HTTP/1.1\r\nUser-Agent: Quenmark Heralder/17.0a"},
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

int loopRequests(const std::string& host) {
    return std::stoi(fetchServerFile(nullptr, host, "/count").value_or("-1000"));
}

// Redirects are followed a few times, and only within the server asked.
TEST(HttpRawServer, RedirectsStayOnTheServer) {
    REQUIRE_SERVER("HERALDER_RAW_HOST", host);
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"/hop/1", "arrived"},
        {"/hop/5", "arrived"},
        {"/hop/6", std::nullopt},
        {"/hop-absolute", "arrived"},
        {"/hop-other-port", std::nullopt},
        {"/hop-other-host", std::nullopt},
        {"/hop-https", std::nullopt},
    };
    for (const auto& [path, want] : cases)
        EXPECT_EQ(fetchServerFile(nullptr, host, path), want) << path;
    const int before = loopRequests(host);
    EXPECT_FALSE(fetchServerFile(nullptr, host, "/loop"));
    EXPECT_EQ(loopRequests(host) - before, 1 + maxRedirects);
}

// A fetch given up on at its deadline asks for nothing more, even when the
// server keeps redirecting.
TEST(HttpRawServer, AbandonedFetchMakesNoFurtherRequest) {
    REQUIRE_SERVER("HERALDER_RAW_HOST", host);
    const auto count = [&] { return loopRequests(host); };
    const int before = count();
    setFetchLimits({5000, 1000});
    EXPECT_FALSE(fetchServerFile(nullptr, host, "/slow-loop"));  // 0.6 s a hop
    setFetchLimits({});
    Sleep(3000);  // time for the rest of the hops the worker must not ask for
    EXPECT_LE(count() - before, 2);
}

// Only a certificate from a trusted authority, in date and for the host asked,
// gets a request through; any other fails the fetch before a request is sent.
TEST(HttpsServer, OnlyATrustedCurrentCertificateForTheHostIsAccepted) {
    REQUIRE_SERVER("HERALDER_HTTPS_GOOD", good);
    ASSERT_TRUE(trustTestAuthority());
    const auto want = readFileBytes(testEnv("HERALDER_HTTP_ROOT") + "\\update\\images\\large.bin");
    const auto got = fetchServerFile(nullptr, good, "/update/images/large.bin");
    ASSERT_TRUE(got && want);
    EXPECT_TRUE(*got == *want);
    std::vector<std::string> refusedPorts;
    for (const char* var :
         {"HERALDER_HTTPS_EXPIRED", "HERALDER_HTTPS_WRONG_HOST", "HERALDER_HTTPS_UNTRUSTED"}) {
        const std::string host = testEnv(var);
        EXPECT_FALSE(fetchServerFile(nullptr, host, "/update/images/alert.png")) << var;
        refusedPorts.push_back(host.substr(host.rfind(':') + 1));
    }
    Sleep(500);  // the log goes through a pipe
    const std::string log = readFileBytes(testEnv("HERALDER_HTTPS_LOG")).value_or("");
    EXPECT_NE(log.find("/update/images/large.bin"), std::string::npos) << log;
    for (const std::string& port : refusedPorts)
        EXPECT_EQ(log.find(port + " /"), std::string::npos) << port << "\n" << log;
}

namespace {

// A kept copy of the tests' own, away from the user's product folder.
std::string testKeptPath() {
    char folder[MAX_PATH];
    GetTempPathA(MAX_PATH, folder);
    const std::string path = std::string(folder) + "heralder_test.kept";
    DeleteFileA(path.c_str());
    return path;
}

// The bytes lighttpd sent (headers included) for the last request it logged,
// waiting briefly for the line: the log arrives through a pipe.
long lastLoggedBytes(std::size_t linesBefore) {
    for (int tries = 0; tries < 100; ++tries, Sleep(20)) {
        const std::string log = readFileBytes(testEnv("HERALDER_HTTP_LOG")).value_or("");
        if (static_cast<std::size_t>(std::count(log.begin(), log.end(), '\n')) <= linesBefore)
            continue;
        const std::size_t end = log.find_last_not_of('\n');
        return std::atol(log.c_str() + log.find_last_of(' ', end) + 1);
    }
    return -1;
}

std::size_t loggedLines() {
    const std::string log = readFileBytes(testEnv("HERALDER_HTTP_LOG")).value_or("");
    return static_cast<std::size_t>(std::count(log.begin(), log.end(), '\n'));
}

}  // namespace

// A day's fetch of a 100 KB document from a server set up as a publisher's:
// compressed the first time, a few hundred bytes when nothing changed, and a
// damaged kept copy is a full fetch again. Nothing is kept until asked to.
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
        {"damaged copy", "Quenmark Heralder kept document 1\nETag: \"x\"\n", false, 40000},
        {"copy of another document", formatKeptDocument({"old", "\"stale\"", ""}), false, 40000},
    };
    for (const auto& day : days) {
        if (day.keptFile) {
            FILE* f = std::fopen(kept.c_str(), "wb");
            ASSERT_TRUE(f);
            std::fwrite(day.keptFile->data(), 1, day.keptFile->size(), f);
            std::fclose(f);
        }
        const std::size_t lines = loggedLines();
        auto fetched = fetchDocument(nullptr, host, "/update/large.txt", kept);
        ASSERT_TRUE(fetched) << day.what;
        EXPECT_EQ(fetched->fromKeptCopy, day.fromKeptCopy) << day.what;
        EXPECT_TRUE(fetched->document.text == *want) << day.what;
        const long bytes = lastLoggedBytes(lines);
        EXPECT_GT(bytes, 0) << day.what;
        EXPECT_LE(bytes, day.atMostBytes) << day.what;
        keepFetchedDocument(kept, *fetched);
        EXPECT_FALSE(fetched->document.etag.empty()) << day.what;
    }
    // Fetching alone keeps nothing: only the caller that accepted a text keeps it.
    DeleteFileA(kept.c_str());
    ASSERT_TRUE(fetchDocument(nullptr, host, "/update/large.txt", kept));
    EXPECT_FALSE(pathExists(kept));
}

// A compressed reply is judged by its decoded text: a bomb past the length
// limit fails, and a 304 stands for the kept copy only when one was asked about.
TEST(HttpRawServer, CompressedAndNotModifiedRepliesEndAsDefined) {
    REQUIRE_SERVER("HERALDER_RAW_HOST", host);
    const std::pair<const char*, std::optional<std::string>> decoded[] = {
        {"/gzip",
         [] {
             std::string text;
             for (int i = 0; i < 100; ++i) text += "decoded text ";
             return text;
         }()},
        {"/gzip-bomb", std::nullopt},
        {"/huge", std::nullopt},
        {"/no-length", "a body without a length"},
        {"/missing", "<html><h1>404 Not Found</h1></html>"},
    };
    for (const auto& [path, want] : decoded) {
        auto reply = fetchServerReply(nullptr, host, {path, "Accept-Encoding: gzip\r\n", true});
        EXPECT_EQ(reply ? std::optional(reply->body) : std::nullopt, want) << path;
    }

    const std::string kept = testKeptPath();
    EXPECT_FALSE(fetchDocument(nullptr, host, "/not-modified", kept));
    ASSERT_TRUE(writeKeptDocument(kept, {"the kept text", "\"k1\"", ""}));
    auto fetched = fetchDocument(nullptr, host, "/not-modified", kept);
    ASSERT_TRUE(fetched);
    EXPECT_TRUE(fetched->fromKeptCopy);
    EXPECT_EQ(fetched->document.text, "the kept text");
    DeleteFileA(kept.c_str());
}

TEST(HttpServerName, BuildOptionIsAUsableAddress) {
    EXPECT_TRUE(splitServerAddress(publisherServerHost())) << publisherServerHost();
}
