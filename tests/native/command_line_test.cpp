// What each command line makes start-up do: which rows run and in what order,
// whether the window hides, and which document path is posted.
#include <gtest/gtest.h>

#include <string>

#include "app/command_line.h"
#include "resources/resource.h"

namespace {

using enum StartupAction;
using Steps = std::vector<StartupStep>;

const Steps kUpdate = {
    {SetUpdateMode}, {Send, IDM_GO}, {Send, IDM_SHOW_NOTIFICATIONS}, {Post, IDM_EXIT}};
const Steps kStartup = {{Send, IDM_STARTUP_MANAGER}, {Post, IDM_EXIT}};
const Steps kInitConfig = {{Send, IDM_INITIAL_CONFIG}, {Post, IDM_EXIT}};
const Steps kInitConfigForced = {{ResetInitConfig}, {Send, IDM_INITIAL_CONFIG}, {Post, IDM_EXIT}};

Steps join(std::initializer_list<Steps> rows) {
    Steps all;
    for (const Steps& row : rows) all.insert(all.end(), row.begin(), row.end());
    return all;
}

}  // namespace

TEST(CommandLine, SwitchesRowsAndPath) {
    const std::string longPath(300, 'p');
    const struct {
        std::string line;
        bool hidden;
        std::optional<std::string> path;
        Steps steps;
    } cases[] = {
        {"", false, std::nullopt, {}},
        {"/UPDATE", true, std::nullopt, kUpdate},
        {"/STARTUP", true, std::nullopt, kStartup},
        {"/INITCONFIG", true, std::nullopt, kInitConfig},
        // Contains "/INITCONFIG" too: the sign-up runs twice, two Exits posted.
        {"/INITCONFIG/F", true, std::nullopt, join({kInitConfig, kInitConfigForced})},
        // Table order, not the order on the line.
        {"/STARTUP /UPDATE", true, std::nullopt, join({kUpdate, kStartup})},
        {"x/UPDATE/STARTUP", true, "x", join({kUpdate, kStartup})},
        {"/update", false, std::nullopt, {}},
        {"C:/dir/file", false, "C:", {}},
        {"C:\\feeds\\update.txt", false, "C:\\feeds\\update.txt", {}},
        {"C:\\feeds\\update.txt /UPDATE", true, "C:\\feeds\\update.txt ", kUpdate},
        {"   ", false, "   ", {}},
        {"\\server\\share\\x/UPDATER", true, "\\server\\share\\x", kUpdate},
        // The path buffer keeps 259 characters; a switch beyond them still counts.
        {longPath + "/STARTUP", true, longPath.substr(0, kMaxDocumentPath), kStartup},
        {longPath.substr(0, 100) + "/" + longPath, false, longPath.substr(0, 100), {}},
        {std::string("doc\0/UPDATE", 11), false, "doc", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE('"' + c.line + '"');
        const CommandLinePlan plan = interpretCommandLine(c.line);
        EXPECT_EQ(plan.hidden, c.hidden);
        EXPECT_EQ(plan.documentPath, c.path);
        EXPECT_EQ(plan.steps, c.steps);
    }
}
