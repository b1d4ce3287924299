// The Setup dialog under Wine, from its template, and the main window's work
// after it closes.
#include <algorithm>

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

// The round trip: every key of the record shows in its control, and OK stores
// what the controls hold (resetting the keys the feed may change) while
// Cancel stores nothing. The preview follows the font controls at once, and
// the font list only when it closes.
TEST(SetupBoxTest, RecordToControlsAndBack) {
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
        const INT_PTR result = runDriven(
            [&] { return openSetupBox(nullptr, record); },
            [&](HWND box) {
                EXPECT_EQ(previewFont(box).lfQuality, ANTIALIASED_QUALITY);
                EXPECT_EQ(comboEntries(box, IDC_SETUP_SOFTBUTTONS),
                          (std::vector<std::string>{"None", "Soft", "Flex", "Wedge"}));
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
                        SetDlgItemTextA(box, c.id, std::to_string(c.set).c_str());
                    }
                }
                // Antialiasing off is the default quality, not the non-antialiased one.
                const LOGFONTA font = previewFont(box);
                EXPECT_EQ(std::tuple(font.lfItalic, font.lfQuality, font.lfHeight),
                          std::tuple(BYTE(1), BYTE(DEFAULT_QUALITY), LONG(33)));
                EXPECT_EQ(itemText(box, IDC_SETUP_DATE), "11-02-2026");
                SetDlgItemTextA(box, IDC_SETUP_DATE, "12-31-1999");
                // Sorted, and open on the first face that begins with the name.
                const std::vector<std::string> faces = comboEntries(box, IDC_SETUP_FONT);
                ASSERT_GT(faces.size(), 3u);
                for (std::size_t i = 1; i < faces.size(); ++i)
                    EXPECT_LE(lstrcmpiA(faces[i - 1].c_str(), faces[i].c_str()), 0) << faces[i];
                const std::string face = faces[selection(box, IDC_SETUP_FONT)];
                EXPECT_TRUE(face.starts_with("Liberation S")) << face;
                const auto mono = std::find(faces.begin(), faces.end(), "Liberation Mono");
                ASSERT_NE(mono, faces.end());
                SendDlgItemMessageA(box, IDC_SETUP_FONT, CB_SETCURSEL, mono - faces.begin(), 0);
                for (UINT code : {CBN_SELCHANGE, CBN_CLOSEUP}) {
                    notifyDialog(box, IDC_SETUP_FONT, code);
                    const std::string shown = code == CBN_CLOSEUP ? "Liberation Mono" : face;
                    EXPECT_EQ(itemText(box, IDC_SETUP_PREVIEW), shown);
                    EXPECT_EQ(previewFont(box).lfFaceName, shown);
                }
                clickItem(box, button);
            });
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
TEST(SetupBoxTest, OkStoresValuesInRange) {
    const struct {
        uint32_t storedAlert;
        const char* storedFont;
        uint32_t storedSize, wantAlert, wantSize;
        const char* wantFont;
    } cases[] = {
        {2, "Liberation Serif", 200, 2, 144, "Liberation Serif"},  // a size too large
        {7, "Liberation Serif", 16, 0, 16, "Liberation Serif"},    // an unknown filter
        {1, "No Such Face", 16, 1, 16, ""},                        // a face that has gone
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.storedAlert);
        Settings record;
        record.SetupAlertPopup = c.storedAlert;
        record.AlertFontName = c.storedFont;
        record.AlertFontSize = c.storedSize;
        const INT_PTR result = runDriven(
            [&] { return openSetupBox(nullptr, record); },
            [&](HWND box) {
                EXPECT_EQ(selection(box, IDC_SETUP_ALERT),
                          c.storedAlert == 7 ? CB_ERR : int(c.storedAlert));
                // The size in effect shows as it is, even out of range.
                EXPECT_EQ(itemText(box, IDC_SETUP_FONTSIZE), std::to_string(c.storedSize));
                clickItem(box, IDC_BUTTON1);
            });
        EXPECT_EQ(result, 1);
        EXPECT_EQ(record.SetupAlertPopup, c.wantAlert);
        EXPECT_EQ(record.AlertFontSize, c.wantSize);
        EXPECT_EQ(record.AlertFontName, c.wantFont);
    }
}

// After Setup, whatever its answer, the main window remakes the alert font
// from the settings and writes them: a colour picked before Cancel is saved,
// one cancelled in the picker (which runs inside Setup's click) is not.
TEST(SetupBoxTest, MainWindowRemakesTheFontAndSavesAfterSetupWhateverTheAnswer) {
    if (testEnv("HERALDER_SOURCE_DIR").empty()) GTEST_SKIP() << "run through scripts/test_wine.sh";
    const std::string file = getUserDataPath(kSettingsFileName);
    DeleteFileA(file.c_str());
    TestMainWindow window;
    Settings& record = window.record();
    record.ColourTableFile = scratchFolder("heralder_setup_test") + "main.ccl";
    record.AlertFontName = "Liberation Serif";
    record.AlertFontSize = 16;
    record.AlertTextColor = 0x00FFFFFF;
    describeAlertLook(record);
    SetWindowTextA(window.hwnd(), "something else");
    runDriven(
        [&] { return SendMessageA(window.hwnd(), WM_COMMAND, IDM_SETUP, 0); },
        [&](HWND box) {
            SetDlgItemTextA(box, IDC_SETUP_FONTSIZE, "30");  // not stored: Cancel follows
            for (auto [button, answer, red] : {std::tuple{IDC_SETUP_BACKCOLOUR, IDC_BUTTON1, "17"},
                                               {IDC_SETUP_TEXTCOLOUR, IDC_CANCELBUTTON, "200"}})
                runDriven([&] { return clickItem(box, button), 0; },
                          [&](HWND picker) {
                              EXPECT_NE(picker, box);
                              SetDlgItemTextA(picker, IDC_COLOUR_RED, red);
                              SetDlgItemTextA(picker, IDC_COLOUR_GREEN, "0");
                              SetDlgItemTextA(picker, IDC_COLOUR_BLUE, "0");
                              clickItem(picker, answer);
                          });
            clickItem(box, IDC_CANCELBUTTON);
        });
    EXPECT_EQ(windowText(window.hwnd()), "Quenmark Heralder");
    LOGFONTA font = {};
    LOGBRUSH brush = {};
    GetObjectA(app().alertFont.get(), sizeof font, &font);
    GetObjectA(app().alertBackgroundBrush.get(), sizeof brush, &brush);
    EXPECT_EQ(std::tuple(font.lfHeight, std::string(font.lfFaceName), brush.lbColor),
              std::tuple(16L, std::string("Liberation Serif"), COLORREF(17)));
    Settings read;
    ASSERT_TRUE(readSettingsFile(read, file));
    EXPECT_EQ(std::tuple(read.AlertBackgroundColor, read.AlertTextColor, read.AllowINIUpdates),
              std::tuple(17u, 0x00FFFFFFu, record.AllowINIUpdates));
    DeleteFileA(file.c_str());
}

}  // namespace
