#pragma once
// The notification run: after a document has been read, apply the graphic and
// setting updates it carries, count what is waiting, ask once when that is
// many, then show one window per item in document order and remember each
// shown item at once, so that nothing shown is offered twice even when the
// run ends early. A graphic update that the run's download time could not
// reach is left unmarked for the next run. The run decides; RunHost does: windows, network, cursor,
// message boxes and installed versions are the host's, so the whole run is
// tested natively with a scripted host.
#include <optional>
#include <string>
#include <vector>

#include "feed/selection.h"
#include "feed/seen_list.h"
#include "feed/update_item.h"
#include "settings/settings.h"

class RunHost : public InstalledLookup {
  public:
    // Each window answers 0 when the user cancelled, and sets
    // item.neverShowAgain when the user ticked that box.
    virtual int showAlertWindow(UpdateItem& item) = 0;
    virtual int showVersionWindow(UpdateItem& item) = 0;
    // The multiple-items prompt; 0 stops the run. It may mark items itself.
    virtual int promptMultipleItems(std::vector<UpdateItem>& items, int waiting,
                                    SeenList& seen) = 0;

    // A file from the publisher's web server; nullopt on any failure.
    virtual std::optional<std::string> fetchServerFile(const std::string& path) = 0;
    virtual void showMessage(const std::string& text) = 0;
    // The folder graphic updates are written to, ending in a separator.
    virtual std::string graphicFolder() = 0;
    virtual void beginWaitCursor() = 0;
    virtual void endWaitCursor() = 0;
    // Holds a run that has something to show or apply while the user cannot
    // take it (a presentation, a full-screen game); false gives the run up
    // for today. A run the user started never waits.
    virtual bool waitForUser() { return true; }
    // Whether the run's downloads after the document have used up the time
    // they share; from then on nothing more is fetched.
    virtual bool downloadTimeSpent() { return false; }
};

// Shows the wait cursor for as long as it lives.
class WaitCursorScope {
  public:
    explicit WaitCursorScope(RunHost& host) : host_(host) { host_.beginWaitCursor(); }
    ~WaitCursorScope() { host_.endWaitCursor(); }
    WaitCursorScope(const WaitCursorScope&) = delete;
    WaitCursorScope& operator=(const WaitCursorScope&) = delete;

  private:
    RunHost& host_;
};

// False when there are no items, the host gave up waiting for the user (then
// nothing is applied, shown or marked) or the user stopped at the prompt; true
// otherwise, also when a window was cancelled.
bool runNotifications(std::vector<UpdateItem>& items, RunHost& host, Settings& settings,
                      SeenList& seen);
