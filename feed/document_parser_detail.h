#pragma once
// The pieces of the update document reader, for its tests and for the fuzzer.
// Positions are byte offsets into the document text, which ends at its first
// NUL (documentText). "None" is std::nullopt.
//
// A logical line runs from its start to the first control byte (below 32) that
// is not inside braces; braces toggle without nesting and the flag starts
// cleared on every line. The next line begins after the run of control bytes
// that follows. A line "starts with" a word when its first bytes equal the
// word, ASCII case folded, and the text from the line start to the end of the
// document is strictly longer than the word.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "feed/update_item.h"

namespace document {

using Position = std::optional<std::size_t>;

enum class KeyKind : uint8_t { Text, Number, Letter };

struct KeyDef {
    std::string_view name;
    KeyKind kind;
    ItemText UpdateItem::*text;  // for Text keys
    int32_t UpdateItem::*value;  // for Number and Letter keys
};

struct MarkerDef {
    std::string_view marker;
    ItemType type;
};

// The twenty keys in the order in which an item reads them. No key is a prefix
// of another, so a line starts with at most one key.
std::span<const KeyDef> documentKeys();
// The seven begin markers in the order in which they are tried.
std::span<const MarkerDef> blockMarkers();
inline constexpr std::string_view kEndMarker = ":END";

// The text up to its first NUL.
std::string_view documentText(std::string_view document);

// Offset of the byte that ends the logical line starting at p (text.size() when
// the text ends first).
std::size_t lineEnd(std::string_view text, std::size_t p);
Position nextLine(std::string_view text, std::size_t p);
bool lineStartsWith(std::string_view text, std::size_t p, std::string_view word);

Position findNextBlock(std::string_view text, std::size_t p);
Position findBlockEnd(std::string_view text, std::size_t begin);
ItemType blockType(std::string_view text, std::size_t begin);

// Where the value of a key found at line p begins: after the key and any run of
// blanks and '=' signs.
std::size_t valueStart(std::string_view text, std::size_t p, std::string_view key);
// A text value: the bytes from the value start to the line end, braces removed.
std::string textValue(std::string_view text, std::size_t start, std::size_t end);
int32_t numberValue(std::string_view text, std::size_t start);
int32_t letterValue(std::string_view text, std::size_t start);

}  // namespace document
