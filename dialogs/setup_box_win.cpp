// The Setup dialog (see setup_box_win.h). What it stores and in which order,
// the font list's first entry and the swatch labels' colour are decided in
// setup_box.cpp; this file fills, draws and reads the controls. The preview
// follows the font controls only once the dialog is on screen, and the font
// list only when its drop-down closes, so that running through the faces
// does not rebuild a font for every one passed.
#include "dialogs/setup_box_win.h"

#include <memory>
#include <map>
#include <string>
#include <vector>

#include "base/win_handles.h"
#include "dialogs/colour_picker_win.h"
#include "dialogs/setup_box.h"
#include "feed/selection.h"
#include "resources/resource.h"
#include "shell/browser_win.h"
#include "ui/choice_combo_win.h"
#include "ui/dialog_win.h"
#include "ui/dpi_win.h"
#include "ui/soft_button_win.h"
#include "ui/spin_edit_win.h"

namespace {

constexpr char kTemplate[] = "SetupBox";
constexpr char kHelpTopic[] = "SETUP";
constexpr int kSoftButtonRowHeight = 32;
constexpr int kFontRowHeight = 22;
constexpr int kFontSampleHeight = 18;
constexpr int kSelectionFieldHeight = 18;

// The five filter lists, in the order they are filled.
constexpr struct {
    int id;
    ItemType type;
} kFilterLists[] = {
    {IDC_SETUP_ALERT, ItemType::Alert},     {IDC_SETUP_TIP, ItemType::Tip},
    {IDC_SETUP_VERSION, ItemType::Version}, {IDC_SETUP_OFFTOPIC, ItemType::OffTopic},
    {IDC_SETUP_NOTICE, ItemType::Notice},
};

constexpr struct {
    int id;
    uint32_t Settings::*value;
} kSwitches[] = {
    {IDC_SETUP_NEWONLY, &Settings::OnlyShowNewItems},
    {IDC_SETUP_AUTOMATIC, &Settings::DoNoticationsAutomatically},
    {IDC_SETUP_NOISY, &Settings::BeNoisy},
    {IDC_SETUP_GRAPHICS, &Settings::DownloadGraphics},
};

constexpr struct {
    int id;
    uint32_t Settings::*value;
} kFontSwitches[] = {
    {IDC_SETUP_BOLD, &Settings::AlertFontBold},
    {IDC_SETUP_ITALIC, &Settings::AlertFontItal},
    {IDC_SETUP_ANTIALIAS, &Settings::AlertFontAntialias},
};

// A row of the font list: its own copy of the face name. A symbol face
// drawn in itself would show pictures instead of its name, so its name is
// drawn in the dialog's font instead.
struct FaceEntry {
    std::string name;
    bool symbol = false;
};

int CALLBACK collectFontFamily(const LOGFONTA* font, const TEXTMETRICA*, DWORD, LPARAM lp) {
    // Vertical faces ("@...") would draw their sample on its side.
    if (font->lfFaceName[0] == '\0' || font->lfFaceName[0] == '@') return 1;
    auto& families = *reinterpret_cast<std::map<std::string, bool>*>(lp);
    families.emplace(font->lfFaceName, font->lfCharSet == SYMBOL_CHARSET);
    return 1;
}

bool checked(HWND dialog, int id) {
    return IsDlgButtonChecked(dialog, id) == BST_CHECKED;
}

class SetupBox : public Dialog {
  public:
    explicit SetupBox(Settings& record) : s_(record) {}

  protected:
    BOOL onInitDialog() override {
        makeSoftButtons(hwnd(), s_.SoftButtons, {IDC_BUTTON1, IDC_CANCELBUTTON, IDC_HELPBUTTON});

        preview_.reset();
        fillChoiceCombo(hwnd(), IDC_SETUP_SOFTBUTTONS, kSoftButtonChoices,
                        static_cast<int>(s_.SoftButtons));
        SendDlgItemMessageA(hwnd(), IDC_SETUP_SOFTBUTTONS, CB_SETITEMHEIGHT, 0,
                            scaledFor(hwnd(), kSoftButtonRowHeight));
        SendDlgItemMessageA(hwnd(), IDC_SETUP_SOFTBUTTONS, CB_SETITEMHEIGHT,
                            static_cast<WPARAM>(-1), scaledFor(hwnd(), kSelectionFieldHeight));

        for (const auto& list : kFilterLists) {
            const TypeChoices& choices = *findTypeChoices(list.type);
            fillChoiceCombo(hwnd(), list.id, choices.choiceList,
                            static_cast<int>(s_.*choices.popup));
        }
        for (const auto& box : kSwitches)
            CheckDlgButton(hwnd(), box.id, s_.*box.value ? BST_CHECKED : BST_UNCHECKED);

        fillFontList();

        initSpinEdit(hwnd(), IDC_SETUP_FONTSIZE);
        showSpinEditSetting(hwnd(), IDC_SETUP_FONTSIZE, s_.AlertFontSize);
        for (const auto& box : kFontSwitches)
            CheckDlgButton(hwnd(), box.id, s_.*box.value ? BST_CHECKED : BST_UNCHECKED);

        buildPreview();

        SendDlgItemMessageA(hwnd(), IDC_SETUP_DATE, EM_LIMITTEXT, kSetupTextMax, 0);
        SetDlgItemTextA(hwnd(), IDC_SETUP_DATE, s_.CurrentTransactionDate.c_str());

        return focusAndCentre();
    }

    void onCommand(int id, UINT code, HWND) override {
        const bool visible = IsWindowVisible(hwnd()) != FALSE;
        switch (id) {
            case IDC_SETUP_BOLD:
            case IDC_SETUP_ITALIC:
            case IDC_SETUP_ANTIALIAS:
            case IDC_SETUP_FONTSIZE:
                if (visible) buildPreview();
                return;
            case IDC_SETUP_FONT:
                if (visible && code == CBN_CLOSEUP) buildPreview();
                return;
            case IDC_SETUP_TEXTCOLOUR:
                if (visible && code == BN_CLICKED) pick(id, s_.AlertTextColor);
                return;
            case IDC_SETUP_BACKCOLOUR:
                if (visible && code == BN_CLICKED) pick(id, s_.AlertBackgroundColor);
                return;
            case IDC_BUTTON1:
                commitSetup(s_, collectValues());
                end(1);
                return;
            case IDC_CANCELBUTTON:
                end(0);
                return;
            case IDC_HELPBUTTON:
                if (code == BN_CLICKED) openManualTopic(hwnd(), s_, kHelpTopic);
                return;
        }
    }

    bool onMeasureItem(MEASUREITEMSTRUCT& m) override {
        const bool field = m.itemID == static_cast<UINT>(-1);
        if (m.CtlID == IDC_SETUP_SOFTBUTTONS) {
            m.itemHeight = field ? scaledFor(hwnd(), kSelectionFieldHeight)
                                 : scaledFor(hwnd(), kSoftButtonRowHeight);
            return true;
        }
        if (m.CtlID == IDC_SETUP_FONT) {
            m.itemHeight = field ? scaledFor(hwnd(), kSelectionFieldHeight)
                                 : scaledFor(hwnd(), kFontRowHeight);
            return true;
        }
        return false;
    }

    bool onDrawItem(const DRAWITEMSTRUCT& d) override {
        switch (d.CtlID) {
            case IDC_SETUP_TEXTCOLOUR:
                drawSwatch(d, s_.AlertTextColor);
                return true;
            case IDC_SETUP_BACKCOLOUR:
                drawSwatch(d, s_.AlertBackgroundColor);
                return true;
            case IDC_SETUP_SOFTBUTTONS:
                drawSoftButtonRow(d);
                return true;
            case IDC_SETUP_FONT:
                drawFontRow(d);
                return true;
            case IDC_SETUP_PREVIEW:
                drawPreview(d);
                return true;
        }
        return false;
    }

    void onDestroy() override {
        preview_.reset();
        faceNames_.clear();
    }

  private:
    // ---- Font list and preview -----------------------------------------------

    void fillFontList() {
        HWND list = item(IDC_SETUP_FONT);
        SendMessageA(list, CB_RESETCONTENT, 0, 0);
        faceNames_.clear();
        std::map<std::string, bool> families;
        {
            WindowDc screen(nullptr);
            EnumFontFamiliesA(screen.get(), nullptr, collectFontFamily,
                              reinterpret_cast<LPARAM>(&families));
        }
        for (const auto& [family, symbol] : families) {
            auto name = std::make_unique<FaceEntry>(FaceEntry{family, symbol});
            const LRESULT row =
                SendMessageA(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name->name.c_str()));
            if (row < 0) continue;
            SendMessageA(list, CB_SETITEMDATA, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(name.get()));
            SendMessageA(list, CB_SETITEMHEIGHT, static_cast<WPARAM>(row),
                         scaledFor(hwnd(), kFontRowHeight));
            faceNames_.push_back(std::move(name));
        }
        SendMessageA(list, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
                     scaledFor(hwnd(), kSelectionFieldHeight));

        // The list sorts as the system compares names; look in its order.
        std::vector<std::string> inListOrder;
        const LRESULT count = SendMessageA(list, CB_GETCOUNT, 0, 0);
        for (LRESULT row = 0; row < count; ++row)
            inListOrder.push_back(faceAt(static_cast<int>(row)));
        SendMessageA(list, CB_SETCURSEL,
                     static_cast<WPARAM>(initialFontIndex(inListOrder, s_.AlertFontName)), 0);
    }

    std::string faceAt(int row) const {
        const LRESULT data = SendDlgItemMessageA(hwnd(), IDC_SETUP_FONT, CB_GETITEMDATA,
                                                 static_cast<WPARAM>(row), 0);
        if (data == CB_ERR || data == 0) return {};
        return reinterpret_cast<const FaceEntry*>(data)->name;
    }

    std::string selectedFace() const {
        const LRESULT row = SendDlgItemMessageA(hwnd(), IDC_SETUP_FONT, CB_GETCURSEL, 0, 0);
        return row == CB_ERR ? std::string() : faceAt(static_cast<int>(row));
    }

    uint32_t fontSize() const {
        return static_cast<uint32_t>(getSpinEditSetting(hwnd(), IDC_SETUP_FONTSIZE));
    }

    void buildPreview() {
        const std::string face = selectedFace();
        UniqueFont font(CreateFontA(
            static_cast<int>(fontSize()), 0, 0, 0,
            checked(hwnd(), IDC_SETUP_BOLD) ? FW_BOLD : FW_NORMAL,
            checked(hwnd(), IDC_SETUP_ITALIC), FALSE, FALSE, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
            CLIP_DEFAULT_PRECIS,
            checked(hwnd(), IDC_SETUP_ANTIALIAS) ? ANTIALIASED_QUALITY : DEFAULT_QUALITY,
            DEFAULT_PITCH, face.c_str()));
        HWND panel = item(IDC_SETUP_PREVIEW);
        // The panel lets go of the old font before it is deleted.
        SetWindowFont(panel, font.get(), FALSE);
        preview_ = std::move(font);
        SetWindowTextA(panel, face.c_str());
        InvalidateRect(panel, nullptr, TRUE);
    }

    // ---- Colours --------------------------------------------------------------

    // The picked colour is the setting at once: Cancel does not take it back.
    void pick(int id, uint32_t& colour) {
        uint32_t chosen = colour;
        if (!pickColour(hwnd(), chosen, s_.ColourTableFile, s_.SoftButtons)) return;
        colour = chosen;
        InvalidateRect(item(id), nullptr, TRUE);
    }

    SetupValues collectValues() const {
        auto choice = [this](int id) { return static_cast<uint32_t>(getChoiceIndex(hwnd(), id)); };
        SetupValues v;
        v.softButtons = choice(IDC_SETUP_SOFTBUTTONS);
        v.alertPopup = choice(IDC_SETUP_ALERT);
        v.tipPopup = choice(IDC_SETUP_TIP);
        v.versionPopup = choice(IDC_SETUP_VERSION);
        v.offtopicPopup = choice(IDC_SETUP_OFFTOPIC);
        v.noticePopup = choice(IDC_SETUP_NOTICE);
        v.onlyShowNewItems = checked(hwnd(), IDC_SETUP_NEWONLY);
        v.doNotificationsAutomatically = checked(hwnd(), IDC_SETUP_AUTOMATIC);
        v.beNoisy = checked(hwnd(), IDC_SETUP_NOISY);
        v.downloadGraphics = checked(hwnd(), IDC_SETUP_GRAPHICS);
        v.transactionDate = controlText(item(IDC_SETUP_DATE));
        v.fontSize = fontSize();
        v.fontBold = checked(hwnd(), IDC_SETUP_BOLD);
        v.fontItalic = checked(hwnd(), IDC_SETUP_ITALIC);
        v.fontAntialias = checked(hwnd(), IDC_SETUP_ANTIALIAS);
        v.fontName = selectedFace();
        return v;
    }

    // ---- Drawing --------------------------------------------------------------

    void drawSwatch(const DRAWITEMSTRUCT& d, uint32_t colour) {
        const bool disabled = d.itemState & ODS_DISABLED;
        auto background = reinterpret_cast<HBRUSH>(
            SendMessageA(hwnd(), WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(d.hDC),
                         reinterpret_cast<LPARAM>(d.hwndItem)));
        FillRect(d.hDC, &d.rcItem, background ? background : GetSysColorBrush(COLOR_BTNFACE));

        RECT face = d.rcItem;
        face.right -= 2;
        face.bottom -= 2;
        UniqueBrush fill(CreateSolidBrush(disabled ? GetSysColor(COLOR_BTNFACE) : colour));
        FillRect(d.hDC, &face, fill.get());

        RECT edge = d.rcItem;
        DrawEdge(d.hDC, &edge, (d.itemState & ODS_SELECTED) ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT);

        if (d.itemState & ODS_FOCUS) {
            RECT focus = {d.rcItem.left + 4, d.rcItem.top + 3, d.rcItem.right - 4,
                          d.rcItem.bottom - 4};
            DrawFocusRect(d.hDC, &focus);
        }

        const std::string label = controlText(d.hwndItem);
        if (label.empty()) return;
        RECT text = d.rcItem;
        InflateRect(&text, -2, -2);
        ScopedSelect font(d.hDC, GetWindowFont(d.hwndItem));
        SetBkMode(d.hDC, TRANSPARENT);
        SetTextColor(d.hDC, isDarkColour(colour) ? RGB(255, 255, 255) : RGB(0, 0, 0));
        DrawTextA(d.hDC, label.c_str(), static_cast<int>(label.size()), &text,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    }

    // Background and text colours of a row of the two owner-drawn lists.
    static COLORREF paintRowBackground(const DRAWITEMSTRUCT& d) {
        const bool selected = d.itemState & ODS_SELECTED;
        FillRect(d.hDC, &d.rcItem,
                 selected ? GetSysColorBrush(COLOR_BTNSHADOW)
                          : static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        SetBkMode(d.hDC, TRANSPARENT);
        return selected ? RGB(255, 255, 255) : RGB(0, 0, 0);
    }

    void drawSoftButtonRow(const DRAWITEMSTRUCT& d) {
        const COLORREF textColour = paintRowBackground(d);
        if (d.itemID == static_cast<UINT>(-1)) return;
        char name[64] = {};
        if (SendMessageA(d.hwndItem, CB_GETLBTEXTLEN, d.itemID, 0) <
            static_cast<LRESULT>(sizeof name))
            SendMessageA(d.hwndItem, CB_GETLBTEXT, d.itemID, reinterpret_cast<LPARAM>(name));
        HFONT dialogFont = GetWindowFont(hwnd());
        ScopedSelect font(d.hDC, dialogFont);

        if (d.itemState & ODS_COMBOBOXEDIT) {
            RECT text = d.rcItem;
            text.left += 3;
            SetTextColor(d.hDC, textColour);
            DrawTextA(d.hDC, name, -1, &text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
            return;
        }
        const int width = d.rcItem.right - d.rcItem.left;
        RECT sample = {d.rcItem.left + 32, d.rcItem.top + 4, d.rcItem.left + width - 32,
                       d.rcItem.bottom - 4};
        if (d.itemID == kSoftButtonsNone) {
            DrawFrameControl(d.hDC, &sample, DFC_BUTTON, DFCS_BUTTONPUSH);
            SetTextColor(d.hDC, GetSysColor(COLOR_BTNTEXT));
            DrawTextA(d.hDC, name, -1, &sample,
                      DT_SINGLELINE | DT_VCENTER | DT_CENTER | DT_NOPREFIX);
            return;
        }
        SoftButtonFace face;
        face.style = d.itemID;
        face.text = name;
        face.font = dialogFont;
        face.background = (d.itemState & ODS_SELECTED)
                              ? GetSysColorBrush(COLOR_BTNSHADOW)
                              : static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
        paintSoftButton(d.hDC, sample, face);
    }

    void drawFontRow(const DRAWITEMSTRUCT& d) {
        const bool field = d.itemState & ODS_COMBOBOXEDIT;
        COLORREF textColour = paintRowBackground(d);
        if (d.itemID == static_cast<UINT>(-1) || d.itemData == 0 ||
            d.itemData == static_cast<ULONG_PTR>(CB_ERR))
            return;
        const FaceEntry& entry = *reinterpret_cast<const FaceEntry*>(d.itemData);
        const std::string& name = entry.name;
        UniqueFont sample;
        HFONT font = GetWindowFont(hwnd());
        if (!field && !entry.symbol) {
            sample.reset(CreateFontA(kFontSampleHeight, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                                     DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                     ANTIALIASED_QUALITY, DEFAULT_PITCH, name.c_str()));
            if (sample) font = sample.get();
        } else if (d.itemState & ODS_DISABLED) {
            textColour = GetSysColor(COLOR_GRAYTEXT);
        }
        ScopedSelect selected(d.hDC, font);
        SetTextColor(d.hDC, textColour);
        RECT text = d.rcItem;
        text.left += 3;
        DrawTextA(d.hDC, name.c_str(), static_cast<int>(name.size()), &text,
                  DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    }

    void drawPreview(const DRAWITEMSTRUCT& d) {
        FillRect(d.hDC, &d.rcItem, GetSysColorBrush(COLOR_3DHILIGHT));
        FrameRect(d.hDC, &d.rcItem, GetSysColorBrush(COLOR_3DDKSHADOW));
        const std::string face = controlText(d.hwndItem);
        RECT text = d.rcItem;
        InflateRect(&text, -3, -3);
        ScopedSelect font(d.hDC, preview_ ? preview_.get() : GetWindowFont(hwnd()));
        SetBkMode(d.hDC, TRANSPARENT);
        SetTextColor(d.hDC, GetSysColor(COLOR_3DDKSHADOW));
        DrawTextA(d.hDC, face.c_str(), static_cast<int>(face.size()), &text,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    }

    Settings& s_;
    UniqueFont preview_;
    // The faces the font list's rows point at, alive as long as the list.
    std::vector<std::unique_ptr<FaceEntry>> faceNames_;
};

}  // namespace

int openSetupBox(HWND owner, Settings& record) {
    SetupBox box(record);
    return box.runModal(owner, kTemplate) == 1 ? 1 : 0;
}
