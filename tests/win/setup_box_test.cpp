// The Setup dialog under Wine, from its template: the record to the controls
// and back (OK) or not (Cancel), the preview's rules, a colour picked then
// cancelled, and the main window's work after the dialog closes.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/app_win.h"
#include "app/main_window_win.h"
#include "dialogs/setup_box_win.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings_file.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

namespace {

int selection(HWND box, int id) {
    return static_cast<int>(SendDlgItemMessageA(box, id, CB_GETCURSEL, 0, 0));
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

// The round trip: every key of the record shows in its control, and OK stores
// what the controls hold (resetting the keys the feed may change) while
// Cancel stores nothing.
TEST_F(SetupBoxTest, RecordToControlsAndBack) {
    enum Kind { Choice, Check, Number };
    const struct {
        int id;
        uint32_t Settings::*key;
        Kind kind;
        uint32_t shown, set;
    } controls[] = {
        {IDC_SETUP_ALERT, &Settings::SetupAlertPopup, Choice, 4, 5},
        {IDC_SETUP_VERSION, &Settings::SetupVersionPopup, Choice, 3, 1},
        {IDC_SETUP_TIP, &Settings::SetupTipPopup, Choice, 1, 2},
        {IDC_SETUP_NOTICE, &Settings::SetupNoticePopup, Choice, 0, 1},
        {IDC_SETUP_OFFTOPIC, &Settings::SetupOfftopicPopup, Choice, 1, 0},
        {IDC_SETUP_SOFTBUTTONS, &Settings::SoftButtons, Choice, 2, 3},
        {IDC_SETUP_NEWONLY, &Settings::OnlyShowNewItems, Check, 0, 1},
        {IDC_SETUP_AUTOMATIC, &Settings::DoNoticationsAutomatically, Check, 1, 0},
        {IDC_SETUP_NOISY, &Settings::BeNoisy, Check, 0, 1},
        {IDC_SETUP_GRAPHICS, &Settings::DownloadGraphics, Check, 1, 0},
        {IDC_SETUP_BOLD, &Settings::AlertFontBold, Check, 1, 0},
        {IDC_SETUP_ITALIC, &Settings::AlertFontItal, Check, 0, 1},
        {IDC_SETUP_ANTIALIAS, &Settings::AlertFontAntialias, Check, 1, 0},
        {IDC_SETUP_FONTSIZE, &Settings::AlertFontSize, Number, 20, 33},
    };
    for (int button : {IDC_BUTTON1, IDC_CANCELBUTTON}) {
        SCOPED_TRACE(button);
        Settings record;
        for (const auto& c : controls) record.*c.key = c.shown;
        record.AlertFontName = "liberation s";  // a prefix, in another case
        record.CurrentTransactionDate = "11-02-2026";
        record.SetupAlertReport = record.SetupTipReport = record.SetupVersionReport = 3;
        record.SetupOfftopicReport = record.AllowINIUpdates = 3;
        record.SetupNoticeReport = record.AllowGraphicUpdates = 3;  // the feed's alone
        const Settings before = record;
        DialogDriver driver([&](HWND box) {
            for (const auto& c : controls) {
                SCOPED_TRACE(c.id);
                if (c.kind == Choice) {
                    EXPECT_EQ(selection(box, c.id), int(c.shown));
                    SendDlgItemMessageA(box, c.id, CB_SETCURSEL, c.set, 0);
                } else if (c.kind == Check) {
                    EXPECT_EQ(IsDlgButtonChecked(box, c.id),
                              UINT(c.shown ? BST_CHECKED : BST_UNCHECKED));
                    clickItem(box, c.id);
                } else {
                    EXPECT_EQ(itemText(box, c.id), std::to_string(c.shown));
                    typeText(box, c.id, std::to_string(c.set).c_str());
                }
            }
            EXPECT_EQ(itemText(box, IDC_SETUP_DATE), "11-02-2026");
            typeText(box, IDC_SETUP_DATE, "12-31-1999");
            // Sorted, and open on the first face that begins with the name.
            const std::vector<std::string> faces = comboEntries(box, IDC_SETUP_FONT);
            ASSERT_GT(faces.size(), 3u);
            for (std::size_t i = 1; i < faces.size(); ++i)
                EXPECT_LE(lstrcmpiA(faces[i - 1].c_str(), faces[i].c_str()), 0) << faces[i];
            EXPECT_EQ(faces[selection(box, IDC_SETUP_FONT)].rfind("Liberation S", 0), 0u);
            chooseFace(box, "Liberation Mono");
            clickItem(box, button);
        });
        const int result = openSetupBox(nullptr, record);
        EXPECT_TRUE(driver.ran());
        Settings want = before;
        if (button == IDC_BUTTON1) {
            for (const auto& c : controls) want.*c.key = c.set;
            want.CurrentTransactionDate = "12-31-1999";
            want.AlertFontName = "Liberation Mono";
            want.SetupAlertReport = want.SetupTipReport = want.SetupVersionReport = 0;
            want.SetupOfftopicReport = want.AllowINIUpdates = 0;
        }
        EXPECT_EQ(result, int(button == IDC_BUTTON1));
        EXPECT_EQ(formatSettingLines(record), formatSettingLines(want));
    }
}

// What OK makes of stored values out of range and of a face that has gone
// (typed values are bounded by the spin edit, checked natively).
TEST_F(SetupBoxTest, OkStoresValuesInRange) {
    const struct {
        const char* what;
        uint32_t storedAlert;
        const char* storedFont;
        uint32_t storedSize;
        uint32_t wantAlert;
        uint32_t wantSize;
        const char* wantFont;
    } cases[] = {
        {"a stored size too large", 2, "Liberation Serif", 200, 2, 144, "Liberation Serif"},
        {"an unknown filter value", 7, "Liberation Serif", 16, 0, 16, "Liberation Serif"},
        {"a face no longer installed", 1, "No Such Face", 16, 1, 16, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Settings record;
        record.SetupAlertPopup = c.storedAlert;
        record.AlertFontName = c.storedFont;
        record.AlertFontSize = c.storedSize;
        DialogDriver driver([&](HWND box) {
            if (c.storedAlert == 7) {
                EXPECT_EQ(selection(box, IDC_SETUP_ALERT), CB_ERR);
            }
            // The size in effect shows as it is, even out of range.
            EXPECT_EQ(itemText(box, IDC_SETUP_FONTSIZE), std::to_string(c.storedSize));
            clickItem(box, IDC_BUTTON1);
        });
        EXPECT_EQ(openSetupBox(nullptr, record), 1);
        EXPECT_EQ(record.SetupAlertPopup, c.wantAlert);
        EXPECT_EQ(record.AlertFontSize, c.wantSize);
        EXPECT_EQ(record.AlertFontName, c.wantFont);
    }
}

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
    describeAlertLook(record);
    SetWindowTextA(main, "something else");

    DialogDriver driver([&](HWND box) {
        typeText(box, IDC_SETUP_FONTSIZE, "30");  // not stored: Cancel follows
        pickInSetup(box, IDC_SETUP_BACKCOLOUR, IDC_BUTTON1, "17");
        pickInSetup(box, IDC_SETUP_TEXTCOLOUR, IDC_CANCELBUTTON, "200");
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
