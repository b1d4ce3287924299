// The signature line arrives with the document, from anyone on the way: its
// reader must never read outside the text, and what it accepts must be the
// one spelling the publisher's tool writes, so that the agent and the tool
// always agree on which bytes were signed.
#include "tests/fuzz/fuzz_input.h"
#include "feed/feed_signature.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string text(asText(data, size));

    const SignatureReading reading = readSignatureLine(text);
    if (reading.line) {
        const SignatureLine& line = *reading.line;
        require(text.compare(0, line.signedBytes.size(), line.signedBytes) == 0);
        const std::string prefix(
            text.substr(reading.lineStart, line.signedBytes.size() - reading.lineStart));
        require(prefix == signatureLinePrefix(line.serial, line.expires, line.keyId));
        const std::string written = signatureLine(prefix, line.signature);
        require(text.compare(reading.lineStart, written.size(), written) == 0);
        require(unsignedPart(text) == std::string_view(text).substr(0, reading.lineStart));
    }

    if (auto bytes = base64Decode(text))
        require(base64Decode(base64Encode(std::basic_string_view<uint8_t>(
                    reinterpret_cast<const uint8_t*>(bytes->data()), bytes->size()))) == bytes);
    if (auto key = readPublicKeyPem(text))
        require(readPublicKeyPem(publicKeyPem(key->point))->id == key->id);

    const SignatureRecord record = parseSignatureRecord(text);
    const std::string again = formatSignatureRecord(record);
    require(formatSignatureRecord(parseSignatureRecord(again)) == again);
    return 0;
}
