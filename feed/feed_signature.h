#pragma once
// Signed update documents: the signature line a publisher appends, the
// publisher's public key files, and the rules that decide whether the agent
// may act on a document. The cryptography itself is not here: the caller
// passes a function that verifies ECDSA P-256 / SHA-256 (Windows' CNG in the
// agent, OpenSSL in the native tool), so that these rules are the same in
// every program and are tested without either.
//
// The signature travels as the document's last line, a comment to readers
// that know nothing of signatures:
//
//   ;heralder-signature v1 serial=42 expires=2026-12-09 key=3f0c9a1b22d47e10 sig=BASE64
//
// The signature covers every byte before " sig=": the whole document before
// the line, line ends included, and the line's own serial, expiry and key.
// sig is the raw 64-byte r||s form in base64; key is the first eight bytes of
// the public point's X coordinate in hex, which names the key to try.
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

inline constexpr std::string_view kSignatureMarker = ";heralder-signature ";
// A longer line is no signature of ours: refused before anything is decoded.
inline constexpr std::size_t kMaxSignatureLine = 300;

enum class SignatureProblem {
    None,
    NoSignature,
    Malformed,     // the line cannot be read
    NotAtEnd,      // text follows the signature line
    SignedTwice,   // more than one signature line
    UnknownKey,    // no built-in key has the line's key name
    BadSignature,  // the key does not verify the signed bytes
    Expired,       // the expiry date (plus a day) has passed
    OlderSerial,   // lower than a serial accepted before: a replay
};
// A few words for a person: "bad signature", "expired"...
const char* signatureProblemText(SignatureProblem problem);

struct SignatureLine {
    std::string_view signedBytes;  // every byte the signature covers
    uint64_t serial = 0;
    std::string expires;  // YYYY-MM-DD
    int64_t expiresDay = 0;
    std::string keyId;
    std::array<uint8_t, 64> signature{};
};

struct SignatureReading {
    std::optional<SignatureLine> line;
    SignatureProblem problem = SignatureProblem::None;
    std::size_t lineStart = 0;  // offset of the signature line, when there is one
};
SignatureReading readSignatureLine(std::string_view document);

// The document without its trailing signature line, as the publisher wrote it;
// the whole document when it has none.
std::string_view unsignedPart(std::string_view document);
// The signature line for these bytes (to be appended to signedPrefix).
std::string signatureLinePrefix(uint64_t serial, std::string_view expires, std::string_view keyId);
std::string signatureLine(std::string_view prefix, const std::array<uint8_t, 64>& signature);

// SubjectPublicKeyInfo for an id-ecPublicKey on prime256v1, up to the point.
inline constexpr uint8_t kP256SpkiPrefix[] = {0x30, 0x59, 0x30, 0x13, 0x06, 0x07, 0x2a, 0x86, 0x48,
                                              0xce, 0x3d, 0x02, 0x01, 0x06, 0x08, 0x2a, 0x86, 0x48,
                                              0xce, 0x3d, 0x03, 0x01, 0x07, 0x03, 0x42, 0x00};

// A publisher's public key (P-256): the uncompressed point 04||X||Y.
struct FeedKey {
    std::array<uint8_t, 65> point{};
    std::string id;  // 16 hex digits of X
};
// A "PUBLIC KEY" PEM file (SubjectPublicKeyInfo) holding a P-256 key, as the
// tool and OpenSSL write it; nullopt for anything else.
std::optional<FeedKey> readPublicKeyPem(std::string_view pem);
std::string publicKeyPem(const std::array<uint8_t, 65>& point);
std::string feedKeyId(const std::array<uint8_t, 65>& point);

// Days from 1970-01-01 of a "YYYY-MM-DD" date (a real day, years 2000-9999).
std::optional<int64_t> isoDateToDay(std::string_view text);
std::string dayToIsoDate(int64_t day);
// A day of tolerance for clocks that are a little wrong.
bool expiryPassed(int64_t expiresDay, int64_t today);

// A plain function: the agent's is CNG, the tool's OpenSSL or CNG.
using SignatureVerifier = bool (*)(const FeedKey& key, std::string_view message,
                                   const std::array<uint8_t, 64>& signature);

struct SignatureVerdict {
    SignatureProblem problem = SignatureProblem::None;
    std::optional<SignatureLine> line;  // when one was read
    const FeedKey* key = nullptr;       // the key that verified it
    bool accepted() const { return problem == SignatureProblem::None; }
};
// Whether a document may be acted on: signed by one of keys, not expired
// today, and with a serial not lower than lowestSerial (0: none seen yet).
SignatureVerdict checkFeedSignature(std::string_view document, std::span<const FeedKey> keys,
                                    SignatureVerifier verify, int64_t today, uint64_t lowestSerial);

// What the agent remembers between runs, kept in a small file of its own:
// the highest serial accepted and its expiry, and the last refusal (shown in
// system information; its day limits the message to one a day).
struct SignatureRecord {
    uint64_t serial = 0;
    std::string expires;
    std::string refusedDay;  // YYYY-MM-DD
    std::string refusedReason;
};
// A missing or damaged record reads as empty: everything starts again.
SignatureRecord parseSignatureRecord(std::string_view text);
std::string formatSignatureRecord(const SignatureRecord& record);

std::string base64Encode(std::span<const uint8_t> bytes);
std::optional<std::string> base64Decode(std::string_view text);  // no white space inside
