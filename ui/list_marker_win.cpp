// Row markers of the item list. The pictures are bitmap files with straight
// alpha; the list box draws on an opaque background it knows, so each picture
// is blended over that colour in memory (base/packed_dib) and copied as a
// plain 24-bit DIB, which every device context takes without alpha support.
#include "ui/list_marker_win.h"

#include <optional>
#include <vector>

#include "base/packed_dib.h"
#include "base/win_handles.h"
#include "resources/resource.h"
#include "ui/dpi.h"
#include "ui/dialog_win.h"

namespace {

struct MarkerStyle {
    COLORREF light, fill, dark;
    int resource;
};

// By importance 1, 2, 3; every other importance uses kOtherMarker.
constexpr MarkerStyle kMarkers[] = {
    {0x00FF00, 0x00C000, 0x004000, IDR_MARKER_LOW},
    {0x00FFFF, 0x00C0C0, 0x004040, IDR_MARKER_MEDIUM},
    {0x0000FF, 0x0000C0, 0x000040, IDR_MARKER_HIGH},
};
constexpr MarkerStyle kOtherMarker = {0xDFCEB3, 0xC7A976, 0x8B6C38, IDR_MARKER_OTHER};

constexpr int kPictureSize = 16;
constexpr int kDoubleOffset = IDR_MARKER_OTHER_2X - IDR_MARKER_OTHER;
constexpr int kPictureTop = 3;

const MarkerStyle& styleFor(int importance) {
    return importance >= 1 && importance <= 3 ? kMarkers[importance - 1] : kOtherMarker;
}

void polyline(HDC dc, COLORREF colour, const POINT (&points)[3]) {
    UniquePen pen(CreatePen(PS_SOLID, 1, colour));
    ScopedSelect select(dc, pen.get());
    MoveToEx(dc, points[0].x, points[0].y, nullptr);
    LineTo(dc, points[1].x, points[1].y);
    LineTo(dc, points[2].x, points[2].y);
}

}  // namespace

std::span<const uint8_t> markerPictureResource(int importance, bool doubled) {
    HINSTANCE module = resourceModule();
    const int id = styleFor(importance).resource + (doubled ? kDoubleOffset : 0);
    HRSRC found = FindResourceA(module, MAKEINTRESOURCEA(id), RT_RCDATA);
    HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    const void* data = loaded ? LockResource(loaded) : nullptr;
    if (!data) return {};
    // Resources stay mapped for the life of the module: nothing to release.
    return {static_cast<const uint8_t*>(data), SizeofResource(module, found)};
}

bool drawMarkerPicture(HDC dc, const RECT& row, std::span<const uint8_t> bmpFile,
                       COLORREF background, unsigned dpi) {
    const std::optional<DibInfo> info = readBmpFileInfo(bmpFile);
    if (!info) return false;
    if (background == kButtonFaceBackground) background = GetSysColor(COLOR_BTNFACE);
    const std::vector<uint8_t> composed = compositeOverColour(bmpFile, *info, background);
    if (composed.empty()) return false;
    const int size = scaleForDpi(kPictureSize, dpi);
    const int x = row.left + (row.bottom - row.top - size) / 2;
    const int y = row.top + scaleForDpi(kPictureTop, dpi);
    const auto* header = reinterpret_cast<const BITMAPINFO*>(composed.data());
    const void* bits = composed.data() + kInfoHeaderSize;
    if (size == info->width && size == info->height)
        return SetDIBitsToDevice(dc, x, y, info->width, info->height, 0, 0, 0, info->height, bits,
                                 header, DIB_RGB_COLORS) != 0;
    // HALFTONE averages the source pixels: a scaled marker stays smooth
    // instead of showing doubled or dropped rows.
    const int oldMode = SetStretchBltMode(dc, HALFTONE);
    SetBrushOrgEx(dc, 0, 0, nullptr);
    const int lines = StretchDIBits(dc, x, y, size, size, 0, 0, info->width, info->height, bits,
                                    header, DIB_RGB_COLORS, SRCCOPY);
    SetStretchBltMode(dc, oldMode);
    return lines > 0;  // GDI_ERROR reads as -1
}

void drawMarkerSquare(HDC dc, const RECT& row, int importance, unsigned dpi) {
    const MarkerStyle& style = styleFor(importance);
    const RECT r{row.left + scaleForDpi(7, dpi), row.top + scaleForDpi(3, dpi),
                 row.left + scaleForDpi(21, dpi), row.bottom - scaleForDpi(4, dpi)};
    UniqueBrush fill(CreateSolidBrush(style.fill));
    FillRect(dc, &r, fill.get());
    polyline(dc, style.light, {{r.left, r.bottom}, {r.left, r.top}, {r.right, r.top}});
    polyline(dc, style.dark, {{r.right, r.top}, {r.right, r.bottom}, {r.left, r.bottom}});
}

void drawListMarker(HDC dc, const RECT& row, int importance, COLORREF background, unsigned dpi) {
    // Shrinking the 32-pixel drawing keeps it sharper than growing the
    // 16-pixel one, once the scale is well above 1.
    const std::span<const uint8_t> picture =
        markerPictureResource(importance, wantsDoublePicture(dpi));
    if (!drawMarkerPicture(dc, row, picture, background, dpi))
        drawMarkerSquare(dc, row, importance, dpi);
}
