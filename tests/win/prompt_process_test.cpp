// The multiple-items prompt in heralder.exe itself: the daily job with more
// items waiting than the user's threshold asks before the first item window,
// and the first choice ("show them now") lets every item through.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "base/file_io.h"
#include "feed/seen_list.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/loopback_server.h"
#include "tests/win/process_driver.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_support.h"

namespace {

// A feed of count alerts numbered from 5101, in a folder of its own.
std::string writeFeed(int count) {
    const std::string folder = scratchFolder("heralder_prompt_feed");
    std::ofstream feed(folder + "update.txt", std::ios::binary);
    for (int i = 0; i < count; ++i) {
        feed << ":BEGINALERT\r\nNUMBER = " << 5101 + i << "\r\nTITLE = Waiting item " << i + 1
             << "\r\nPLAINTEXT = {Item " << i + 1 << " of " << count << ".}\r\n:END\r\n\r\n";
    }
    return folder;
}

TEST(MultipleItemPromptProcess, DailyJobAsksFirstAndTheFirstChoiceShowsEveryItem) {
    if (testEnv("HERALDER_SOURCE_DIR").empty()) GTEST_SKIP() << "run through scripts/test_wine.sh";
    clearUserData();
    const std::string folder = writeFeed(5);  // the first run's threshold is 4
    {
        LoopbackServer server(folder);
        ASSERT_TRUE(server.listening());
        bool okWaited = false;
        const ProcessRun run = runProcess(
            testProgramFolder() + "heralder.exe", "/UPDATE",
            [&](HWND dialog, int index) {
                if (index == 0) {
                    okWaited = !IsWindowEnabled(GetDlgItem(dialog, IDC_BUTTON1));
                    saveWindowScreenshot(dialog, "prompt_in_daily_job");
                }
                return false;  // answered as a person pressing Enter would
            },
            60000);
        ASSERT_TRUE(run.exited);
        EXPECT_EQ(run.exitCode, 0u);
        ASSERT_FALSE(run.windows.empty());
        EXPECT_EQ(run.windows[0].title, "Multiple Items Pending");
        EXPECT_NE(run.windows[0].text.find("there are 5 items pending"), std::string::npos);
        EXPECT_TRUE(okWaited);
    }
    EXPECT_EQ(parseSeenNumbers(readFileBytes(getUserHeralderPath("Heralder.lst")).value_or("")),
              (std::unordered_set<int32_t>{5101, 5102, 5103, 5104, 5105}));
    DeleteFileA((folder + "update.txt").c_str());
    RemoveDirectoryA(folder.c_str());
    clearUserData();
}

}  // namespace
