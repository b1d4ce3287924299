// The notification run in this process with the real Windows host, fetching
// from the loopback web servers: graphic updates that must replace nothing (a
// write that fails, names that are no picture's) and the one download budget
// a run's pictures share. The daily job as a whole is process_test.cpp's.
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
std::unordered_set<int32_t> seenNumbers() {
    return parseSeenNumbers(readFileBytes(getUserHeralderPath("Heralder.lst")).value_or(""));
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

    Settings record;
    const std::string folder = getUserHeralderPath("");
};

// Only a picture written whole replaces the old one; a failed write is told in
// a real message box. A name that is no picture's (the seen list, a device, a
// program) is never even fetched.
TEST_F(WindowsRun, GraphicUpdateReplacesNothingButAPictureWrittenWhole) {
    const struct {
        const char* url;
        bool blocked;  // a folder where the temporary file should go
        int fetches;
        const char* message;
    } cases[] = {
        {"/update/images/heralder_banner.png", true, 1,
         "There has been an error upgrading the new graphic heralder_banner.png."},
        {"/update/images/Heralder.lst", false, 0, ""},
        {"/update/images/COM1.png", false, 0, ""},
        {"/update/images/evil.exe", false, 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.url);
        std::ofstream(folder + "heralder_banner.png", std::ios::binary) << "the user's picture";
        std::ofstream(folder + "Heralder.lst", std::ios::binary) << "1\r\n";
        if (c.blocked) CreateDirectoryA((folder + "heralder_banner.png.temp").c_str(), nullptr);
        std::string reported;
        DialogDriver driver([&](HWND box) {
            reported = itemText(box, IDC_MESSAGETEXT);
            saveWindowScreenshot(box, "run_graphic_error");
            clickItem(box, IDC_BUTTON1);
        });
        TestRunHost host(testEnv("HERALDER_HTTP_HOST"), record);
        std::vector<UpdateItem> items = {graphicUpdate(2109, c.url)};
        EXPECT_TRUE(runNotifications(host, items));
        EXPECT_EQ(host.fetches, c.fetches);
        EXPECT_EQ(reported, c.message);
        EXPECT_EQ(readFileBytes(folder + "heralder_banner.png"), "the user's picture");
        EXPECT_TRUE(seenNumbers().count(1));
        EXPECT_FALSE(pathExists(folder + "evil.exe"));
    }
}

// Four graphic updates and an alert's picture on servers that never answer
// hold the run for the one budget, not for a fetch time limit each: the first
// download uses it up, the other three are not tried and wait unmarked for the
// next run, and the alert opens at once with the default picture.
TEST_F(WindowsRun, DownloadsShareOneTimeBudgetAndWhatItMissesWaitsForTheNextRun) {
    SilentServer updates, pictures(kAppServerPort);
    ASSERT_TRUE(updates.listening() && pictures.listening());
    setFetchLimits({.idleMs = 5000, .totalMs = 5000, .runMs = 1500});
    std::vector<UpdateItem> run;
    for (int32_t number : {1, 2, 3, 4})
        run.push_back(
            graphicUpdate(number, "/update/images/new" + std::to_string(number) + ".png"));
    UpdateItem& alert = run.emplace_back(sampleAlerts(1, 5)[0]);
    std::tie(alert.importance, alert.graphic) = std::tuple(3, "silent.png");
    alert.plainText = "The window opens without waiting for its picture.";

    TestRunHost host(updates.host(), record);
    const DWORD start = GetTickCount();
    DWORD openedAfter = 0;
    DialogDriver driver([&](HWND box) {
        openedAfter = GetTickCount() - start;
        clickItem(box, IDC_BUTTON1);
    });
    EXPECT_TRUE(runNotifications(host, run));
    setFetchLimits({});

    EXPECT_TRUE(driver.ran());
    EXPECT_EQ(host.fetches, 1);
    EXPECT_GE(openedAfter, 1400u);
    EXPECT_LT(openedAfter, 4000u);  // four fetch limits and a fifth would be 25 s
    EXPECT_EQ(seenNumbers(), (std::unordered_set<int32_t>{5}));
    EXPECT_FALSE(pathExists(folder + "images\\silent.png"));
}

}  // namespace
