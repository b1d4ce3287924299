// Soft buttons (see soft_button_win.h). A face is painted off screen into a
// 32-bit DIB and copied in one go, so it never flickers. Shapes are drawn as
// distance fields: each pixel's coverage follows from its distance to the
// outline, which gives smooth rounded and angled edges with plain GDI, at any
// size. In high-contrast mode the face is plain rectangles in system colours.
#include "ui/soft_button_win.h"

#include <algorithm>
#include <cmath>

#include "base/win_handles.h"
#include "ui/dpi_win.h"

namespace {

// ---- The three looks ---------------------------------------------------------

struct FaceColours {
    uint32_t border, top, bottom, text;  // 0xRRGGBB; the face shades from top to bottom
};

enum FaceState { kNormal, kHot, kPressed, kDefault, kDefaultHot, kDefaultPressed, kDisabled };

enum class Outline { kRounded, kWedge };

struct StyleLook {
    Outline outline;
    float corner;          // corner radius, or depth of a wedge's point, as a share of the height
    float margin;          // room around the face as a share of the height, for a focus ring
    bool focusRing;        // a solid focus ring in that room, else a dotted focus rectangle
    bool shadow;           // a soft shadow under the face
    bool gloss;            // the upper half brighter, as on polished metal
    bool bevel;            // highlight along the top inside edge, inner shadow when pressed
    float defaultGlow;     // strength of the border colour's glow inside a default face
    FaceColours faces[7];  // by FaceState
};

// clang-format off
constexpr StyleLook kLooks[] = {
    // Soft: rounded, gently shaded pearl grey with a blue default and hover.
    {Outline::kRounded, 0.32f, 0, false, true, false, true, 0.40f, {
        {0xA7AFBA, 0xFFFFFF, 0xE4E8EE, 0x1F2328},
        {0x7DA7D6, 0xF7FBFF, 0xD6E6F7, 0x1F2328},
        {0x6C92BF, 0xD0DDEC, 0xEAF0F7, 0x1F2328},
        {0x3B7CC2, 0xFFFFFF, 0xE1E9F3, 0x1F2328},
        {0x2F6DB0, 0xF4F9FF, 0xD2E3F6, 0x1F2328},
        {0x2A6199, 0xCCDBEC, 0xE6EEF8, 0x1F2328},
        {0xD0D5DB, 0xF7F8F9, 0xEFF1F3, 0xA3A9B1}}},
    // Flex: flat, a teal accent border; the default button filled with it.
    {Outline::kRounded, 0.16f, 0.09f, true, false, false, false, 0, {
        {0x0E7C8A, 0xFFFFFF, 0xFFFFFF, 0x1B1B1B},
        {0x0E7C8A, 0xE6F4F6, 0xE6F4F6, 0x1B1B1B},
        {0x0A616D, 0xC9E7EB, 0xC9E7EB, 0x1B1B1B},
        {0x0E7C8A, 0x0E7C8A, 0x0E7C8A, 0xFFFFFF},
        {0x16909F, 0x16909F, 0x16909F, 0xFFFFFF},
        {0x0A5D68, 0x0A5D68, 0x0A5D68, 0xE8F4F6},
        {0xC9CDD2, 0xF4F5F6, 0xF4F5F6, 0xA0A5AB}}},
    // Wedge: pointed ends, polished slate; amber under the mouse.
    {Outline::kWedge, 0.34f, 0, false, true, true, true, 0.35f, {
        {0x6D7C8D, 0xFBFCFD, 0xD5DDE5, 0x1D2731},
        {0xC08217, 0xFFFCF2, 0xF6DEA6, 0x1D2731},
        {0x5A6878, 0xC6D0DA, 0xE3E8ED, 0x1D2731},
        {0x285C93, 0xF8FAFD, 0xCFDBE8, 0x1D2731},
        {0xC08217, 0xFFFCF2, 0xF6DEA6, 0x1D2731},
        {0x234F7E, 0xC6D0DA, 0xE3E8ED, 0x1D2731},
        {0xC5CBD2, 0xF4F5F7, 0xEBEEF1, 0xA0A7AF}}},
};
// clang-format on

FaceState faceState(const SoftButtonFace& face) {
    if (face.disabled) return kDisabled;
    const int base = face.isDefault ? kDefault : kNormal;
    return FaceState(base + (face.pressed ? 2 : face.hot ? 1 : 0));
}

// ---- Colours and the off-screen canvas ---------------------------------------

struct Rgb {
    float r, g, b;
};

Rgb rgb(uint32_t hex) {
    return {float((hex >> 16) & 0xFF), float((hex >> 8) & 0xFF), float(hex & 0xFF)};
}

Rgb mix(Rgb a, Rgb b, float t) {
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

COLORREF colorRef(uint32_t hex) {
    return RGB((hex >> 16) & 0xFF, (hex >> 8) & 0xFF, hex & 0xFF);
}

// A top-down 32-bit DIB selected into a memory DC: GDI draws the background
// and the text, the shapes are blended into the pixels directly.
class Canvas {
  public:
    Canvas(HDC reference, int width, int height) : width_(width) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        bitmap_.reset(CreateDIBSection(reference, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        dc_.reset(CreateCompatibleDC(reference));
        if (bitmap_ && dc_ && bits) {
            pixels_ = static_cast<uint32_t*>(bits);
            old_ = SelectObject(dc_.get(), bitmap_.get());
        }
    }
    ~Canvas() {
        if (old_) SelectObject(dc_.get(), old_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    bool ok() const { return pixels_ != nullptr; }
    HDC dc() const { return dc_.get(); }

    void blend(int x, int y, Rgb c, float alpha) {
        if (alpha <= 0) return;
        uint32_t& p = pixels_[y * width_ + x];
        const Rgb out = mix(rgb(p), c, std::min(alpha, 1.0f));
        p = (uint32_t(out.r + 0.5f) << 16) | (uint32_t(out.g + 0.5f) << 8) | uint32_t(out.b + 0.5f);
    }

  private:
    int width_;
    UniqueBitmap bitmap_;
    UniqueMemoryDc dc_;
    uint32_t* pixels_ = nullptr;
    HGDIOBJ old_ = nullptr;
};

// ---- Outlines -----------------------------------------------------------------

// The face's outline as a signed distance (negative inside). Moving inward by
// d is the same outline at distance -d, for both shapes, so rings and insets
// need no second outline.
struct FaceOutline {
    Outline kind;
    float left, top, right, bottom;
    float corner;

    float distance(float x, float y) const {
        const float halfWidth = (right - left) / 2, halfHeight = (bottom - top) / 2;
        const float dy = std::fabs(y - (top + halfHeight));
        if (kind == Outline::kRounded) {
            const float r = std::min({corner, halfWidth, halfHeight});
            const float qx = std::fabs(x - (left + halfWidth)) - (halfWidth - r);
            const float qy = dy - (halfHeight - r);
            const float outside = std::hypot(std::max(qx, 0.0f), std::max(qy, 0.0f));
            return outside + std::min(std::max(qx, qy), 0.0f) - r;
        }
        // A convex hexagon: the largest distance to its edge lines. fromEnd is
        // how far x is inside the nearer point's base.
        const float fromEnd = std::min(x - left, right - x) - corner;
        const float slanted =
            (dy * corner - (fromEnd + corner) * halfHeight) / std::hypot(corner, halfHeight);
        return std::max(slanted, dy - halfHeight);
    }
};

float coverage(float distance) {
    return std::clamp(0.5f - distance, 0.0f, 1.0f);
}

// ---- Painting -----------------------------------------------------------------

UINT textFormat(const SoftButtonFace& face) {
    return DT_CENTER | DT_VCENTER | DT_SINGLELINE | (face.hideAccelerator ? DT_HIDEPREFIX : 0);
}

void drawText(HDC dc, RECT r, const SoftButtonFace& face, COLORREF colour) {
    ScopedSelect font(dc, face.font ? face.font : GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, colour);
    DrawTextA(dc, face.text.c_str(), -1, &r, textFormat(face));
}

void drawFocusRectangle(HDC dc, RECT r) {
    // DrawFocusRect inverts; the text colour and background decide its dots.
    SetTextColor(dc, RGB(0, 0, 0));
    SetBkColor(dc, RGB(255, 255, 255));
    DrawFocusRect(dc, &r);
}

// High contrast: the user's own colours, crisp rectangles, nothing blended.
void paintPlain(HDC dc, const RECT& r, const SoftButtonFace& face) {
    FillRect(dc, &r, GetSysColorBrush(face.pressed ? COLOR_HIGHLIGHT : COLOR_BTNFACE));
    const int frame = face.disabled ? COLOR_GRAYTEXT : face.hot ? COLOR_HIGHLIGHT : COLOR_BTNTEXT;
    RECT edge = r;
    const int lines = scaleForDpi(face.isDefault && !face.disabled ? 2 : 1, face.dpi);
    for (int i = lines; i > 0; --i) {
        FrameRect(dc, &edge, GetSysColorBrush(frame));
        InflateRect(&edge, -1, -1);
    }
    const int text = face.disabled  ? COLOR_GRAYTEXT
                     : face.pressed ? COLOR_HIGHLIGHTTEXT
                                    : COLOR_BTNTEXT;
    drawText(dc, r, face, GetSysColor(text));
    if (face.focused && !face.hideFocus) {
        RECT focus = r;
        const int inset = scaleForDpi(4, face.dpi);
        InflateRect(&focus, -inset, -inset);
        drawFocusRectangle(dc, focus);
    }
}

void paintShaded(Canvas& canvas, int width, int height, const SoftButtonFace& face) {
    const StyleLook& look = kLooks[face.style - 1];
    const FaceState state = faceState(face);
    const FaceColours& colours = look.faces[state];
    const bool pressed = state == kPressed || state == kDefaultPressed;
    const bool enabled = state != kDisabled;
    // Whole pixels, so that the ring, the gap and the border each stay sharp;
    // a line is one pixel at 96 DPI and as many whole pixels as the scale gives.
    const float line = static_cast<float>(std::max(1, scaleForDpi(1, face.dpi)));
    const float m = look.margin > 0 ? std::max(2 * line, std::round(look.margin * height)) : 0;
    const float ringWidth = m - line;
    const float faceBottom = height - m - (look.shadow ? line : 0.0f);
    const float faceHeight = faceBottom - m;
    const float corner = look.corner * faceHeight;
    const FaceOutline outline{look.outline, m, m, width - m, faceBottom, corner};
    const Rgb border = rgb(colours.border), top = rgb(colours.top), bottom = rgb(colours.bottom);
    const Rgb black{0, 0, 0}, white{255, 255, 255}, ringColour = rgb(0x1B1B1B);
    const bool ring = look.focusRing && face.focused && !face.hideFocus;
    const bool shadow = look.shadow && !pressed && enabled;
    const float glow = face.isDefault && enabled ? look.defaultGlow : 0;

    for (int y = 0; y < height; ++y) {
        const float py = y + 0.5f;
        const float t = std::clamp((py - m) / faceHeight, 0.0f, 1.0f);
        const Rgb shade = !look.gloss || pressed || !enabled ? mix(top, bottom, t)
                          : t < 0.5f ? mix(top, mix(top, bottom, 0.35f), t * 2)
                                     : mix(mix(top, bottom, 0.7f), bottom, t * 2 - 1);
        const float nearTop = std::clamp(1 - 2 * t, 0.0f, 1.0f);
        for (int x = 0; x < width; ++x) {
            const float px = x + 0.5f;
            const float d = outline.distance(px, py);
            if (shadow)
                canvas.blend(x, y, black, 0.14f * coverage(outline.distance(px, py - line)));
            if (ring) canvas.blend(x, y, ringColour, coverage(d - m) - coverage(d - m + ringWidth));
            canvas.blend(x, y, border, coverage(d));
            canvas.blend(x, y, shade, coverage(d + line));
            // The rings just inside the border: a glow on the default button,
            // light along the top edge, or a shadow there while pressed.
            const float first = coverage(d + line) - coverage(d + 2 * line);
            const float second = coverage(d + 2 * line) - coverage(d + 3 * line);
            if (glow > 0) canvas.blend(x, y, border, glow * first);
            if (!look.bevel || !enabled) continue;
            if (pressed)
                canvas.blend(x, y, black, 0.12f * nearTop * first);
            else
                canvas.blend(x, y, white, 0.8f * nearTop * (glow > 0 ? second : first));
        }
    }

    const float inset = look.outline == Outline::kWedge ? corner + 2 * line : m + 4 * line;
    RECT text{LONG(inset), LONG(m), LONG(width - inset), LONG(faceBottom)};
    if (pressed && look.bevel) OffsetRect(&text, 0, LONG(line));
    drawText(canvas.dc(), text, face, colorRef(colours.text));
    if (face.focused && !face.hideFocus && !look.focusRing) {
        const float edge = (look.outline == Outline::kWedge ? 3 : 4) * line;
        RECT focus{LONG(inset), LONG(m + edge), LONG(width - inset), LONG(faceBottom - edge)};
        drawFocusRectangle(canvas.dc(), focus);
    }
}

// ---- The subclass -------------------------------------------------------------

// What a soft button remembers between drawings; owned by its subclass. The
// drawing finds it through a window property (MinGW's comctl32 import library
// has no GetWindowSubclass).
struct SoftButtonState {
    uint32_t style;
    bool isDefault;
    bool hot = false;
};

constexpr UINT_PTR kSubclassId = 1;
constexpr char kStateProperty[] = "QuenmarkSoftButton";

void repaint(HWND button) {
    InvalidateRect(button, nullptr, FALSE);
}

LRESULT CALLBACK softButtonProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id,
                                DWORD_PTR data) noexcept {
    auto* state = reinterpret_cast<SoftButtonState*>(data);
    switch (msg) {
        case WM_GETDLGCODE: {
            // Owner-drawn buttons answer only DLGC_BUTTON; the dialog manager
            // needs to know which push button is the default for Enter and
            // for moving the default with the focus.
            const LRESULT code =
                DefSubclassProc(hwnd, msg, wp, lp) & ~(DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON);
            return code | DLGC_BUTTON |
                   (state->isDefault ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
        }
        case BM_SETSTYLE: {
            // The dialog manager moves the default with BS_DEFPUSHBUTTON and
            // BS_PUSHBUTTON; keep the owner-draw type and remember the rest.
            const UINT type = wp & BS_TYPEMASK;
            if (type != BS_PUSHBUTTON && type != BS_DEFPUSHBUTTON) break;
            state->isDefault = type == BS_DEFPUSHBUTTON;
            const LRESULT result =
                DefSubclassProc(hwnd, msg, (wp & ~WPARAM(BS_TYPEMASK)) | BS_OWNERDRAW, lp);
            repaint(hwnd);
            return result;
        }
        case WM_MOUSEMOVE:
            if (!state->hot) {
                state->hot = true;
                TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, hwnd, 0};
                TrackMouseEvent(&track);
                repaint(hwnd);
            }
            break;
        case WM_MOUSELEAVE:
            state->hot = false;
            repaint(hwnd);
            break;
        case WM_ENABLE: {
            const LRESULT result = DefSubclassProc(hwnd, msg, wp, lp);
            if (!wp) state->hot = false;
            repaint(hwnd);
            return result;
        }
        case WM_UPDATEUISTATE: {
            // Alt shows the mnemonic underlines and focus rectangle.
            const LRESULT result = DefSubclassProc(hwnd, msg, wp, lp);
            repaint(hwnd);
            return result;
        }
        case WM_ERASEBKGND:
            return TRUE;  // the face covers every pixel
        case WM_NCDESTROY:
            RemoveWindowSubclass(hwnd, softButtonProc, id);
            RemovePropA(hwnd, kStateProperty);
            delete state;
            break;
    }
    return DefSubclassProc(hwnd, msg, wp, lp);
}

SoftButtonState* stateOf(HWND button) {
    return button ? static_cast<SoftButtonState*>(GetPropA(button, kStateProperty)) : nullptr;
}

bool isPushButton(HWND hwnd) {
    char cls[16] = {};
    GetClassNameA(hwnd, cls, sizeof cls);
    const LONG_PTR type = GetWindowLongPtrA(hwnd, GWL_STYLE) & BS_TYPEMASK;
    return lstrcmpiA(cls, "Button") == 0 && (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON);
}

bool highContrastOn() {
    HIGHCONTRASTA contrast{sizeof contrast, 0, nullptr};
    return SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON);
}

}  // namespace

void paintSoftButton(HDC dc, const RECT& r, const SoftButtonFace& face) {
    const int width = r.right - r.left, height = r.bottom - r.top;
    if (width <= 0 || height <= 0) return;
    const bool shaded =
        !face.highContrast && face.style >= kSoftButtonsSoft && face.style <= kSoftButtonsWedge;
    Canvas canvas(dc, width, height);
    if (!canvas.ok()) {
        paintPlain(dc, r, face);
        return;
    }
    RECT local{0, 0, width, height};
    FillRect(canvas.dc(), &local,
             face.background ? face.background : GetSysColorBrush(COLOR_BTNFACE));
    if (shaded) {
        GdiFlush();  // the fill must be in the pixels before they are blended
        paintShaded(canvas, width, height, face);
    } else {
        paintPlain(canvas.dc(), local, face);
    }
    BitBlt(dc, r.left, r.top, width, height, canvas.dc(), 0, 0, SRCCOPY);
}

bool isSoftButton(HWND button) {
    return stateOf(button) != nullptr;
}

bool drawSoftButton(const DRAWITEMSTRUCT& item) {
    if (item.CtlType != ODT_BUTTON) return false;
    const SoftButtonState* state = stateOf(item.hwndItem);
    if (!state) return false;
    SoftButtonFace face;
    face.style = state->style;
    char text[256] = {};
    GetWindowTextA(item.hwndItem, text, sizeof text);
    face.text = text;
    face.font = GetWindowFont(item.hwndItem);
    face.dpi = windowDpi(item.hwndItem);
    // Around the face shows what the dialog paints behind its buttons.
    face.background = reinterpret_cast<HBRUSH>(
        SendMessageA(GetParent(item.hwndItem), WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(item.hDC),
                     reinterpret_cast<LPARAM>(item.hwndItem)));
    face.isDefault = state->isDefault;
    face.focused = item.itemState & ODS_FOCUS;
    face.pressed = item.itemState & ODS_SELECTED;
    face.disabled = item.itemState & ODS_DISABLED;
    face.hot = state->hot && !face.disabled;
    face.hideAccelerator = item.itemState & ODS_NOACCEL;
    face.hideFocus = item.itemState & ODS_NOFOCUSRECT;
    face.highContrast = highContrastOn();
    paintSoftButton(item.hDC, item.rcItem, face);
    return true;
}

void makeSoftButtons(HWND dialog, uint32_t style, std::initializer_list<int> ids) {
    if (style < kSoftButtonsSoft || style > kSoftButtonsWedge) return;
    for (int id : ids) {
        HWND button = GetDlgItem(dialog, id);
        if (!button) continue;
        if (SoftButtonState* state = stateOf(button)) {
            state->style = style;
            repaint(button);
            continue;
        }
        if (!isPushButton(button)) continue;
        const LONG_PTR windowStyle = GetWindowLongPtrA(button, GWL_STYLE);
        auto* state = new SoftButtonState{style, (windowStyle & BS_TYPEMASK) == BS_DEFPUSHBUTTON};
        if (!SetPropA(button, kStateProperty, state)) {
            delete state;
            continue;
        }
        if (!SetWindowSubclass(button, softButtonProc, kSubclassId,
                               reinterpret_cast<DWORD_PTR>(state))) {
            RemovePropA(button, kStateProperty);
            delete state;
            continue;
        }
        SetWindowLongPtrA(button, GWL_STYLE, (windowStyle & ~LONG_PTR(BS_TYPEMASK)) | BS_OWNERDRAW);
        repaint(button);
    }
}
