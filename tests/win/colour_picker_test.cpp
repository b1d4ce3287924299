// The colour picker under Wine: its fields, the colour it gives back and its
// table file, which no failure may lose lines of.
#include <array>

#include "base/file_io.h"
#include "dialogs/colour_picker_win.h"
#include "resources/resource.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

namespace {

std::string readAll(const std::string& path) {
    return readFileBytes(path).value_or("");
}

// Hue, saturation, luminance, red, green, blue as the fields show them.
using Fields = std::array<int, 6>;

Fields fieldsOf(HWND box) {
    Fields shown{};
    const int ids[] = {IDC_COLOUR_HUE, IDC_COLOUR_SAT,   IDC_COLOUR_LUM,
                       IDC_COLOUR_RED, IDC_COLOUR_GREEN, IDC_COLOUR_BLUE};
    for (int i = 0; i < 6; ++i) shown[i] = std::stoi("0" + itemText(box, ids[i]));
    return shown;
}

using Names = std::vector<std::string>;

Names entries(HWND box) {
    return listEntries(box, IDC_COLOUR_LIST);
}

class ColourPickerTest : public testing::Test {
  protected:
    // The picker on table (under the test's folder) holding content, or none.
    bool pick(const char* table, const char* content, const DialogDriver::Script& script) {
        table_ = folder_ + table;
        DeleteFileA(table_.c_str());
        if (content) writeFileBytes(table_, {content});
        return runDriven([&] { return INT_PTR(pickColour(nullptr, colour_, table_, style_)); },
                         script);
    }

    std::string folder_ = scratchFolder("heralder_colour_test"), table_;
    uint32_t colour_ = 0x000E41B7;  // Rust
    uint32_t style_ = 0;            // soft buttons
};

TEST_F(ColourPickerTest, FieldsFollowEachOtherAndOkGivesTheColour) {
    colour_ = 0x000000FF;  // red
    EXPECT_TRUE(pick("fields.ccl", nullptr, [&](HWND box) {
        EXPECT_EQ(fieldsOf(box), (Fields{0, 240, 120, 255, 0, 0}));
        const struct {
            int field;
            const char* typed;
            Fields want;
        } steps[] = {
            {IDC_COLOUR_HUE, "80", {80, 240, 120, 0, 255, 0}},
            {IDC_COLOUR_RED, "255", {40, 240, 120, 255, 255, 0}},
            {IDC_COLOUR_LUM, "180", {40, 240, 180, 255, 255, 128}},
            {IDC_COLOUR_SAT, "0", {40, 0, 180, 191, 191, 191}},
            {IDC_COLOUR_GREEN, "999", {80, 240, 210, 191, 999, 191}},  // read as 255
        };
        for (const auto& s : steps) {
            SetDlgItemTextA(box, s.field, s.typed);
            EXPECT_EQ(fieldsOf(box), s.want) << s.typed;
        }
        // Leaving a field shows the value it stands for.
        notifyDialog(box, IDC_COLOUR_GREEN, EN_KILLFOCUS);
        EXPECT_EQ(itemText(box, IDC_COLOUR_GREEN), "255");
        clickItem(box, IDC_BUTTON1);
    }));
    EXPECT_EQ(colour_, 0x00BFFFBFu);
    EXPECT_EQ(table_, folder_ + "fields.ccl");
}

TEST_F(ColourPickerTest, TableEntriesAreChosenAddedAndDeletedAndNoLineIsLost) {
    const auto selectRow = [](HWND box, int row) {
        ListBox_SetCurSel(GetDlgItem(box, IDC_COLOUR_LIST), row);
        notifyDialog(box, IDC_COLOUR_LIST, LBN_SELCHANGE);
    };
    style_ = 2;
    const char* table = "Sky=135,206,235\r\n; kept by hand\r\nRust=183,65,14\r\nbroken=1,2\r\n";
    EXPECT_FALSE(pick("named.ccl", table, [&](HWND box) {
        EXPECT_EQ(entries(box), (Names{"Sky", "Rust"}));
        EXPECT_EQ(ListBox_GetCurSel(GetDlgItem(box, IDC_COLOUR_LIST)), 1);
        EXPECT_EQ(itemText(box, IDC_COLOUR_NAME), "Rust");
        EXPECT_TRUE(itemEnabled(box, IDC_COLOUR_DELETE));
        selectRow(box, 0);
        EXPECT_EQ(fieldsOf(box)[3], 135);
        EXPECT_EQ(itemText(box, IDC_COLOUR_NAME), "Sky");

        SetDlgItemTextA(box, IDC_COLOUR_BLUE, "0");
        SetDlgItemTextA(box, IDC_COLOUR_NAME, "  Moss  ");
        clickItem(box, IDC_COLOUR_ADD);
        EXPECT_EQ(entries(box), (Names{"Sky", "Rust", "Moss"}));
        SetDlgItemTextA(box, IDC_COLOUR_NAME, "sky");  // same name: the colour changes
        clickItem(box, IDC_COLOUR_ADD);
        EXPECT_EQ(entries(box).size(), 3u);
        selectRow(box, 1);
        clickItem(box, IDC_COLOUR_DELETE);
        EXPECT_EQ(entries(box), (Names{"Sky", "Moss"}));
        EXPECT_FALSE(itemEnabled(box, IDC_COLOUR_DELETE));

        // Enter in the name field adds rather than closes; a blank name is refused.
        for (auto [id, text] : {std::pair{IDC_COLOUR_RED, "3"},
                                {IDC_COLOUR_GREEN, "2"},
                                {IDC_COLOUR_BLUE, "1"},
                                {IDC_COLOUR_NAME, "Night"}})
            SetDlgItemTextA(box, id, text);
        SetFocus(GetDlgItem(box, IDC_COLOUR_NAME));
        SendMessageA(box, WM_COMMAND, IDOK, 0);  // what Enter sends
        EXPECT_TRUE(IsWindowVisible(box));
        SetDlgItemTextA(box, IDC_COLOUR_NAME, "   ");
        EXPECT_EQ(messageShownBy([&] { clickItem(box, IDC_COLOUR_ADD); }),
                  "Type a name for the colour first.");
        EXPECT_EQ(entries(box), (Names{"Sky", "Moss", "Night"}));
        clickItem(box, IDC_CANCELBUTTON);
    }));
    // Cancel keeps the colour; the table's changes were saved as they were made.
    EXPECT_EQ(colour_, 0x000E41B7u);
    EXPECT_EQ(readAll(table_),
              "Sky=135,206,0\nMoss=135,206,0\nNight=3,2,1\n; kept by hand\nbroken=1,2\n");
    EXPECT_FALSE(pathExists(table_ + ".tmp"));
}

// A table that cannot be written keeps its changes in the box: they are saved
// once the file can be written again, and closing asks before losing them.
TEST_F(ColourPickerTest, ChangesThatCannotBeSavedAreNotDroppedUnasked) {
    // A folder where the save's temporary file would go stops every save.
    const std::string blocker = folder_ + "locked.ccl.tmp";
    RemoveDirectoryA(blocker.c_str());
    colour_ = 0x00112233;
    std::string saveMessage, closeQuestion;
    EXPECT_FALSE(pick("locked.ccl", "Sky=135,206,235\n", [&](HWND picker) {
        CreateDirectoryA(blocker.c_str(), nullptr);
        SetDlgItemTextA(picker, IDC_COLOUR_NAME, "Moss");
        saveMessage = messageShownBy([&] { clickItem(picker, IDC_COLOUR_ADD); });
        EXPECT_EQ(readAll(table_), "Sky=135,206,235\n");
        runDriven([&] { return clickItem(picker, IDC_CANCELBUTTON), 0; },
                  [&](HWND box) {
                      closeQuestion = itemText(box, IDC_MESSAGETEXT);
                      clickItem(box, IDC_NOBUTTON);
                  });
        EXPECT_TRUE(IsWindowVisible(picker));
        RemoveDirectoryA(blocker.c_str());
        clickItem(picker, IDC_CANCELBUTTON);
    }));
    EXPECT_EQ(saveMessage, "The colour table " + table_ +
                               " could not be saved. The file has been left as it was; the "
                               "colours you changed are saved with your next change.");
    EXPECT_EQ(closeQuestion, "The colour table " + table_ +
                                 " still cannot be saved. Leave it and lose the colours you "
                                 "changed?");
    EXPECT_EQ(readAll(table_), "Sky=135,206,235\nMoss=51,34,17\n");
}

TEST_F(ColourPickerTest, ATableTooLargeIsReportedAndNeverWrittenOver) {
    std::string bytes;
    while (bytes.size() <= (1u << 20)) bytes += "Colour=1,2,3\n";
    std::string message;
    EXPECT_TRUE(pick("huge.ccl", bytes.c_str(), [&](HWND box) {
        // The report comes first, owned by the picker.
        message = itemText(box, IDC_MESSAGETEXT);
        HWND picker = GetWindow(box, GW_OWNER);
        EXPECT_FALSE(itemEnabled(picker, IDC_COLOUR_ADD));
        EXPECT_TRUE(entries(picker).empty());
        clickItem(box, IDC_BUTTON1);
        PostMessageA(picker, WM_COMMAND, IDC_BUTTON1, 0);
    }));
    EXPECT_EQ(message, "The colour table " + table_ +
                           " is too large to be a colour table. It has been left as it is; its "
                           "colours are not shown.");
    EXPECT_EQ(colour_, 0x000E41B7u);
    EXPECT_EQ(readAll(table_), bytes);
}

TEST_F(ColourPickerTest, OpenTakesAnotherTableAndOkKeepsIt) {
    const std::string second = folder_ + "second.ccl";
    writeFileBytes(second, {"Two=2,2,2\nThree=3,3,3\n"});
    EXPECT_TRUE(pick("first.ccl", "One=1,1,1\n", [&](HWND picker) {
        runDriven([&] { return clickItem(picker, IDC_COLOUR_OPEN), 0; },
                  [&](HWND dialog) {
                      // The common dialog's file name field, in either of its forms.
                      const int nameField = GetDlgItem(dialog, 0x47c) ? 0x47c : 0x480;
                      SetDlgItemTextA(dialog, nameField, second.c_str());
                      clickItem(dialog, IDOK);
                  });
        EXPECT_EQ(entries(picker), (Names{"Two", "Three"}));
        EXPECT_EQ(itemText(picker, IDC_COLOUR_FILE), second);
        clickItem(picker, IDC_BUTTON1);
    }));
    EXPECT_EQ(table_, second);
    EXPECT_EQ(readAll(folder_ + "first.ccl"), "One=1,1,1\n");
}

}  // namespace
