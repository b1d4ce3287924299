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
        FakeHandle a(1);
        FakeHandle b(std::move(a));  // ownership moves, nothing closes
        EXPECT_FALSE(a);
        FakeHandle c(0);
        c = std::move(b);  // 0 closes now, 1 moves on
        EXPECT_EQ(closed, std::vector<int>{0});
        c = std::move(c);  // self-move keeps the handle
        EXPECT_EQ(c.get(), 1);
    }
    EXPECT_EQ(closed, (std::vector<int>{0, 1}));

    closed.clear();
    FakeHandle h(3);
    EXPECT_EQ(h.release(), 3);
    EXPECT_FALSE(h);
    h.reset(4);
    *h.put() = 5;  // an out-parameter API replaces the handle
    EXPECT_EQ(closed, std::vector<int>{4});
    h.reset();
    EXPECT_EQ(closed, (std::vector<int>{4, 5}));
}
