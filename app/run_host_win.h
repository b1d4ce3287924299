#pragma once
// The notification run on Windows: the host that gives the run the network,
// the wait cursor, message boxes and installed versions, owned by a window.
#include <map>
#include <optional>
#include <vector>

#include "base/win_headers.h"
#include "feed/installed_product.h"
#include "feed/notification_run.h"
#include "settings/settings.h"
#include "notify/notify_look_win.h"

class WindowsRunHost : public RunHost {
  public:
    WindowsRunHost(HWND owner, Settings& settings) : owner_(owner), settings_(settings) {}

    // The notification windows and the multiple-items prompt plug in here.
    int showAlertWindow(UpdateItem& item) override;
    int showVersionWindow(UpdateItem& item) override;
    int promptMultipleItems(std::vector<UpdateItem>& items, int waiting, SeenList& seen) override;

    std::optional<std::string> fetchServerFile(const std::string& path) override;
    void showMessage(const std::string& text) override;
    std::string graphicFolder() override;
    void beginWaitCursor() override;
    void endWaitCursor() override;
    std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem& item) override;
    // A daily run asks Windows whether the user can take notifications and
    // waits, a check a minute for at most four hours; Go by hand never waits.
    bool waitForUser() override;
    bool downloadTimeSpent() override;

    HWND owner() const { return owner_; }
    Settings& runSettings() const { return settings_; }

  private:
    HWND owner_;
    Settings& settings_;
    HCURSOR previousCursor_ = nullptr;
    int waitDepth_ = 0;
    // Each item is asked about several times before its window, and a
    // document may name one product thousands of times; what is installed
    // does not change during a run.
    std::map<InstalledProductKey, std::optional<InstalledVersion>> installed_;
};

// The run as the main window starts it: its settings and the user's seen-item
// list, in the product folder (made when it is missing).
bool runNotifications(HWND owner, Settings& settings, std::vector<UpdateItem>& items);
bool runNotifications(WindowsRunHost& host, std::vector<UpdateItem>& items);
