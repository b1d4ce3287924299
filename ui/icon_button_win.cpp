// Control 10, the icon button (see icon_button_win.h). Windows picks the
// closest image of the icon resource for the size asked, so the .ico file
// carries every size the button can choose.
#include "ui/icon_button_win.h"

#include <algorithm>

#include "base/win_handles.h"
#include "ui/dialog_win.h"
#include "ui/icon_button.h"

bool drawIconButton(const DRAWITEMSTRUCT& item, COLORREF background, const char* icon) {
    const RECT& r = item.rcItem;
    const int width = r.right - r.left;
    const int height = r.bottom - r.top;
    if (!icon) return false;
    const int size = iconSizeFor(std::min(width, height));
    UniqueIcon image(static_cast<HICON>(
        LoadImageA(resourceModule(), icon, IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
    // Without its icon the control stays unpainted, background and all.
    if (!image) return false;
    UniqueBrush brush(CreateSolidBrush(background));
    FillRect(item.hDC, &r, brush.get());
    DrawIconEx(item.hDC, r.left + (width - size) / 2, r.top + (height - size) / 2, image.get(),
               size, size, 0, nullptr, DI_NORMAL);
    return true;
}
