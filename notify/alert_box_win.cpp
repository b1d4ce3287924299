// The alert window (see alert_box_win.h). The body text is drawn by the window
// itself in the alert font, but through an owner-drawn static control laid over
// the text area: the control's own text is the whole item text, so screen
// readers read what the window paints. Only the part of the text that can show
// on a screen is ever measured or drawn, so a text of megabytes costs no more
// than a screenful. The picture lives in the window and goes with it.
#include "notify/alert_box_win.h"

#include <optional>
#include <string>

#include "base/packed_dib.h"
#include "base/win_handles.h"
#include "feed/document_file.h"
#include "feed/http_win.h"
#include "notify/alert_text.h"
#include "notify/item_commands_win.h"
#include "notify/url_policy.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "shell/item_graphics_win.h"
#include "shell/sound_win.h"
#include "ui/dialog_win.h"
#include "ui/dpi_win.h"
#include "ui/soft_button_win.h"

namespace {

constexpr char kTemplate[] = "AlertBox";
constexpr std::size_t kMaxPath = 260;
// Space between the text and a check box moved below it.
constexpr int kCheckBoxGap = 8;

bool fileExists(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

int height(const RECT& r) {
    return r.bottom - r.top;
}

class AlertBox : public Dialog {
  public:
    AlertBox(UpdateItem& item, const NotifyLook& look, const Settings& settings)
        : item_(item), look_(look), settings_(settings) {}

  protected:
    BOOL onInitDialog() override {
        // Its pixel geometry scales exactly, not only as far as its font does.
        sizeAsScaledTemplate(hwnd(), kTemplate);
        makeSoftButtons(hwnd(), settings_.SoftButtons,
                        {IDC_BUTTON1, IDC_CANCELBUTTON, IDC_HELPBUTTON, IDC_ALERT_GO});
        SetWindowTextA(hwnd(), alertCaption(item_).c_str());
        if (const std::optional<std::string> header = alertHeaderLine(item_)) {
            SetDlgItemTextA(hwnd(), IDC_ALERT_HEADER, header->c_str());
        } else {
            DestroyWindow(item(IDC_ALERT_HEADER));
            // The empty frame would only box nothing; the check box makes way
            // for the text, which now starts at the top, and goes below it.
            DestroyWindow(GetDlgItem(hwnd(), IDC_ALERT_FRAME));
            checkBoxBelow_ = item(IDC_ALERT_NEVERAGAIN) != nullptr;
        }
        loadPicture();
        if (item_.url && isWebAddress(*item_.url)) enableGo();
        createTextControl();
        PostMessageA(hwnd(), WM_ALERT_FIT, 0, 0);
        if (settings_.BeNoisy) playNotifySound(settings_.ChangeFolderSound);
        return focusAndCentre();
    }

    void onCommand(int id, UINT code, HWND) override {
        if (code != BN_CLICKED) return;
        if (const auto result = itemWindowCommand(
                hwnd(), id, {IDC_ALERT_NEVERAGAIN, IDC_ALERT_GO, IDC_ICONBUTTON}, item_, settings_))
            end(*result);
    }

    bool onDrawItem(const DRAWITEMSTRUCT& d) override {
        if (d.CtlID == IDC_ICONBUTTON) {
            drawPictureButton(d);
            return true;
        }
        if (d.CtlID == IDC_ALERT_TEXT) {
            drawText(d);
            return true;
        }
        return false;
    }

    bool onMessage(UINT msg, WPARAM wp, LPARAM, INT_PTR& result) override {
        if (answerNotifyColours(msg, wp, look_, settings_, result)) return true;
        switch (msg) {
            case WM_ALERT_FIT:
                fit();
                result = 0;
                return true;
            case WM_COPY:
                copyTextToClipboard(hwnd(), alertClipboardText(item_));
                result = 0;
                return true;
        }
        return false;
    }

    void onDestroy() override { picture_.reset(); }

  private:
    bool hasHeader() const { return item(IDC_ALERT_HEADER) != nullptr; }
    // The window's fixed measures are 96-DPI pixels, scaled as the template is.
    int px(int pixelsAt96) const { return scaledFor(hwnd(), pixelsAt96); }
    int textTop() const {
        return px(alertTextTop(hasHeader(), item(IDC_ALERT_NEVERAGAIN) != nullptr));
    }
    int textLeft() const { return px(kAlertTextLeft); }
    // The scale at which the picture's own pixels are shown: a picture drawn
    // at twice the size is shown one to one at 192 DPI.
    unsigned pictureDpi() const { return windowDpi(hwnd()) / pictureDensity_; }
    int textRight() const { return px(kAlertTextRight); }
    HFONT textFont() const { return look_.alertFont ? look_.alertFont : GetWindowFont(hwnd()); }

    void enableGo() {
        HWND go = item(IDC_ALERT_GO);
        if (!go || IsWindowEnabled(go)) return;
        EnableWindow(go, TRUE);
        if (isSoftButton(go)) InvalidateRect(go, nullptr, TRUE);
        UpdateWindow(go);
    }

    // The picture named by GRAPHIC, fetched into the images folder when it is
    // not there yet; the default picture when there is none to be had.
    void loadPicture() {
        HWND button = item(IDC_ICONBUTTON);
        if (const std::optional<std::string> name = alertPictureName(item_)) {
            const std::string folder = getUserHeralderPath("images");
            std::string path = folder;
            if (!path.empty() && path.back() != '\\') path += '\\';
            path += *name;
            if (path.size() <= kMaxPath) {
                if (settings_.DownloadGraphics && !fileExists(path))
                    fetchPicture(folder, path, *name);
                if (button && fileExists(path)) picture_ = loadGraphicFile(path);
            }
        }
        if (!picture_ && wantsDoublePicture(windowDpi(hwnd()))) {
            // Drawn at twice the size: each of its pixels is half a 96-DPI one.
            picture_ = loadBitmapResourceDib(IDR_DEFAULT_PICTURE_2X);
            if (picture_) pictureDensity_ = 2;
        }
        if (!picture_) picture_ = loadBitmapResourceDib(kDefaultPictureId);
        if (picture_) pictureInfo_ = getDibInfo(*picture_);
        if (!pictureInfo_) picture_.reset();
        if (!picture_ || !button) return;

        // Centred under Help at its own size times the display scale: a
        // picture wider than the button column starts at its left edge and
        // reaches out to the right.
        const RECT help = clientRectOf(hwnd(), IDC_HELPBUTTON);
        const RECT place = clientRectOf(hwnd(), IDC_ICONBUTTON);
        const unsigned dpi = pictureDpi();
        const int width = scaleForDpi(pictureInfo_->width, dpi);
        const int spare = (help.right - help.left) - width;
        const int left = spare < 0 ? help.left : help.left + spare / 2;
        SetWindowPos(button, nullptr, left, place.top, width,
                     scaleForDpi(pictureInfo_->height, dpi), SWP_NOZORDER | SWP_NOACTIVATE);
    }

    void fetchPicture(const std::string& folder, const std::string& path, const std::string& name) {
        HCURSOR previous = SetCursor(LoadCursor(nullptr, IDC_WAIT));
        const std::optional<std::string> body =
            fetchServerFile(hwnd(), publisherServerHost(), "/update/images/" + name);
        if (body && looksLikePicture(*body)) {
            // The product folder too: a window opened from the list may come
            // before any run has made it.
            ensureDataFolders();
            CreateDirectoryA(folder.c_str(), nullptr);
            // Written aside and renamed, so that a broken write never leaves a
            // half picture that would count as fetched next time.
            const std::string partial = path + ".part";
            if (writeHandleToFile(partial, *body) &&
                !MoveFileExA(partial.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
                DeleteFileA(partial.c_str());
            }
        }
        SetCursor(previous);
    }

    // The text control covers the free area from the text's top to the
    // bottom; its own text is the whole item text.
    void createTextControl() {
        const std::string& text = item_.plainText.value_or(std::string());
        RECT client;
        GetClientRect(hwnd(), &client);
        const RECT r{textLeft(), textTop(), textRight(), client.bottom};
        HWND control = createChild(hwnd(), "Static", text.c_str(), SS_OWNERDRAW | SS_NOPREFIX,
                                   IDC_ALERT_TEXT, r, textFont());
        // Below every other control, so that nothing painted here covers them.
        SetWindowPos(control, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);

        // Only what can show on this screen is kept for measuring and drawing.
        WindowDc dc(hwnd());
        ScopedSelect font(dc.get(), textFont());
        TEXTMETRICA metrics{};
        GetTextMetricsA(dc.get(), &metrics);
        const int lineHeight = metrics.tmHeight > 0 ? metrics.tmHeight : 1;
        shownText_ = alertVisibleText(text, GetSystemMetrics(SM_CYSCREEN) / lineHeight + 2);
        layOutBelowText();
    }

    // The text's height measured as it is drawn; 0 without text.
    int measureText() {
        if (shownText_.empty()) return 0;
        WindowDc dc(hwnd());
        ScopedSelect font(dc.get(), textFont());
        const int top = textTop();
        RECT r{textLeft(), top, textRight(), top + 8};
        DrawTextA(dc.get(), shownText_.c_str(), static_cast<int>(shownText_.size()), &r,
                  DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
        return height(r);
    }

    int checkBoxRoom() const {
        if (!checkBoxBelow_) return 0;
        return height(clientRectOf(hwnd(), IDC_ALERT_NEVERAGAIN)) + px(kCheckBoxGap);
    }

    void fit() {
        if (shownText_.empty()) return;
        const int wanted = fitAlertHeight(
            GetSystemMetrics(SM_CYCAPTION), GetSystemMetrics(SM_CYDLGFRAME), textTop(),
            measureText() + checkBoxRoom(), GetSystemMetrics(SM_CYSCREEN), windowDpi(hwnd()));
        RECT r;
        GetWindowRect(hwnd(), &r);
        SetWindowPos(hwnd(), nullptr, 0, 0, r.right - r.left, wanted,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        centreWindow(hwnd());
        layOutBelowText();
        // The text control repaints with the window: the dialog's background is
        // drawn under it first.
        RedrawWindow(hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }

    // The text reaches the bottom of the window, or the check box when it
    // stands below the text.
    void layOutBelowText() {
        RECT client;
        GetClientRect(hwnd(), &client);
        int bottom = client.bottom;
        if (checkBoxBelow_) {
            RECT box = clientRectOf(hwnd(), IDC_ALERT_NEVERAGAIN);
            const int boxHeight = height(box);
            box.top = client.bottom - px(kCheckBoxGap) / 2 - boxHeight;
            box.bottom = box.top + boxHeight;
            moveChild(hwnd(), IDC_ALERT_NEVERAGAIN, box);
            bottom = box.top - px(kCheckBoxGap) / 2;
        }
        moveChild(hwnd(), IDC_ALERT_TEXT, {textLeft(), textTop(), textRight(), bottom});
    }

    void drawText(const DRAWITEMSTRUCT& d) {
        if (shownText_.empty()) return;
        ScopedSelect font(d.hDC, textFont());
        SetBkMode(d.hDC, TRANSPARENT);
        SetTextColor(d.hDC, GetSysColor(COLOR_BTNTEXT));
        RECT r = d.rcItem;
        DrawTextA(d.hDC, shownText_.c_str(), static_cast<int>(shownText_.size()), &r,
                  DT_WORDBREAK | DT_NOPREFIX);
    }

    // A picture with alpha is laid over the background colour afresh at each
    // drawing, so a changed colour shows at once.
    void drawPictureButton(const DRAWITEMSTRUCT& d) {
        if (look_.background) FillRect(d.hDC, &d.rcItem, look_.background);
        if (!picture_ || !pictureInfo_) return;
        if (const unsigned dpi = pictureDpi(); dpi != kBaseDpi) {
            drawScaledPicture(d, dpi);
            return;
        }
        if (pictureInfo_->bitCount == 32) {
            // Only the part that shows is blended: a picture can be far larger
            // than the window.
            RECT shown{0, 0, pictureInfo_->width, pictureInfo_->height};
            RECT clip;
            if (GetClipBox(d.hDC, &clip) != ERROR) {
                OffsetRect(&clip, -d.rcItem.left, -d.rcItem.top);
                if (!IntersectRect(&shown, &shown, &clip)) return;
            }
            const Picture blended = compositeOverColour(
                *picture_, *pictureInfo_, settings_.AlertBackgroundColor,
                {shown.left, shown.top, shown.right - shown.left, shown.bottom - shown.top});
            if (!blended.empty())
                drawPicture(d.hDC, d.rcItem.left + shown.left, d.rcItem.top + shown.top, blended);
        } else {
            drawPicture(d.hDC, d.rcItem.left, d.rcItem.top, *picture_);
        }
    }

    // On a scaled screen only the source pixels under the clip box are
    // blended, then stretched smoothly onto their place in the button.
    void drawScaledPicture(const DRAWITEMSTRUCT& d, unsigned dpi) {
        const int width = pictureInfo_->width, height = pictureInfo_->height;
        RECT source{0, 0, width, height};
        RECT clip;
        if (GetClipBox(d.hDC, &clip) != ERROR) {
            OffsetRect(&clip, -d.rcItem.left, -d.rcItem.top);
            const auto down = [dpi](long v) { return static_cast<long>(v * 96LL / dpi); };
            const auto up = [dpi](long v) { return static_cast<long>((v * 96LL + dpi - 1) / dpi); };
            const RECT wanted{down(clip.left), down(clip.top), up(clip.right), up(clip.bottom)};
            if (!IntersectRect(&source, &source, &wanted)) return;
        }
        const Picture part =
            pictureInfo_->bitCount == 32
                ? compositeOverColour(*picture_, *pictureInfo_, settings_.AlertBackgroundColor,
                                      {source.left, source.top, source.right - source.left,
                                       source.bottom - source.top})
                : Picture();
        const Picture& shown = pictureInfo_->bitCount == 32 ? part : *picture_;
        if (shown.empty()) return;
        const RECT from = pictureInfo_->bitCount == 32
                              ? RECT{0, 0, source.right - source.left, source.bottom - source.top}
                              : source;
        const int x = scaleForDpi(source.left, dpi), y = scaleForDpi(source.top, dpi);
        drawPictureStretched(
            d.hDC,
            {d.rcItem.left + x, d.rcItem.top + y, d.rcItem.left + scaleForDpi(source.right, dpi),
             d.rcItem.top + scaleForDpi(source.bottom, dpi)},
            shown, from);
    }

    UpdateItem& item_;
    NotifyLook look_;
    const Settings& settings_;
    std::optional<Picture> picture_;
    std::optional<DibInfo> pictureInfo_;
    unsigned pictureDensity_ = 1;
    std::string shownText_;
    bool checkBoxBelow_ = false;
};

}  // namespace

int showAlertBox(HWND owner, UpdateItem& item, const NotifyLook& look, const Settings& settings) {
    AlertBox box(item, look, settings);
    const INT_PTR result = box.runModal(owner, kTemplate);
    if (owner) UpdateWindow(owner);
    return result == 1 ? 1 : 0;
}
