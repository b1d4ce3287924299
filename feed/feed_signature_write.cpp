// The publisher's side of feed_signature.h: the signature line and the public
// key file as the tool writes them. Kept apart from the readers so that
// heralder.exe, which only reads, carries none of it.
#include <algorithm>
#include <vector>

#include "feed/feed_signature.h"

namespace {

constexpr char kBase64[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view kPemBegin = "-----BEGIN PUBLIC KEY-----";
constexpr std::string_view kPemEnd = "-----END PUBLIC KEY-----";

}  // namespace

std::string signatureLinePrefix(uint64_t serial, std::string_view expires, std::string_view keyId) {
    std::string line(kSignatureMarker);
    line += "v1 serial=" + std::to_string(serial) + " expires=";
    line += expires;
    line += " key=";
    line += keyId;
    return line;
}

std::string signatureLine(std::string_view prefix, const std::array<uint8_t, 64>& signature) {
    return std::string(prefix) + " sig=" + base64Encode(signature);
}

std::string publicKeyPem(const std::array<uint8_t, 65>& point) {
    std::vector<uint8_t> der(std::begin(kP256SpkiPrefix), std::end(kP256SpkiPrefix));
    der.insert(der.end(), point.begin(), point.end());
    const std::string base64 = base64Encode(der);
    std::string pem(kPemBegin);
    pem += '\n';
    for (std::size_t at = 0; at < base64.size(); at += 64) pem += base64.substr(at, 64) + '\n';
    pem += kPemEnd;
    pem += '\n';
    return pem;
}

std::string base64Encode(std::span<const uint8_t> bytes) {
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t n = std::min<std::size_t>(3, bytes.size() - i);
        uint32_t v = static_cast<uint32_t>(bytes[i]) << 16;
        if (n > 1) v |= static_cast<uint32_t>(bytes[i + 1]) << 8;
        if (n > 2) v |= bytes[i + 2];
        for (std::size_t k = 0; k < 4; ++k) out += k <= n ? kBase64[(v >> (18 - 6 * k)) & 63] : '=';
    }
    return out;
}
