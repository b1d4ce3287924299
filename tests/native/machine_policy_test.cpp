// The machine policy against the command lines that reach start-up: only the
// daily run is switched off, and a run left with nothing to do ends at once.
#include <gtest/gtest.h>

#include "app/machine_policy.h"
#include "resources/resource.h"

TEST(MachinePolicy, UpdateCheckSwitchedOff) {
    using enum StartupAction;
    const struct {
        std::string line;
        bool disabled;
        bool goesOn;
        std::vector<StartupStep> steps;
    } cases[] = {
        {"/UPDATE", true, false, {}},
        {"/UPDATE", false, true, interpretCommandLine("/UPDATE").steps},
        // A document with the switch would stay hidden with nobody to close it.
        {"C:\\feeds\\update.txt /UPDATE", true, false, {}},
        {"/STARTUP /UPDATE", true, true, {{Send, IDM_STARTUP_MANAGER}, {Post, IDM_EXIT}}},
        {"/INITCONFIG", true, true, interpretCommandLine("/INITCONFIG").steps},
        // The main window is the user asking: Go still works there.
        {"", true, true, {}},
        {"C:\\feeds\\update.txt", true, true, {}},
    };
    for (const auto& c : cases) {
        CommandLinePlan plan = interpretCommandLine(c.line);
        const bool hidden = plan.hidden;
        EXPECT_EQ(applyMachinePolicy(plan, MachinePolicy{c.disabled}), c.goesOn)
            << c.line << " " << c.disabled;
        EXPECT_EQ(plan.steps, c.steps) << c.line << " " << c.disabled;
        EXPECT_EQ(plan.hidden, hidden) << c.line;
    }
}
