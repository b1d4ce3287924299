#pragma once
// One notification item of the update document, and the item types. Every block
// of the document becomes one UpdateItem; the parser, the selection, the seen
// list and the notification windows all share this record.
//
// Texts are owned by the item: an absent key is std::nullopt, which differs from
// a key that is present with an empty value. Numbers are 32-bit signed, as the
// document's atoi reading gives them; revision is the ANSI code (0-255) of the
// letter that follows the REVISION key.
#include <cstdint>
#include <optional>
#include <string>

// Four ASCII characters, the first in the lowest byte ("ALRT" is 0x54524C41).
enum class ItemType : uint32_t {
    Alert = 0x54524C41,          // "ALRT"
    Version = 0x53524556,        // "VERS"
    Tip = 0x5F504954,            // "TIP_"
    Notice = 0x43544F4E,         // "NOTC"
    OffTopic = 0x5446464F,       // "OFFT"
    SettingUpdate = 0x494E4943,  // "CINI"
    GraphicUpdate = 0x4E505247,  // "GRPN"
    Unknown = 0x3F3F3F3F,        // "????"
};

using ItemText = std::optional<std::string>;

struct UpdateItem {
    ItemType type = ItemType::Unknown;
    ItemText date;
    ItemText originator;
    ItemText application;
    ItemText iniFile;
    ItemText section;
    ItemText title;
    ItemText url;
    ItemText plainText;
    ItemText keywords;
    ItemText ignoreUntil;
    ItemText graphic;
    int32_t version = 0;
    int32_t subVersion = 0;
    int32_t revision = 0;
    int32_t patch = 0;
    int32_t beta = 0;
    int32_t importance = 0;
    int32_t ifRegistered = 0;
    int32_t ifEval = 0;
    int32_t number = 0;
    // Set by the alert and version windows when the user ticks "Never show this
    // window again"; read by the notification run.
    bool neverShowAgain = false;

    bool operator==(const UpdateItem&) const = default;
};

// "Alert", "Version", ... "Unknown" for any value that is not one of the seven.
const char* itemTypeName(ItemType type);
// The four-character tag, "????" for any value that is not one of the seven.
std::string itemTypeTag(ItemType type);
