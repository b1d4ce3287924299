// Placeholder until the browser launcher lands.
#include "dialogs/manual_win.h"

int openManualTopic(HWND, const char*) {
    return 1;
}
int openManual(HWND) {
    return 1;
}
int launchBrowser(HWND, const std::string&, const char*, bool) {
    return 1;
}
