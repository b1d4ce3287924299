#pragma once
// A stand-in for the installed-product lookup, for the version report's tests
// on both sides: answers every question alike and counts them.
#include <optional>

#include "feed/selection.h"

struct FakeInstalled : InstalledLookup {
    std::optional<InstalledVersion> installed;
    int asked = 0;
    std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem&) override {
        ++asked;
        return installed;
    }
};
