// Display names and tags of the item types.
#include "feed/update_item.h"

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
