#pragma once
// One daily run at a time for each user. Two "/UPDATE" started together (a
// logon run and one from a scheduled task, say) would both show every new
// item and both append it to the seen list. The guard is a named mutex held
// for as long as the guard lives; whoever cannot take it at once stays out.
// Go by hand in an open main window takes no guard: a person asked for it.
#include "base/win_handles.h"

class DailyRunGuard {
  public:
    // Tries once and never waits: a run that finds another under way has
    // nothing left to do.
    DailyRunGuard();
    ~DailyRunGuard();
    DailyRunGuard(const DailyRunGuard&) = delete;
    DailyRunGuard& operator=(const DailyRunGuard&) = delete;

    bool held() const { return held_; }

  private:
    UniqueKernelHandle mutex_;
    bool held_ = false;
};
