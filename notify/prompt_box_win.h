#pragma once
// The multiple-items prompt: before the first item window of a run that finds
// many items waiting, the user chooses to see them now, none today, none of
// them ever, or no automatic notifications at all, and may change how many
// items it takes for this question to be asked.
#include <vector>

#include "base/win_headers.h"
#include "feed/seen_list.h"
#include "feed/update_item.h"
#include "settings/settings.h"

// Shows "DoMultipleItemPromptBox" with waiting in its explanation and acts on
// the answer (see prompt_box.h). Keeps a changed count in
// settings.PromptMultipleCount whatever the answer. 1 when the run is to go on
// and show the pending items, 0 when it is to end now.
int showMultipleItemPrompt(HWND owner, std::vector<UpdateItem>& items, int waiting,
                           Settings& settings, SeenList& seen);
