// The notification run (see notification_run.h).
#include "feed/notification_run.h"

#include "feed/feed_updates.h"

namespace {

int showWindowFor(UpdateItem& item, RunHost& host) {
    switch (item.type) {
        case ItemType::Alert:
        case ItemType::Tip:
        case ItemType::OffTopic:
        case ItemType::Notice:
            return host.showAlertWindow(item);
        case ItemType::Version:
            return host.showVersionWindow(item);
        default:
            return 1;  // updates and unknown types have no window
    }
}

}  // namespace

bool runNotifications(std::vector<UpdateItem>& items, RunHost& host, Settings& settings,
                      SeenList& seen) {
    if (items.empty()) return false;
    SelectionContext context{settings, seen, host};
    auto passes = [&](const UpdateItem& item) { return shouldShowItem(item, false, context); };
    // A day with nothing new never waits; one with news waits as a whole, so
    // that giving up leaves everything for the next run.
    bool pending = false;
    {
        const SeenList::OneLook look(seen);
        for (const UpdateItem& item : items) pending = pending || passes(item);
    }
    if (!pending) return true;
    if (!host.waitForUser()) return false;

    // A download cut short by the run's time, or never started, is no
    // verdict on the file: it is tried again tomorrow rather than marked seen
    // by the window pass like one that failed.
    std::vector<bool> leftForTomorrow(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        UpdateItem& item = items[i];
        if (item.type != ItemType::GraphicUpdate || !passes(item)) continue;
        if (!host.downloadTimeSpent()) performGraphicUpdate(item, host, seen);
        leftForTomorrow[i] = !seen.isItemSeen(item) && host.downloadTimeSpent();
    }
    auto left = [&](const UpdateItem& item) {
        return leftForTomorrow[static_cast<std::size_t>(&item - items.data())];
    };
    for (UpdateItem& item : items)
        if (item.type == ItemType::SettingUpdate && passes(item))
            performSettingUpdate(item, settings, seen);

    // Updates count too, so a graphic whose download failed still asks.
    int waiting = 0;
    {
        const SeenList::OneLook look(seen);
        for (const UpdateItem& item : items)
            if (!seen.isItemSeen(item) && !left(item) && passes(item)) ++waiting;
    }
    if (settings.PromptMultipleItems != 0 &&
        static_cast<uint32_t>(waiting) >= settings.PromptMultipleCount &&
        host.promptMultipleItems(items, waiting, seen) == 0)
        return false;

    for (UpdateItem& item : items) {
        // Asked anew: the prompt or an earlier window may have marked it.
        if (left(item) || !passes(item)) continue;
        int result = showWindowFor(item, host);
        if (item.neverShowAgain) {
            // Left unmarked on purpose: should notifications ever be switched
            // on again, this item is offered again.
            settings.StartupOptions = kStartupManual;
            return true;
        }
        seen.markItemSeen(item);
        if (result == 0) return true;  // the rest wait for the next run
    }
    return true;
}
