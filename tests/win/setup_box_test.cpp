// The Setup dialog under Wine, from its template: what it shows for a settings
// record, what OK and Cancel leave in it, the preview's rules, a colour picked
// then cancelled, and the main window's work after the dialog closes.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "app/app_win.h"
#include "app/main_window_win.h"
#include "dialogs/setup_box.h"
#include "dialogs/setup_box_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings_file.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"
#include "ui/spin_edit_win.h"

namespace {

constexpr const char* kExplanations[] = {
    "Alert items will notify you of updates to Quenmark software, new applications and other "
    "products we release from time to time.",
    "Version items store the current version and revision level of each Quenmark application. "
    "They can be configured to notify you when your software needs upgrading.",
    "Tip items will offer you suggestions to help you better use your Quenmark software.",
    "Notice items will tell you about special offers, new features at the Quenmark web page and "
    "other bits of interest to our users.",
    "Off-topic items include items of humor, scurrilous doggerl and things your mother warned you "
    "about.",
};

// A list's entries as the choice strings write them.
std::string joinedEntries(HWND box, int id) {
    std::string all;
    for (const std::string& entry : comboEntries(box, id)) all += entry + ";";
    return all;
}

int selection(HWND box, int id) {
    return static_cast<int>(SendDlgItemMessageA(box, id, CB_GETCURSEL, 0, 0));
}

// Counts of every child's text, for the texts that have no id of their own.
std::map<std::string, int> childTexts(HWND box) {
    std::map<std::string, int> texts;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        ++texts[windowText(child)];
    return texts;
}

LOGFONTA previewFont(HWND box) {
    return fontOf(GetDlgItem(box, IDC_SETUP_PREVIEW));
}

// Picks a face from the font list by name.
void chooseFace(HWND box, const std::string& face) {
    const std::vector<std::string> faces = comboEntries(box, IDC_SETUP_FONT);
    const auto found = std::find(faces.begin(), faces.end(), face);
    ASSERT_NE(found, faces.end()) << face;
    SendDlgItemMessageA(box, IDC_SETUP_FONT, CB_SETCURSEL, found - faces.begin(), 0);
}

void typeText(HWND box, int id, const char* text) {
    SetDlgItemTextA(box, id, text);  // sends EN_CHANGE as typing does
}

using SetupBoxTest = SettingsTest;

TEST_F(SetupBoxTest, ShowsItsTextsAndTheRecordsValues) {
    for (uint32_t softButtons : {0u, 1u, 2u, 3u}) {
        SCOPED_TRACE(softButtons);
        Settings record;
        record.SoftButtons = softButtons;
        record.SetupAlertPopup = 4;
        record.SetupVersionPopup = 3;
        record.SetupTipPopup = 1;
        record.SetupNoticePopup = 1;
        record.SetupOfftopicPopup = 0;
        record.OnlyShowNewItems = 0;
        record.DoNoticationsAutomatically = 1;
        record.BeNoisy = 0;
        record.DownloadGraphics = 1;
        record.AlertFontName = "liberation s";  // a prefix, in another case
        record.AlertFontSize = 20;
        record.AlertFontBold = 1;
        record.AlertFontItal = 0;
        record.AlertFontAntialias = 1;
        record.CurrentTransactionDate = "11-02-2026";
        record.AlertBackgroundColor = 0x00402010;
        DialogDriver driver([&](HWND box) {
            EXPECT_EQ(windowText(box), "Setup");

            const struct {
                int id;
                const char* text;
            } labels[] = {
                {IDC_BUTTON1, "OK"},
                {IDC_CANCELBUTTON, "Cancel"},
                {IDC_HELPBUTTON, "Help"},
                {IDC_SETUP_NOISY, "Audible alert for notification dialogs"},
                {IDC_SETUP_AUTOMATIC, "Do notifications after Go"},
                {IDC_SETUP_NEWONLY, "Only show new items"},
                {IDC_SETUP_TEXTCOLOUR, "Alert text"},
                {IDC_SETUP_BACKCOLOUR, "Alert background"},
                {IDC_SETUP_BOLD, "Bold"},
                {IDC_SETUP_ITALIC, "Italic"},
                {IDC_SETUP_ANTIALIAS, "Antialias"},
                {IDC_SETUP_FONTSIZE_LABEL, "Font size:"},
                {IDC_SETUP_FONTSIZE_UPDOWN, "4,144,16"},
                {IDC_SETUP_GRAPHICS, "Download graphics"},
            };
            for (const auto& l : labels) EXPECT_EQ(itemText(box, l.id), l.text) << l.id;
            std::map<std::string, int> texts = childTexts(box);
            for (const char* text : kExplanations) EXPECT_EQ(texts[text], 1) << text;
            for (const char* group : {"Alert", "Version", "Tip", "Notice", "Off-topic"})
                EXPECT_EQ(texts[group], 1) << group;
            EXPECT_EQ(texts["Show version dialogs:"], 3);
            for (const char* label : {"Show alert dialogs:", "Show tip dialogs:",
                                      "Last notification date:", "Font:", "Soft buttons:"})
                EXPECT_EQ(texts[label], 1) << label;

            const struct {
                int id;
                const char* choices;
                int selected;
            } lists[] = {
                {IDC_SETUP_ALERT,
                 "Always;High importance;Medium and high importance;High, medium and low "
                 "importance;For all installed software;Never",
                 4},
                {IDC_SETUP_VERSION,
                 "Always;For all installed software;For out of date installed software;Never", 3},
                {IDC_SETUP_TIP, "Always;For all installed software;Never", 1},
                {IDC_SETUP_NOTICE, "Always;Never", 1},
                {IDC_SETUP_OFFTOPIC, "Always;Never", 0},
                {IDC_SETUP_SOFTBUTTONS, "None;Soft;Flex;Wedge", static_cast<int>(softButtons)},
            };
            for (const auto& l : lists) {
                EXPECT_EQ(joinedEntries(box, l.id), std::string(l.choices) + ";") << l.id;
                EXPECT_EQ(selection(box, l.id), l.selected) << l.id;
            }
            EXPECT_EQ(SendDlgItemMessageA(box, IDC_SETUP_SOFTBUTTONS, CB_GETITEMHEIGHT, 0, 0), 32);

            const struct {
                int id;
                UINT state;
            } checks[] = {
                {IDC_SETUP_NEWONLY, BST_UNCHECKED}, {IDC_SETUP_AUTOMATIC, BST_CHECKED},
                {IDC_SETUP_NOISY, BST_UNCHECKED},   {IDC_SETUP_GRAPHICS, BST_CHECKED},
                {IDC_SETUP_BOLD, BST_CHECKED},      {IDC_SETUP_ITALIC, BST_UNCHECKED},
                {IDC_SETUP_ANTIALIAS, BST_CHECKED},
            };
            for (const auto& c : checks) EXPECT_EQ(IsDlgButtonChecked(box, c.id), c.state) << c.id;
            EXPECT_EQ(itemText(box, IDC_SETUP_DATE), "11-02-2026");
            EXPECT_EQ(itemText(box, IDC_SETUP_FONTSIZE), "20");
            EXPECT_EQ(upDownRange(box, IDC_SETUP_FONTSIZE_UPDOWN), std::make_pair(4, 144));

            // Sorted, and open on the first face that begins with the name.
            const std::vector<std::string> faces = comboEntries(box, IDC_SETUP_FONT);
            ASSERT_GT(faces.size(), 3u);
            for (std::size_t i = 1; i < faces.size(); ++i)
                EXPECT_LE(lstrcmpiA(faces[i - 1].c_str(), faces[i].c_str()), 0) << faces[i];
            EXPECT_EQ(selection(box, IDC_SETUP_FONT), initialFontIndex(faces, "liberation s"));
            EXPECT_EQ(faces[selection(box, IDC_SETUP_FONT)].rfind("Liberation S", 0), 0u);
            EXPECT_EQ(SendDlgItemMessageA(box, IDC_SETUP_FONT, CB_GETITEMHEIGHT, 0, 0), 22);

            // The preview shows the face at the stored size.
            EXPECT_EQ(itemText(box, IDC_SETUP_PREVIEW), faces[selection(box, IDC_SETUP_FONT)]);
            const LOGFONTA font = previewFont(box);
            EXPECT_EQ(font.lfHeight, 20);
            EXPECT_EQ(font.lfWeight, FW_BOLD);
            EXPECT_EQ(font.lfQuality, ANTIALIASED_QUALITY);

            EXPECT_EQ(GetFocus(), GetDlgItem(box, IDC_BUTTON1));
            // Tab order runs down the filters, then the look, then the buttons.
            std::vector<int> order;
            HWND at = GetDlgItem(box, IDC_SETUP_ALERT);
            for (int i = 0; i < 20 && at; ++i, at = GetNextDlgTabItem(box, at, FALSE))
                order.push_back(GetDlgCtrlID(at));
            const std::vector<int> want = {
                IDC_SETUP_ALERT,       IDC_SETUP_VERSION,    IDC_SETUP_TIP,
                IDC_SETUP_NOTICE,      IDC_SETUP_OFFTOPIC,   IDC_SETUP_FONT,
                IDC_SETUP_FONTSIZE,    IDC_SETUP_BOLD,       IDC_SETUP_ITALIC,
                IDC_SETUP_ANTIALIAS,   IDC_SETUP_TEXTCOLOUR, IDC_SETUP_BACKCOLOUR,
                IDC_SETUP_SOFTBUTTONS, IDC_SETUP_NOISY,      IDC_SETUP_AUTOMATIC,
                IDC_SETUP_NEWONLY,     IDC_SETUP_GRAPHICS,   IDC_SETUP_DATE,
                IDC_BUTTON1,           IDC_CANCELBUTTON};
            EXPECT_EQ(order, want);

            saveWindowScreenshot(box, "setup_box_soft" + std::to_string(softButtons));
            if (softButtons == 2) {
                SendDlgItemMessageA(box, IDC_SETUP_SOFTBUTTONS, CB_SHOWDROPDOWN, TRUE, 0);
                saveWindowScreenshot(box, "setup_box_soft_button_list");
                SendDlgItemMessageA(box, IDC_SETUP_SOFTBUTTONS, CB_SHOWDROPDOWN, FALSE, 0);
                SendDlgItemMessageA(box, IDC_SETUP_FONT, CB_SHOWDROPDOWN, TRUE, 0);
                saveWindowScreenshot(box, "setup_box_font_list");
                SendDlgItemMessageA(box, IDC_SETUP_FONT, CB_SHOWDROPDOWN, FALSE, 0);
            }
            clickItem(box, IDC_CANCELBUTTON);
        });
        EXPECT_EQ(openSetupBox(nullptr, record), 0);
        EXPECT_TRUE(driver.ran());
    }
}

TEST_F(SetupBoxTest, OkStoresWhatTheControlsHoldAndResetsTheFeedKeys) {
    const struct {
        const char* what;
        uint32_t storedAlert;
        const char* storedFont;
        uint32_t storedSize;
        const char* typedSize;
        uint32_t wantAlert;
        uint32_t wantSize;
        const char* wantFont;
    } cases[] = {
        {"nothing changed", 2, "Liberation Serif", 16, nullptr, 2, 16, "Liberation Serif"},
        {"too large a size", 2, "Liberation Serif", 16, "200", 2, 144, "Liberation Serif"},
        {"too small a size", 2, "Liberation Serif", 16, "2", 2, 4, "Liberation Serif"},
        {"a size that is no number", 2, "Liberation Serif", 16, "big", 2, 4, "Liberation Serif"},
        {"a stored size too large", 2, "Liberation Serif", 200, nullptr, 2, 144,
         "Liberation Serif"},
        {"an unknown filter value", 7, "Liberation Serif", 16, nullptr, 0, 16, "Liberation Serif"},
        {"a face no longer installed", 1, "No Such Face", 16, nullptr, 1, 16, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Settings record;
        record.SetupAlertPopup = c.storedAlert;
        record.AlertFontName = c.storedFont;
        record.AlertFontSize = c.storedSize;
        record.SetupAlertReport = record.SetupTipReport = record.SetupVersionReport = 3;
        record.SetupOfftopicReport = record.SetupNoticeReport = 3;
        record.AllowINIUpdates = record.AllowGraphicUpdates = 1;
        DialogDriver driver([&](HWND box) {
            if (c.storedAlert == 7) {
                EXPECT_EQ(selection(box, IDC_SETUP_ALERT), CB_ERR);
            }
            // The size in effect shows as it is, even out of range.
            EXPECT_EQ(itemText(box, IDC_SETUP_FONTSIZE), std::to_string(c.storedSize));
            if (c.typedSize) typeText(box, IDC_SETUP_FONTSIZE, c.typedSize);
            clickItem(box, IDC_BUTTON1);
        });
        EXPECT_EQ(openSetupBox(nullptr, record), 1);
        EXPECT_EQ(record.SetupAlertPopup, c.wantAlert);
        EXPECT_EQ(record.AlertFontSize, c.wantSize);
        EXPECT_EQ(record.AlertFontName, c.wantFont);
        EXPECT_EQ(record.SetupAlertReport + record.SetupTipReport + record.SetupVersionReport +
                      record.SetupOfftopicReport + record.AllowINIUpdates,
                  0u);
        EXPECT_EQ(record.SetupNoticeReport, 3u);
        EXPECT_EQ(record.AllowGraphicUpdates, 1u);
    }
}

TEST_F(SetupBoxTest, EveryControlReachesItsKeyAndCancelStoresNothing) {
    for (int button : {IDC_BUTTON1, IDC_CANCELBUTTON}) {
        SCOPED_TRACE(button);
        Settings record;
        record.AlertFontName = "Liberation Serif";
        const Settings before = record;
        DialogDriver driver([&](HWND box) {
            chooseFace(box, "Liberation Mono");
            for (auto [id, index] : {std::pair{IDC_SETUP_SOFTBUTTONS, 3},
                                     {IDC_SETUP_ALERT, 5},
                                     {IDC_SETUP_TIP, 2},
                                     {IDC_SETUP_VERSION, 1},
                                     {IDC_SETUP_OFFTOPIC, 1},
                                     {IDC_SETUP_NOTICE, 1}})
                SendDlgItemMessageA(box, id, CB_SETCURSEL, index, 0);
            for (int id :
                 {IDC_SETUP_NEWONLY, IDC_SETUP_AUTOMATIC, IDC_SETUP_NOISY, IDC_SETUP_GRAPHICS,
                  IDC_SETUP_BOLD, IDC_SETUP_ITALIC, IDC_SETUP_ANTIALIAS})
                clickItem(box, id);
            typeText(box, IDC_SETUP_DATE, "12-31-1999");
            typeText(box, IDC_SETUP_FONTSIZE, "33");
            clickItem(box, button);
        });
        const int result = openSetupBox(nullptr, record);
        if (button == IDC_CANCELBUTTON) {
            EXPECT_EQ(result, 0);
            EXPECT_EQ(formatSettingLines(record), formatSettingLines(before));
            continue;
        }
        EXPECT_EQ(result, 1);
        Settings want = before;
        want.SoftButtons = 3;
        want.SetupAlertPopup = 5;
        want.SetupTipPopup = 2;
        want.SetupVersionPopup = 1;
        want.SetupOfftopicPopup = 1;
        want.SetupNoticePopup = 1;
        want.OnlyShowNewItems = !before.OnlyShowNewItems;
        want.DoNoticationsAutomatically = !before.DoNoticationsAutomatically;
        want.BeNoisy = !before.BeNoisy;
        want.DownloadGraphics = !before.DownloadGraphics;
        want.AlertFontBold = !before.AlertFontBold;
        want.AlertFontItal = !before.AlertFontItal;
        want.AlertFontAntialias = !before.AlertFontAntialias;
        want.CurrentTransactionDate = "12-31-1999";
        want.AlertFontSize = 33;
        want.AlertFontName = "Liberation Mono";
        want.SetupAlertReport = want.SetupTipReport = want.SetupVersionReport = 0;
        want.SetupOfftopicReport = want.AllowINIUpdates = 0;
        EXPECT_EQ(formatSettingLines(record), formatSettingLines(want));
    }
}

// Help leaves the dialog open.
TEST_F(SetupBoxTest, PreviewFollowsTheFontControlsAndTheFontListOnlyWhenItCloses) {
    Settings record;
    record.AlertFontName = "Liberation Serif";
    record.AlertFontAntialias = 0;
    DialogDriver driver([&](HWND box) {
        EXPECT_EQ(previewFont(box).lfQuality, DEFAULT_QUALITY);  // not the non-antialiased one
        clickItem(box, IDC_SETUP_ITALIC);
        EXPECT_TRUE(previewFont(box).lfItalic);
        clickItem(box, IDC_SETUP_ANTIALIAS);
        EXPECT_EQ(previewFont(box).lfQuality, ANTIALIASED_QUALITY);
        typeText(box, IDC_SETUP_FONTSIZE, "40");
        EXPECT_EQ(previewFont(box).lfHeight, 40);

        chooseFace(box, "Liberation Mono");
        notifyDialog(box, IDC_SETUP_FONT, CBN_SELCHANGE);
        EXPECT_EQ(itemText(box, IDC_SETUP_PREVIEW), "Liberation Serif");
        EXPECT_STREQ(previewFont(box).lfFaceName, "Liberation Serif");
        notifyDialog(box, IDC_SETUP_FONT, CBN_CLOSEUP);
        EXPECT_EQ(itemText(box, IDC_SETUP_PREVIEW), "Liberation Mono");
        EXPECT_STREQ(previewFont(box).lfFaceName, "Liberation Mono");
        saveWindowScreenshot(box, "setup_box_preview");
        expectHelpOpensTopic(box, "SETUP", record);
        clickItem(box, IDC_CANCELBUTTON);
    });
    EXPECT_EQ(openSetupBox(nullptr, record), 0);
    EXPECT_TRUE(driver.ran());
}

// The picker runs inside Setup's click; a driver of its own answers it.
void pickInSetup(HWND box, int button, int pickerButton, const char* red) {
    DialogDriver picker([&](HWND dialog) {
        EXPECT_NE(dialog, box);
        typeText(dialog, IDC_COLOUR_RED, red);
        typeText(dialog, IDC_COLOUR_GREEN, "0");
        typeText(dialog, IDC_COLOUR_BLUE, "0");
        clickItem(dialog, pickerButton);
    });
    clickItem(box, button);
    EXPECT_TRUE(picker.ran());
}

// After Setup, whatever its answer, the main window remakes the alert font
// from the settings and writes them: a colour picked before Cancel is saved,
// one cancelled in the picker is not.
TEST_F(SetupBoxTest, MainWindowRemakesTheFontAndSavesAfterSetupWhateverTheAnswer) {
    if (testEnv("HERALDER_SOURCE_DIR").empty()) GTEST_SKIP() << "run through scripts/test_wine.sh";
    const std::string file = getUserDataPath(kSettingsFileName);
    DeleteFileA(file.c_str());
    TestMainWindow window;
    HWND main = window.hwnd();
    ASSERT_TRUE(main);
    Settings& record = window.record();
    record.ColourTableFile = scratchFolder("heralder_setup_test") + "main.ccl";
    record.AlertFontName = "Liberation Serif";
    record.AlertFontSize = 16;
    record.AlertTextColor = 0x00FFFFFF;
    createSharedDrawingObjects(record);
    SetWindowTextA(main, "something else");

    DialogDriver driver([&](HWND box) {
        typeText(box, IDC_SETUP_FONTSIZE, "30");  // not stored: Cancel follows
        pickInSetup(box, IDC_SETUP_BACKCOLOUR, IDC_BUTTON1, "17");
        pickInSetup(box, IDC_SETUP_TEXTCOLOUR, IDC_CANCELBUTTON, "200");
        saveWindowScreenshot(box, "setup_box_picked_colour");
        clickItem(box, IDC_CANCELBUTTON);
    });
    SendMessageA(main, WM_COMMAND, IDM_SETUP, 0);
    EXPECT_TRUE(driver.ran());
    EXPECT_EQ(windowText(main), "Quenmark Heralder");
    LOGFONTA font = {};
    ASSERT_TRUE(app().alertFont);
    GetObjectA(app().alertFont.get(), sizeof font, &font);
    EXPECT_EQ(font.lfHeight, 16);
    EXPECT_STREQ(font.lfFaceName, "Liberation Serif");
    LOGBRUSH brush = {};
    GetObjectA(app().alertBackgroundBrush.get(), sizeof brush, &brush);
    EXPECT_EQ(brush.lbColor, 17u);
    Settings read;
    ASSERT_TRUE(readSettingsFile(read, file));
    EXPECT_EQ(read.AlertBackgroundColor, 17u);
    EXPECT_EQ(read.AlertTextColor, 0x00FFFFFFu);
    EXPECT_EQ(read.AllowINIUpdates, record.AllowINIUpdates);

    DeleteFileA(file.c_str());
}

}  // namespace
