// heralder.exe run as a whole process, as Windows starts it, against the test
// program's loopback server. Each test starts from an empty data folder.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <optional>
#include <set>
#include <thread>
#include <tuple>

#include "app/daily_run_guard_win.h"
#include "base/file_io.h"
#include "feed/seen_list.h"
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

using Numbers = std::unordered_set<int32_t>;
constexpr char kMainClass[] = "QuenmarkHeralderApplication";

std::string heralderExe() {
    return testProgramFolder() + "heralder.exe";
}
std::string examples() {
    return testEnv("HERALDER_SOURCE_DIR") + "\\examples";
}
// A folder of tests/win/fixtures.sh's signed copies of the sample.
std::string signedCase(const std::string& name) {
    return testEnv("HERALDER_SIGNED_CASES") + "\\" + name;
}
Numbers seen() {
    return parseSeenNumbers(readFileBytes(getUserHeralderPath("Heralder.lst")).value_or(""));
}
Settings stored() {
    Settings s;
    readSettingsFile(s, getUserDataPath(kSettingsFileName));
    return s;
}
ProcessRun runUpdate(const std::string& exe = heralderExe(), const WindowHandler& handler = {},
                     const IdleHandler& idle = {}, DWORD limitMs = 60000) {
    return runProcess(exe, "/UPDATE", handler, limitMs, idle);
}
std::multiset<std::string> titles(const ProcessRun& run) {
    std::multiset<std::string> out;
    for (const SeenWindow& w : run.windows) out.insert(w.title);
    return out;
}
// What a run left for the user to see: its windows, the seen list, the settings.
auto outcomeOf(const ProcessRun& run) {
    EXPECT_TRUE(run.exited && run.exitCode == 0);
    std::vector<std::string> windows;
    for (const SeenWindow& w : run.windows) windows.push_back(w.title + "\n" + w.text);
    return std::tuple(windows, seen(), formatSettingsFile(stored(), 0));
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

// Every item is shown or applied once. More items wait than the user's
// threshold (4 on the first run): the prompt comes first, and its first choice
// ("show them now", as a person pressing Enter takes it) lets every item
// through. A second run finds nothing new, asks for the document alone and is
// answered from the kept copy. A run from the kept copy alone (the 304 stands
// for it) does what the first run did, and two runs at once do it once
// between them, leaving a whole settings file.
TEST_F(HeralderProcess, DailyJobDoesTheDaysWorkOnceWhicheverRunsDoIt) {
    LoopbackServer server(examples());
    ASSERT_TRUE(server.listening());
    const ProcessRun first = runUpdate(heralderExe(), [&](HWND dialog, int index) {
        if (index == 0) saveWindowScreenshot(dialog, "prompt_in_daily_job");
        return false;
    });
    const auto firstOutcome = outcomeOf(first);
    ASSERT_FALSE(first.windows.empty());
    EXPECT_EQ(first.windows[0].title, "Multiple Items Pending");
    EXPECT_NE(first.windows[0].text.find("there are 6 items pending"), std::string::npos);
    const Numbers all = {2101, 2102, 2103, 2104, 2105, 2106, 2107, 2108, 2109, 2110};
    EXPECT_EQ(seen(), all);
    const std::multiset<std::string> shown = titles(first),
                                     want = {"Please install the 5.2b currency fix",
                                             "Quenmark Ledger 5.2b is available",
                                             "Quenmark Atlas 3.1a public beta",
                                             "Tip: reconcile with one key",
                                             "Support desk hours over the holidays",
                                             "Twenty years of Quenmark"};
    EXPECT_TRUE(std::includes(shown.begin(), shown.end(), want.begin(), want.end()));
    // The new banner is the body as it was held in memory: the file, then 16 zero bytes.
    EXPECT_EQ(readFileBytes(getUserHeralderPath("heralder_banner.png")),
              readFileBytes(examples() + "\\images\\heralder_banner.png").value_or("-") +
                  std::string(16, '\0'));
    for (const char* picture : {"alert.png", "tip.png", "offtopic.jpg"})
        EXPECT_TRUE(pathExists(getUserHeralderPath("images\\") + picture)) << picture;
    const Settings after = stored();
    EXPECT_EQ(std::tuple(after.PromptMultipleCount, after.AlertFontSize, after.SetupVersionPopup,
                         after.CurrentTransactionDate.empty()),
              std::tuple(6u, 18u, 0u, false));

    const int requestsBefore = server.requests();
    EXPECT_TRUE(std::get<0>(outcomeOf(runUpdate())).empty());
    EXPECT_EQ(std::pair(server.requests() - requestsBefore, server.notModified()), std::pair(1, 1));
    EXPECT_TRUE(pathExists(getUserDataPath("Backup of Heralder17.ini")));

    const std::string keptPath = getUserHeralderPath("Update.kept");
    const std::string kept = readFileBytes(keptPath).value_or("");
    ASSERT_FALSE(kept.empty());
    clearUserData();
    std::ofstream(keptPath, std::ios::binary) << kept;
    EXPECT_EQ(outcomeOf(runUpdate()), firstOutcome);
    EXPECT_EQ(server.notModified(), 2);

    clearUserData();
    ProcessRun runs[2];
    std::thread other([&] { runs[1] = runUpdate(); });
    runs[0] = runUpdate();
    other.join();
    std::multiset<std::string> both = titles(runs[0]);
    both.merge(titles(runs[1]));
    EXPECT_TRUE(runs[0].exited && runs[1].exited);
    EXPECT_EQ(both, shown);
    EXPECT_EQ(seen(), all);
    const std::string list = readFileBytes(getUserHeralderPath("Heralder.lst")).value_or("");
    EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), std::ptrdiff_t(all.size()));
    // Whole: the file is what writing its own reading back gives, bar the time line.
    const auto untimed = [](std::string text) {
        const std::size_t at = text.find(";Last updated");
        return at == std::string::npos ? text : text.erase(at, text.find('\n', at) - at);
    };
    EXPECT_EQ(untimed(readFileBytes(getUserDataPath(kSettingsFileName)).value_or("")),
              untimed(formatSettingsFile(stored(), 0)));
}

// At logon the network may not be up yet: a failed fetch is tried again over
// about a minute (5 + 15 + 40 seconds) before the user is told.
TEST_F(HeralderProcess, ServerDownEndsWithTheNetworkErrorAfterTheRetries) {
    const DWORD start = GetTickCount();
    const ProcessRun run = runUpdate(heralderExe(), {}, {}, 150000);
    ASSERT_TRUE(run.exited);
    EXPECT_GE(GetTickCount() - start, 55000u);
    ASSERT_EQ(run.windows.size(), 1u);
    EXPECT_EQ(run.windows[0].text,
              "There has been a network error. The update document is not available.");
    EXPECT_TRUE(seen().empty());
}

// The administrator's switch (only a non-zero DWORD), and another daily run
// holding its place (one waiting for a busy user, say), each end a daily run
// at once, without the network or a window; without them it is the usual run.
TEST_F(HeralderProcess, PolicyOrAnotherRunEndsADailyRunAtOnce) {
    LoopbackServer server(examples());
    const DWORD zero = 0, one = 1, two = 2;
    const unsigned long long wideOne = 1;
    const struct {
        DWORD type;  // 0: no policy value, another daily run instead
        const void* data;
        DWORD size;
        bool endsAtOnce;
    } cases[] = {{REG_DWORD, &one, 4, true}, {REG_DWORD, &two, 4, true},
                 {0, nullptr, 0, true},      {REG_DWORD, &zero, 4, false},
                 {REG_SZ, "1", 2, false},    {REG_QWORD, &wideOne, 8, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.type << " " << c.size);
        clearUserData();
        ScratchKey policy(HKEY_LOCAL_MACHINE, "Software\\Policies\\Quenmark\\Heralder");
        std::optional<DailyRunGuard> otherRun;
        if (c.data)
            ASSERT_TRUE(policy.set("DisableUpdateCheck", c.type, c.data, c.size));
        else
            ASSERT_TRUE(otherRun.emplace().held());
        const int requestsBefore = server.requests();
        bool mainWindowSeen = false;
        const DWORD start = GetTickCount();
        const ProcessRun run = runUpdate(heralderExe(), {}, [&](DWORD pid) {
            mainWindowSeen = mainWindowSeen || findProcessWindow(pid, kMainClass);
        });
        EXPECT_TRUE(run.exited && run.exitCode == 0);
        EXPECT_EQ(run.windows.empty(), c.endsAtOnce);
        EXPECT_EQ(server.requests() == requestsBefore, c.endsAtOnce);
        EXPECT_FALSE(mainWindowSeen);
        if (c.endsAtOnce) EXPECT_LT(GetTickCount() - start, 10000u);
    }
}

// What the main window showed of a local document before it was closed: its
// title (marked when maximised), its number of rows, its first and last row;
// then the text of each message box.
std::string showDocument(const std::string& exe, const std::string& arguments,
                         const char* screenshot) {
    std::string shown;
    DWORD shownAt = 0;
    const ProcessRun run =
        runProcess(exe, arguments, nullptr, 30000, [&, closed = false](DWORD pid) mutable {
            HWND main = findProcessWindow(pid, kMainClass);
            if (!main || closed) return;
            if (!shownAt) shownAt = GetTickCount();
            if (GetTickCount() - shownAt < 700) return;  // the posted load has run
            HWND list = GetDlgItem(main, IDC_ITEMLIST);
            const int rows = static_cast<int>(SendMessageA(list, LB_GETCOUNT, 0, 0));
            shown = windowText(main) + (IsZoomed(main) ? " (maximised)" : "") + ": " +
                    std::to_string(rows);
            for (int i : {0, rows - 1}) {
                if (rows == 0) break;
                // Across processes the system hands row texts over as UTF-16.
                wchar_t text[1024] = {};
                char narrow[1024] = {};
                SendMessageW(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text));
                WideCharToMultiByte(CP_ACP, 0, text, -1, narrow, sizeof narrow, nullptr, nullptr);
                shown += std::string(" | ") + narrow;
            }
            if (screenshot) {
                SendMessageA(list, LB_SETCURSEL, 1, 0);
                saveWindowScreenshot(main, screenshot);
            }
            closed = PostMessageA(main, WM_CLOSE, 0, 0);
        });
    EXPECT_TRUE(run.exited && run.exitCode == 0);
    for (const SeenWindow& w : run.windows) shown += "\nbox: " + w.text;
    return shown;
}

// Whatever the command line holds, the program ends cleanly: the document's
// rows, or a message where one is due. Stored edges put the window back;
// closing a maximised window stores StartMaximized and leaves the edges. A
// signed build shows a local document whatever its signature; the title tells.
TEST_F(HeralderProcess, DocumentOnTheCommandLineFillsTheMainWindowOrIsReported) {
    const std::string document = examples() + "\\update.txt", exe = heralderExe();
    const std::string longPath = "C:\\" + std::string(400, 'x') + ".txt";
    const std::string loadError = "Quenmark Heralder: 0\nbox: There has been an error loading ";
    const std::string sample = ": 10 | Please install the 5.2b currency fix | New Heralder banner";
    const std::string signedExe = testEnv("HERALDER_SIGNED_EXE");
    const struct {
        std::string exe;  // "": that build is missing
        std::string arguments;
        std::string shown;  // the main window, then any message box
        int maximised;      // stored before the run; -1: no settings file
    } cases[] = {
        {exe, document, "Quenmark Heralder" + sample, -1},
        {exe, document, "Quenmark Heralder" + sample, 0},
        {exe, document, "Quenmark Heralder (maximised)" + sample, 1},
        // The command line is taken as it stands: the quotes are part of the path.
        {exe, "\"" + document + "\"", loadError + "\"" + document + "\"", -1},
        {exe, longPath, loadError + longPath.substr(0, 259), -1},
        {exe, exe, "Quenmark Heralder: 0", -1},  // not a document: read as one without blocks
        {signedExe, signedCase("valid") + "\\update.txt", "Quenmark Heralder" + sample, -1},
        {signedExe, signedCase("unsigned") + "\\update.txt",
         "Quenmark Heralder - unsigned document" + sample, -1},
        {signedExe, signedCase("changed") + "\\update.txt",
         "Quenmark Heralder - not verified document: 10 | < Please install the 5.2b currency fix | "
         "New Heralder banner",
         -1},
    };
    for (const auto& c : cases) {
        if (c.exe.empty()) continue;
        SCOPED_TRACE(c.arguments.substr(0, 60) + " " + std::to_string(c.maximised));
        clearUserData();
        Settings s;
        std::tie(s.StickyWindowLeft, s.StickyWindowTop, s.StickyWindowRight, s.StickyWindowBottom,
                 s.StartMaximized) = std::tuple(100, 120, 700, 520, c.maximised);
        if (c.maximised >= 0) {
            ensureDataFolders();
            ASSERT_TRUE(writeSettingsFile(s, getUserDataPath(kSettingsFileName)));
        }
        EXPECT_EQ(showDocument(c.exe, c.arguments, &c == cases ? "main_window" : nullptr), c.shown);
        if (c.maximised < 0) continue;
        const Settings after = stored();
        EXPECT_EQ(std::tuple(after.StickyWindowLeft, after.StickyWindowTop, after.StickyWindowRight,
                             after.StickyWindowBottom, after.StartMaximized),
                  std::tuple(100u, 120u, 700u, 520u, uint32_t(c.maximised)));
    }
}

// "/STARTUP" opens the startup manager; Close with a choice makes the Startup
// folder agree, and the program ends. Each choice is StartupManager's.
TEST_F(HeralderProcess, StartupSwitchMakesTheStartupFolderAgree) {
    const std::string link = startupLinkPath();
    DeleteFileA(link.c_str());
    const auto answer = [](HWND dialog, int) {
        SendMessageA(GetDlgItem(dialog, IDC_STARTUP_AUTOMATIC), BM_CLICK, 0, 0);
        SendMessageA(GetDlgItem(dialog, IDC_BUTTON1), BM_CLICK, 0, 0);
        return true;
    };
    const ProcessRun run = runProcess(heralderExe(), "/STARTUP", answer, 30000);
    ASSERT_TRUE(run.exited);
    EXPECT_EQ(titles(run), std::multiset<std::string>{"Startup manager"});
    EXPECT_EQ(stored().StartupOptions, static_cast<uint32_t>(IDC_STARTUP_AUTOMATIC));
    expectStartupLink(link, heralderExe(), "/UPDATE");
    DeleteFileA(link.c_str());
}

// Builds that must trust a document before acting on it, over the sample:
// one with two public keys (scripts/build.sh windows-signed) over the copies
// tests/win/fixtures.sh signs in each way, and one asking
// https://localhost:47633 (windows-https) over the tests' TLS server, pictures
// and picture updates included. Whatever is wrong with the signature, nothing
// in the document is shown, applied or fetched, and the user is told once that
// day. That an untrusted authority gets no request is HttpRealServer's: every
// fetch goes through the same request.
TEST_F(HeralderProcess, DailyRunActsOnlyOnDocumentsItsBuildTrusts) {
    const std::string signedExe = testEnv("HERALDER_SIGNED_EXE");
    const std::string httpsExe = testEnv("HERALDER_HTTPS_EXE");
    const struct {
        std::string exe;      // "": that build is missing
        std::string served;   // the signed copy served; "": the TLS server's sample
        const char* refusal;  // as the record keeps it; null: accepted
    } cases[] = {
        {signedExe, "valid", nullptr},
        {signedExe, "second_key", nullptr},
        {signedExe, "changed", "bad signature"},
        {signedExe, "unsigned", "no signature"},
        {signedExe, "other_key", "unknown key"},
        {signedExe, "expired", "expired"},
        {signedExe, "older", "older than the last accepted document"},  // after "valid"
        {signedExe, "twice", "signed more than once"},
        // A build without keys reads a signed document as it always read documents.
        {signedExe.empty() ? "" : heralderExe(), "valid", nullptr},
        {httpsExe, "", nullptr},
    };
    if (!httpsExe.empty()) ASSERT_TRUE(trustTestAuthority());
    for (const auto& c : cases) {
        if (c.exe.empty()) continue;
        SCOPED_TRACE(c.exe + " " + c.served);
        clearUserData();
        if (c.served == "older") {
            LoopbackServer earlier(signedCase("valid"));
            ASSERT_TRUE(runUpdate(c.exe).exited);
        }
        // What the document would change: the seen list and its setting updates.
        const auto changes = [] {
            return std::tuple(seen(), stored().AlertFontSize, stored().PromptMultipleCount);
        };
        const auto before = changes();
        std::optional<LoopbackServer> server;
        if (!c.served.empty()) server.emplace(signedCase(c.served));
        const ProcessRun run = runUpdate(c.exe);
        ASSERT_TRUE(run.exited);
        if (!c.refusal) {
            EXPECT_GE(run.windows.size(), 6u);
            EXPECT_EQ(seen().size(), 10u);  // the banner's update marks only once written
            EXPECT_TRUE(pathExists(getUserHeralderPath("images\\alert.png")));
            continue;
        }
        ASSERT_EQ(run.windows.size(), 1u);
        EXPECT_EQ(run.windows[0].text,
                  "The update document could not be verified, so nothing in it was shown or "
                  "changed.\n\nHeralder will try again at its next update.");
        EXPECT_EQ(changes(), before);
        EXPECT_EQ(server->requests(), 1);  // the document; no picture
        const std::string record = readFileBytes(getUserHeralderPath("Heralder.sig")).value_or("");
        EXPECT_NE(record.find(std::string("refused=") + c.refusal + "\n"), std::string::npos)
            << record;
        EXPECT_TRUE(runUpdate(c.exe).windows.empty());  // the same day: no second box
    }
}

}  // namespace
