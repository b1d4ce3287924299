#pragma once
// The cryptography behind keygen, sign and verify: OpenSSL in the native tool,
// Windows' CNG in the Windows one. Both read and write the same files: the
// private key as an unencrypted PKCS#8 "PRIVATE KEY" PEM, the public key as
// the SubjectPublicKeyInfo PEM that feed/feed_signature.h reads.
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "feed/feed_signature.h"

struct GeneratedKey {
    std::string privatePem;
    std::array<uint8_t, 65> publicPoint{};
};
std::optional<GeneratedKey> generateFeedKey();

struct Signature {
    std::array<uint8_t, 64> bytes{};        // raw r||s
    std::array<uint8_t, 65> publicPoint{};  // of the signing key, for its name
};
// Signs message (SHA-256, ECDSA P-256) with a private key file's text;
// nullopt when the text is no P-256 private key.
std::optional<Signature> signWithPrivateKey(std::string_view privatePem, std::string_view message);

bool verifyFeedSignature(const FeedKey& key, std::string_view message,
                         const std::array<uint8_t, 64>& signature);
