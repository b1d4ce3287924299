// Display names and tags of the item types, and the version an item announces.
#include "feed/update_item.h"

#include <cstdio>

namespace {

struct TypeName {
    ItemType type;
    const char* name;
};

constexpr TypeName kTypeNames[] = {
    {ItemType::Alert, "Alert"},
    {ItemType::Version, "Version"},
    {ItemType::Tip, "Tip"},
    {ItemType::Notice, "Notice"},
    {ItemType::OffTopic, "Off Topic"},
    {ItemType::SettingUpdate, "Variable Update"},
    {ItemType::GraphicUpdate, "Graphic Update"},
};

bool isKnown(ItemType type) {
    for (const TypeName& t : kTypeNames)
        if (t.type == type) return true;
    return false;
}

}  // namespace

const char* itemTypeName(ItemType type) {
    for (const TypeName& t : kTypeNames)
        if (t.type == type) return t.name;
    return "Unknown";
}

std::string itemTypeTag(ItemType type) {
    if (!isKnown(type)) return "????";
    auto v = static_cast<uint32_t>(type);
    std::string tag(4, ' ');
    for (int i = 0; i < 4; ++i) tag[i] = static_cast<char>((v >> (8 * i)) & 0xFF);
    return tag;
}

std::string announcedVersionText(const UpdateItem& item) {
    char buffer[48];
    std::snprintf(buffer, sizeof buffer, "%d.%d", item.version, item.subVersion);
    std::string text = buffer;
    // The letter was printed with %c into a C string: a code of 0 ends the text.
    if (char letter = static_cast<char>(item.revision & 0xFF)) text.push_back(letter);
    return text;
}

std::string levelsText(int32_t patch, int32_t beta, LevelWords words) {
    const bool upper = words == LevelWords::Capitalised;
    char buffer[64];
    std::string text;
    if (patch > 0) {
        std::snprintf(buffer, sizeof buffer, upper ? " (Revision %d)" : " (revision %d)", patch);
        text += buffer;
    }
    if (beta > 0) {
        std::snprintf(buffer, sizeof buffer, upper ? " (Beta %d)" : " (beta %d)", beta);
        text += buffer;
    }
    return text;
}
