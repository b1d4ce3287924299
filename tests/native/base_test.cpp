// The handle wrapper's ownership rules, and the program's version, which is
// written several ways in base/version.h and once more in the manifest: a
// release that bumps one and forgets another shows two versions to the user.
#include <gtest/gtest.h>

#include <cstdio>
#include <tuple>
#include <vector>

#include "base/file_io.h"
#include "base/unique_handle.h"
#include "base/version.h"

namespace {

std::vector<int> closed;

// Like INVALID_HANDLE_VALUE, "none" is not zero, so handle value 0 must close.
struct FakeTraits {
    using Handle = int;
    static Handle invalid() noexcept { return -1; }
    static void close(Handle h) noexcept { closed.push_back(h); }
};
using FakeHandle = UniqueHandle<FakeTraits>;

}  // namespace

TEST(UniqueHandleOwnership, ClosesEachHandleExactlyOnceAndHandsOwnershipOver) {
    closed.clear();
    {
        FakeHandle a(1), c(0);
        EXPECT_TRUE(c);
        FakeHandle b(std::move(a));
        c = std::move(b);  // 0 closes now, 1 moves on
        c = std::move(c);  // self-move keeps the handle
        EXPECT_FALSE(a || b);
        EXPECT_EQ(closed, std::vector<int>{0});
        EXPECT_EQ(FakeHandle(3).release(), 3);  // released: never closed
        *c.put() = 5;                           // an out-parameter API replaces the handle
    }
    EXPECT_EQ(closed, (std::vector<int>{0, 1, 5}));
}

TEST(Version, EveryFormAgrees) {
    char dotted[32], commas[32], display[16];
    std::snprintf(dotted, sizeof dotted, "%d.%d.%d.%d", HERALDER_VERSION_MAJOR,
                  HERALDER_VERSION_MINOR, HERALDER_VERSION_LETTER - 'a', HERALDER_VERSION_REVISION);
    const int parts[] = {HERALDER_VERSION_COMMAS};
    std::snprintf(commas, sizeof commas, "%d.%d.%d.%d", parts[0], parts[1], parts[2], parts[3]);
    std::snprintf(display, sizeof display, "%d.%d%c", HERALDER_VERSION_MAJOR,
                  HERALDER_VERSION_MINOR, HERALDER_VERSION_LETTER);
    EXPECT_EQ(std::tuple(std::string(HERALDER_VERSION_DOTTED), std::string(commas),
                         std::string(HERALDER_VERSION_DISPLAY)),
              std::tuple(std::string(dotted), std::string(dotted), std::string(display)));

    const auto manifest = readFileBytes(HERALDER_SOURCE_DIR "/resources/heralder.manifest");
    EXPECT_NE(manifest.value_or("").find("name=\"Quenmark.Heralder\" version=\"" +
                                         std::string(dotted) + '"'),
              std::string::npos);
}
