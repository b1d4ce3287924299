#pragma once
// The multiple-items prompt's decisions, apart from its window: the pending
// count put into the explanation, and what each of the user's four answers
// does to the seen list and the settings. Kept portable so that the effects
// are checked natively against a real seen-list file.
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "feed/seen_list.h"
#include "feed/update_item.h"
#include "settings/settings.h"

// The dialog's results, in the order the run has always numbered them.
enum class PromptChoice : int {
    ShowNow = 0,           // go on and show each pending item
    NoneToday = 1,         // stop; the same items wait for the next run
    IgnoreAll = 2,         // every item of the document counts as seen
    DisableAutomatic = 3,  // manual start-up from now on
};

// text with its first "%d" replaced by waiting; text unchanged without one.
std::string fillPendingCount(std::string_view text, int waiting);

// Carries out choice; 1 when the run is to show the pending items, 0 when it
// is to end now. applyStartupOption makes the system's start-up agree with a
// StartupOptions value at once.
int actOnPromptChoice(PromptChoice choice, std::vector<UpdateItem>& items, Settings& settings,
                      SeenList& seen, const std::function<void(uint32_t)>& applyStartupOption);
