// The multiple-items prompt's decisions (see prompt_box.h).
#include "notify/prompt_box.h"

std::string fillPendingCount(std::string_view text, int waiting) {
    std::string result(text);
    const std::size_t at = result.find("%d");
    if (at != std::string::npos) result.replace(at, 2, std::to_string(waiting));
    return result;
}

int actOnPromptChoice(PromptChoice choice, std::vector<UpdateItem>& items, Settings& settings,
                      SeenList& seen, const std::function<void(uint32_t)>& applyStartupOption) {
    switch (choice) {
        case PromptChoice::ShowNow:
            return 1;
        case PromptChoice::NoneToday:
            return 0;
        case PromptChoice::IgnoreAll:
            // Every row, not only the pending ones: items the filters left out
            // today must not surface later when the user widens the filters.
            // A row that cannot be written is skipped; the rest still count.
            for (const UpdateItem& item : items) seen.markItemSeen(item);
            return 0;
        case PromptChoice::DisableAutomatic:
            settings.StartupOptions = kStartupManual;
            if (applyStartupOption) applyStartupOption(kStartupManual);
            return 0;
    }
    return 1;
}
