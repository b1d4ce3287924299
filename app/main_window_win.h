#pragma once
// The main window: a small, usually hidden window with the menu and the list
// of the last document's items. Start-up and the user drive everything through
// its commands (the IDM_ ids of resource.h).
#include <vector>

#include "base/win_headers.h"
#include "feed/update_item.h"
#include "settings/settings.h"

inline constexpr char kMainWindowClass[] = "QuenmarkHeralderApplication";
// lParam: a document path to load, owned by the sender until it is handled.
inline constexpr UINT WM_LOAD_DOCUMENT = WM_USER + 101;

inline constexpr int kDefaultMainWidth = 460;
inline constexpr int kDefaultMainHeight = 360;
inline constexpr int kItemRowHeight = 20;

bool registerMainWindowClass(HINSTANCE instance);
// The main window, hidden, with its item list filling it. A window that stays
// hidden (the daily run) makes its list when first shown: the run that finds
// nothing new never needs it, and a list box is what loads the common controls
// library, a good part of the run's time. The window reads and changes
// settings, which must outlive it, and writes them when it closes.
HWND createMainWindow(HINSTANCE instance, Settings& settings, bool startsHidden = false);

// The items behind the list rows, in document order.
const std::vector<UpdateItem>& mainWindowItems(HWND mainWindow);

// How long Go waits before each new try when the fetch fails in update mode
// (5, 15 and 40 seconds); only the tests shorten them.
void setFetchRetryDelays(std::vector<DWORD> delaysMs);
