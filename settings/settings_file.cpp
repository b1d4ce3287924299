// Reading and writing the settings file. Reading reproduces what the program
// has always done with fgets into a 260-byte buffer: each read is a line of its
// own, keys match by prefix in table order, numbers wrap modulo 2^32. That
// forgiveness is what existing files rely on, so nothing here is stricter.
// Writing is where the care goes: whatever the record holds (a feed may hand a
// text setting line breaks or 260 characters), the file must read back as the
// same record, and a crash or a full disk must leave a file that reads. So a
// text is cut where the reader would cut it, and every generation is written
// beside the old one and put in its place in one step.
#include "settings/settings_file.h"

#include <algorithm>
#include <cstdio>

#include "base/crt_text.h"
#include "base/file_io.h"
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

// A generation worth keeping or reading: text mode would stop at a Ctrl-Z and
// a NUL ends every value, so a file holding either lost its tail somewhere, and
// an empty file is a save that never finished.
bool isIntact(std::string_view bytes) {
    return !bytes.empty() &&
           bytes.find_first_of(std::string_view("\0\x1a", 2)) == std::string_view::npos;
}

std::optional<std::string> readIntact(const std::string& path) {
    std::optional<std::string> bytes = readFileBytes(path);
    if (bytes && isIntact(*bytes)) return bytes;
    return std::nullopt;
}

// Each backup is itself replaced in one step; a damaged generation is not
// passed on, so the newest good one survives. A copy is not flushed to the
// disk: a power cut can cost only the copy, and the settings file it was
// copied from was flushed when it was saved (the reader turns to a backup only
// when that file is damaged).
void copyIntact(const std::string& from, const std::string& to) {
    if (std::optional<std::string> bytes = readIntact(from))
        replaceFileContents(to, {*bytes}, WriteReach::System);
}

// What a save would change in the file that a power cut may not take back:
// the lines after the header, whose time text changes with every save, less
// the date of the last document, which every fetch sets again.
std::string lastingSettings(std::string_view fileBytes) {
    const std::size_t section = fileBytes.find("\n[HERALDER]");
    if (section == std::string_view::npos) return {};
    std::string body(fileBytes.substr(section));
    const std::size_t date = body.find("\nCurrentTransactionDate = ");
    if (date != std::string::npos) body.erase(date, body.find('\n', date + 1) - date);
    return body;
}

}  // namespace

WriteReach settingsSaveReach(std::string_view before, std::string_view after, bool beforeKept,
                             long long beforeAgeSeconds) {
    const std::string lasting = lastingSettings(after);
    const bool unchanged = !lasting.empty() && lastingSettings(before) == lasting;
    return unchanged && beforeKept && beforeAgeSeconds >= 60 ? WriteReach::System
                                                             : WriteReach::Disk;
}

void readSettingsText(Settings& record, std::string_view fileBytes) {
    std::string text = textModeView(fileBytes);
    forEachFgetsPiece(text, kReadBufferBytes,
                      [&](std::string_view piece) { applyLine(record, piece); });
}

std::optional<std::string> readSettingsFile(Settings& record, const std::string& path) {
    if (!fileExists(path)) return std::nullopt;
    const std::string backup = backupPathFor(path);
    for (const std::string& candidate : {path, backup, backupPathFor(backup)}) {
        if (std::optional<std::string> bytes = readIntact(candidate)) {
            readSettingsText(record, *bytes);
            return candidate;
        }
    }
    // No intact generation at all: what the damaged file still holds is
    // closer to the user's settings than the defaults.
    std::optional<std::string> bytes = readFileBytes(path);
    if (!bytes || bytes->empty()) return std::nullopt;
    readSettingsText(record, *bytes);
    return path;
}

std::string_view storableSettingText(std::string_view key, std::string_view text) {
    std::size_t end = 0;
    while (end < text.size() && !isControl(text[end])) ++end;
    text = text.substr(0, end);
    // The reader skips the blanks after "=", so leading ones would not come back.
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    // "Key = value" and its line end must be one read of the reader.
    const std::size_t lineRoom = kReadBufferBytes - 1 - key.size() - 3 - 1;
    return text.substr(0, std::min(lineRoom, kSettingTextMax));
}

std::string formatSettingLines(const Settings& record) {
    std::string out;
    for (const SettingDef& def : SettingsTable) {
        out += def.key;
        out += " = ";
        const std::string value = settingValueText(record, def);
        out += def.isText() ? storableSettingText(def.key, value) : value;
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
    const std::string backup = backupPathFor(path), oldest = backupPathFor(backup);
    const std::optional<std::string> current = readIntact(path);
    const std::optional<long long> age = fileAgeSeconds(path);
    // With an intact file to take its place, the first backup moves down by a
    // rename and the file becomes the first backup by a second name: the
    // generations kept are then the very bytes an earlier save put on the
    // disk, not fresh copies that a power cut could still take.
    bool kept = false;
    if (current) {
        if (readIntact(backup) && !replaceFileWith(backup, oldest, WriteReach::System))
            copyIntact(backup, oldest);
        std::remove(backup.c_str());
        kept = linkFile(path, backup);
        if (!kept) replaceFileContents(backup, {*current}, WriteReach::System);
    } else {
        copyIntact(backup, oldest);
    }
    const std::string text = formatSettingsFile(record, now);
    if (replaceFileContents(path, {text},
                            settingsSaveReach(current.value_or(""), text, kept, age.value_or(0))))
        return true;
    // The file stays as it was, so its second name must go: an edit in place
    // would otherwise change the backup with it.
    if (kept) {
        std::remove(backup.c_str());
        replaceFileContents(backup, {*current}, WriteReach::System);
    }
    return false;
}
