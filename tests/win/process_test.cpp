// heralder.exe run as a whole process, as Windows starts it: the daily job
// against the test program's own loopback server, the server down, a local
// document in the main window, the window's remembered edges, bad command
// lines and two daily runs at once. Each test starts from an empty data folder.
#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <thread>
#include <tuple>

#include "base/file_io.h"
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
constexpr char kNotVerified[] =
    "The update document could not be verified, so nothing in it was shown or changed.\n\n"
    "Heralder will try again at its next update.";

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

// Two daily runs at once both finish, but only one does the day's work: each
// window appears once and each number is in the seen list once; the settings
// file stays whole.
TEST_F(HeralderProcess, TwoDailyRunsAtOnceShowEachItemOnceAndKeepAWholeSettingsFile) {
    LoopbackServer server(examplesFolder());
    const ProcessRun single = runUpdate();
    ASSERT_TRUE(single.exited);
    const std::set<std::string> expected = seenEntries();
    clearUserData();

    ProcessRun runs[2];
    std::thread other([&] { runs[1] = runUpdate(); });
    runs[0] = runUpdate();
    other.join();
    std::multiset<std::string> titles;
    for (const ProcessRun& run : runs) {
        EXPECT_TRUE(run.exited);
        EXPECT_EQ(run.exitCode, 0u);
        for (const SeenWindow& window : run.windows) titles.insert(window.title);
    }
    std::multiset<std::string> once;
    for (const SeenWindow& window : single.windows) once.insert(window.title);
    EXPECT_EQ(titles, once);
    EXPECT_EQ(seenEntries(), expected);
    const auto list = readFileBytes(getUserHeralderPath("Heralder.lst"));
    ASSERT_TRUE(list);
    std::size_t lines = 0;
    for (std::size_t at = 0; (at = list->find("\r\n", at)) != std::string::npos; at += 2) ++lines;
    EXPECT_EQ(lines, expected.size());
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
    std::string windowTitle;
};

ProcessRun runShowingDocument(const std::string& arguments, WindowOutcome& outcome,
                              const std::string& screenshot = "",
                              const std::string& exe = heralderExe()) {
    DWORD shownAt = 0;
    bool closed = false;
    return runProcess(exe, arguments, nullptr, 30000, [&](DWORD pid) {
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
        char title[256] = {};
        GetWindowTextA(main, title, sizeof title);
        outcome.windowTitle = title;
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

// heralder.exe built with two public keys (scripts/build.sh windows-signed),
// over the sample document signed in the ways tests/win/fixtures.sh makes.
// Whatever is wrong with the signature, nothing in the document is shown,
// applied or fetched, and the user is told once that day.
TEST_F(HeralderProcess, SignedBuildActsOnlyOnDocumentsItsKeysSigned) {
    const std::string signedExe = testEnv("HERALDER_SIGNED_EXE");
    if (signedExe.empty()) GTEST_SKIP() << "needs scripts/build.sh windows-signed";
    const auto signedCase = [](const char* name) {
        return testEnv("HERALDER_SIGNED_CASES") + "\\" + name;
    };
    const auto runUpdateOf = [](const std::string& exe) {
        return runProcess(exe, "/UPDATE", nullptr, 60000);
    };
    const struct {
        const char* name;
        const char* acceptedBefore;
        const char* refusal;  // as system information shows it; null: accepted
    } cases[] = {
        {"valid", nullptr, nullptr},
        {"second_key", nullptr, nullptr},
        {"changed", nullptr, "bad signature"},
        {"unsigned", nullptr, "no signature"},
        {"other_key", nullptr, "unknown key"},
        {"expired", nullptr, "expired"},
        {"older", "valid", "older than the last accepted document"},
        {"twice", nullptr, "signed more than once"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        clearUserData();
        std::set<std::string> seenBefore;
        if (c.acceptedBefore) {
            LoopbackServer earlier(signedCase(c.acceptedBefore));
            ASSERT_TRUE(runUpdateOf(signedExe).exited);
            seenBefore = seenEntries();
            ASSERT_FALSE(seenBefore.empty());
        }
        const Settings settingsBefore = storedSettings();
        LoopbackServer server(signedCase(c.name));
        const ProcessRun run = runProcess(
            signedExe, "/UPDATE",
            [&](HWND box, int) {
                if (std::string(c.name) == "changed")
                    saveWindowScreenshot(box, "signature_refused");
                return false;
            },
            60000);
        ASSERT_TRUE(run.exited);
        EXPECT_EQ(run.exitCode, 0u);
        if (!c.refusal) {
            EXPECT_GE(run.windows.size(), 6u);
            EXPECT_TRUE(seenEntries().count("2107"));
            continue;
        }
        ASSERT_EQ(run.windows.size(), 1u);
        EXPECT_EQ(run.windows[0].text, kNotVerified);
        EXPECT_EQ(seenEntries(), seenBefore);
        EXPECT_EQ(server.requests(), 1);  // the document; no picture
        const std::string record = readFileBytes(getUserHeralderPath("Heralder.sig")).value_or("");
        EXPECT_NE(record.find(std::string("refused=") + c.refusal + "\n"), std::string::npos)
            << record;
        const Settings after = storedSettings();
        EXPECT_EQ(after.AlertFontSize, settingsBefore.AlertFontSize);
        EXPECT_EQ(after.PromptMultipleCount, settingsBefore.PromptMultipleCount);
        const ProcessRun again = runUpdateOf(signedExe);  // the same day: no second box
        EXPECT_TRUE(again.exited && again.windows.empty());
    }
    // A build without keys reads a signed document as it always read documents.
    clearUserData();
    LoopbackServer server(signedCase("valid"));
    EXPECT_GE(runUpdateOf(heralderExe()).windows.size(), 6u);

    // A local document is shown whatever its signature; the title tells.
    for (const auto& [name, title] : {std::pair{"valid", "Quenmark Heralder"},
                                      {"unsigned", "Quenmark Heralder - unsigned document"},
                                      {"changed", "Quenmark Heralder - not verified document"}}) {
        WindowOutcome outcome;
        ASSERT_TRUE(
            runShowingDocument(signedCase(name) + "\\update.txt", outcome, "", signedExe).exited);
        EXPECT_GT(outcome.rows, 5) << name;
        EXPECT_EQ(outcome.windowTitle, title) << name;
    }
}

// heralder.exe built for https://localhost:47633 (scripts/build.sh
// windows-https) against the tests' TLS server: the daily job, pictures and
// picture updates included, all over TLS.
TEST_F(HeralderProcess, DailyRunWorksOverHttps) {
    const std::string exe = testEnv("HERALDER_HTTPS_EXE");
    if (exe.empty()) GTEST_SKIP() << "needs scripts/build.sh windows-https";
    ASSERT_TRUE(trustTestAuthority());
    const ProcessRun run = runProcess(exe, "/UPDATE", nullptr, 60000);
    ASSERT_TRUE(run.exited);
    EXPECT_GE(run.windows.size(), 6u);
    EXPECT_TRUE(seenEntries().count("2110"));
    EXPECT_TRUE(fileExists(getUserHeralderPath("heralder_banner.png")));
    EXPECT_TRUE(fileExists(getUserHeralderPath("images\\alert.png")));
}

// The same server's certificate from an authority nobody trusts: Go ends with
// the network-error box, and no request reaches the server.
TEST_F(HeralderProcess, HttpsFromAnUnknownAuthorityIsANetworkError) {
    const std::string exe = testEnv("HERALDER_HTTPS_EXE");
    if (exe.empty()) GTEST_SKIP() << "needs scripts/build.sh windows-https";
    ASSERT_TRUE(trustTestAuthority(false));
    const auto requests = [] {
        const std::string log = readFileBytes(testEnv("HERALDER_HTTPS_LOG")).value_or("");
        int n = 0;
        for (std::size_t at = 0; (at = log.find("47633 /", at)) != std::string::npos; ++at) ++n;
        return n;
    };
    const int before = requests();
    bool goSent = false, answered = false;
    const ProcessRun run = runProcess(
        exe, "", [&](HWND, int) { return !(answered = true); }, 30000,
        [&](DWORD pid) {
            HWND main = findProcessWindow(pid, "QuenmarkHeralderApplication");
            if (main && !goSent) goSent = PostMessageA(main, WM_COMMAND, IDM_GO, 0);
            if (main && answered) PostMessageA(main, WM_CLOSE, 0, 0);
        });
    ASSERT_TRUE(trustTestAuthority());
    ASSERT_TRUE(run.exited);
    ASSERT_EQ(run.windows.size(), 1u);
    EXPECT_EQ(run.windows[0].text, kNetworkError);
    Sleep(500);  // the log goes through a pipe
    EXPECT_EQ(requests(), before);
}

}  // namespace
