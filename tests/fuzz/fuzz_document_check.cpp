// The publisher's document check on arbitrary bytes: it must finish, keep
// within the sanitizers' watch, and point only at lines the file has, in
// order, whatever line ends, braces and NULs the bytes hold.
#include "tests/fuzz/fuzz_input.h"
#include "check/document_check.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string_view raw = asText(data, size);
    // Every picture exists and is a PNG whose name has an even length, so both
    // answers of the folder are taken.
    const ImageReader images = [](const std::string& name) -> std::optional<std::string> {
        if (name.size() % 2) return std::nullopt;
        return std::string("\x89PNG\r\n\x1A\n", 8);
    };
    int lines = 1;
    for (std::size_t i = 0; i < raw.size() && raw[i] != '\0'; ++i)
        if (raw[i] == '\n' || (raw[i] == '\r' && (i + 1 == raw.size() || raw[i + 1] != '\n')))
            ++lines;
    int last = 1;
    for (const Finding& f : checkUpdateDocument(raw, images)) {
        require(f.line >= last && f.line <= lines && !f.text.empty());
        last = f.line;
    }
    return 0;
}
