// The signature line, the key files and the acceptance rules, with a stand-in
// for the cryptography: a "signature" here is the key's name and a hash of
// the signed bytes, enough to see which bytes and which key were used.
#include <gtest/gtest.h>

#include <tuple>

#include "feed/feed_signature.h"
#include "tests/native/feed_test_support.h"

namespace {

constexpr char kP256Pem[] =
    "-----BEGIN PUBLIC KEY-----\n"
    "MFkwEwYHKoZIzj0CAQYIKoZIzj0DAQcDQgAEjAgYrm0iERM2Ehhyu2Fr8q6aS49K\n"
    "Id77uyAF4y6DK8ZTY66VfhJHuCEaHac7puI3WPO9dNWa2XKnjs8ok0w5lA==\n"
    "-----END PUBLIC KEY-----\n";

FeedKey testKey(uint8_t seed) {
    FeedKey key;
    key.point[0] = 4;
    for (std::size_t i = 1; i < key.point.size(); ++i)
        key.point[i] = static_cast<uint8_t>(seed + i);
    key.id = feedKeyId(key.point);
    return key;
}

std::array<uint8_t, 64> fakeSign(const FeedKey& key, std::string_view message) {
    std::array<uint8_t, 64> sig{};
    std::copy(key.point.begin(), key.point.begin() + 32, sig.begin());
    const std::size_t h = std::hash<std::string_view>{}(message);
    for (std::size_t i = 0; i < sizeof h; ++i) sig[32 + i] = static_cast<uint8_t>(h >> (8 * i));
    return sig;
}

bool fakeVerify(const FeedKey& key, std::string_view message, const std::array<uint8_t, 64>& sig) {
    return sig == fakeSign(key, message);
}

std::string signedDocument(std::string_view body, const FeedKey& key, uint64_t serial = 7,
                           std::string_view expires = "2030-01-31", std::string_view end = "\n") {
    const std::string prefix = std::string(body) + signatureLinePrefix(serial, expires, key.id);
    return std::string(body) + signatureLine(prefix.substr(body.size()), fakeSign(key, prefix)) +
           std::string(end);
}

const std::string kBody = ":BEGINTIP\r\nNUMBER 1\r\nTITLE x\r\n:END\r\n";

}  // namespace

TEST(SignatureLine, OnlyOneWellFormedLastLineIsRead) {
    const FeedKey key = testKey(1);
    const std::string good = signedDocument(kBody, key);
    const std::string line = good.substr(kBody.size(), good.size() - kBody.size() - 1);
    const std::string sig = line.substr(line.find(" sig=") + 5);
    std::string twoSpellings = line;  // the last digit's unused bits set
    twoSpellings[twoSpellings.size() - 3] += 1;
    using P = SignatureProblem;
    const std::tuple<const char*, std::string, P> cases[] = {
        {"LF after", good, P::None},
        {"CRLF after", kBody + line + "\r\n", P::None},
        {"nothing after", kBody + line, P::None},
        {"only a line", line, P::None},
        {"marker inside a line", kBody + " " + line, P::NoSignature},
        {"signed over", signedDocument(good, key), P::SignedTwice},
        {"blank line after", kBody + line + "\n\n", P::NotAtEnd},
        {"lone CR after", kBody + line + "\rX", P::NotAtEnd},
        {"oversized", kBody + line + std::string(kMaxSignatureLine, 'A'), P::Malformed},
        {"truncated sig", kBody + line.substr(0, line.size() - 4), P::Malformed},
        {"cut before sig", kBody + line.substr(0, line.find(" sig=")), P::Malformed},
        {"sig too long", kBody + line + "AAAA", P::Malformed},
        {"sig spelt another way", kBody + twoSpellings, P::Malformed},
        {"sig not base64", kBody + line.substr(0, line.size() - 4) + "!!==", P::Malformed},
        {"other version", kBody + ";heralder-signature v2" + line.substr(line.find(" serial=")),
         P::Malformed},
        {"serial 0", signedDocument(kBody, key, 0), P::Malformed},
        {"no such day", signedDocument(kBody, key, 7, "2030-02-29"), P::Malformed},
        {"date form", signedDocument(kBody, key, 7, "01-31-2030"), P::Malformed},
        {"fields reordered",
         kBody + ";heralder-signature v1 expires=2030-01-31 serial=7 key=" + key.id + " sig=" + sig,
         P::Malformed},
    };
    for (const auto& [name, document, want] : cases) {
        const SignatureReading r = readSignatureLine(document);
        EXPECT_EQ(r.problem, want) << name;
        EXPECT_EQ(r.line.has_value(), want == P::None) << name;
    }
    const SignatureReading r = readSignatureLine(good);
    ASSERT_TRUE(r.line);
    EXPECT_EQ(std::tie(r.line->signedBytes, r.line->serial, r.line->expires),
              std::tuple(kBody + line.substr(0, line.find(" sig=")), 7u, "2030-01-31"));
    EXPECT_EQ(unsignedPart(good), kBody);
    EXPECT_EQ(unsignedPart(kBody + line + "\n:END\n"), kBody + line + "\n:END\n");
}

// Signed by a key the agent holds, not expired by more than a day, and no
// older than what was accepted before: anything else is refused. A changed
// byte, a second key, another key and no signature at all are the tool's
// kept verify cases, with the real cryptography.
TEST(CheckFeedSignature, KeyExpiryAndSerialDecide) {
    const FeedKey keys[] = {testKey(1)}, &oldKey = keys[0];
    const int64_t expires = *isoDateToDay("2030-01-31");
    using P = SignatureProblem;
    // Checked with oldKey alone: the document, today, the lowest serial accepted before.
    const std::tuple<const char*, std::string, int64_t, uint64_t, P> cases[] = {
        {"valid", signedDocument(kBody, oldKey), expires, 0, P::None},
        {"a day late", signedDocument(kBody, oldKey), expires + 1, 0, P::None},
        {"two days late", signedDocument(kBody, oldKey), expires + 2, 0, P::Expired},
        {"same serial", signedDocument(kBody, oldKey, 7), expires, 7, P::None},
        {"lower serial", signedDocument(kBody, oldKey, 6), expires, 7, P::OlderSerial},
        {"new key not built in", signedDocument(kBody, testKey(50)), expires, 0, P::UnknownKey},
    };
    for (const auto& [name, document, today, lowest, want] : cases)
        EXPECT_EQ(checkFeedSignature(document, keys, fakeVerify, today, lowest).problem, want)
            << name;
}

TEST(PublicKeyPem, OnlyP256SubjectPublicKeyInfo) {
    const auto key = readPublicKeyPem(kP256Pem);
    ASSERT_TRUE(key);
    EXPECT_EQ(key->id, "8c0818ae6d221113");
    EXPECT_EQ(publicKeyPem(key->point), kP256Pem);  // the tool writes what OpenSSL writes
    EXPECT_TRUE(readPublicKeyPem(withCrLf(kP256Pem)));
    auto armour = [](std::string_view label, std::string_view base64) {
        return "-----BEGIN " + std::string(label) + "-----\n" + std::string(base64) + "-----END " +
               std::string(label) + "-----\n";
    };
    const std::string_view lines = std::string_view(kP256Pem).substr(27, 126);
    const std::string refused[] = {
        "",
        armour("PUBLIC KEY",  // P-384
               "MHYwEAYHKoZIzj0CAQYFK4EEACIDYgAEB8L6GrCDw5GYYuf08zBmge46JF+COS9S\n"
               "AzbUUmybIDZHqdgDt647Ra6RNRL1hrim6EFsTH/ALiWuIIAz8cdnyMj/14Zv6Xoe\n"
               "/VF57tj4koRNk5W8chUCsn8UD0Gjb75B\n"),
        armour("PUBLIC KEY",  // the same P-256 key, compressed
               "MDkwEwYHKoZIzj0CAQYIKoZIzj0DAQcDIgACjAgYrm0iERM2Ehhyu2Fr8q6aS49K\n"
               "Id77uyAF4y6DK8Y=\n"),
        armour("PUBLIC KEY", lines.substr(0, 65)),  // cut short
        armour("PRIVATE KEY", lines),               // a private key file given by mistake
    };
    EXPECT_EQ(armour("PUBLIC KEY", lines), kP256Pem);
    for (const std::string& pem : refused) EXPECT_FALSE(readPublicKeyPem(pem)) << pem;
}

TEST(SignatureDates, RealDaysOnly) {
    EXPECT_EQ(isoDateToDay("2000-01-01"), 10957);
    for (const char* date : {"2000-01-01", "2024-02-29", "2030-12-31", "9999-12-31"})
        EXPECT_EQ(dayToIsoDate(isoDateToDay(date).value()), date);
    for (const char* date : {"1999-12-31", "2023-02-29", "2030-13-01", "2030-00-10", "2030-01-00",
                             "2030-1-01", "2030/01/01", "+030-01-01"})
        EXPECT_FALSE(isoDateToDay(date)) << date;
}

// A record that cannot be read starts again rather than refusing for good.
TEST(SignatureRecord, DamagedRecordStartsAgain) {
    const SignatureRecord record{42, "2030-01-31", "2030-01-20", "bad signature"};
    const SignatureRecord back = parseSignatureRecord(formatSignatureRecord(record));
    EXPECT_TRUE(back.serial == 42 && back.expires == "2030-01-31" &&
                back.refusedDay == "2030-01-20" && back.refusedReason == "bad signature");
    for (const char* damaged : {"", "serial=\n", "serial=abc\nexpires=2030-01-31\n", "serial=-5\n",
                                "expires=2030-01-31\n", "\x01\x02\xff"}) {
        const SignatureRecord r = parseSignatureRecord(damaged);
        EXPECT_TRUE(r.serial == 0 && r.expires.empty()) << damaged;
    }
}
