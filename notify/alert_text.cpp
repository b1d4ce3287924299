// The alert window's texts and sizes (see alert_text.h). The header line keeps
// its fixed 260-character buffer and the order of its checks, so a long
// product name or date loses the same pieces everywhere.
#include "notify/alert_text.h"

#include <algorithm>
#include <cstdio>

#include "feed/feed_updates.h"
#include "ui/dpi.h"

namespace {

constexpr std::size_t kHeaderBuffer = 260;
constexpr char kDefaultCaption[] = "Alert";
// No visible line of the text column holds more characters than it is pixels wide.
constexpr std::size_t kColumnWidth = kAlertTextRight - kAlertTextLeft;

bool present(const ItemText& text) {
    return text && !text->empty();
}

// Appends piece when the line stays below the buffer.
void appendIfRoom(std::string& line, std::string_view piece) {
    if (line.size() + piece.size() < kHeaderBuffer) line += piece;
}

std::string formatNumber(const char* format, int32_t value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

}  // namespace

std::string alertCaption(const UpdateItem& item) {
    return present(item.title) ? *item.title : kDefaultCaption;
}

std::string announcedVersionText(const UpdateItem& item) {
    char text[64];
    // %c of 0 writes the terminator: the piece ends after the minor number.
    std::snprintf(text, sizeof text, " %d.%d%c", item.version, item.subVersion,
                  static_cast<char>(item.revision));
    return text;
}

std::optional<std::string> alertHeaderLine(const UpdateItem& item) {
    const bool application = present(item.application);
    const bool date = present(item.date);
    if (item.type == ItemType::OffTopic || (!application && !date)) return std::nullopt;

    std::string line = " ";
    if (application) {
        if (line.size() + 32 < kHeaderBuffer) {
            char text[kHeaderBuffer];
            std::snprintf(text, sizeof text, " %s %d.%d%c", item.application->c_str(), item.version,
                          item.subVersion, static_cast<char>(item.revision));
            line = text;
        }
        if (item.patch > 0) appendIfRoom(line, formatNumber(" (Revision %d)", item.patch));
        if (item.beta > 0) appendIfRoom(line, formatNumber(" (Beta %d)", item.beta));
    }
    if (date) {
        if (line.size() + 12 < kHeaderBuffer) line += " Released ";
        appendIfRoom(line, *item.date);
    }
    return line;
}

int alertTextTop(bool headerLine, bool checkBox) {
    if (!headerLine) return 8;
    return checkBox ? 48 : 28;
}

int fitAlertHeight(int captionHeight, int frameHeight, int top, int textHeight, int screenHeight,
                   unsigned dpi) {
    int height = captionHeight + 2 * frameHeight + top + textHeight + scaleForDpi(8, dpi);
    const int minimum = scaleForDpi(kAlertMinimumHeight, dpi);
    if (height < minimum) height = minimum;
    if (height > screenHeight - 4) height = screenHeight - 4;
    return height;
}

std::string alertVisibleText(std::string_view text, int maxLines) {
    const std::size_t lines = static_cast<std::size_t>(std::max(maxLines, 1));
    const std::size_t budget = lines * kColumnWidth;
    std::string shown;
    std::size_t breaks = 0;
    std::size_t word = 0;  // length of the word being read
    for (char c : text) {
        // Enough lines are filled either way: a new line starts at each line
        // break, and at least every kColumnWidth characters.
        if (shown.size() >= budget) break;
        if (c == '\n' && ++breaks >= lines) break;
        word = isBlank(c) ? 0 : word + 1;
        // A word wider than the column already stands alone on its line and is
        // clipped at the right; the rest of it would never show.
        if (word > kColumnWidth + 1) continue;
        shown += c;
    }
    return shown;
}

std::optional<std::string> alertPictureName(const UpdateItem& item) {
    if (!present(item.graphic)) return std::nullopt;
    const std::optional<GraphicFileName> file = graphicFileName(*item.graphic);
    // Anything the rule had to shorten (a folder, trailing dots) is not plain.
    if (!file || file->name + file->extension != *item.graphic) return std::nullopt;
    return *item.graphic;
}

bool looksLikePicture(std::string_view body) {
    return body.starts_with("\x89PNG\r\n\x1A\n") || body.starts_with("\xFF\xD8\xFF");
}

std::string alertClipboardText(const UpdateItem& item) {
    std::string text = item.title.value_or("");
    if (present(item.plainText)) {
        if (!text.empty()) text += "\n\n";
        text += *item.plainText;
    }
    return text;
}
