// Only the decision; the command-line reader knows which steps the daily run is.
#include "app/machine_policy.h"

bool applyMachinePolicy(CommandLinePlan& plan, const MachinePolicy& policy) {
    return !policy.disableUpdateCheck || dropDailyRun(plan);
}
