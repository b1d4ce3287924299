#pragma once
// The version notice's report: product, installed version, current version and
// release date, built in a 1024-character buffer whose pieces are each dropped
// when they would not fit. Portable, so its margins are tested natively.
#include <string>

#include "feed/selection.h"
#include "feed/update_item.h"

// lookup tells which version of the product is installed on this computer; it
// is asked only when the item names an APPLICATION.
std::string versionReport(const UpdateItem& item, InstalledLookup& lookup);
