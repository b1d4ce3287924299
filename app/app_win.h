#pragma once
// The process's own state: what start-up sets up once and the windows share.
// It lives in app/, the top of the program; code below app/ is handed what it
// needs (the settings, a font, a brush, the owner window) rather than reaching
// up here.
#include <cstdint>
#include <optional>

#include "base/win_handles.h"
#include "notify/notify_look_win.h"
#include "settings/settings.h"

struct AppState {
    HINSTANCE instance = nullptr;
    HWND mainWindow = nullptr;
    uint32_t platformCode = 0;
    // Set by "/UPDATE": Go then leaves the notification run to start-up and
    // retries a failed fetch, because at logon the network is often not up yet.
    bool updateMode = false;
    // Read once at start-up, lent to every window and service, written back by
    // the main window.
    Settings settings;
    UniqueFont listFont;
    UniqueFont alertFont;  // none when AlertFontName is empty
    UniqueBrush alertBackgroundBrush;
    // The settings the alert font and background are still to be made from.
    std::optional<Settings> alertFontSource;
    std::optional<Settings> alertBackgroundSource;
};

AppState& app();

// The alert windows' font and background as the settings describe them now.
// They are made when the first window asks for them (notifyLook): a daily run
// that finds nothing new shows no window, and under Wine the first font made
// costs more than the rest of that run.
void describeAlertLook(const Settings& record);
void describeAlertBackground(const Settings& record);
// Made now, after Setup changed them.
void recreateAlertFont(const Settings& record);
void recreateAlertBackgroundBrush(const Settings& record);
// The alert font and background brush, made first if they were only described.
NotifyLook notifyLook();
// The list font (14 pixels at 96 DPI) for a window at dpi.
void recreateListFont(unsigned dpi);
// At the end of the run.
void deleteSharedDrawingObjects();

// Waits while still answering the system (a logon or shutdown must not find a
// hung program). False when the wait ended because the program must quit.
bool waitAnswering(DWORD ms);

// The folder of the running program, ending in "\".
std::string programFolder();
