// The notification run in this process with the real Windows host, fetching
// from loopback servers. The name and write rules are the portable core's; the
// daily job as a whole is process_test.cpp's.
#include <gtest/gtest.h>

#include <fstream>
#include <tuple>
#include <vector>

#include "app/run_host_win.h"
#include "base/file_io.h"
#include "feed/http_win.h"
#include "feed/seen_list.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/loopback_server.h"
#include "tests/win/test_items.h"
#include "tests/win/test_support.h"

namespace {

// The real host and windows, fetching from host and counting the fetches.
class TestRunHost : public WindowsRunHost {
  public:
    TestRunHost(std::string host, Settings& settings)
        : WindowsRunHost(nullptr, settings), host_(std::move(host)) {}
    std::optional<std::string> fetchServerFile(const std::string& path) override {
        ++fetches;
        return ::fetchServerFile(owner(), host_, path);
    }
    int fetches = 0;

  private:
    std::string host_;
};

UpdateItem graphicUpdate(int32_t number, const std::string& url) {
    UpdateItem item;
    std::tie(item.type, item.number, item.url) = std::tuple(ItemType::GraphicUpdate, number, url);
    return item;
}

class WindowsRun : public testing::Test {
  protected:
    void SetUp() override {
        if (testEnv("HERALDER_HTTP_HOST").empty())
            GTEST_SKIP() << "no loopback web server (run through scripts/test_wine.sh)";
        record.CurrentTransactionDate = "11-22-2026";
        record.PromptMultipleItems = 0;
        clearUserData();
        ASSERT_TRUE(ensureDataFolders());
    }
    void TearDown() override {
        RemoveDirectoryA((folder + "heralder_banner.png.temp").c_str());
        clearUserData();
    }
    std::unordered_set<int32_t> seen() const {
        return parseSeenNumbers(readFileBytes(folder + "Heralder.lst").value_or(""));
    }

    Settings record;
    const std::string folder = getUserHeralderPath("");
};

// A folder where the new picture's temporary file should go: the real file
// system refuses the write, the user's picture stays and the user is told.
TEST_F(WindowsRun, GraphicUpdateWhoseWriteFailsReplacesNothing) {
    std::ofstream(folder + "heralder_banner.png", std::ios::binary) << "the user's picture";
    CreateDirectoryA((folder + "heralder_banner.png.temp").c_str(), nullptr);
    std::string reported;
    DialogDriver driver([&](HWND box) {
        reported = itemText(box, IDC_MESSAGETEXT);
        saveWindowScreenshot(box, "run_graphic_error");
        clickItem(box, IDC_BUTTON1);
    });
    TestRunHost host(testEnv("HERALDER_HTTP_HOST"), record);
    std::vector<UpdateItem> items = {graphicUpdate(2109, "/update/images/heralder_banner.png")};
    EXPECT_TRUE(runNotifications(host, items));
    EXPECT_EQ(
        std::tuple(host.fetches, reported),
        std::tuple(1, "There has been an error upgrading the new graphic heralder_banner.png."));
    EXPECT_EQ(readFileBytes(folder + "heralder_banner.png"), "the user's picture");
}

// Four graphic updates and an alert's picture on a server that never answers
// hold the run for the one budget, not for a fetch time limit each: the first
// download uses it up, the other three are not tried and wait unmarked for the
// next run, and the alert opens at once with the default picture.
TEST_F(WindowsRun, DownloadsShareOneTimeBudgetAndWhatItMissesWaitsForTheNextRun) {
    LoopbackServer server("");
    ASSERT_TRUE(server.listening());
    setFetchLimits({.idleMs = 5000, .totalMs = 5000, .runMs = 1500});
    std::vector<UpdateItem> run;
    for (int32_t number : {1, 2, 3, 4})
        run.push_back(
            graphicUpdate(number, "/update/images/new" + std::to_string(number) + ".png"));
    UpdateItem& alert = run.emplace_back(sampleAlerts(1, 5)[0]);
    std::tie(alert.importance, alert.graphic) = std::tuple(3, "silent.png");

    TestRunHost host("127.0.0.1:" + std::to_string(kAppServerPort), record);
    const DWORD start = GetTickCount();
    DWORD openedAfter = 0;
    DialogDriver driver([&](HWND box) {
        openedAfter = GetTickCount() - start;
        clickItem(box, IDC_BUTTON1);
    });
    EXPECT_TRUE(runNotifications(host, run));
    setFetchLimits({});
    EXPECT_EQ(std::tuple(driver.ran(), host.fetches, seen()),
              std::tuple(true, 1, std::unordered_set<int32_t>{5}));
    EXPECT_GE(openedAfter, 1400u);
    EXPECT_LT(openedAfter, 4000u);  // four fetch limits and a fifth would be 25 s
    EXPECT_FALSE(pathExists(folder + "images\\silent.png"));
}

}  // namespace
