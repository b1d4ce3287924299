// Placeholder until platform detection lands.
#include "app/platform_win.h"

uint32_t getPlatformCode(std::string* name) {
    if (name) *name = "Windows 10";
    return 18;
}
bool isPlatformSupported(const uint32_t*) {
    return true;
}
INT_PTR showIncompatiblePlatformBox(HWND, const char*) {
    return 2;
}
