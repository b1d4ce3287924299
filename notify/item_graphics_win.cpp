// Placeholder until the item graphics land.
#include "notify/item_graphics_win.h"

std::optional<Picture> loadGraphicFile(const std::string&) {
    return std::nullopt;
}
std::optional<Picture> loadBitmapResourceDib(int) {
    return std::nullopt;
}
void drawPicture(HDC, int, int, const Picture&) {}
