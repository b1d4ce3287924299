// Texts of the item browser (see browse_text.h).
#include "notify/browse_text.h"

#include <cstdio>
#include <cstring>

namespace {

// A caption has always been built in a 260-character buffer; the 16 spare
// characters cover the brackets and blank around the type name.
constexpr std::size_t kCaptionRoom = 260;
constexpr std::size_t kCaptionSpare = 16;

std::string textOf(const ItemText& text) {
    return text ? *text : std::string();
}

std::string signedText(int32_t value) {
    return std::to_string(value);
}

}  // namespace

std::string browseCaption(const UpdateItem& item) {
    if (!item.title || item.title->empty()) return std::string();
    const std::string& title = *item.title;
    const char* typeName = itemTypeName(item.type);
    if (title.size() + std::strlen(typeName) + kCaptionSpare >= kCaptionRoom) return title;
    return title + " [" + typeName + "]";
}

std::string browseVersionText(const UpdateItem& item) {
    char text[96];
    std::snprintf(text, sizeof text, "%d.%d", static_cast<int>(item.version),
                  static_cast<int>(item.subVersion));
    std::string result = text;
    // The letter is the byte the document gave; a missing REVISION adds none.
    if (item.revision != 0) result += static_cast<char>(item.revision);
    // Lower case here, unlike the notification windows: this is data, not prose.
    if (item.patch > 0) {
        std::snprintf(text, sizeof text, " (revision %d)", static_cast<int>(item.patch));
        result += text;
    }
    if (item.beta > 0) {
        std::snprintf(text, sizeof text, " (beta %d)", static_cast<int>(item.beta));
        result += text;
    }
    return result;
}

std::string installedBrowseText(const std::optional<InstalledVersion>& installed) {
    if (!installed) return std::string();
    char text[64];
    std::snprintf(text, sizeof text, "%d.%d revision %d",
                  static_cast<int>((installed->versionNumber >> 5) & 31),
                  static_cast<int>((installed->versionNumber >> 10) & 31),
                  static_cast<int32_t>(installed->patchLevel));
    return text;
}

BrowseTexts browseTexts(const UpdateItem& item, const std::optional<InstalledVersion>& installed) {
    BrowseTexts t;
    t.caption = browseCaption(item);
    t.date = textOf(item.date);
    t.originator = textOf(item.originator);
    t.application = textOf(item.application);
    t.version = browseVersionText(item);
    t.keywords = textOf(item.keywords);
    t.plainText = textOf(item.plainText);
    t.registered = signedText(item.ifRegistered);
    t.evaluation = signedText(item.ifEval);
    t.iniFile = textOf(item.iniFile);
    t.installed = installedBrowseText(installed);
    t.section = textOf(item.section);
    t.url = textOf(item.url);
    t.importance = signedText(item.importance);
    t.ignoreUntil = textOf(item.ignoreUntil);
    return t;
}
