#pragma once
// What the item browser shows of one item, as texts. The browser is for people
// who want to see what an item holds rather than how the notification windows
// present it, so every field appears as plain data; building the texts apart
// from the window lets the rules be checked without a display.
#include <optional>
#include <string>

#include "feed/installed_product.h"
#include "feed/update_item.h"

struct BrowseTexts {
    std::string caption;
    std::string date, originator, application, version, keywords;
    std::string plainText;
    std::string registered, evaluation;
    std::string iniFile, installed, section;
    std::string url;
    std::string importance, ignoreUntil;
};

// "TITLE [Type]", or the title alone when the two would come near the 260
// characters a caption has always had; empty without a title.
std::string browseCaption(const UpdateItem& item);
// The version the item announces: "3.0c (revision 2) (beta 1)"; no letter when
// the item has no REVISION.
std::string browseVersionText(const UpdateItem& item);
// "2.1 revision 3" of an installed product; empty when it could not be looked up.
std::string installedBrowseText(const std::optional<InstalledVersion>& installed);

// Every field; an absent text key leaves its field empty, numbers always show.
BrowseTexts browseTexts(const UpdateItem& item, const std::optional<InstalledVersion>& installed);
