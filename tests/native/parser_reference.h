#pragma once
// A second reader of update documents, as plain as possible: a block's lines
// are found byte by byte, then each key is looked for by its own walk over them.
// The tests and the fuzzer compare it with the real one-walk reader, on
// documents from the generator below.
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/crt_text.h"
#include "feed/update_item.h"

namespace reference {

using Line = std::optional<std::size_t>;

inline std::size_t lineEnd(std::string_view t, std::size_t p) {
    bool braces = false;
    for (std::size_t i = p; i < t.size(); ++i) {
        unsigned char c = t[i];
        if (c == '{' || c == '}')
            braces = c == '{';
        else if (c < 32 && !braces)
            return i;
    }
    return t.size();
}

inline Line nextLine(std::string_view t, std::size_t p) {
    std::size_t i = lineEnd(t, p);
    while (i < t.size() && static_cast<unsigned char>(t[i]) < 32) ++i;  // no NUL: parse cuts there
    return i < t.size() ? Line(i) : std::nullopt;
}

// Case folding of ASCII letters only, as the "C" locale's toupper does.
inline unsigned char upper(unsigned char c) {
    return c >= 'a' && c <= 'z' ? static_cast<unsigned char>(c - 32) : c;
}

inline bool startsWith(std::string_view t, std::size_t p, std::string_view word) {
    if (t.size() - p <= word.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (upper(static_cast<unsigned char>(t[p + i])) != upper(word[i])) return false;
    return true;
}

// The block's lines from its begin line to the line before its ":END" (or to
// the document's end); end becomes the ":END" line, nullopt without one.
inline std::vector<std::size_t> blockLines(std::string_view t, std::size_t begin, Line& end) {
    std::vector<std::size_t> lines;
    Line line = begin;
    for (; line && !startsWith(t, *line, ":END"); line = nextLine(t, *line)) lines.push_back(*line);
    end = line;
    return lines;
}

inline Line findValue(std::string_view t, const std::vector<std::size_t>& lines,
                      std::string_view key) {
    for (std::size_t line : lines) {
        if (startsWith(t, line, key)) {
            std::size_t i = line + key.size();
            while (i < t.size() && (t[i] == ' ' || t[i] == '=')) ++i;
            return i;
        }
    }
    return std::nullopt;
}

// Written out here rather than taken from the reader, so that a wrong row in
// the reader's tables makes the two disagree.
struct Marker {
    const char* text;
    ItemType type;
};
inline const Marker kMarkers[] = {
    {":BEGINALERT", ItemType::Alert},
    {":BEGINVERSION", ItemType::Version},
    {":BEGINTIP", ItemType::Tip},
    {":BEGINNOTICE", ItemType::Notice},
    {":BEGINOFFTOPIC", ItemType::OffTopic},
    {":BEGINCHANGEINI", ItemType::SettingUpdate},
    {":BEGINNEWGRAPHIC", ItemType::GraphicUpdate},
};

enum class Kind { Text, Number, Letter };
struct Key {
    const char* name;
    Kind kind;
    ItemText UpdateItem::*text = nullptr;
    int32_t UpdateItem::*value = nullptr;
};
inline const Key kKeys[] = {
    {"DATE", Kind::Text, &UpdateItem::date},
    {"ORIGINATOR", Kind::Text, &UpdateItem::originator},
    {"APPLICATION", Kind::Text, &UpdateItem::application},
    {"INIFILE", Kind::Text, &UpdateItem::iniFile},
    {"SECTION", Kind::Text, &UpdateItem::section},
    {"VERSION", Kind::Number, nullptr, &UpdateItem::version},
    {"SUBVERSION", Kind::Number, nullptr, &UpdateItem::subVersion},
    {"REVISION", Kind::Letter, nullptr, &UpdateItem::revision},
    {"PATCH", Kind::Number, nullptr, &UpdateItem::patch},
    {"IMPORTANCE", Kind::Number, nullptr, &UpdateItem::importance},
    {"TITLE", Kind::Text, &UpdateItem::title},
    {"URL", Kind::Text, &UpdateItem::url},
    {"PLAINTEXT", Kind::Text, &UpdateItem::plainText},
    {"KEYWORDS", Kind::Text, &UpdateItem::keywords},
    {"IGNOREUNTIL", Kind::Text, &UpdateItem::ignoreUntil},
    {"IFREGISTERED", Kind::Number, nullptr, &UpdateItem::ifRegistered},
    {"IFEVAL", Kind::Number, nullptr, &UpdateItem::ifEval},
    {"BETA", Kind::Number, nullptr, &UpdateItem::beta},
    {"NUMBER", Kind::Number, nullptr, &UpdateItem::number},
    {"GRAPHIC", Kind::Text, &UpdateItem::graphic},
};

inline ItemType blockType(std::string_view t, std::size_t p) {
    for (const Marker& m : kMarkers)
        if (startsWith(t, p, m.text)) return m.type;
    return ItemType::Unknown;
}

inline std::vector<UpdateItem> parse(std::string_view document) {
    std::string_view t = document.substr(0, document.find('\0'));
    std::vector<UpdateItem> items;
    for (Line p = 0; p;) {
        Line begin = p;
        while (begin && blockType(t, *begin) == ItemType::Unknown) begin = nextLine(t, *begin);
        if (!begin) break;
        UpdateItem item;
        item.type = blockType(t, *begin);
        const std::vector<std::size_t> lines = blockLines(t, *begin, p);
        for (const Key& k : kKeys) {
            const Line v = findValue(t, lines, k.name);
            if (!v) continue;            // absent: the item's own defaults
            if (k.kind == Kind::Text) {  // to the line end, without braces
                item.*k.text = "";
                for (std::size_t i = *v, end = lineEnd(t, *v); i < end; ++i)
                    if (t[i] != '{' && t[i] != '}') *(item.*k.text) += t[i];
            } else if (k.kind == Kind::Number) {
                item.*k.value = atoiLike(t.substr(*v));
            } else {
                item.*k.value = *v < t.size() ? static_cast<unsigned char>(t[*v]) : 0;
            }
        }
        items.push_back(item);
    }
    return items;
}

// Documents built from the pieces the reader reacts to, in mixed case, with
// bytes above 127 and the odd NUL.
inline std::string randomDocument(std::mt19937& rng, std::size_t pieces) {
    static const std::vector<std::string> vocabulary = [] {
        std::vector<std::string> v = {
            ":END", ":end", ":ENDS", " ",    " ", "=",      "==", "\t", "\r\n",
            "\r\n", "\n",   "\r",    "{",    "}", "x",      "7",  "-3", "+",
            "4.2",  "\xe9", "\xff",  "\x01", ":", ":BEGIN", "S"};
        for (const Marker& m : kMarkers) v.emplace_back(m.text);
        for (const Key& k : kKeys) v.emplace_back(k.name);
        return v;
    }();
    std::string doc;
    for (std::size_t i = 0; i < pieces; ++i) {
        std::string piece = vocabulary[rng() % vocabulary.size()];
        if (rng() % 4 == 0)
            for (char& c : piece)
                if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
        if (rng() % 500 == 0) piece.push_back('\0');
        doc += piece;
    }
    return doc;
}

}  // namespace reference
