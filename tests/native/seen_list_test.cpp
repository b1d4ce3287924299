// The seen-item list: what the file's bytes mean, what marking writes, and that
// the remembered set follows the file when someone else writes to it.
#include <gtest/gtest.h>

#include "feed/seen_list.h"
#include "tests/native/feed_test_support.h"

namespace {
UpdateItem alert(int32_t number) {
    return makeItem(ItemType::Alert, number);
}
}  // namespace

// Line splitting and number reading are the runtime's (see crt_text_test);
// these cases check that the list reads its file through them.
TEST(SeenList, ReadsEachLineAsTheRuntimeDid) {
    struct Case {
        std::optional<std::string> file;  // nullopt: no file at all
        int32_t number;
        bool seen;
    } cases[] = {
        {std::nullopt, 0, false},      {"17\r\n", 18, false},        {"\r\n", 0, true},
        {"  1042abc\r\n", 1042, true}, {"7\r\n7\r\n7\r\n", 7, true},
    };
    for (const Case& c : cases) {
        ScratchFolder dir;
        if (c.file) writeFile(dir.file("Heralder.lst"), *c.file);
        EXPECT_EQ(SeenList(dir.file("Heralder.lst")).isItemSeen(alert(c.number)), c.seen)
            << c.file.value_or("(none)");
    }
}

TEST(SeenList, MarkingAppendsCrLfLinesAndFollowsOtherWriters) {
    ScratchFolder dir;
    SeenList list(dir.file("Heralder.lst"));
    ASSERT_TRUE(list.markItemSeen(alert(2077)));
    ASSERT_TRUE(list.markItemSeen(makeItem(ItemType::Tip, -3)));
    EXPECT_EQ(readFile(list.path()), "2077\r\n-3\r\n");

    writeFile(list.path(), "5\r\n", true);  // another copy of the program appends
    EXPECT_TRUE(list.isItemSeen(alert(5)));
    std::filesystem::remove(list.path());
    EXPECT_FALSE(list.isItemSeen(alert(2077)));

    SeenList unwritable(dir.file("no-such-folder/Heralder.lst"));
    EXPECT_FALSE(unwritable.markItemSeen(alert(5)));
    EXPECT_FALSE(unwritable.isItemSeen(alert(5)));
}
