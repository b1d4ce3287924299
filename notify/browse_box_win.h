#pragma once
// The item browser: every field of one notification item as plain data, for
// the user or the publisher's staff who want to see what an item holds. The
// main window opens it for a row double-clicked with Shift held.
#include <functional>
#include <optional>

#include "base/win_headers.h"
#include "feed/installed_product.h"
#include "feed/update_item.h"
#include "settings/settings.h"

// The installed version of the product an item names; nullopt when it cannot
// be looked up.
using InstalledVersionLookup = std::function<std::optional<InstalledVersion>(const UpdateItem&)>;

// Shows "BrowseBox" for item, modally; always 1. The installed version comes
// from lookup, or from the product's own file when lookup is empty. settings
// gives the button style and the working folder for opening the URL.
int showBrowseBox(HWND owner, const UpdateItem& item, const Settings& settings,
                  const InstalledVersionLookup& lookup = {});

// The browser's outer height in pixels: every field shows at it.
inline constexpr int kBrowseBoxHeight = 566;
