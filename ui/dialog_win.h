#pragma once
// The one dialog layer every window of the program is built on. A dialog is a
// template plus a state object derived from Dialog: runModal hands the object
// to the dialog procedure through DialogBoxParam's lParam, the procedure keeps
// it in GWLP_USERDATA and routes each message to a small virtual handler. No
// exception ever leaves the procedure. Soft buttons draw themselves through
// the same route, so a dialog only asks for them, and so does the icon button
// most templates carry. Ctrl+C anywhere but in an edit control reaches the
// dialog as WM_COPY, as it does in the system's own message box.
#include <string>
#include <string_view>

#include "base/win_headers.h"
#include "resources/resource.h"

class Dialog {
  public:
    Dialog() = default;
    virtual ~Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Runs the template (a name or MAKEINTRESOURCE id) modally, owned by owner.
    // The result given to end(), or -1 when the dialog could not be created.
    INT_PTR runModal(HWND owner, const char* templateName);

    HWND hwnd() const { return hwnd_; }
    HWND item(int id) const { return GetDlgItem(hwnd_, id); }

  protected:
    // TRUE lets the system focus the first tab stop; FALSE when the handler did.
    virtual BOOL onInitDialog() { return TRUE; }
    virtual void onCommand(int id, UINT code, HWND control) {}
    // true when the handler drew the control.
    virtual bool onDrawItem(const DRAWITEMSTRUCT& item) { return false; }
    virtual bool onMeasureItem(MEASUREITEMSTRUCT& item) { return false; }
    // Any other message; true when handled, with result as the procedure's
    // answer (SetDlgMsgResult is applied for the messages that need it).
    virtual bool onMessage(UINT msg, WPARAM wp, LPARAM lp, INT_PTR& result) { return false; }
    virtual void onDestroy() {}

    void end(INT_PTR result) { EndDialog(hwnd_, result); }

    // The template's icon button (IDC_ICONBUTTON) is drawn on face, or on the
    // system's button face when none is given, unless onDrawItem drew it.
    void drawsIconButton(COLORREF face = CLR_INVALID) {
        iconButton_ = true;
        iconFace_ = face;
    }
    // How an opening ends: the focus on the default button, the box in the
    // middle of the screen. FALSE, for onInitDialog to return: the focus is set.
    BOOL focusAndCentre(int defaultButton = IDC_BUTTON1);

  private:
    static INT_PTR CALLBACK procedure(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept;
    INT_PTR dispatch(UINT msg, WPARAM wp, LPARAM lp);
    bool drawOwnIconButton(const DRAWITEMSTRUCT& item) const;

    HWND hwnd_ = nullptr;
    bool iconButton_ = false;
    COLORREF iconFace_ = CLR_INVALID;
};

// The module that holds the program's resources (templates, icons, strings).
HINSTANCE resourceModule();

// A control's rectangle in its dialog's client coordinates.
RECT clientRectOf(HWND dialog, int id);
// A child control made at run time, in the given font.
HWND createChild(HWND dialog, const char* cls, const char* text, DWORD style, int id, const RECT& r,
                 HFONT font);
void moveChild(HWND dialog, int id, const RECT& r);

// Moves a window to the middle of the primary screen, keeping its size. A
// window larger than the screen is kept at the top-left corner so that its
// title bar stays reachable.
void centreWindow(HWND hwnd);

// The whole text of a window or control; "" for none.
std::string controlText(HWND control);

// Puts text on the clipboard as plain text (line ends as CR LF), the clipboard
// opened for owner. False when the clipboard could not be had.
bool copyTextToClipboard(HWND owner, std::string_view text);
