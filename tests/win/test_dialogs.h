#pragma once
// Ids of the dialog templates that only the Windows tests use (test_dialogs.rc),
// kept apart from resources/resource.h: the program never shows these.

// ---- "TESTPIECESBOX": OK (default), Cancel, "&Help", the icon button, and: --
#define IDC_TEST_DISABLED 301  // a push button that starts disabled
#define IDC_TEST_COUNT 302     // numeric field; its up-down is 10302
#define IDC_TEST_COUNT_UPDOWN 10302

// A 24-bit bitmap file as raw data: the default-picture loader must refuse it.
#define IDR_TEST_PICTURE_24 7790

#ifndef RC_INVOKED
#include <functional>

#include "resources/resource.h"
#include "ui/dialog_win.h"
#include "ui/icon_button_win.h"

// Runs "TESTPIECESBOX" the way the program's dialogs run theirs: setUp is
// called from WM_INITDIALOG, control 10 draws through the icon button, and
// each push button ends the dialog with its own id.
class TestPiecesBox : public Dialog {
  public:
    explicit TestPiecesBox(std::function<void(HWND)> setUp) : setUp_(std::move(setUp)) {}
    INT_PTR run() { return runModal(nullptr, "TESTPIECESBOX"); }

  private:
    BOOL onInitDialog() override {
        if (setUp_) setUp_(hwnd());
        centreWindow(hwnd());
        return TRUE;
    }
    void onCommand(int id, UINT code, HWND) override {
        if (id == IDC_BUTTON1 || id == IDC_CANCELBUTTON || id == IDC_HELPBUTTON ||
            id == IDC_TEST_DISABLED)
            end(id);
    }
    bool onDrawItem(const DRAWITEMSTRUCT& item) override {
        if (item.CtlID != IDC_ICONBUTTON) return false;
        drawIconButton(item, GetSysColor(COLOR_BTNFACE));
        return true;
    }

    std::function<void(HWND)> setUp_;
};
#endif
