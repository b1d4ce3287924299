// Ownership rules of the handle wrapper, checked with a fake handle that logs
// every close.
#include <gtest/gtest.h>

#include <vector>

#include "base/unique_handle.h"

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
