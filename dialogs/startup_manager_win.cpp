// Placeholder until the startup manager lands.
#include "dialogs/startup_manager_win.h"

int openStartupManager(HWND) {
    return 0;
}
int applyStartupOption(HWND, uint32_t) {
    return 1;
}
HRESULT createShortcut(const std::string&, const std::string&, const std::string&,
                       const std::string&) {
    return E_NOTIMPL;
}
