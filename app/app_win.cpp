// The process's shared state and its drawing objects (see app_win.h).
#include "app/app_win.h"

#include <string>
#include <utility>

#include "ui/dpi_win.h"

AppState& app() {
    static AppState state;
    return state;
}

namespace {

// The shared fonts are made for the screen's DPI: AlertFontSize is a 96-DPI
// pixel height, as the list font's 14 pixels are.
HFONT makeAlertFont(const Settings& record) {
    if (record.AlertFontName.empty()) return nullptr;
    return CreateFontA(scaleForDpi(static_cast<int>(record.AlertFontSize), windowDpi(nullptr)), 0,
                       0, 0, record.AlertFontBold ? FW_BOLD : FW_NORMAL,
                       record.AlertFontItal ? 1 : 0, 0, 0, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS,
                       record.AlertFontAntialias ? ANTIALIASED_QUALITY : NONANTIALIASED_QUALITY,
                       DEFAULT_PITCH, record.AlertFontName.c_str());
}

}  // namespace

void describeAlertLook(const Settings& record) {
    app().alertFont.reset();
    app().alertFontSource = record;
    describeAlertBackground(record);
}

void describeAlertBackground(const Settings& record) {
    app().alertBackgroundBrush.reset();
    app().alertBackgroundSource = record;
}

void recreateAlertFont(const Settings& record) {
    app().alertFontSource.reset();
    app().alertFont.reset(makeAlertFont(record));
}

void recreateAlertBackgroundBrush(const Settings& record) {
    app().alertBackgroundSource.reset();
    app().alertBackgroundBrush.reset(CreateSolidBrush(record.AlertBackgroundColor));
}

NotifyLook notifyLook() {
    AppState& a = app();
    if (const std::optional<Settings> record = std::exchange(a.alertFontSource, std::nullopt))
        recreateAlertFont(*record);
    if (const std::optional<Settings> record = std::exchange(a.alertBackgroundSource, std::nullopt))
        recreateAlertBackgroundBrush(*record);
    return {a.alertFont.get(), a.alertBackgroundBrush.get()};
}

void recreateListFont(unsigned dpi) {
    app().listFont.reset(CreateFontA(scaleForDpi(14, dpi), 0, 0, 0, 0, 0, 0, 0, ANSI_CHARSET,
                                     OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                                     DEFAULT_PITCH, "MS Sans Serif"));
}

void deleteSharedDrawingObjects() {
    AppState& a = app();
    a.alertFontSource.reset();
    a.alertBackgroundSource.reset();
    a.alertBackgroundBrush.reset();
    a.alertFont.reset();
    a.listFont.reset();
}

std::string programFolder() {
    char path[MAX_PATH] = "";
    const DWORD n = GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string folder(path, n < MAX_PATH ? n : 0);
    const std::size_t slash = folder.find_last_of("\\/");
    folder.resize(slash == std::string::npos ? 0 : slash + 1);
    return folder;
}

bool waitAnswering(DWORD ms) {
    const DWORD start = GetTickCount();
    for (DWORD elapsed = 0; elapsed < ms; elapsed = GetTickCount() - start) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, ms - elapsed, QS_ALLINPUT);
        MSG msg;
        while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
            if (msg.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(msg.wParam));
                return false;
            }
            TranslateMessage(&msg);
            DispatchMessageA(&msg);
        }
    }
    return true;
}
