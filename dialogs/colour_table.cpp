// The colour picker's table file (see colour_table.h).
#include "dialogs/colour_table.h"

#include <cerrno>
#include <cstdio>
#include <memory>

#include "base/ascii.h"

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view trimBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

// A whole channel value, 0..255, with blanks around it.
std::optional<int> parseChannel(std::string_view text) {
    text = trimBlanks(text);
    if (text.empty() || text.size() > 3) return std::nullopt;
    int value = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + (c - '0');
    }
    if (value > kRgbMax) return std::nullopt;
    return value;
}

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

}  // namespace

NamedColour* ColourTable::find(std::string_view name) {
    for (NamedColour& entry : colours)
        if (equalsIgnoringAsciiCase(entry.name, name)) return &entry;
    return nullptr;
}

std::size_t ColourTable::put(std::string_view name, Rgb colour) {
    if (NamedColour* existing = find(name)) {
        existing->colour = colour;
        return static_cast<std::size_t>(existing - colours.data());
    }
    colours.push_back({std::string(name), colour});
    return colours.size() - 1;
}

std::optional<std::string> cleanColourName(std::string_view name) {
    name = trimBlanks(name);
    if (name.empty() || name.size() > kMaxColourNameChars) return std::nullopt;
    for (char c : name)
        if (static_cast<unsigned char>(c) < 32 || c == 127) return std::nullopt;
    return std::string(name);
}

std::optional<NamedColour> parseColourLine(std::string_view line) {
    const std::size_t equals = line.rfind('=');
    if (equals == std::string_view::npos) return std::nullopt;
    std::optional<std::string> name = cleanColourName(line.substr(0, equals));
    if (!name) return std::nullopt;

    std::string_view rest = line.substr(equals + 1);
    int channels[3] = {};
    for (int i = 0; i < 3; ++i) {
        const std::size_t comma = i < 2 ? rest.find(',') : rest.size();
        if (comma == std::string_view::npos) return std::nullopt;
        const std::optional<int> value = parseChannel(rest.substr(0, comma));
        if (!value) return std::nullopt;
        channels[i] = *value;
        rest.remove_prefix(i < 2 ? comma + 1 : rest.size());
    }
    return NamedColour{*name, {channels[0], channels[1], channels[2]}};
}

ColourTable parseColourTable(std::string_view bytes) {
    ColourTable table;
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        // Every CR before the LF is line end, so that a kept line reads back
        // the same after it is written with a plain LF.
        while (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (trimBlanks(line).empty()) continue;
        if (std::optional<NamedColour> colour = parseColourLine(line))
            table.colours.push_back(std::move(*colour));
        else
            table.otherLines.emplace_back(line);
    }
    return table;
}

std::string formatColourTable(const ColourTable& table) {
    std::string text;
    text.reserve(table.colours.size() * 24);
    for (const NamedColour& entry : table.colours) {
        text += entry.name;
        text += '=';
        text += std::to_string(entry.colour.red) + ',' + std::to_string(entry.colour.green) + ',' +
                std::to_string(entry.colour.blue) + '\n';
    }
    for (const std::string& line : table.otherLines) text += line + '\n';
    return text;
}

ColourTableFile readColourTableFile(const std::string& path) {
    ColourTableFile result;
    errno = 0;
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        // Not there is the normal first state; anything else that stops the
        // opening (a folder of that name, no permission) must not be taken
        // for an empty table that a save would then replace.
        result.status = errno == ENOENT ? ColourTableRead::kMissing : ColourTableRead::kUnreadable;
        return result;
    }
    std::string bytes;
    char buffer[16384];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, file.get())) > 0) {
        if (bytes.size() + n > kMaxColourTableBytes) {
            result.status = ColourTableRead::kTooLarge;
            return result;
        }
        bytes.append(buffer, n);
    }
    if (std::ferror(file.get())) {
        result.status = ColourTableRead::kUnreadable;
        return result;
    }
    result.status = ColourTableRead::kRead;
    result.table = parseColourTable(bytes);
    return result;
}
