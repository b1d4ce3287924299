// The checks a reply passes before its body is read, the server name, and the
// kept copy of the update document with the conditional request it allows.
#include <gtest/gtest.h>

#include "feed/http_reply.h"
#include "feed/kept_document.h"

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

// The kept copy: whatever it holds comes back unchanged, and any damage makes
// it unusable rather than a shorter or different document.
TEST(KeptDocument, ReadsBackWhatWasKeptAndRefusesDamage) {
    const KeptDocument copies[] = {
        {"", "", ""},
        {":BEGINALERT\r\nNUMBER:1\r\n:END\r\n", "\"5f3-gzip\"", "Wed, 25 Nov 2026 06:54:30 GMT"},
        {std::string("\0\n\xff Length: 3\n\n", 16), "W/\"x\"", ""},
    };
    for (const KeptDocument& kept : copies) {
        auto back = parseKeptDocument(formatKeptDocument(kept));
        ASSERT_TRUE(back) << kept.etag;
        EXPECT_TRUE(back->text == kept.text && back->etag == kept.etag &&
                    back->lastModified == kept.lastModified)
            << kept.etag;
    }

    const std::string good = formatKeptDocument(copies[1]);
    const std::pair<const char*, std::string> damaged[] = {
        {"empty", ""},
        {"cut short", good.substr(0, good.size() - 1)},
        {"cut in the header", good.substr(0, 40)},
        {"a byte more", good + "x"},
        {"a text byte changed", good.substr(0, good.size() - 3) + "EN" + good.back()},
        {"not ours", "Some other file\n" + good.substr(good.find('\n') + 1)},
        {"length changed", std::string(good).replace(good.find("Length: ") + 8, 2, "99")},
        {"text only", copies[1].text},
    };
    for (const auto& [what, file] : damaged) EXPECT_FALSE(parseKeptDocument(file)) << what;
}

// The headers a document fetch sends: a validator that could smuggle in a
// header of its own is never sent, and without any the request is not conditional.
TEST(KeptDocument, RequestHeadersAskOnlyWithUsableValidators) {
    constexpr char gzip[] = "Accept-Encoding: gzip, deflate\r\n";
    const struct {
        const char* what;
        std::optional<KeptDocument> kept;
        std::string extra;
    } cases[] = {
        {"no copy", std::nullopt, ""},
        {"no validators", KeptDocument{"text", "", ""}, ""},
        {"ETag", KeptDocument{"text", "\"a1\"", ""}, "If-None-Match: \"a1\"\r\n"},
        {"both", KeptDocument{"text", "\"a1\"", "Wed, 25 Nov 2026 06:54:30 GMT"},
         "If-None-Match: \"a1\"\r\nIf-Modified-Since: Wed, 25 Nov 2026 06:54:30 GMT\r\n"},
        {"header in the ETag",
         KeptDocument{"text", "\"a1\"\r\nX-Evil: 1", "Wed, 25 Nov 2026 06:54:30 GMT"},
         "If-Modified-Since: Wed, 25 Nov 2026 06:54:30 GMT\r\n"},
        {"oversized ETag", KeptDocument{"text", std::string(2000, 'e'), ""}, ""},
    };
    for (const auto& c : cases) {
        const KeptDocument* kept = c.kept ? &*c.kept : nullptr;
        EXPECT_EQ(documentRequestHeaders(kept), gzip + c.extra) << c.what;
        EXPECT_EQ(isConditionalRequest(kept), !c.extra.empty()) << c.what;
    }
}

// Only a conditional request gives a status meaning: an error page is still
// the document, and a 304 nobody asked for has no text to stand for.
TEST(KeptDocument, StatusMattersOnlyForAConditionalRequest) {
    const struct {
        unsigned status;
        bool conditional;
        DocumentReply want;
    } cases[] = {
        {200, false, DocumentReply::Body},    {200, true, DocumentReply::Body},
        {404, true, DocumentReply::Body},     {500, false, DocumentReply::Body},
        {304, true, DocumentReply::KeptCopy}, {304, false, DocumentReply::Failed},
    };
    for (const auto& c : cases)
        EXPECT_EQ(judgeDocumentReply(c.status, c.conditional), c.want)
            << c.status << ' ' << c.conditional;
}
