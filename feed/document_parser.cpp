// The update document reader (see document_parser.h and document_parser_detail.h).
//
// Each key is meant to be searched for separately from the block's begin line,
// stopping at ":END". Because no key is a prefix of another, every line starts
// with at most one key, so one walk over a block's lines finds all twenty keys
// and the block's end together, with the same first-occurrence and ":END"
// results as twenty separate searches. Lines are found with a byte class
// table and, inside braces, a memchr for the closing brace, which keeps the
// reader linear however the braces and line breaks fall.
#include "feed/document_parser.h"

#include <array>
#include <bit>
#include <cstring>

#include "base/ascii.h"
#include "base/crt_text.h"
#include "feed/document_parser_detail.h"

namespace document {
namespace {

constexpr KeyDef kKeys[] = {
    {"DATE", KeyKind::Text, &UpdateItem::date, nullptr},
    {"ORIGINATOR", KeyKind::Text, &UpdateItem::originator, nullptr},
    {"APPLICATION", KeyKind::Text, &UpdateItem::application, nullptr},
    {"INIFILE", KeyKind::Text, &UpdateItem::iniFile, nullptr},
    {"SECTION", KeyKind::Text, &UpdateItem::section, nullptr},
    {"VERSION", KeyKind::Number, nullptr, &UpdateItem::version},
    {"SUBVERSION", KeyKind::Number, nullptr, &UpdateItem::subVersion},
    {"REVISION", KeyKind::Letter, nullptr, &UpdateItem::revision},
    {"PATCH", KeyKind::Number, nullptr, &UpdateItem::patch},
    {"IMPORTANCE", KeyKind::Number, nullptr, &UpdateItem::importance},
    {"TITLE", KeyKind::Text, &UpdateItem::title, nullptr},
    {"URL", KeyKind::Text, &UpdateItem::url, nullptr},
    {"PLAINTEXT", KeyKind::Text, &UpdateItem::plainText, nullptr},
    {"KEYWORDS", KeyKind::Text, &UpdateItem::keywords, nullptr},
    {"IGNOREUNTIL", KeyKind::Text, &UpdateItem::ignoreUntil, nullptr},
    {"IFREGISTERED", KeyKind::Number, nullptr, &UpdateItem::ifRegistered},
    {"IFEVAL", KeyKind::Number, nullptr, &UpdateItem::ifEval},
    {"BETA", KeyKind::Number, nullptr, &UpdateItem::beta},
    {"NUMBER", KeyKind::Number, nullptr, &UpdateItem::number},
    {"GRAPHIC", KeyKind::Text, &UpdateItem::graphic, nullptr},
};
constexpr std::size_t kKeyCount = std::size(kKeys);
static_assert(kKeyCount <= 32, "key sets are 32-bit masks");

constexpr MarkerDef kMarkers[] = {
    {":BEGINALERT", ItemType::Alert},
    {":BEGINVERSION", ItemType::Version},
    {":BEGINTIP", ItemType::Tip},
    {":BEGINNOTICE", ItemType::Notice},
    {":BEGINOFFTOPIC", ItemType::OffTopic},
    {":BEGINCHANGEINI", ItemType::SettingUpdate},
    {":BEGINNEWGRAPHIC", ItemType::GraphicUpdate},
};

enum ByteClass : uint8_t { Plain, Control, OpenBrace, CloseBrace };

constexpr std::array<uint8_t, 256> kByteClass = [] {
    std::array<uint8_t, 256> t{};
    for (int c = 0; c < 32; ++c) t[c] = Control;
    t['{'] = OpenBrace;
    t['}'] = CloseBrace;
    return t;
}();

// For every possible first byte, the keys whose first letter folds to it.
constexpr std::array<uint32_t, 256> kKeysByFirstByte = [] {
    std::array<uint32_t, 256> t{};
    for (int c = 0; c < 256; ++c)
        for (std::size_t k = 0; k < kKeyCount; ++k)
            if (asciiUpper(static_cast<char>(c)) == asciiUpper(kKeys[k].name[0]))
                t[c] |= uint32_t{1} << k;
    return t;
}();

inline const unsigned char* bytes(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

// Index of the key that the line at p starts with, or -1.
int keyAt(std::string_view text, std::size_t p) {
    for (uint32_t mask = kKeysByFirstByte[bytes(text)[p]]; mask; mask &= mask - 1) {
        int k = std::countr_zero(mask);
        if (lineStartsWith(text, p, kKeys[k].name)) return k;
    }
    return -1;
}

void storeValue(std::string_view text, std::size_t line, std::size_t end, const KeyDef& key,
                UpdateItem& item) {
    std::size_t start = valueStart(text, line, key.name);
    switch (key.kind) {
        case KeyKind::Text:
            item.*key.text = textValue(text, start, end);
            break;
        case KeyKind::Number:
            item.*key.value = numberValue(text, start);
            break;
        case KeyKind::Letter:
            item.*key.value = letterValue(text, start);
            break;
    }
}

// Reads every key of the block at begin into item; returns the ":END" line.
Position scanBlock(std::string_view text, std::size_t begin, UpdateItem& item) {
    const unsigned char* s = bytes(text);
    const std::size_t n = text.size();
    uint32_t found = 0;
    std::size_t p = begin;
    for (;;) {
        if (lineStartsWith(text, p, kEndMarker)) return p;
        std::size_t end = lineEnd(text, p);
        int k = keyAt(text, p);
        if (k >= 0 && !(found & (uint32_t{1} << k))) {
            found |= uint32_t{1} << k;
            storeValue(text, p, end, kKeys[k], item);
        }
        while (end < n && s[end] < 32) ++end;
        if (end == n) return std::nullopt;
        p = end;
    }
}

}  // namespace

std::span<const KeyDef> documentKeys() {
    return kKeys;
}
std::span<const MarkerDef> blockMarkers() {
    return kMarkers;
}

std::string_view documentText(std::string_view document) {
    const void* nul = std::memchr(document.data(), 0, document.size());
    if (!nul) return document;
    return document.substr(0, static_cast<const char*>(nul) - document.data());
}

std::size_t lineEnd(std::string_view text, std::size_t p) {
    const unsigned char* s = bytes(text);
    const std::size_t n = text.size();
    std::size_t i = p;
    while (i < n) {
        switch (kByteClass[s[i]]) {
            case Plain:
            case CloseBrace:
                ++i;
                break;
            case Control:
                return i;
            case OpenBrace: {
                // Inside braces only the closing brace matters.
                const void* close = std::memchr(s + i + 1, '}', n - i - 1);
                if (!close) return n;
                i = static_cast<const unsigned char*>(close) - s + 1;
                break;
            }
        }
    }
    return n;
}

Position nextLine(std::string_view text, std::size_t p) {
    const unsigned char* s = bytes(text);
    std::size_t i = lineEnd(text, p);
    while (i < text.size() && s[i] < 32) ++i;
    if (i >= text.size()) return std::nullopt;
    return i;
}

bool lineStartsWith(std::string_view text, std::size_t p, std::string_view word) {
    if (p >= text.size() || text.size() - p <= word.size()) return false;
    const unsigned char* s = bytes(text) + p;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (asciiUpper(static_cast<char>(s[i])) != asciiUpper(word[i])) return false;
    return true;
}

ItemType blockType(std::string_view text, std::size_t begin) {
    if (begin < text.size() && text[begin] == ':')
        for (const MarkerDef& m : kMarkers)
            if (lineStartsWith(text, begin, m.marker)) return m.type;
    return ItemType::Unknown;
}

Position findNextBlock(std::string_view text, std::size_t p) {
    Position line = p;
    while (line) {
        if (blockType(text, *line) != ItemType::Unknown) return line;
        line = nextLine(text, *line);
    }
    return std::nullopt;
}

std::size_t valueStart(std::string_view text, std::size_t p, std::string_view key) {
    std::size_t i = p + key.size();
    while (i < text.size() && (text[i] == ' ' || text[i] == '=')) ++i;
    return i;
}

std::string textValue(std::string_view text, std::size_t start, std::size_t end) {
    // Branch-free copy: every byte is written, a brace just does not advance.
    std::string value(end - start, '\0');
    char* out = value.data();
    for (std::size_t i = start; i < end; ++i) {
        const char c = text[i];
        *out = c;
        out += (c != '{' && c != '}');
    }
    value.resize(static_cast<std::size_t>(out - value.data()));
    return value;
}

int32_t numberValue(std::string_view text, std::size_t start) {
    // atoi reads from the value start on, across the line end if need be.
    return start < text.size() ? atoiLike(text.substr(start)) : 0;
}

int32_t letterValue(std::string_view text, std::size_t start) {
    return start < text.size() ? bytes(text)[start] : 0;
}

}  // namespace document

std::string normalizeLineEnds(std::string_view document) {
    std::string_view text = document::documentText(document);
    std::string out;
    out.reserve(text.size() + text.size() / 16 + 16);
    std::size_t from = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c != '\r' && c != '\n') continue;
        out.append(text, from, i - from);
        if (c == '\n') out.append("\r\n");
        from = i + 1;
    }
    out.append(text, from);
    return out;
}

namespace {

// Walks the blocks in document order; stops when visit returns false.
template <class Visit>
void walkBlocks(std::string_view document, Visit visit) {
    using namespace document;
    std::string_view text = documentText(document);
    Position p = 0;
    for (std::size_t count = 0; p; ++count) {
        Position begin = findNextBlock(text, *p);
        if (!begin) break;
        UpdateItem item;
        item.type = blockType(text, *begin);
        // The next search starts at the ":END" line, which opens no block.
        p = scanBlock(text, *begin, item);
        if (!visit(item, *begin, count)) break;
    }
}

}  // namespace

void forEachUpdateItem(std::string_view document, const std::function<void(UpdateItem&)>& visit) {
    walkBlocks(document, [&](UpdateItem& item, std::size_t, std::size_t count) {
        if (count == kMaxDocumentItems) return false;
        visit(item);
        return true;
    });
}

std::vector<UpdateItem> parseUpdateDocument(std::string_view document) {
    std::vector<UpdateItem> items;
    forEachUpdateItem(document, [&](UpdateItem& item) { items.push_back(std::move(item)); });
    return items;
}

std::optional<std::size_t> firstDroppedBlock(std::string_view document) {
    std::optional<std::size_t> dropped;
    walkBlocks(document, [&](UpdateItem&, std::size_t begin, std::size_t count) {
        if (count < kMaxDocumentItems) return true;
        dropped = begin;
        return false;
    });
    return dropped;
}
