// The policy takes away exactly the steps "/UPDATE" adds, found by asking the
// command-line reader for that switch alone, so the two cannot drift apart.
#include "app/machine_policy.h"

#include <algorithm>

bool applyMachinePolicy(CommandLinePlan& plan, const MachinePolicy& policy) {
    if (!policy.disableUpdateCheck) return true;
    const std::vector<StartupStep> updateSteps = interpretCommandLine("/UPDATE").steps;
    auto found =
        std::search(plan.steps.begin(), plan.steps.end(), updateSteps.begin(), updateSteps.end());
    if (found == plan.steps.end()) return true;
    plan.steps.erase(found, found + static_cast<std::ptrdiff_t>(updateSteps.size()));
    return !plan.steps.empty();
}
