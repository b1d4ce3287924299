// Splitting choice lists (see choice_combo.h).
#include "ui/choice_combo.h"

std::vector<std::string> splitChoiceList(std::string_view list) {
    std::vector<std::string> entries;
    std::size_t pos = 0;
    while (pos < list.size()) {
        std::size_t end = list.find(';', pos);
        if (end == std::string_view::npos) end = list.size();
        entries.emplace_back(list.substr(pos, end - pos));
        pos = list.find_first_not_of(';', end);
        if (pos == std::string_view::npos) break;
    }
    return entries;
}
