// The notification run on Windows over the sample feed: the product folder is
// made when it is missing, the graphic update arrives over real HTTP and
// replaces its file through the ".temp" name, a failed write is reported in a
// real message box, and every item shown or applied is in the seen list on
// disk afterwards. The user's own product folder is moved aside meanwhile.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unordered_set>
#include <vector>

#include "base/file_io.h"
#include "feed/document_parser.h"
#include "feed/http_win.h"
#include "app/run_host_win.h"
#include "feed/seen_list.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/loopback_server.h"
#include "tests/win/test_support.h"

namespace {

constexpr char kBanner[] = "heralder_banner.png";

// The real host, but fetching from the loopback server instead of the
// publisher's, and recording the windows it is asked to open.
class LoopbackRunHost : public WindowsRunHost {
  public:
    explicit LoopbackRunHost(Settings& settings) : WindowsRunHost(nullptr, settings) {}

    std::optional<std::string> fetchServerFile(const std::string& path) override {
        return ::fetchServerFile(owner(), testEnv("HERALDER_HTTP_HOST"), path);
    }
    int showAlertWindow(UpdateItem& item) override {
        shown.push_back(item.number);
        return 1;
    }
    int showVersionWindow(UpdateItem& item) override { return showAlertWindow(item); }
    // A real box only where a test drives it; elsewhere a message is an error
    // report, and a box nobody closes would stall the run.
    void showMessage(const std::string& text) override {
        if (realMessages)
            WindowsRunHost::showMessage(text);
        else
            ADD_FAILURE() << "unexpected message: " << text;
    }

    bool realMessages = false;
    std::vector<int32_t> shown;
};

// The real windows, and graphic updates from a server that never answers.
class SilentRunHost : public LoopbackRunHost {
  public:
    SilentRunHost(std::string host, Settings& settings)
        : LoopbackRunHost(settings), host_(std::move(host)) {}
    std::optional<std::string> fetchServerFile(const std::string& path) override {
        ++fetches;
        return ::fetchServerFile(owner(), host_, path);
    }
    int showAlertWindow(UpdateItem& item) override { return WindowsRunHost::showAlertWindow(item); }
    int fetches = 0;

  private:
    std::string host_;
};

class WindowsRun : public testing::Test {
  protected:
    void SetUp() override {
        if (testEnv("HERALDER_HTTP_HOST").empty())
            GTEST_SKIP() << "no loopback web server (run through scripts/test_wine.sh)";
        productFolder = getUserHeralderPath("");
        ASSERT_FALSE(productFolder.empty());
        std::string folder = productFolder.substr(0, productFolder.size() - 1);
        asideFolder = folder + ".saved-by-test";
        movedAside = MoveFileA(folder.c_str(), asideFolder.c_str()) != FALSE;

        auto document = readFileBytes(testEnv("HERALDER_SOURCE_DIR") + "\\examples\\update.txt");
        ASSERT_TRUE(document);
        items = parseUpdateDocument(normalizeLineEnds(*document));
        record.CurrentTransactionDate = "11-22-2026";
        record.PromptMultipleItems = 0;
    }

    void TearDown() override {
        if (productFolder.empty()) return;
        std::error_code ignored;
        std::filesystem::remove_all(productFolder.substr(0, productFolder.size() - 1), ignored);
        if (movedAside) MoveFileA(asideFolder.c_str(), productFolder.c_str());
    }

    // The numbers in the product folder's seen list.
    std::unordered_set<int32_t> seenOnDisk() {
        return parseSeenNumbers(readFileBytes(productFolder + "Heralder.lst").value_or(""));
    }

    Settings record;
    std::string productFolder, asideFolder;
    bool movedAside = false;
    std::vector<UpdateItem> items;
};

TEST_F(WindowsRun, SampleFeedAppliesUpdatesAndRemembersEveryItemOnDisk) {
    LoopbackRunHost host(record);
    EXPECT_TRUE(runNotifications(host, items));

    // The body as it was held in memory: the file, then 16 zero bytes.
    auto banner = readFileBytes(testEnv("HERALDER_SOURCE_DIR") + "\\examples\\images\\" + kBanner);
    ASSERT_TRUE(banner);
    EXPECT_EQ(readFileBytes(productFolder + kBanner), *banner + std::string(16, '\0'));
    // The feed asks for every version notice (the whole-process test checks the
    // settings it sets), so the version items show although nothing is installed.
    EXPECT_EQ(host.shown, (std::vector<int32_t>{2101, 2102, 2103, 2104, 2105, 2106}));
    EXPECT_EQ(seenOnDisk(), (std::unordered_set<int32_t>{2101, 2102, 2103, 2104, 2105, 2106, 2107,
                                                         2108, 2109, 2110}));

    LoopbackRunHost again(record);
    EXPECT_TRUE(runNotifications(again, items));
    EXPECT_TRUE(again.shown.empty());
}

TEST_F(WindowsRun, FailedGraphicWriteIsReportedAndKeepsTheOldPicture) {
    ASSERT_TRUE(CreateDirectoryA(productFolder.c_str(), nullptr));
    std::ofstream(productFolder + kBanner, std::ios::binary) << "the picture the user has now";
    // A folder where the temporary file should go makes the write fail.
    ASSERT_TRUE(CreateDirectoryA((productFolder + kBanner + ".temp").c_str(), nullptr));

    std::string reported;
    LoopbackRunHost host(record);
    host.realMessages = true;
    DialogDriver driver([&](HWND box) {
        reported = itemText(box, IDC_MESSAGETEXT);
        saveWindowScreenshot(box, "run_graphic_error");
        clickItem(box, IDC_BUTTON1);
    });
    EXPECT_TRUE(runNotifications(host, items));

    EXPECT_TRUE(driver.ran());
    EXPECT_EQ(reported, "There has been an error upgrading the new graphic heralder_banner.png.");
    EXPECT_EQ(readFileBytes(productFolder + kBanner), "the picture the user has now");
    // Not marked by the graphic pass, but by the window pass that follows.
    EXPECT_EQ(seenOnDisk().count(2109), 1u);
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
    for (int32_t number : {1, 2, 3, 4}) {
        UpdateItem& graphic = run.emplace_back();
        graphic.type = ItemType::GraphicUpdate;
        graphic.number = number;
        graphic.url = "/update/images/new" + std::to_string(number) + ".png";
    }
    UpdateItem& alert = run.emplace_back();
    alert.type = ItemType::Alert;
    alert.number = 5;
    alert.importance = 3;
    alert.title = "Picture on a silent server";
    alert.plainText = "The window opens without waiting for its picture.";
    alert.graphic = "silent.png";

    SilentRunHost host(updates.host(), record);
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
    EXPECT_EQ(seenOnDisk(), (std::unordered_set<int32_t>{5}));
    EXPECT_FALSE(std::filesystem::exists(productFolder + "images\\silent.png"));
}

}  // namespace
