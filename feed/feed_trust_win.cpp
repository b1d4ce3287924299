// Document acceptance for builds with keys (see feed_trust_win.h). The keys are
// compiled in as the publisher's PEM files; bcrypt.dll is delay-loaded, so a
// build without keys, or a run that fetches nothing, never loads it.
#include "feed/feed_trust_win.h"

#include "base/win_headers.h"
#include <bcrypt.h>

#include "base/crt_text.h"
#include "base/file_io.h"
#include "settings/file_locations_win.h"

#ifndef NT_SUCCESS
#define NT_SUCCESS(status) (static_cast<NTSTATUS>(status) >= 0)
#endif

namespace {

// A build without keys leaves the signature code out altogether.
#ifdef HERALDER_FEED_KEYS_INC
constexpr bool kKeysBuiltIn = true;
const char* const kBuiltInKeyTexts[] = {
#include HERALDER_FEED_KEYS_INC
};
#else
constexpr bool kKeysBuiltIn = false;
const char* const kBuiltInKeyTexts[] = {nullptr};
#endif

std::string recordFile(const std::string& recordPath) {
    return recordPath.empty() ? getUserHeralderPath("Heralder.sig") : recordPath;
}

SignatureRecord readRecord(const std::string& path) {
    const auto text = readFileBytes(path);
    return text && text->size() < 4096 ? parseSignatureRecord(*text) : SignatureRecord{};
}

int64_t dayOf(std::time_t now) {
    return static_cast<int64_t>(now / 86400);
}

struct AlgorithmCloser {
    BCRYPT_ALG_HANDLE handle = nullptr;
    ~AlgorithmCloser() {
        if (handle) BCryptCloseAlgorithmProvider(handle, 0);
    }
};

}  // namespace

const std::vector<FeedKey>& builtInFeedKeys() {
    static const std::vector<FeedKey> keys = [] {
        std::vector<FeedKey> out;
        for (const char* text : kBuiltInKeyTexts)
            if (text)
                if (auto key = readPublicKeyPem(text)) out.push_back(*key);
        return out;
    }();
    return keys;
}

std::optional<std::array<uint8_t, 32>> sha256WithCng(std::string_view message) {
    AlgorithmCloser sha256;
    if (!NT_SUCCESS(
            BCryptOpenAlgorithmProvider(&sha256.handle, BCRYPT_SHA256_ALGORITHM, nullptr, 0)))
        return std::nullopt;
    BCRYPT_HASH_HANDLE hash = nullptr;
    if (!NT_SUCCESS(BCryptCreateHash(sha256.handle, &hash, nullptr, 0, nullptr, 0, 0)))
        return std::nullopt;
    std::array<uint8_t, 32> digest{};
    const bool ok =
        NT_SUCCESS(BCryptHashData(hash, reinterpret_cast<PUCHAR>(const_cast<char*>(message.data())),
                                  static_cast<ULONG>(message.size()), 0)) &&
        NT_SUCCESS(BCryptFinishHash(hash, digest.data(), digest.size(), 0));
    BCryptDestroyHash(hash);
    if (!ok) return std::nullopt;
    return digest;
}

bool verifyWithCng(const FeedKey& key, std::string_view message,
                   const std::array<uint8_t, 64>& signature) {
    AlgorithmCloser ecdsa;
    if (!NT_SUCCESS(
            BCryptOpenAlgorithmProvider(&ecdsa.handle, BCRYPT_ECDSA_P256_ALGORITHM, nullptr, 0)))
        return false;
    auto digest = sha256WithCng(message);
    if (!digest) return false;
    struct {
        BCRYPT_ECCKEY_BLOB header;
        uint8_t xy[64];
    } blob{{BCRYPT_ECDSA_PUBLIC_P256_MAGIC, 32}, {}};
    std::copy(key.point.begin() + 1, key.point.end(), blob.xy);
    BCRYPT_KEY_HANDLE publicKey = nullptr;
    if (!NT_SUCCESS(BCryptImportKeyPair(ecdsa.handle, nullptr, BCRYPT_ECCPUBLIC_BLOB, &publicKey,
                                        reinterpret_cast<PUCHAR>(&blob), sizeof blob, 0)))
        return false;
    std::array<uint8_t, 64> sig = signature;
    // Only STATUS_SUCCESS is a valid signature; STATUS_INVALID_SIGNATURE and
    // any other failure are not.
    const bool ok = BCryptVerifySignature(publicKey, nullptr, digest->data(), digest->size(),
                                          sig.data(), sig.size(), 0) == 0;
    BCryptDestroyKey(publicKey);
    return ok;
}

DocumentTrust judgeServerDocument(std::string_view document, std::time_t now,
                                  const std::string& recordPath) {
    DocumentTrust trust;
    if (!kKeysBuiltIn) return trust;
    const std::vector<FeedKey>& keys = builtInFeedKeys();
    const std::string path = recordFile(recordPath);
    SignatureRecord record = readRecord(path);
    const SignatureVerdict verdict =
        checkFeedSignature(document, keys, verifyWithCng, dayOf(now), record.serial);
    if (verdict.accepted()) {
        record.serial = verdict.line->serial;
        record.expires = verdict.line->expires;
    } else {
        const std::string today = dayToIsoDate(dayOf(now));
        trust.accepted = false;
        trust.tellUser = record.refusedDay != today;
        record.refusedDay = today;
        record.refusedReason = signatureProblemText(verdict.problem);
    }
    if (recordPath.empty()) ensureDataFolders();
    replaceFileContents(path, {formatSignatureRecord(record)});
    return trust;
}

std::string localDocumentMark(std::string_view document, std::time_t now) {
    if (!kKeysBuiltIn) return {};
    const std::vector<FeedKey>& keys = builtInFeedKeys();
    const SignatureVerdict verdict =
        checkFeedSignature(document, keys, verifyWithCng, dayOf(now), 0);
    if (verdict.accepted()) return {};
    return verdict.problem == SignatureProblem::NoSignature ? "unsigned" : "not verified";
}

std::string signatureStatusText(const std::string& recordPath) {
    if (!kKeysBuiltIn) return {};
    const std::vector<FeedKey>& keys = builtInFeedKeys();
    std::string text = "key";
    for (const FeedKey& key : keys) text += " " + key.id;
    const SignatureRecord record = readRecord(recordFile(recordPath));
    text += record.serial ? "; last accepted serial " + std::to_string(record.serial) +
                                ", expires " + record.expires
                          : "; none accepted yet";
    if (!record.refusedDay.empty())
        text += "; last refused " + record.refusedDay + ": " + record.refusedReason;
    return text;
}
