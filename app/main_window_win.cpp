// The main window (see main_window_win.h): its messages, its commands and the
// owner-drawn item list. The items live in a vector owned by the window; each
// row carries its item's index as item data and its title as the row's text,
// so screen readers and type-to-find see what the row shows.
#include "app/main_window_win.h"

#include <memory>
#include <string>

#include "app/app_win.h"
#include "app/platform_win.h"
#include "app/run_host_win.h"
#include "app/window_edges.h"
#include "dialogs/about_box_win.h"
#include "dialogs/init_config_box_win.h"
#include "dialogs/setup_box_win.h"
#include "dialogs/startup_manager_win.h"
#include "dialogs/system_info_win.h"
#include "feed/document_file.h"
#include "feed/document_parser.h"
#include "feed/feed_date.h"
#include "feed/feed_trust_win.h"
#include "feed/http_win.h"
#include "feed/kept_document_win.h"
#include "notify/alert_box_win.h"
#include "notify/browse_box_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings_file.h"
#include "shell/browser_win.h"
#include "ui/dialog_win.h"
#include "ui/dpi_win.h"
#include "ui/list_marker_win.h"
#include "ui/message_box_win.h"
#include "ui/res_string_win.h"

namespace {

constexpr char kNetworkError[] =
    "There has been a network error. The update document is not available.";
constexpr char kItemError[] = "There has been an error accessing this item.";
constexpr char kNotVerified[] =
    "The update document could not be verified, so nothing in it was shown or changed.\n\n"
    "Heralder will try again at its next update.";

std::vector<DWORD> retryDelaysMs = {5000, 15000, 40000};

struct MainWindow {
    HWND hwnd = nullptr;
    Settings* settings = nullptr;  // the creator's, never null once created
    HWND list = nullptr;
    std::vector<UpdateItem> items;
};

MainWindow* stateOf(HWND hwnd) {
    return reinterpret_cast<MainWindow*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
}

void enableCommand(HWND hwnd, int id, bool enabled) {
    EnableMenuItem(GetMenu(hwnd), id, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
}

void centreOnScreen(HWND hwnd) {
    RECT r;
    GetWindowRect(hwnd, &r);
    SetWindowPos(hwnd, nullptr, (GetSystemMetrics(SM_CXSCREEN) - (r.right - r.left)) / 2,
                 (GetSystemMetrics(SM_CYSCREEN) - (r.bottom - r.top)) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

std::optional<FetchedDocument> fetchUpdateDocument(HWND hwnd) {
    const std::string kept = keptDocumentPath();
    std::optional<FetchedDocument> document =
        fetchDocument(hwnd, publisherServerHost(), "/update/update.txt", kept);
    if (app().updateMode)
        for (DWORD delay : retryDelaysMs) {
            if (document) break;
            if (!waitAnswering(delay)) break;
            document = fetchDocument(hwnd, publisherServerHost(), "/update/update.txt", kept);
        }
    return document;
}

// One row per item, its title as the row's string; a hidden window that has
// not made its list yet has nothing to fill.
void fillList(MainWindow& w) {
    if (!w.list) return;
    SetWindowRedraw(w.list, FALSE);
    ListBox_ResetContent(w.list);
    for (std::size_t i = 0; i < w.items.size(); ++i) {
        const std::string& title = w.items[i].title ? *w.items[i].title : std::string();
        const int row = ListBox_AddString(w.list, title.empty() ? " " : title.c_str());
        if (row >= 0) ListBox_SetItemData(w.list, row, i);
    }
    SetWindowRedraw(w.list, TRUE);
    InvalidateRect(w.list, nullptr, TRUE);
}

// Row height and font follow the window's DPI; the markers and the text
// offset are scaled as each row is drawn.
void applyListScale(MainWindow& w) {
    const unsigned dpi = windowDpi(w.hwnd);
    recreateListFont(dpi);
    ListBox_SetItemHeight(w.list, 0, scaleForDpi(kItemRowHeight, dpi));
    SetWindowFont(w.list, app().listFont.get(), TRUE);
}

void createList(MainWindow& w) {
    RECT client;
    GetClientRect(w.hwnd, &client);
    w.list = CreateWindowExA(0, "LISTBOX", "",
                             WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY | LBS_OWNERDRAWFIXED |
                                 LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT,
                             0, 0, client.right, client.bottom, w.hwnd,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_ITEMLIST)),
                             GetWindowInstance(w.hwnd), nullptr);
    if (!w.list) return;
    applyListScale(w);
    fillList(w);
}

// Replaces the list's items with the document's. Reading a document cannot
// fail: whatever the text holds, the list shows what could be read.
void loadDocumentText(MainWindow& w, std::string_view document) {
    w.items = parseUpdateDocument(normalizeLineEnds(document));
    fillList(w);
    enableCommand(w.hwnd, IDM_SHOW_NOTIFICATIONS, true);
    setTransactionDate(*w.settings);
}

// A build with the publisher's keys acts only on a document they signed;
// anything else ends like a failed fetch, told once a day in the daily run.
bool acceptServerDocument(MainWindow& w, std::string_view document) {
    const DocumentTrust trust = judgeServerDocument(document);
    if (!trust.accepted && (trust.tellUser || !app().updateMode)) showMessage(w.hwnd, kNotVerified);
    return trust.accepted;
}

// A local document is shown whatever it holds; the title says when a build
// with keys could not verify the document the list shows.
void markTitle(MainWindow& w, const std::string& mark) {
    std::string title = loadResString(IDS_APP_NAME);
    if (!mark.empty()) title += " - " + mark + " document";
    SetWindowTextA(w.hwnd, title.c_str());
}

void onGo(MainWindow& w) {
    HCURSOR previous = SetCursor(LoadCursor(nullptr, IDC_WAIT));
    enableCommand(w.hwnd, IDM_GO, false);
    if (std::optional<FetchedDocument> document = fetchUpdateDocument(w.hwnd)) {
        // A kept copy answered by "not modified" is checked again too: its
        // expiry may have passed since.
        if (acceptServerDocument(w, document->document.text)) {
            loadDocumentText(w, document->document.text);
            markTitle(w, "");
            // Kept only now that the run has taken it as its document, so a
            // refused one never is; on the first run the product folder may
            // not be there yet.
            ensureDataFolders();
            keepFetchedDocument(keptDocumentPath(), *document);
            if (w.settings->DoNoticationsAutomatically && !app().updateMode)
                PostMessageA(w.hwnd, WM_COMMAND, IDM_SHOW_NOTIFICATIONS, 0);
        }
    } else {
        showMessage(w.hwnd, kNetworkError);
    }
    enableCommand(w.hwnd, IDM_GO, true);
    if (previous) SetCursor(previous);
}

void onLoadDocument(MainWindow& w, const char* path) {
    if (std::optional<std::string> document = readLocalDocument(path)) {
        loadDocumentText(w, *document);
        markTitle(w, localDocumentMark(*document));
        return;
    }
    showMessage(w.hwnd, std::string("There has been an error loading ") + path);
}

// A double click shows the row's item: Shift asks for the item browser, a
// plain one for the alert window.
void onListDoubleClick(MainWindow& w) {
    const int row = w.list ? ListBox_GetCurSel(w.list) : -1;
    if (row < 0) return;
    const LRESULT index = ListBox_GetItemData(w.list, row);
    if (index < 0 || static_cast<std::size_t>(index) >= w.items.size()) {
        showMessage(w.hwnd, kItemError);
        return;
    }
    UpdateItem& item = w.items[static_cast<std::size_t>(index)];
    if (GetKeyState(VK_SHIFT) & 0x8000) {
        showBrowseBox(w.hwnd, item, *w.settings);
        return;
    }
    // Any type, even a setting or graphic update: the alert window shows what
    // the item says. Its result means nothing here; a ticked "never show"
    // stays in the item, so a later Show notifications honours it.
    showAlertBox(w.hwnd, item, notifyLook(), *w.settings);
}

// "/INITCONFIG/F" sends the sign-up twice and posts Exit after the first one;
// commands already queued wait until the sign-up has closed, or that Exit
// would end the program under the second one.
void onInitialConfig(MainWindow& w) {
    std::vector<MSG> queued;
    MSG msg;
    while (PeekMessageA(&msg, w.hwnd, WM_COMMAND, WM_COMMAND, PM_REMOVE)) queued.push_back(msg);
    runInitConfig(w.hwnd, *w.settings, app().platformCode);
    for (const MSG& m : queued) PostMessageA(w.hwnd, m.message, m.wParam, m.lParam);
}

// Setup edits the settings in place, and a colour picked there stays even
// when the user cancels, so whatever the answer the shared font and brush are
// made again and the settings are written.
void onSetup(MainWindow& w) {
    Settings& record = *w.settings;
    openSetupBox(w.hwnd, record);
    recreateAlertBackgroundBrush(record);
    RedrawWindow(w.hwnd, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    recreateAlertFont(record);
    SetWindowTextA(w.hwnd, loadResString(IDS_APP_NAME).c_str());
    writeSettings(record);
}

void onCommand(MainWindow& w, int id, UINT code) {
    switch (id) {
        case IDM_SETUP:
            onSetup(w);
            return;
        case IDM_EXIT:
            SendMessageA(w.hwnd, WM_CLOSE, 0, 0);
            return;
        case IDM_GO:
            onGo(w);
            return;
        case IDM_SHOW_NOTIFICATIONS:
            runNotifications(w.hwnd, *w.settings, w.items);
            // Not a null window: that would redraw the whole screen.
            if (w.list) InvalidateRect(w.list, nullptr, TRUE);
            return;
        case IDM_STARTUP_MANAGER:
            openStartupManager(w.hwnd, *w.settings);
            return;
        case IDM_INITIAL_CONFIG:
            onInitialConfig(w);
            return;
        case IDM_SYSTEM_INFO: {
            std::string platformName;
            const uint32_t platformCode = getPlatformCode(&platformName);
            showSystemInfo(
                w.hwnd,
                formatSystemReport(gatherSystemFacts(*w.settings, platformCode, platformName)),
                *w.settings);
            return;
        }
        case IDM_HELP:
            openManual(w.hwnd, *w.settings);
            return;
        case IDM_ABOUT:
            openAboutBox(w.hwnd, *w.settings);
            // Staff hold Shift for a fresh identifier on the clipboard.
            if (GetKeyState(VK_SHIFT) & 0x8000) copyNewGuid(w.hwnd, w.settings->ChangeFolderSound);
            return;
        case IDC_ITEMLIST:
            if (code == LBN_DBLCLK) onListDoubleClick(w);
            return;
    }
}

void drawRow(const MainWindow& w, const DRAWITEMSTRUCT& d) {
    if (d.itemID == static_cast<UINT>(-1) || d.itemData >= w.items.size()) return;
    const UpdateItem& item = w.items[d.itemData];
    if (!item.title) return;  // the row keeps whatever was there

    const bool selected = d.itemState & ODS_SELECTED;
    const COLORREF background = selected ? GetSysColor(COLOR_HIGHLIGHT) : RGB(255, 255, 255);
    FillRect(d.hDC, &d.rcItem,
             selected ? GetSysColorBrush(COLOR_HIGHLIGHT)
                      : static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    SetTextColor(d.hDC, selected ? RGB(255, 255, 255) : RGB(0, 0, 0));
    SetBkMode(d.hDC, TRANSPARENT);
    const unsigned dpi = windowDpi(w.hwnd);
    RECT text = d.rcItem;
    text.left += scaleForDpi(24, dpi);
    DrawTextA(d.hDC, item.title->c_str(), static_cast<int>(item.title->size()), &text,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    drawListMarker(d.hDC, d.rcItem, item.importance, background, dpi);
}

void saveWindowEdges(HWND hwnd, Settings& record) {
    RECT r;
    if (IsZoomed(hwnd) || IsIconic(hwnd) || !GetWindowRect(hwnd, &r)) return;
    storeWindowEdges(record, {r.left, r.top, r.right, r.bottom}, GetSystemMetrics(SM_CXSCREEN),
                     GetSystemMetrics(SM_CYSCREEN));
}

LRESULT handle(MainWindow& w, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_SHOWWINDOW:
            if (wp && !w.list) createList(w);
            break;
        case WM_SIZE:
            if (wp != SIZE_MINIMIZED && w.list)
                MoveWindow(w.list, 0, 0, LOWORD(lp), HIWORD(lp), TRUE);
            return 0;
        case WM_DPICHANGED: {
            // The suggested rectangle keeps the window's place on the new
            // monitor; the edges saved at close are read from it as they are.
            const RECT& r = *reinterpret_cast<const RECT*>(lp);
            SetWindowPos(w.hwnd, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                         SWP_NOZORDER | SWP_NOACTIVATE);
            if (w.list) applyListScale(w);
            return 0;
        }
        case WM_CLOSE:
            saveWindowEdges(w.hwnd, *w.settings);
            w.settings->StartMaximized = IsZoomed(w.hwnd) ? 1 : 0;
            writeSettings(*w.settings);
            break;
        case WM_QUERYENDSESSION:
            return TRUE;  // nothing is saved: the session may end
        case WM_SYSCOMMAND:
            if ((wp & 0xFFF0) == SC_CLOSE) {
                SendMessageA(w.hwnd, WM_COMMAND, IDM_EXIT, 0);
                return 0;  // the window is gone: the default close has nothing left to do
            }
            break;
        case WM_DRAWITEM:
            if (wp != IDC_ITEMLIST) return FALSE;
            drawRow(w, *reinterpret_cast<const DRAWITEMSTRUCT*>(lp));
            return TRUE;
        case WM_COMMAND:
            onCommand(w, LOWORD(wp), HIWORD(wp));
            return 0;
        case WM_LOAD_DOCUMENT:
            if (lp) onLoadDocument(w, reinterpret_cast<const char*>(lp));
            return 0;
        case WM_DESTROY:
            if (w.list) ListBox_ResetContent(w.list);
            w.items.clear();
            PostQuitMessage(0);
            return 0;
    }
    return DefWindowProcA(w.hwnd, msg, wp, lp);
}

LRESULT CALLBACK mainWindowProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept {
    try {
        if (msg == WM_CREATE) {
            auto* w = new MainWindow;
            w->hwnd = hwnd;
            w->settings =
                static_cast<Settings*>(reinterpret_cast<const CREATESTRUCTA*>(lp)->lpCreateParams);
            SetWindowLongPtrA(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(w));
            centreOnScreen(hwnd);
            return 0;
        }
        MainWindow* w = stateOf(hwnd);
        if (msg == WM_NCDESTROY) {
            SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0);
            delete w;
            if (app().mainWindow == hwnd) app().mainWindow = nullptr;
        }
        if (w && msg != WM_NCDESTROY) return handle(*w, msg, wp, lp);
    } catch (...) {
        // Nothing may unwind into the system; the message counts as handled
        // as far as it got.
        return 0;
    }
    return DefWindowProcA(hwnd, msg, wp, lp);
}

}  // namespace

bool registerMainWindowClass(HINSTANCE instance) {
    WNDCLASSA wc = {};
    wc.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    wc.lpfnWndProc = mainWindowProc;
    wc.hInstance = instance;
    wc.hIcon = LoadIconA(instance, "HERALDERSMALL");
    wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
    wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    wc.lpszMenuName = "MainMenu";
    wc.lpszClassName = kMainWindowClass;
    return RegisterClassA(&wc) != 0;
}

HWND createMainWindow(HINSTANCE instance, Settings& settings, bool startsHidden) {
    // Made on the primary monitor, whose DPI the screen's device context gives.
    const unsigned dpi = windowDpi(nullptr);
    HWND hwnd = CreateWindowExA(0, kMainWindowClass, "Quenmark Heralder", WS_OVERLAPPEDWINDOW,
                                CW_USEDEFAULT, CW_USEDEFAULT, scaleForDpi(kDefaultMainWidth, dpi),
                                scaleForDpi(kDefaultMainHeight, dpi), nullptr, nullptr, instance,
                                &settings);
    MainWindow* w = hwnd ? stateOf(hwnd) : nullptr;
    if (w && !startsHidden) createList(*w);
    return hwnd;
}

const std::vector<UpdateItem>& mainWindowItems(HWND mainWindow) {
    static const std::vector<UpdateItem> none;
    const MainWindow* w = stateOf(mainWindow);
    return w ? w->items : none;
}

void setFetchRetryDelays(std::vector<DWORD> delaysMs) {
    retryDelaysMs = std::move(delaysMs);
}
