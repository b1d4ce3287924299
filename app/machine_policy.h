#pragma once
// What an administrator may decide for every user of the machine, through
// Group Policy (HKLM\Software\Policies\Quenmark\Heralder; the template ships
// with the installer under "policy\"). Only the decision lives here; the
// registry is read by machine_policy_win.cpp.
#include "app/command_line.h"

struct MachinePolicy {
    // The daily "/UPDATE" run does nothing: no fetch, no window. Go in the
    // main window still works, because a person asked for it.
    bool disableUpdateCheck = false;
};

// Drops the "/UPDATE" steps from the plan when the policy forbids the check.
// Returns false when nothing is left to do (see dropDailyRun).
bool applyMachinePolicy(CommandLinePlan& plan, const MachinePolicy& policy);
