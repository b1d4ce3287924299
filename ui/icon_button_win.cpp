// Placeholder until the icon button lands.
#include "ui/icon_button_win.h"

void drawIconButton(const DRAWITEMSTRUCT& item, COLORREF background) {
    HBRUSH brush = CreateSolidBrush(background);
    FillRect(item.hDC, &item.rcItem, brush);
    DeleteObject(brush);
}
