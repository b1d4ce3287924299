// heralder-tool parse FILE: the items the agent would read from an update
// document, as a JSON array in document order. The document is read, its line
// ends normalised and parsed exactly as the agent does with a local document.
// Texts are ANSI bytes; each byte is written as the code point of the same
// value (Latin-1), so every byte of a value survives the trip through JSON.
#include <cstdio>
#include <string>

#include <nlohmann/json.hpp>

#include "feed/document_file.h"
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

}  // namespace

int runParseCommand(int argc, char** argv) {
    if (argc != 1) {
        std::fputs("usage: heralder-tool parse FILE\n", stderr);
        return 2;
    }
    const std::string path = argv[0];
    std::optional<std::string> document = readLocalDocument(path);
    if (!document) {
        std::fprintf(stderr, "There has been an error loading %s\n", path.c_str());
        return 1;
    }
    Json items = Json::array();
    for (const UpdateItem& item : parseUpdateDocument(normalizeLineEnds(*document)))
        items.push_back(itemJson(item));
    std::string out = items.dump(2) + "\n";
#ifdef _WIN32
    // The same bytes on every platform: no LF to CR LF translation.
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    std::fwrite(out.data(), 1, out.size(), stdout);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
