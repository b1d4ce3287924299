// Ownership rules of the handle wrapper, checked with a counting fake handle.
#include <gtest/gtest.h>

#include <vector>

#include "base/unique_handle.h"

namespace {

std::vector<int> closed;

struct FakeTraits {
    using Handle = int;
    static Handle invalid() noexcept { return -1; }
    static void close(Handle h) noexcept { closed.push_back(h); }
};
using FakeHandle = UniqueHandle<FakeTraits>;

class UniqueHandleTest : public testing::Test {
  protected:
    void SetUp() override { closed.clear(); }
};

}  // namespace

TEST_F(UniqueHandleTest, ClosesEachHandleExactlyOnce) {
    {
        FakeHandle a(1);
        FakeHandle b(std::move(a));  // ownership moves, nothing closes
        EXPECT_FALSE(a);
        EXPECT_TRUE(b);
        FakeHandle c(2);
        c = std::move(b);  // 2 closes now, 1 moves on
        EXPECT_EQ(closed, std::vector<int>{2});
        c = std::move(c);  // self-move keeps the handle
        EXPECT_EQ(c.get(), 1);
    }
    EXPECT_EQ(closed, (std::vector<int>{2, 1}));
}

TEST_F(UniqueHandleTest, ZeroIsAValidHandleWhenTheTraitsSaySo) {
    // A handle kind whose "none" is not zero (INVALID_HANDLE_VALUE) must still
    // close handle value zero.
    { FakeHandle zero(0); }
    EXPECT_EQ(closed, std::vector<int>{0});
}

TEST_F(UniqueHandleTest, ReleaseAndPutHandOverOwnership) {
    FakeHandle h(3);
    EXPECT_EQ(h.release(), 3);
    EXPECT_FALSE(h);
    h.reset(4);
    *h.put() = 5;  // an out-parameter API replaces the handle
    EXPECT_EQ(closed, std::vector<int>{4});
    h.reset();
    EXPECT_EQ(closed, (std::vector<int>{4, 5}));
    EXPECT_FALSE(h);
}
