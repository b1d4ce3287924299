#pragma once
// The items the window tests show, filled as a publisher would fill them so
// that every field a window shows has something in it.
#include <string>
#include <tuple>
#include <vector>

#include "feed/update_item.h"

inline UpdateItem sampleAlert() {
    UpdateItem item;
    item.type = ItemType::Alert;
    item.title = "Please install the 2.1b update";
    item.application = "Foo";
    std::tie(item.version, item.subVersion, item.revision, item.patch) = std::tuple(2, 1, 'b', 3);
    item.date = "07-15-2003";
    item.url = "http://www.quenmark.com/foo/update.html";
    item.plainText = "Foo 2.1b rounds currency totals correctly.";
    return item;
}

inline UpdateItem sampleVersion() {
    UpdateItem item;
    item.type = ItemType::Version;
    item.title = "Ledger 3.0c is out";
    item.date = "11-20-2026";
    item.originator = "Quenmark Software";
    item.application = "Ledger & Co";  // no mnemonic may eat the "&"
    item.keywords = "ledger, update";
    item.plainText = "Ledger 3.0c mends the totals.\r\nUpgrade from the web page.";
    item.iniFile = "ledger.ini";
    item.section = "Ledger";
    item.url = "http://www.quenmark.com/ledger";
    item.ignoreUntil = "12-01-2026";
    std::tie(item.version, item.subVersion, item.revision, item.patch, item.beta) =
        std::tuple(3, 0, 'c', 2, 1);
    std::tie(item.importance, item.ifRegistered, item.ifEval, item.number) =
        std::tuple(2, -1, 0, 4101);
    return item;
}

// count alerts numbered from firstNumber.
inline std::vector<UpdateItem> sampleAlerts(int count, int32_t firstNumber = 3001) {
    std::vector<UpdateItem> items(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        items[i].type = ItemType::Alert;
        items[i].number = firstNumber + i;
        items[i].title = "Alert " + std::to_string(i + 1);
    }
    return items;
}
