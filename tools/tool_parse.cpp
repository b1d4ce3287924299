// heralder-tool parse FILE: the items the agent would read from an update
// document, as a JSON array in document order. The document is read, its line
// ends normalised and parsed exactly as the agent does with a local document.
// Texts are ANSI bytes; each byte is written as the code point of the same
// value (Latin-1), so every byte of a value survives the trip through JSON.
#include <cstdio>
#include <string>

#include <nlohmann/json.hpp>

#include "feed/document_parser.h"
#include "feed/update_item.h"
#include "tools/tool_commands.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

std::string latin1ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (unsigned char c : bytes) {
        if (c < 0x80) {
            out.push_back(static_cast<char>(c));
        } else {
            out.push_back(static_cast<char>(0xC0 | (c >> 6)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }
    return out;
}

namespace {

using Json = nlohmann::ordered_json;

Json textJson(const ItemText& text) {
    if (!text) return nullptr;
    return latin1ToUtf8(*text);
}

struct TextMember {
    const char* name;
    ItemText UpdateItem::*field;
};
struct NumberMember {
    const char* name;
    int32_t UpdateItem::*field;
};

constexpr TextMember kTextMembers[] = {
    {"date", &UpdateItem::date},
    {"originator", &UpdateItem::originator},
    {"application", &UpdateItem::application},
    {"iniFile", &UpdateItem::iniFile},
    {"section", &UpdateItem::section},
    {"title", &UpdateItem::title},
    {"url", &UpdateItem::url},
    {"plainText", &UpdateItem::plainText},
    {"keywords", &UpdateItem::keywords},
    {"ignoreUntil", &UpdateItem::ignoreUntil},
    {"graphic", &UpdateItem::graphic},
};
constexpr NumberMember kNumberMembers[] = {
    {"version", &UpdateItem::version},
    {"subVersion", &UpdateItem::subVersion},
    {"revision", &UpdateItem::revision},
    {"patch", &UpdateItem::patch},
    {"beta", &UpdateItem::beta},
    {"importance", &UpdateItem::importance},
    {"ifRegistered", &UpdateItem::ifRegistered},
    {"ifEval", &UpdateItem::ifEval},
    {"number", &UpdateItem::number},
};

Json itemJson(const UpdateItem& item) {
    Json j = Json::object();
    j["type"] = itemTypeTag(item.type);
    for (const TextMember& m : kTextMembers) j[m.name] = textJson(item.*m.field);
    for (const NumberMember& m : kNumberMembers) j[m.name] = item.*m.field;
    return j;
}

// The array is written an item at a time, as nlohmann's dump(2) of the whole
// array would lay it out: a tree of every item costs hundreds of bytes for
// each 15-byte empty block, the output no less.
class ItemArrayWriter {
  public:
    void add(const UpdateItem& item) {
        chunk_ += count_++ ? ",\n" : "[\n";
        const std::string text = itemJson(item).dump(2);
        chunk_ += "  ";
        for (char c : text) {
            chunk_ += c;
            if (c == '\n') chunk_ += "  ";  // no raw line break inside a JSON string
        }
        if (chunk_.size() >= 65536) flush();
    }
    bool finish() {
        chunk_ += count_ ? "\n]\n" : "[]\n";
        flush();
        return ok_ && std::fflush(stdout) == 0;
    }

  private:
    void flush() {
        ok_ = ok_ && std::fwrite(chunk_.data(), 1, chunk_.size(), stdout) == chunk_.size();
        chunk_.clear();
    }

    std::string chunk_;
    std::size_t count_ = 0;
    bool ok_ = true;
};

}  // namespace

int runParseCommand(int argc, char** argv) {
    if (argc != 1) {
        std::fputs("usage: heralder-tool parse FILE\n", stderr);
        return 2;
    }
    std::string text;
    {
        const std::optional<std::string> document = readToolDocument(argv[0]);
        if (!document) return 1;
        text = normalizeLineEnds(*document);
    }
#ifdef _WIN32
    // The same bytes on every platform: no LF to CR LF translation.
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    ItemArrayWriter out;
    forEachUpdateItem(text, [&](const UpdateItem& item) { out.add(item); });
    return out.finish() ? 0 : 1;
}
