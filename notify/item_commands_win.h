#pragma once
// The buttons the alert window and the version notice share: Next, Cancel,
// Help and Go (the alert's picture acts as Go too). Each of them records a
// ticked "Never show this window again" in the item before it acts.
#include <optional>
#include <string>

#include "base/win_headers.h"
#include "settings/settings.h"
#include "feed/update_item.h"

struct ItemCommandIds {
    int neverAgain;  // the check box
    int go;
    int picture;  // 0 when the window has none that acts as Go
};

// Handles command id of an item window; the dialog result when it ends the
// window (1 Next, 0 Cancel), nullopt otherwise.
std::optional<INT_PTR> itemWindowCommand(HWND window, int id, const ItemCommandIds& ids,
                                         UpdateItem& item, const Settings& settings);
