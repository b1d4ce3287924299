// The seen-item list: what the file's bytes mean, what marking writes, and that
// the remembered set follows the file when someone else writes to it.
#include <gtest/gtest.h>

#include "feed/seen_list.h"
#include "tests/native/feed_test_support.h"

TEST(SeenList, ReadsEachLineAsTheRuntimeDid) {
    const std::string longLine = std::string(259, 'x') + "55\r\n";
    struct Case {
        const char* what;
        std::optional<std::string> file;  // nullopt: no file at all
        int32_t number;
        bool seen;
    } cases[] = {
        {"no file", std::nullopt, 0, false},
        {"empty file", "", 0, false},
        {"exact line", "17\r\n", 17, true},
        {"other number", "17\r\n", 18, false},
        {"last line without break", "1\r\n2", 2, true},
        {"LF only", "8\n9\n", 9, true},
        {"blank line reads 0", "\r\n", 0, true},
        {"letters read 0", "abc\r\n", 0, true},
        {"blanks, digits, letters", "  1042abc\r\n", 1042, true},
        {"negative", "-5\r\n", -5, true},
        {"duplicates", "7\r\n7\r\n7\r\n", 7, true},
        {"prefix of a number is not it", "123\r\n", 12, false},
        {"long line continues as a new piece", longLine, 55, true},
        {"Ctrl-Z ends the text",
         "5\r\n\x1a"
         "6\r\n",
         6, false},
    };
    for (const Case& c : cases) {
        ScratchFolder dir;
        std::string path = dir.file("Heralder.lst");
        if (c.file) writeFile(path, *c.file);
        SeenList list(path);
        EXPECT_EQ(list.isItemSeen(makeItem(ItemType::Alert, c.number)), c.seen) << c.what;
    }
}

TEST(SeenList, MarkingAppendsCrLfLinesAndRemembersThem) {
    ScratchFolder dir;
    std::string path = dir.file("Heralder.lst");
    SeenList list(path);
    UpdateItem a = makeItem(ItemType::Alert, 2077);
    UpdateItem b = makeItem(ItemType::Tip, -3);

    EXPECT_FALSE(list.isItemSeen(a));
    EXPECT_TRUE(list.markItemSeen(a));
    EXPECT_TRUE(list.markItemSeen(b));
    EXPECT_TRUE(list.markItemSeen(a));
    EXPECT_EQ(readFile(path), "2077\r\n-3\r\n2077\r\n");
    EXPECT_TRUE(list.isItemSeen(a));
    EXPECT_TRUE(list.isItemSeen(b));
    // Same number, different item: one entry to the list.
    EXPECT_TRUE(list.isItemSeen(makeItem(ItemType::Notice, 2077)));
    // A fresh reader agrees with the one that wrote.
    SeenList again(path);
    EXPECT_TRUE(again.isItemSeen(b));
}

TEST(SeenList, FollowsOtherWritersOfTheFile) {
    ScratchFolder dir;
    std::string path = dir.file("Heralder.lst");
    writeFile(path, "1\r\n");
    SeenList list(path);
    ASSERT_TRUE(list.isItemSeen(makeItem(ItemType::Alert, 1)));
    ASSERT_FALSE(list.isItemSeen(makeItem(ItemType::Alert, 2)));

    writeFile(path, "2\r\n", true);  // another copy of the program appends
    EXPECT_TRUE(list.isItemSeen(makeItem(ItemType::Alert, 2)));

    // Another append, then ours: both count.
    writeFile(path, "3\r\n", true);
    ASSERT_TRUE(list.markItemSeen(makeItem(ItemType::Alert, 4)));
    EXPECT_TRUE(list.isItemSeen(makeItem(ItemType::Alert, 3)));
    EXPECT_TRUE(list.isItemSeen(makeItem(ItemType::Alert, 4)));

    // The file replaced by a shorter one (say, restored from a backup).
    writeFile(path, "9\r\n");
    EXPECT_FALSE(list.isItemSeen(makeItem(ItemType::Alert, 1)));
    EXPECT_TRUE(list.isItemSeen(makeItem(ItemType::Alert, 9)));

    std::filesystem::remove(path);
    EXPECT_FALSE(list.isItemSeen(makeItem(ItemType::Alert, 9)));
}

TEST(SeenList, UnwritableListMakesMarkingANoOp) {
    ScratchFolder dir;
    SeenList list(dir.file("no-such-folder/Heralder.lst"));
    UpdateItem item = makeItem(ItemType::Alert, 5);
    EXPECT_FALSE(list.markItemSeen(item));
    EXPECT_FALSE(list.isItemSeen(item));
}
