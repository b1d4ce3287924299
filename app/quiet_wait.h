#pragma once
// A daily run that finds something to show waits while the user cannot take a
// notification: a presentation, a full-screen game or video call, quiet time.
// The decision is portable and driven by two seams, the system's answer and a
// wait that keeps the program answering, so it is tested with tables of
// answers over time.
#include <cstdint>
#include <functional>

// What Windows answers when asked whether the user can take a notification
// now, with its own numbering (QUERY_USER_NOTIFICATION_STATE); Unknown when it
// could not be asked.
enum class UserNotificationState : int {
    Unknown = 0,
    NotPresent = 1,
    Busy = 2,
    Direct3dFullScreen = 3,
    PresentationMode = 4,
    AcceptsNotifications = 5,
    QuietTime = 6,
    App = 7,
};

// True for the answers that make a daily run wait.
bool isUserBusy(UserNotificationState state);

struct QuietWaitLimits {
    uint32_t checkEveryMs = 60 * 1000;
    uint32_t giveUpAfterMs = 4 * 60 * 60 * 1000;
};

// Asks until the user can take notifications, waiting checkEveryMs between
// asks. wait(ms) keeps the program answering and returns false when it must
// stop (the session is ending). True when the windows may open now; false when
// the limit passed or the wait was stopped first.
bool waitUntilUserIsFree(const std::function<UserNotificationState()>& ask,
                         const std::function<bool(uint32_t ms)>& wait,
                         const QuietWaitLimits& limits = {});
