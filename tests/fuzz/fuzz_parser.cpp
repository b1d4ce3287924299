// Fuzzing the update document reader: arbitrary bytes are normalised and read
// both by the one-walk reader and by the plain per-key reader, which must agree
// item for item; the sanitizers watch for any read out of bounds on the way.
#include "tests/fuzz/fuzz_input.h"
#include "feed/document_parser.h"
#include "tests/native/parser_reference.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string_view raw = asText(data, size);
    // The raw bytes as a document too: the reader must cope with lone CRs and
    // LFs. Without any, the two are one document, read once.
    const std::string normalized = normalizeLineEnds(raw);
    require(parseUpdateDocument(normalized) == reference::parse(normalized));
    require(normalized == raw || parseUpdateDocument(raw) == reference::parse(raw));
    return 0;
}
