// The item windows' shared buttons (see item_commands_win.h).
#include "notify/item_commands_win.h"

#include "notify/url_policy_win.h"
#include "resources/resource.h"
#include "shell/browser_win.h"

std::optional<INT_PTR> itemWindowCommand(HWND window, int id, const ItemCommandIds& ids,
                                         UpdateItem& item, const Settings& settings) {
    const bool acts = id == IDC_BUTTON1 || id == IDC_CANCELBUTTON || id == ids.go ||
                      (ids.picture && id == ids.picture);
    if (acts && IsDlgButtonChecked(window, ids.neverAgain) == BST_CHECKED)
        item.neverShowAgain = true;
    if (id == IDC_BUTTON1) return 1;
    if (id == IDC_CANCELBUTTON) return 0;
    if (id == IDC_HELPBUTTON) {
        openManualTopic(window, settings, "NOTIFICATION");
    } else if (acts && item.url) {
        openItemAddress(window, *item.url, settings.ApplicationPath);
    }
    return std::nullopt;
}
