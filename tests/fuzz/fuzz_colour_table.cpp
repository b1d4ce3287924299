// Arbitrary bytes as a colour table file: reading never fails, and what a
// save writes reads back as the same table, so saving a table the user edited
// by hand loses nothing a second time.
#include "tests/fuzz/fuzz_input.h"
#include "dialogs/colour_table.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const ColourTable first = parseColourTable(asText(data, size));
    for (const NamedColour& entry : first.colours) {
        require(!entry.name.empty() && entry.name.size() <= kMaxColourNameChars);
        require(entry.colour.red <= 255 && entry.colour.green <= 255 && entry.colour.blue <= 255);
    }
    const ColourTable second = parseColourTable(formatColourTable(first));
    require(second.colours == first.colours);
    require(second.otherLines == first.otherLines);
    return 0;
}
