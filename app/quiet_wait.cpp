// Waiting for the user before a daily run's windows (see quiet_wait.h).
#include "app/quiet_wait.h"

bool isUserBusy(UserNotificationState state) {
    switch (state) {
        case UserNotificationState::Busy:
        case UserNotificationState::Direct3dFullScreen:
        case UserNotificationState::PresentationMode:
        case UserNotificationState::QuietTime:
            return true;
        default:
            // Accepting, not present (the windows wait on the desktop as they
            // always have), an app, or no answer at all: show as before.
            return false;
    }
}

bool waitUntilUserIsFree(const std::function<UserNotificationState()>& ask,
                         const std::function<bool(uint32_t ms)>& wait,
                         const QuietWaitLimits& limits) {
    // Time is counted in the waits themselves, so a clock changed meanwhile
    // neither ends the wait early nor makes it endless.
    for (uint64_t waited = 0;; waited += limits.checkEveryMs) {
        if (!isUserBusy(ask())) return true;
        if (waited + limits.checkEveryMs > limits.giveUpAfterMs) return false;
        if (!wait(limits.checkEveryMs)) return false;
    }
}
