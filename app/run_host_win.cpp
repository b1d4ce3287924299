// The Windows host of the notification run (see run_host_win.h).
#include "app/run_host_win.h"

#include "app/app_win.h"
#include "app/quiet_wait.h"
#include "feed/http_win.h"
#include "feed/installed_product.h"
#include "notify/prompt_box_win.h"
#include "notify/alert_box_win.h"
#include "notify/version_box_win.h"
#include "settings/file_locations_win.h"
#include "ui/message_box_win.h"

int WindowsRunHost::showAlertWindow(UpdateItem& item) {
    return showAlertBox(owner_, item, notifyLook(), settings_);
}

int WindowsRunHost::showVersionWindow(UpdateItem& item) {
    return showVersionBox(owner_, item, notifyLook(), settings_, *this);
}

int WindowsRunHost::promptMultipleItems(std::vector<UpdateItem>& items, int waiting,
                                        SeenList& seen) {
    return showMultipleItemPrompt(owner_, items, waiting, settings_, seen);
}

std::optional<std::string> WindowsRunHost::fetchServerFile(const std::string& path) {
    return ::fetchServerFile(owner_, publisherServerHost(), path);
}

void WindowsRunHost::showMessage(const std::string& text) {
    ::showMessage(owner_, text);
}

std::string WindowsRunHost::graphicFolder() {
    return getUserHeralderPath("");
}

void WindowsRunHost::beginWaitCursor() {
    HCURSOR previous = SetCursor(LoadCursor(nullptr, IDC_WAIT));
    if (waitDepth_++ == 0) previousCursor_ = previous;
}

void WindowsRunHost::endWaitCursor() {
    if (waitDepth_ > 0 && --waitDepth_ == 0) SetCursor(previousCursor_);
}

std::optional<InstalledVersion> WindowsRunHost::lookupInstalledVersion(const UpdateItem& item) {
    InstalledProductKey key = installedProductKey(item);
    auto found = installed_.find(key);
    if (found == installed_.end())
        found = installed_.emplace(std::move(key), ::lookupInstalledVersion(item)).first;
    return found->second;
}

bool WindowsRunHost::downloadTimeSpent() {
    return RunFetchBudget::spent();
}

bool WindowsRunHost::waitForUser() {
    if (!app().updateMode) return true;
    auto ask = [] {
        QUERY_USER_NOTIFICATION_STATE state{};
        if (FAILED(SHQueryUserNotificationState(&state))) return UserNotificationState::Unknown;
        return static_cast<UserNotificationState>(state);
    };
    return waitUntilUserIsFree(ask, [](uint32_t ms) { return waitAnswering(ms); });
}

bool runNotifications(WindowsRunHost& host, std::vector<UpdateItem>& items) {
    // Graphic updates and the windows' pictures share it: past it the rest
    // wait for tomorrow and the windows show the default picture at once.
    RunFetchBudget downloads;
    // The seen list and the graphics live in the product folder; without it
    // every mark would be lost silently on a machine set up without the installer.
    ensureDataFolders();
    SeenList seen(getUserHeralderPath("Heralder.lst"));
    return runNotifications(items, host, host.runSettings(), seen);
}

bool runNotifications(HWND owner, Settings& settings, std::vector<UpdateItem>& items) {
    WindowsRunHost host(owner, settings);
    return runNotifications(host, items);
}
