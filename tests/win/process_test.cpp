// heralder.exe run as a whole process, as Windows starts it: the daily job
// against the test program's own loopback server, the server down, a local
// document in the main window, the window's remembered edges, bad command
// lines and two copies at once. Each test starts from an empty data folder.
#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <thread>
#include <tuple>

#include "base/crt_text.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings_file.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/link_readers.h"
#include "tests/win/loopback_server.h"
#include "tests/win/process_driver.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

namespace {

constexpr char kNetworkError[] =
    "There has been a network error. The update document is not available.";

std::string heralderExe() {
    return testProgramFolder() + "heralder.exe";
}

std::string examplesFolder() {
    return testEnv("HERALDER_SOURCE_DIR") + "\\examples";
}

std::string sampleDocument() {
    return examplesFolder() + "\\update.txt";
}

std::string settingsPath() {
    return getUserDataPath(kSettingsFileName);
}

std::set<std::string> seenEntries() {
    std::set<std::string> entries;
    if (auto text = readFileBytes(getUserHeralderPath("Heralder.lst"))) {
        std::size_t start = 0;
        for (std::size_t end; (end = text->find("\r\n", start)) != std::string::npos;
             start = end + 2)
            entries.insert(text->substr(start, end - start));
    }
    return entries;
}

Settings storedSettings() {
    Settings s;
    readSettingsFile(s, settingsPath());
    return s;
}

bool fileExists(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

ProcessRun runUpdate(DWORD limitMs = 60000) {
    return runProcess(heralderExe(), "/UPDATE", nullptr, limitMs);
}

class HeralderProcess : public testing::Test {
  protected:
    void SetUp() override {
        if (testEnv("HERALDER_SOURCE_DIR").empty())
            GTEST_SKIP() << "run through scripts/test_wine.sh";
        clearUserData();
    }
    void TearDown() override { clearUserData(); }
};

// A second run finds everything seen: nothing is shown twice, and the first
// run's settings file becomes the backup.
TEST_F(HeralderProcess, UpdateRunsTheDailyJobAndASecondRunFindsNothingNew) {
    LoopbackServer server(examplesFolder());
    ASSERT_TRUE(server.listening());

    const ProcessRun first = runUpdate();
    ASSERT_TRUE(first.exited);
    EXPECT_EQ(first.exitCode, 0u);
    const std::set<std::string> seen = seenEntries();
    // The three setting updates and the graphic update are always taken.
    for (const char* number : {"2107", "2108", "2109", "2110"})
        EXPECT_TRUE(seen.count(number)) << number;
    EXPECT_TRUE(fileExists(getUserHeralderPath("heralder_banner.png")));
    // Every window of the sample appeared, and the alert windows fetched their pictures.
    std::set<std::string> titles;
    for (const SeenWindow& window : first.windows) titles.insert(window.title);
    for (const char* title :
         {"Please install the 5.2b currency fix", "Quenmark Ledger 5.2b is available",
          "Quenmark Atlas 3.1a public beta", "Tip: reconcile with one key",
          "Support desk hours over the holidays", "Twenty years of Quenmark"})
        EXPECT_TRUE(titles.count(title)) << title;
    for (const char* picture : {"alert.png", "tip.png", "offtopic.jpg"})
        EXPECT_TRUE(fileExists(getUserHeralderPath("images\\") + picture)) << picture;
    const Settings after = storedSettings();
    EXPECT_EQ(after.PromptMultipleCount, 6u);
    EXPECT_EQ(after.AlertFontSize, 18u);
    EXPECT_EQ(after.SetupVersionPopup, 0u);
    EXPECT_NE(after.CurrentTransactionDate, "");

    const int requestsBefore = server.requests();
    const ProcessRun second = runUpdate();
    ASSERT_TRUE(second.exited);
    EXPECT_EQ(second.exitCode, 0u);
    EXPECT_TRUE(second.windows.empty());
    EXPECT_EQ(seenEntries(), seen);
    EXPECT_EQ(server.requests() - requestsBefore, 1);  // the document; no picture again
    EXPECT_EQ(server.notModified(), 1);                // answered from the kept copy
    EXPECT_TRUE(fileExists(getUserDataPath("Backup of Heralder17.ini")));
}

// A "304 Not Modified" gives the run the kept copy: from the same start it
// shows the same windows and leaves the same seen list and settings as the
// run that fetched the document whole.
TEST_F(HeralderProcess, RunOnTheKeptCopyMatchesTheRunOnTheFetchedDocument) {
    LoopbackServer server(examplesFolder());
    ASSERT_TRUE(server.listening());
    const std::string keptPath = getUserHeralderPath("Update.kept");
    const auto outcome = [&] {
        const ProcessRun run = runUpdate();
        EXPECT_TRUE(run.exited && run.exitCode == 0);
        std::vector<std::string> windows;
        for (const SeenWindow& window : run.windows)
            windows.push_back(window.title + "\n" + window.text);
        return std::tuple(windows, seenEntries(), formatSettingsFile(storedSettings(), 0));
    };
    const auto fetched = outcome();
    const auto kept = readFileBytes(keptPath);
    ASSERT_TRUE(kept);
    EXPECT_FALSE(std::get<0>(fetched).empty());

    clearUserData();
    FILE* f = std::fopen(keptPath.c_str(), "wb");
    ASSERT_TRUE(f);
    std::fwrite(kept->data(), 1, kept->size(), f);
    std::fclose(f);
    const auto fromKept = outcome();
    EXPECT_EQ(server.notModified(), 1);
    EXPECT_EQ(std::get<0>(fromKept), std::get<0>(fetched));
    EXPECT_EQ(std::get<1>(fromKept), std::get<1>(fetched));
    EXPECT_EQ(std::get<2>(fromKept), std::get<2>(fetched));
}

// At logon the network may not be up yet: with "/UPDATE" a failed fetch is
// tried again over about a minute before the user is told.
TEST_F(HeralderProcess, ServerDownEndsWithTheNetworkErrorAfterTheRetries) {
    const DWORD start = GetTickCount();
    const ProcessRun run = runUpdate(150000);
    const DWORD took = GetTickCount() - start;
    ASSERT_TRUE(run.exited);
    EXPECT_EQ(run.exitCode, 0u);
    ASSERT_EQ(run.windows.size(), 1u);
    EXPECT_EQ(run.windows[0].text, kNetworkError);
    EXPECT_GE(took, 55000u);  // 5 + 15 + 40 seconds of waiting
    EXPECT_TRUE(seenEntries().empty());
}

// Two copies at once (a logon run and one the user started) both finish;
// neither loses the other's marks nor leaves a broken settings file.
TEST_F(HeralderProcess, TwoCopiesAtOnceKeepEveryMarkAndAWholeSettingsFile) {
    LoopbackServer server(examplesFolder());
    const ProcessRun single = runUpdate();
    ASSERT_TRUE(single.exited);
    const std::set<std::string> expected = seenEntries();
    clearUserData();

    ProcessRun runs[2];
    std::thread other([&] { runs[1] = runUpdate(); });
    runs[0] = runUpdate();
    other.join();
    for (const ProcessRun& run : runs) {
        EXPECT_TRUE(run.exited);
        EXPECT_EQ(run.exitCode, 0u);
    }
    EXPECT_EQ(seenEntries(), expected);
    const auto text = readFileBytes(settingsPath());
    ASSERT_TRUE(text);
    EXPECT_EQ(text->rfind(";Quenmark Heralder configuration file\r\n", 0), 0u);
    // Every key exactly once.
    for (const SettingDef& def : SettingsTable) {
        const std::string line = std::string("\r\n") + def.key + " = ";
        const std::size_t at = text->find(line);
        EXPECT_NE(at, std::string::npos) << def.key;
        EXPECT_EQ(text->find(line, at + 1), std::string::npos) << def.key;
    }
}

// The main window of a local document: its rows, a screenshot, and what
// closing it stores.
struct WindowOutcome {
    int rows = -1;
    bool wasMaximised = false;
    std::vector<std::string> titles;
};

ProcessRun runShowingDocument(const std::string& arguments, WindowOutcome& outcome,
                              const std::string& screenshot = "") {
    DWORD shownAt = 0;
    bool closed = false;
    return runProcess(heralderExe(), arguments, nullptr, 30000, [&](DWORD pid) {
        HWND main = findProcessWindow(pid, "QuenmarkHeralderApplication");
        if (!main || closed) return;
        if (!shownAt) shownAt = GetTickCount();
        if (GetTickCount() - shownAt < 700) return;  // the posted load has run
        HWND list = GetDlgItem(main, IDC_ITEMLIST);
        outcome.rows = static_cast<int>(SendMessageA(list, LB_GETCOUNT, 0, 0));
        for (int i = 0; i < outcome.rows; ++i) {
            // Across processes the system hands row texts over as UTF-16.
            wchar_t text[1024] = {};
            SendMessageW(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text));
            char narrow[1024] = {};
            WideCharToMultiByte(CP_ACP, 0, text, -1, narrow, sizeof narrow, nullptr, nullptr);
            outcome.titles.push_back(narrow);
        }
        outcome.wasMaximised = IsZoomed(main);
        if (!screenshot.empty()) {
            SendMessageA(list, LB_SETCURSEL, 1, 0);
            saveWindowScreenshot(main, screenshot);
        }
        PostMessageA(main, WM_CLOSE, 0, 0);
        closed = true;
    });
}

// Whatever the command line holds, the program ends cleanly: the document's
// rows, or a message where one is due.
TEST_F(HeralderProcess, DocumentOnTheCommandLineFillsTheMainWindowOrIsReported) {
    const std::string document = sampleDocument();
    const std::string longPath = "C:\\" + std::string(400, 'x') + ".txt";
    const std::string loadError = "There has been an error loading ";
    const struct {
        std::string arguments;
        std::string message;  // "": no message box
        int rows;
        const char* screenshot;
    } cases[] = {
        {document, "", 10, "main_window"},
        // The program takes the command line as it stands: the quotes are part
        // of the path, so the file cannot be found.
        {"\"" + document + "\"", loadError + "\"" + document + "\"", 0, ""},
        {"C:\\no such folder\\update.txt", loadError + "C:\\no such folder\\update.txt", 0, ""},
        {longPath, loadError + longPath.substr(0, 259), 0, ""},
        // Not a document at all: read as one without blocks.
        {heralderExe(), "", 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments.substr(0, 60));
        WindowOutcome outcome;
        const ProcessRun run = runShowingDocument(c.arguments, outcome, c.screenshot);
        ASSERT_TRUE(run.exited);
        EXPECT_EQ(run.exitCode, 0u);
        EXPECT_EQ(outcome.rows, c.rows);
        if (c.message.empty()) {
            EXPECT_TRUE(run.windows.empty());
        } else {
            ASSERT_EQ(run.windows.size(), 1u);
            EXPECT_EQ(run.windows[0].text, c.message);
        }
        if (c.rows) {
            EXPECT_EQ(outcome.titles.front(), "Please install the 5.2b currency fix");
            EXPECT_EQ(outcome.titles.back(), "New Heralder banner");
        }
    }
}

// Stored edges put the window back; closing a maximised window stores
// StartMaximized and leaves the edges it had before.
TEST_F(HeralderProcess, ClosingStoresEdgesOnlyWhenTheWindowIsNotMaximised) {
    for (uint32_t maximised : {0u, 1u}) {
        SCOPED_TRACE(maximised);
        Settings s;
        s.StickyWindowLeft = 100;
        s.StickyWindowTop = 120;
        s.StickyWindowRight = 700;
        s.StickyWindowBottom = 520;
        s.StartMaximized = maximised;
        ensureDataFolders();
        ASSERT_TRUE(writeSettingsFile(s, settingsPath()));

        WindowOutcome outcome;
        ASSERT_TRUE(runShowingDocument(sampleDocument(), outcome).exited);
        EXPECT_EQ(outcome.wasMaximised, maximised == 1);
        const Settings after = storedSettings();
        EXPECT_EQ(after.StartMaximized, maximised);
        EXPECT_EQ(after.StickyWindowLeft, 100u);
        EXPECT_EQ(after.StickyWindowTop, 120u);
        EXPECT_EQ(after.StickyWindowRight, 700u);
        EXPECT_EQ(after.StickyWindowBottom, 520u);
    }
}

// "/STARTUP" opens the startup manager hidden behind nothing else; Close with
// a choice makes the Startup folder agree, and the program ends.
TEST_F(HeralderProcess, StartupSwitchMakesTheStartupFolderAgree) {
    const std::string link = startupLinkPath();
    for (int choice : {IDC_STARTUP_AUTOMATIC, IDC_STARTUP_MANUAL}) {
        SCOPED_TRACE(choice);
        const ProcessRun run = runProcess(
            heralderExe(), "/STARTUP",
            [&](HWND dialog, int) {
                SendMessageA(GetDlgItem(dialog, choice), BM_CLICK, 0, 0);
                SendMessageA(GetDlgItem(dialog, IDC_BUTTON1), BM_CLICK, 0, 0);
                return true;
            },
            30000);
        ASSERT_TRUE(run.exited);
        EXPECT_EQ(run.exitCode, 0u);
        ASSERT_EQ(run.windows.size(), 1u);
        EXPECT_EQ(run.windows[0].title, "Startup manager");
        EXPECT_EQ(storedSettings().StartupOptions, static_cast<uint32_t>(choice));
        if (choice == IDC_STARTUP_MANUAL)
            EXPECT_FALSE(fileExists(link));
        else
            expectStartupLink(link, heralderExe(), "/UPDATE");
    }
    DeleteFileA(link.c_str());
}

}  // namespace
