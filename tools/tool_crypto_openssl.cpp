// The tool's keys and signatures with OpenSSL (see tool_crypto.h). OpenSSL
// speaks DER signatures; the document carries the raw r||s form that CNG uses,
// so each signature is converted on the way in and out.
#include <memory>

#include <openssl/bio.h>
#include <openssl/core_names.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/pem.h>

#include "tools/tool_crypto.h"

namespace {

template <typename T, void (*Free)(T*)>
struct Deleter {
    void operator()(T* p) const { Free(p); }
};
using Key = std::unique_ptr<EVP_PKEY, Deleter<EVP_PKEY, EVP_PKEY_free>>;
using Bio = std::unique_ptr<BIO, Deleter<BIO, BIO_free_all>>;
using DigestContext = std::unique_ptr<EVP_MD_CTX, Deleter<EVP_MD_CTX, EVP_MD_CTX_free>>;
using EcdsaSig = std::unique_ptr<ECDSA_SIG, Deleter<ECDSA_SIG, ECDSA_SIG_free>>;

std::optional<std::array<uint8_t, 65>> publicPointOf(EVP_PKEY* key) {
    char group[32] = {};
    std::size_t groupSize = 0;
    if (EVP_PKEY_get_base_id(key) != EVP_PKEY_EC ||
        !EVP_PKEY_get_utf8_string_param(key, OSSL_PKEY_PARAM_GROUP_NAME, group, sizeof group,
                                        &groupSize) ||
        std::string_view(group) != "prime256v1")
        return std::nullopt;
    std::array<uint8_t, 65> point{};
    std::size_t size = 0;
    EVP_PKEY_set_utf8_string_param(key, OSSL_PKEY_PARAM_EC_POINT_CONVERSION_FORMAT, "uncompressed");
    if (!EVP_PKEY_get_octet_string_param(key, OSSL_PKEY_PARAM_PUB_KEY, point.data(), point.size(),
                                         &size) ||
        size != point.size() || point[0] != 4)
        return std::nullopt;
    return point;
}

Bio textBio(std::string_view text) {
    return Bio(BIO_new_mem_buf(text.data(), static_cast<int>(text.size())));
}

}  // namespace

std::optional<GeneratedKey> generateFeedKey() {
    Key key(EVP_EC_gen("P-256"));
    if (!key) return std::nullopt;
    Bio out(BIO_new(BIO_s_mem()));
    if (!out ||
        !PEM_write_bio_PrivateKey(out.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr))
        return std::nullopt;
    char* data = nullptr;
    const long size = BIO_get_mem_data(out.get(), &data);
    const auto point = publicPointOf(key.get());
    if (!point) return std::nullopt;
    return GeneratedKey{std::string(data, static_cast<std::size_t>(size)), *point};
}

std::optional<Signature> signWithPrivateKey(std::string_view privatePem, std::string_view message) {
    Bio in = textBio(privatePem);
    Key key(in ? PEM_read_bio_PrivateKey(in.get(), nullptr, nullptr, nullptr) : nullptr);
    if (!key) return std::nullopt;
    Signature signature;
    const auto point = publicPointOf(key.get());
    if (!point) return std::nullopt;
    signature.publicPoint = *point;

    DigestContext context(EVP_MD_CTX_new());
    unsigned char der[80];
    std::size_t derSize = sizeof der;
    if (!context ||
        EVP_DigestSignInit(context.get(), nullptr, EVP_sha256(), nullptr, key.get()) != 1 ||
        EVP_DigestSign(context.get(), der, &derSize,
                       reinterpret_cast<const unsigned char*>(message.data()), message.size()) != 1)
        return std::nullopt;
    const unsigned char* p = der;
    EcdsaSig sig(d2i_ECDSA_SIG(nullptr, &p, static_cast<long>(derSize)));
    if (!sig) return std::nullopt;
    if (BN_bn2binpad(ECDSA_SIG_get0_r(sig.get()), signature.bytes.data(), 32) != 32 ||
        BN_bn2binpad(ECDSA_SIG_get0_s(sig.get()), signature.bytes.data() + 32, 32) != 32)
        return std::nullopt;
    return signature;
}

bool verifyFeedSignature(const FeedKey& key, std::string_view message,
                         const std::array<uint8_t, 64>& signature) {
    const std::string pem = publicKeyPem(key.point);  // the BIO reads it in place
    Bio in = textBio(pem);
    Key publicKey(in ? PEM_read_bio_PUBKEY(in.get(), nullptr, nullptr, nullptr) : nullptr);
    EcdsaSig sig(ECDSA_SIG_new());
    if (!publicKey || !sig) return false;
    BIGNUM* r = BN_bin2bn(signature.data(), 32, nullptr);
    BIGNUM* s = BN_bin2bn(signature.data() + 32, 32, nullptr);
    if (!r || !s || !ECDSA_SIG_set0(sig.get(), r, s)) {
        BN_free(r);
        BN_free(s);
        return false;
    }
    unsigned char* der = nullptr;
    const int derSize = i2d_ECDSA_SIG(sig.get(), &der);
    if (derSize <= 0) return false;
    DigestContext context(EVP_MD_CTX_new());
    const bool ok =
        context &&
        EVP_DigestVerifyInit(context.get(), nullptr, EVP_sha256(), nullptr, publicKey.get()) == 1 &&
        EVP_DigestVerify(context.get(), der, static_cast<std::size_t>(derSize),
                         reinterpret_cast<const unsigned char*>(message.data()),
                         message.size()) == 1;
    OPENSSL_free(der);
    return ok;
}
