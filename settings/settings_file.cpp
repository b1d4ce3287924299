// Reading and writing the settings file. Reading reproduces what the program
// has always done with fgets into a 260-byte buffer: each read is a line of its
// own, keys match by prefix in table order, numbers wrap modulo 2^32. That
// forgiveness is what existing files rely on, so nothing here is stricter.
// Writing goes through stdio on plain paths so that the backup rotation runs and
// is tested on every platform.
#include "settings/settings_file.h"

#include <cstdio>

#include "base/crt_text.h"
#include "settings/file_locations.h"

namespace {

// The fgets buffer of the reader: at most 259 characters a read.
constexpr std::size_t kReadBufferBytes = 260;

bool isBlank(char c) {
    return c == ' ';
}
bool isControl(char c) {
    return static_cast<unsigned char>(c) < 32;
}
bool endsKey(char c) {
    return static_cast<unsigned char>(c) <= 32 || c == '=';
}

// Decimal with an optional sign, accumulated modulo 2^32 so that every value
// written with "%u" reads back to the same bits, and "-1" to 4294967295.
uint32_t readNumber(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r'))) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
    uint32_t value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
        value = value * 10u + static_cast<uint32_t>(text[i] - '0');
    return negative ? 0u - value : value;
}

// The first readable row whose name begins with key; an empty key therefore
// matches the first row.
const SettingDef* matchKey(std::string_view key) {
    for (const SettingDef& def : SettingsTable) {
        if (def.readFlags & kSettingSkipOnRead) continue;
        if (std::string_view(def.key).substr(0, key.size()) == key) return &def;
    }
    return nullptr;
}

void applyLine(Settings& record, std::string_view line) {
    if (!line.empty() && line.front() == ';') return;
    std::size_t end = 0;
    while (end < line.size() && !isControl(line[end])) ++end;
    line = line.substr(0, end);

    std::size_t pos = 0;
    while (pos < line.size() && !endsKey(line[pos])) ++pos;
    const SettingDef* def = matchKey(line.substr(0, pos));
    if (!def) return;

    while (pos < line.size() && isBlank(line[pos])) ++pos;
    while (pos < line.size() && line[pos] == '=') ++pos;
    while (pos < line.size() && isBlank(line[pos])) ++pos;
    std::string_view value = line.substr(pos);

    if (uint32_t* number = def->isNumeric() ? settingNumber(record, *def) : nullptr)
        *number = readNumber(value);
    else if (std::string* text = def->isText() ? settingText(record, *def) : nullptr)
        assignSettingText(*text, value);
}

// The C library's 24-character calendar form, "Wed Sep 17 09:05:03 2025",
// spelled out here so that no locale can change it.
std::string calendarText(std::time_t now) {
    static const char* const days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char* const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::tm when{};
    when.tm_mday = 1;
    when.tm_year = 70;  // a time the library cannot convert shows as the epoch
    if (const std::tm* local = std::localtime(&now)) when = *local;
    char full[64];
    std::snprintf(full, sizeof full, "%.3s %.3s%3d %.2d:%.2d:%.2d %d",
                  days[(when.tm_wday % 7 + 7) % 7], months[(when.tm_mon % 12 + 12) % 12],
                  when.tm_mday, when.tm_hour, when.tm_min, when.tm_sec, when.tm_year + 1900);
    char cut[32];
    std::snprintf(cut, sizeof cut, "%24.24s", full);
    return cut;
}

bool fileExists(const std::string& path) {
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) return false;
    std::fclose(f);
    return true;
}

void copyFile(const std::string& from, const std::string& to) {
    if (std::optional<std::string> bytes = readFileBytes(from)) writeFileBytes(to, {*bytes});
}

}  // namespace

void readSettingsText(Settings& record, std::string_view fileBytes) {
    std::string text = textModeView(fileBytes);
    forEachFgetsPiece(text, kReadBufferBytes,
                      [&](std::string_view piece) { applyLine(record, piece); });
}

bool readSettingsFile(Settings& record, const std::string& path) {
    std::optional<std::string> bytes = readFileBytes(path);
    if (!bytes) return false;
    readSettingsText(record, *bytes);
    return true;
}

std::string formatSettingLines(const Settings& record) {
    std::string out;
    for (const SettingDef& def : SettingsTable) {
        out += def.key;
        out += " = ";
        out += settingValueText(record, def);
        out += '\n';
    }
    return out;
}

std::string formatSettingsFile(const Settings& record, std::time_t now) {
    std::string text =
        ";Quenmark Heralder configuration file\n"
        ";Edit this at your own risk\n"
        ";Quenmark Heralder\n"
        ";Last updated " +
        calendarText(now) + "\n;\n[HERALDER]\n" + formatSettingLines(record);
    // The file has always been written in text mode: every LF, also one inside a
    // text value, becomes CR LF on disk.
    std::string disk;
    disk.reserve(text.size() + 64);
    for (char c : text) {
        if (c == '\n') disk += '\r';
        disk += c;
    }
    return disk;
}

std::string backupPathFor(const std::string& path) {
    std::size_t nameStart = path.find_last_of("\\/");
    if (nameStart != std::string::npos)
        ++nameStart;
    else
        nameStart = path.size() >= 2 && path[1] == ':' ? 2 : 0;  // "C:name.ini"
    std::string_view name = std::string_view(path).substr(nameStart);
    std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos) dot = name.size();
    std::string base = "Backup of " + std::string(name.substr(0, dot));
    if (base.size() > kMaxPathChars) base.resize(kMaxPathChars);
    return path.substr(0, nameStart) + base + std::string(name.substr(dot));
}

bool writeSettingsFile(const Settings& record, const std::string& path, std::time_t now) {
    if (path.empty()) return false;
    const std::string backup = backupPathFor(path);
    if (fileExists(backup)) {
        const std::string older = backupPathFor(backup);
        std::remove(older.c_str());
        copyFile(backup, older);
    }
    if (fileExists(path)) {
        std::remove(backup.c_str());
        copyFile(path, backup);
    }
    return writeFileBytes(path, {formatSettingsFile(record, now)});
}
