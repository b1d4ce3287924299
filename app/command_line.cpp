// The command line as start-up reads it: one table row per switch, each row
// tested on its own, so overlapping switches ("/INITCONFIG/F") run every row
// they match, in table order.
#include "app/command_line.h"

#include <algorithm>
#include <array>

#include "resources/resource.h"

namespace {

using enum StartupAction;

struct SwitchRow {
    std::string_view text;
    std::array<StartupStep, 4> steps;
    std::size_t count;
};

constexpr SwitchRow kSwitches[] = {
    {"/UPDATE",
     {{{SetUpdateMode}, {Send, IDM_GO}, {Send, IDM_SHOW_NOTIFICATIONS}, {Post, IDM_EXIT}}},
     4},
    {"/STARTUP", {{{Send, IDM_STARTUP_MANAGER}, {Post, IDM_EXIT}}}, 2},
    {"/INITCONFIG", {{{Send, IDM_INITIAL_CONFIG}, {Post, IDM_EXIT}}}, 2},
    {"/INITCONFIG/F", {{{ResetInitConfig}, {Send, IDM_INITIAL_CONFIG}, {Post, IDM_EXIT}}}, 3},
};

}  // namespace

CommandLinePlan interpretCommandLine(std::string_view commandLine) {
    CommandLinePlan plan;
    commandLine = commandLine.substr(0, commandLine.find('\0'));
    if (commandLine.empty()) return plan;

    std::string_view path = commandLine.substr(0, kMaxDocumentPath);
    path = path.substr(0, path.find('/'));
    if (!path.empty()) plan.documentPath = std::string(path);

    for (const SwitchRow& row : kSwitches) {
        if (commandLine.find(row.text) == std::string_view::npos) continue;
        plan.hidden = true;
        plan.steps.insert(plan.steps.end(), row.steps.begin(), row.steps.begin() + row.count);
    }
    return plan;
}

namespace {

// The steps "/UPDATE" adds, found by asking the reader for that switch alone,
// so that the two cannot drift apart.
const std::vector<StartupStep>& dailyRunSteps() {
    static const std::vector<StartupStep> steps = interpretCommandLine("/UPDATE").steps;
    return steps;
}

std::vector<StartupStep>::const_iterator findDailyRun(const std::vector<StartupStep>& steps) {
    return std::search(steps.begin(), steps.end(), dailyRunSteps().begin(), dailyRunSteps().end());
}

}  // namespace

bool plansDailyRun(const CommandLinePlan& plan) {
    return findDailyRun(plan.steps) != plan.steps.end();
}

bool dropDailyRun(CommandLinePlan& plan) {
    const auto found = findDailyRun(plan.steps);
    if (found == plan.steps.end()) return true;
    plan.steps.erase(found, found + static_cast<std::ptrdiff_t>(dailyRunSteps().size()));
    return !plan.steps.empty();
}
