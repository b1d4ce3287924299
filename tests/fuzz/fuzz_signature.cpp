// The signature line arrives with the document, from anyone on the way: its
// reader must never read outside the text, and what it accepts must be the
// one spelling the publisher's tool writes, so that the agent and the tool
// always agree on which bytes were signed.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "feed/feed_signature.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    auto check = [](bool condition) {
        if (!condition) std::abort();
    };
    const std::string text(reinterpret_cast<const char*>(data), size);

    const SignatureReading reading = readSignatureLine(text);
    if (reading.line) {
        const SignatureLine& line = *reading.line;
        check(text.compare(0, line.signedBytes.size(), line.signedBytes) == 0);
        const std::string prefix(
            text.substr(reading.lineStart, line.signedBytes.size() - reading.lineStart));
        check(prefix == signatureLinePrefix(line.serial, line.expires, line.keyId));
        const std::string written = signatureLine(prefix, line.signature);
        check(text.compare(reading.lineStart, written.size(), written) == 0);
        check(unsignedPart(text) == std::string_view(text).substr(0, reading.lineStart));
    }

    if (auto bytes = base64Decode(text))
        check(base64Decode(base64Encode(std::basic_string_view<uint8_t>(
                  reinterpret_cast<const uint8_t*>(bytes->data()), bytes->size()))) == bytes);
    if (auto key = readPublicKeyPem(text))
        check(readPublicKeyPem(publicKeyPem(key->point))->id == key->id);

    const SignatureRecord record = parseSignatureRecord(text);
    const std::string again = formatSignatureRecord(record);
    check(formatSignatureRecord(parseSignatureRecord(again)) == again);
    return 0;
}
