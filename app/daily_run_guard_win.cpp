// The per-user guard of the daily run (see daily_run_guard_win.h).
#include "app/daily_run_guard_win.h"

namespace {

// "Local\": one per logon session, so another user's run on the same machine
// does not keep this one out.
constexpr char kGuardName[] = "Local\\QuenmarkHeralderDailyRun";

}  // namespace

DailyRunGuard::DailyRunGuard() : mutex_(CreateMutexA(nullptr, FALSE, kGuardName)) {
    // Without the mutex the run goes ahead: a missing guard must not cost
    // the user the day's notifications.
    if (!mutex_) {
        held_ = true;
        return;
    }
    // Abandoned: the run that held it died; its marks are on disk already.
    const DWORD r = WaitForSingleObject(mutex_.get(), 0);
    held_ = r == WAIT_OBJECT_0 || r == WAIT_ABANDONED;
}

DailyRunGuard::~DailyRunGuard() {
    if (mutex_ && held_) ReleaseMutex(mutex_.get());
}
