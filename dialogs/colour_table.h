#pragma once
// The colour picker's table of named colours ("HERALDER.CCL"): one colour a
// line, "name=red,green,blue" in decimal. The file is the user's own and may
// have been edited by hand, so reading never fails on content: a line that is
// not a colour is kept as it stands and written back after the colours, so
// saving the table never loses what the picker did not understand.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/colour_model.h"

// A table larger than this is refused whole: no hand-kept table comes near
// it, and the list must stay quick to fill.
inline constexpr std::size_t kMaxColourTableBytes = 1 << 20;
// Longer names are not colours but some other text that happens to hold "=".
inline constexpr std::size_t kMaxColourNameChars = 255;

struct NamedColour {
    std::string name;
    Rgb colour;
    bool operator==(const NamedColour&) const = default;
};

struct ColourTable {
    std::vector<NamedColour> colours;     // in file order
    std::vector<std::string> otherLines;  // not colours, kept verbatim (without line ends)

    // The first colour of that name, compared ASCII case-insensitively.
    NamedColour* find(std::string_view name);
    // Sets the colour of name, or adds it at the end; the index it has.
    std::size_t put(std::string_view name, Rgb colour);
};

// The name as it is stored: blanks around it dropped; nullopt when nothing is
// left, it is too long, or it holds a character that the file cannot carry
// (a line end or another control character).
std::optional<std::string> cleanColourName(std::string_view name);

// One line without its line end; nullopt when it is not a colour. Blanks
// around the name and the numbers are allowed; each number must be 0..255.
// The name ends at the last "=", so a name may itself hold one.
std::optional<NamedColour> parseColourLine(std::string_view line);

// The table in a file's bytes (LF or CR LF line ends; blank lines dropped).
ColourTable parseColourTable(std::string_view bytes);
// The bytes to write: "name=r,g,b\n" per colour, then the kept lines.
std::string formatColourTable(const ColourTable& table);

enum class ColourTableRead { kRead, kMissing, kTooLarge, kUnreadable };
struct ColourTableFile {
    ColourTableRead status = ColourTableRead::kMissing;
    ColourTable table;
};
// Reads the file at path. A missing file is an empty table the picker may
// create; one too large or unreadable is reported, and its table is empty.
ColourTableFile readColourTableFile(const std::string& path);
