// The colour picker (see colour_picker_win.h). The six figures are spin edits:
// typing in one of hue, saturation and luminance recomputes red, green and
// blue, and the other way round, but never rewrites the field being typed in,
// so the conversions' rounding cannot fight the user. The table is saved on
// every change; a table that could not be read is never written over.
#include "dialogs/colour_picker_win.h"

#include <commdlg.h>

#include <algorithm>
#include <optional>

#include "base/file_io.h"
#include "base/win_handles.h"
#include "dialogs/colour_model.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "ui/dialog_win.h"
#include "ui/dpi_win.h"
#include "ui/message_box_win.h"
#include "ui/soft_button_win.h"
#include "ui/spin_edit_win.h"

namespace {

constexpr char kTemplate[] = "COMMONColourSelectBox";
// Tells the open box to report a table it could not read, once it is on screen.
constexpr UINT kReportTableProblem = WM_APP + 1;
constexpr int kListRowHeight = 18;

constexpr int kHlsFields[] = {IDC_COLOUR_HUE, IDC_COLOUR_SAT, IDC_COLOUR_LUM};
constexpr int kRgbFields[] = {IDC_COLOUR_RED, IDC_COLOUR_GREEN, IDC_COLOUR_BLUE};

std::string tableProblemText(ColourTableRead status, const std::string& path) {
    switch (status) {
        case ColourTableRead::kTooLarge:
            return "The colour table " + path +
                   " is too large to be a colour table. It has been left as it is; its colours "
                   "are not shown.";
        case ColourTableRead::kUnreadable:
            return "The colour table " + path +
                   " could not be read. It has been left as it is; its colours are not shown.";
        default:
            return "The colour table " + path + " could not be found.";
    }
}

class ColourPicker : public Dialog {
  public:
    ColourPicker(Rgb colour, std::string tableFile, uint32_t softButtons)
        : colour_(colour), tableFile_(std::move(tableFile)), softButtons_(softButtons) {}

    Rgb colour() const { return colour_; }
    const std::string& tableFile() const { return tableFile_; }

  protected:
    BOOL onInitDialog() override {
        makeSoftButtons(
            hwnd(), softButtons_,
            {IDC_BUTTON1, IDC_CANCELBUTTON, IDC_COLOUR_ADD, IDC_COLOUR_DELETE, IDC_COLOUR_OPEN});
        SendDlgItemMessageA(hwnd(), IDC_COLOUR_NAME, EM_LIMITTEXT, kMaxColourNameChars, 0);
        // Setting up one field must not recompute the colour from the others.
        updating_ = true;
        for (int id : kHlsFields) initSpinEdit(hwnd(), id);
        for (int id : kRgbFields) initSpinEdit(hwnd(), id);
        updating_ = false;

        path_ = colourTablePath(tableFile_);
        ColourTableFile file = readColourTableFile(path_);
        writable_ =
            file.status == ColourTableRead::kRead || file.status == ColourTableRead::kMissing;
        table_ = std::move(file.table);
        if (!writable_)
            PostMessageA(hwnd(), kReportTableProblem, static_cast<WPARAM>(file.status), 0);
        fillList();
        showTableName();

        showColour(colour_, true, true);
        // The entry of the colour chosen, if the table has one.
        for (std::size_t i = 0; i < table_.colours.size(); ++i)
            if (table_.colours[i].colour == colour_) {
                ListBox_SetCurSel(item(IDC_COLOUR_LIST), static_cast<int>(i));
                SetDlgItemTextA(hwnd(), IDC_COLOUR_NAME, table_.colours[i].name.c_str());
                break;
            }
        updateButtons();
        centreWindow(hwnd());
        // The report must come over the picker, not before it: the dialog
        // manager would show the box only once its queue is empty.
        if (!writable_) ShowWindow(hwnd(), SW_SHOW);
        SetFocus(item(IDC_BUTTON1));
        return FALSE;
    }

    void onCommand(int id, UINT code, HWND) override {
        if (isField(kHlsFields, id) || isField(kRgbFields, id)) {
            onFieldCommand(id, code);
            return;
        }
        switch (id) {
            case IDC_COLOUR_LIST:
                if (code == LBN_SELCHANGE) takeListColour();
                if (code == LBN_DBLCLK && ListBox_GetCurSel(item(IDC_COLOUR_LIST)) >= 0) {
                    takeListColour();
                    if (settleUnsaved()) end(1);
                }
                return;
            case IDC_COLOUR_ADD:
                if (code == BN_CLICKED) addColour();
                return;
            case IDC_COLOUR_DELETE:
                if (code == BN_CLICKED) deleteColour();
                return;
            case IDC_COLOUR_OPEN:
                if (code == BN_CLICKED) openTable();
                return;
            case IDC_BUTTON1:
                // Enter in the name field means the name was typed to be added.
                if (GetFocus() == item(IDC_COLOUR_NAME) &&
                    GetWindowTextLengthA(item(IDC_COLOUR_NAME)) > 0) {
                    addColour();
                    return;
                }
                if (settleUnsaved()) end(1);
                return;
            case IDC_CANCELBUTTON:
                if (settleUnsaved()) end(0);
                return;
        }
    }

    bool onMeasureItem(MEASUREITEMSTRUCT& m) override {
        if (m.CtlID != IDC_COLOUR_LIST) return false;
        m.itemHeight = scaledFor(hwnd(), kListRowHeight);
        return true;
    }

    bool onDrawItem(const DRAWITEMSTRUCT& d) override {
        if (d.CtlID == IDC_COLOUR_SWATCH) {
            drawSwatch(d);
            return true;
        }
        if (d.CtlID == IDC_COLOUR_LIST) {
            drawListRow(d);
            return true;
        }
        return false;
    }

    bool onMessage(UINT msg, WPARAM wp, LPARAM, INT_PTR& result) override {
        if (msg != kReportTableProblem) return false;
        showMessage(hwnd(), tableProblemText(static_cast<ColourTableRead>(wp), path_));
        result = 0;
        return true;
    }

  private:
    template <std::size_t N>
    static bool isField(const int (&fields)[N], int id) {
        return std::find(std::begin(fields), std::end(fields), id) != std::end(fields);
    }

    // ---- The six figures ------------------------------------------------------

    void onFieldCommand(int id, UINT code) {
        if (updating_) return;
        if (code == EN_KILLFOCUS) {
            // What was typed out of range shows as the value it stands for.
            updating_ = true;
            setSpinEditValue(hwnd(), id, getSpinEditValue(hwnd(), id));
            updating_ = false;
            return;
        }
        if (code != EN_CHANGE) return;
        if (isField(kHlsFields, id)) {
            const Hls hls{getSpinEditValue(hwnd(), IDC_COLOUR_HUE),
                          getSpinEditValue(hwnd(), IDC_COLOUR_LUM),
                          getSpinEditValue(hwnd(), IDC_COLOUR_SAT)};
            showColour(hlsToRgb(hls), false, true);
        } else {
            const Rgb rgb{getSpinEditValue(hwnd(), IDC_COLOUR_RED),
                          getSpinEditValue(hwnd(), IDC_COLOUR_GREEN),
                          getSpinEditValue(hwnd(), IDC_COLOUR_BLUE)};
            showColour(rgb, true, false);
        }
    }

    // Makes colour the chosen one and rewrites the figures asked for.
    void showColour(Rgb colour, bool hlsFields, bool rgbFields) {
        colour_ = colour;
        updating_ = true;
        if (hlsFields) {
            const Hls hls = rgbToHls(colour);
            setSpinEditValue(hwnd(), IDC_COLOUR_HUE, hls.hue);
            setSpinEditValue(hwnd(), IDC_COLOUR_SAT, hls.saturation);
            setSpinEditValue(hwnd(), IDC_COLOUR_LUM, hls.luminance);
        }
        if (rgbFields) {
            setSpinEditValue(hwnd(), IDC_COLOUR_RED, colour.red);
            setSpinEditValue(hwnd(), IDC_COLOUR_GREEN, colour.green);
            setSpinEditValue(hwnd(), IDC_COLOUR_BLUE, colour.blue);
        }
        updating_ = false;
        InvalidateRect(item(IDC_COLOUR_SWATCH), nullptr, FALSE);
    }

    // ---- The table ------------------------------------------------------------

    void fillList() {
        HWND list = item(IDC_COLOUR_LIST);
        SetWindowRedraw(list, FALSE);
        ListBox_ResetContent(list);
        for (const NamedColour& entry : table_.colours) ListBox_AddString(list, entry.name.c_str());
        SetWindowRedraw(list, TRUE);
        InvalidateRect(list, nullptr, TRUE);
    }

    void showTableName() { SetDlgItemTextA(hwnd(), IDC_COLOUR_FILE, path_.c_str()); }

    void updateButtons() {
        const bool selected = ListBox_GetCurSel(item(IDC_COLOUR_LIST)) >= 0;
        enableButton(IDC_COLOUR_ADD, writable_);
        enableButton(IDC_COLOUR_DELETE, writable_ && selected);
    }

    void enableButton(int id, bool enable) {
        HWND button = item(id);
        if ((IsWindowEnabled(button) != FALSE) == enable) return;
        // The focus must not stay on a button that goes grey.
        if (!enable && GetFocus() == button) SendMessageA(hwnd(), WM_NEXTDLGCTL, 0, FALSE);
        EnableWindow(button, enable);
        if (isSoftButton(button)) InvalidateRect(button, nullptr, TRUE);
    }

    void takeListColour() {
        const int row = ListBox_GetCurSel(item(IDC_COLOUR_LIST));
        updateButtons();
        if (row < 0 || static_cast<std::size_t>(row) >= table_.colours.size()) return;
        const NamedColour& entry = table_.colours[static_cast<std::size_t>(row)];
        SetDlgItemTextA(hwnd(), IDC_COLOUR_NAME, entry.name.c_str());
        showColour(entry.colour, true, true);
    }

    void addColour() {
        const std::string typed = controlText(item(IDC_COLOUR_NAME));
        const std::optional<std::string> name = cleanColourName(typed);
        if (!name) {
            showMessage(hwnd(), typed.find_first_not_of(" \t") == std::string::npos
                                    ? "Type a name for the colour first."
                                    : "A colour's name cannot hold tabs or other control "
                                      "characters.");
            SetFocus(item(IDC_COLOUR_NAME));
            return;
        }
        const std::size_t row = table_.put(*name, colour_);
        save();
        fillList();
        ListBox_SetCurSel(item(IDC_COLOUR_LIST), static_cast<int>(row));
        updateButtons();
    }

    void deleteColour() {
        const int row = ListBox_GetCurSel(item(IDC_COLOUR_LIST));
        if (row < 0 || static_cast<std::size_t>(row) >= table_.colours.size()) return;
        table_.colours.erase(table_.colours.begin() + row);
        save();
        fillList();
        updateButtons();
    }

    bool trySave() {
        if (!writable_) return true;
        // The default table lives in the product's folder, which a program
        // run without its installer may not have yet.
        if (tableFile_.find_first_of("\\/:") == std::string::npos) ensureDataFolders();
        unsaved_ = !saveColourTableFile(path_, table_);
        return !unsaved_;
    }

    void save() {
        if (trySave()) return;
        showMessage(hwnd(), "The colour table " + path_ +
                                " could not be saved. The file has been left as it was; the "
                                "colours you changed are saved with your next change.");
    }

    // Before the shown table goes away: true when nothing would be lost, or
    // the user agrees to lose the changes that still cannot be saved.
    bool settleUnsaved() {
        if (!unsaved_ || trySave()) return true;
        return askYesNo(hwnd(), "The colour table " + path_ +
                                    " still cannot be saved. Leave it and lose the colours you "
                                    "changed?") == kResultFirst;
    }

    void openTable() {
        char file[MAX_PATH] = {};
        std::string folder = path_;
        const std::size_t slash = folder.find_last_of("\\/");
        folder.resize(slash == std::string::npos ? 0 : slash);
        OPENFILENAMEA ofn = {};
        ofn.lStructSize = sizeof ofn;
        ofn.hwndOwner = hwnd();
        ofn.lpstrFilter = "Colour tables (*.ccl)\0*.ccl\0All files (*.*)\0*.*\0";
        ofn.lpstrFile = file;
        ofn.nMaxFile = sizeof file;
        ofn.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
        ofn.lpstrTitle = "Open colour table";
        ofn.lpstrDefExt = "ccl";
        ofn.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY |
                    OFN_NOCHANGEDIR;
        if (!GetOpenFileNameA(&ofn) || !settleUnsaved()) return;
        loadTable(file);
    }

    // Replaces the shown table by the one at path; a table that cannot be read
    // is reported and the shown one stays. False then.
    bool loadTable(const std::string& path) {
        ColourTableFile opened = readColourTableFile(path);
        if (opened.status != ColourTableRead::kRead) {
            showMessage(hwnd(), tableProblemText(opened.status, path));
            return false;
        }
        table_ = std::move(opened.table);
        path_ = path;
        tableFile_ = path;
        writable_ = true;
        unsaved_ = false;
        fillList();
        showTableName();
        updateButtons();
        return true;
    }

    // ---- Drawing --------------------------------------------------------------

    void drawSwatch(const DRAWITEMSTRUCT& d) {
        RECT r = d.rcItem;
        DrawEdge(d.hDC, &r, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
        UniqueBrush brush(CreateSolidBrush(colourRefOf(colour_)));
        FillRect(d.hDC, &r, brush.get());
    }

    void drawListRow(const DRAWITEMSTRUCT& d) {
        const bool selected = d.itemState & ODS_SELECTED;
        FillRect(d.hDC, &d.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
        if (d.itemID != static_cast<UINT>(-1) && d.itemID < table_.colours.size()) {
            const NamedColour& entry = table_.colours[d.itemID];
            const unsigned dpi = windowDpi(hwnd());
            const int gap = scaleForDpi(3, dpi);
            RECT chip = {d.rcItem.left + gap, d.rcItem.top + gap,
                         d.rcItem.left + scaleForDpi(27, dpi), d.rcItem.bottom - gap};
            UniqueBrush brush(CreateSolidBrush(colourRefOf(entry.colour)));
            FillRect(d.hDC, &chip, brush.get());
            FrameRect(d.hDC, &chip, GetSysColorBrush(COLOR_WINDOWTEXT));
            RECT text = d.rcItem;
            text.left += scaleForDpi(33, dpi);
            text.right -= scaleForDpi(2, dpi);
            SetBkMode(d.hDC, TRANSPARENT);
            SetTextColor(d.hDC, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
            DrawTextA(d.hDC, entry.name.c_str(), static_cast<int>(entry.name.size()), &text,
                      DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
        }
        if (d.itemState & ODS_FOCUS) DrawFocusRect(d.hDC, &d.rcItem);
    }

    Rgb colour_;
    std::string tableFile_;
    uint32_t softButtons_;
    std::string path_;
    ColourTable table_;
    bool writable_ = false;
    bool unsaved_ = false;  // the last save failed
    bool updating_ = false;
};

}  // namespace

bool pickColour(HWND owner, uint32_t& colour, std::string& tableFile, uint32_t softButtons) {
    ColourPicker picker(rgbOfColourRef(colour), tableFile, softButtons);
    if (picker.runModal(owner, kTemplate) != 1) return false;
    colour = colourRefOf(picker.colour());
    tableFile = picker.tableFile();
    return true;
}

std::string colourTablePath(const std::string& tableFile) {
    // A bare name is the user's table in the product's folder; anything with
    // a folder or a drive in it is a table the user opened.
    if (tableFile.find_first_of("\\/:") != std::string::npos) return tableFile;
    return getUserHeralderPath(tableFile.empty() ? "HERALDER.CCL" : tableFile);
}

bool saveColourTableFile(const std::string& path, const ColourTable& table) {
    return replaceFileContents(path, {formatColourTable(table)});
}
