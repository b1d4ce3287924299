// The notification run on Windows over the sample feed: the product folder is
// made when it is missing, the graphic update arrives over real HTTP and
// replaces its file through the ".temp" name, a failed write is reported in a
// real message box, and every item shown or applied is in the seen list on
// disk afterwards. The user's own product folder is moved aside meanwhile.
#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "base/crt_text.h"
#include "feed/document_parser.h"
#include "feed/http.h"
#include "feed/notification_run_win.h"
#include "resources/resource.h"
#include "settings/file_locations.h"
#include "settings/settings.h"
#include "tests/win/dialog_driver.h"
#include "tests/win/test_support.h"

namespace {

constexpr char kBanner[] = "heralder_banner.png";

// The real host, but fetching from the loopback server instead of the
// publisher's, and recording the windows it is asked to open.
class LoopbackRunHost : public WindowsRunHost {
  public:
    LoopbackRunHost() : WindowsRunHost(nullptr) {}

    std::optional<std::string> fetchServerFile(const std::string& path) override {
        fetched.push_back(path);
        return ::fetchServerFile(owner(), testEnv("HERALDER_HTTP_HOST"), path);
    }
    int showAlertWindow(UpdateItem& item) override {
        shown.push_back(item.number);
        return 1;
    }
    int showVersionWindow(UpdateItem& item) override {
        shown.push_back(item.number);
        return 1;
    }

    std::vector<std::string> fetched;
    std::vector<int32_t> shown;
};

void removeFolder(const std::string& folder) {
    WIN32_FIND_DATAA fd;
    HANDLE find = FindFirstFileA((folder + "*").c_str(), &fd);
    if (find != INVALID_HANDLE_VALUE) {
        do {
            std::string name = fd.cFileName;
            if (name == "." || name == "..") continue;
            if (fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                removeFolder(folder + name + "\\");
            else
                DeleteFileA((folder + name).c_str());
        } while (FindNextFileA(find, &fd));
        FindClose(find);
    }
    RemoveDirectoryA(folder.c_str());
}

std::set<int32_t> seenNumbers(const std::string& bytes) {
    std::set<int32_t> numbers;
    for (std::size_t start = 0; start < bytes.size();) {
        std::size_t end = bytes.find("\r\n", start);
        EXPECT_NE(end, std::string::npos) << "every line ends in CR LF";
        if (end == std::string::npos) break;
        numbers.insert(atoiLike(bytes.substr(start, end - start)));
        start = end + 2;
    }
    return numbers;
}

class WindowsRun : public testing::Test {
  protected:
    void SetUp() override {
        if (testEnv("HERALDER_HTTP_HOST").empty())
            GTEST_SKIP() << "no loopback web server (run through scripts/test_wine.sh)";
        savedRecord = settings();
        productFolder = getUserHeralderPath("");
        ASSERT_FALSE(productFolder.empty());
        std::string folder = productFolder.substr(0, productFolder.size() - 1);
        asideFolder = folder + ".saved-by-test";
        movedAside = MoveFileA(folder.c_str(), asideFolder.c_str()) != FALSE;

        auto document = readFileBytes(testEnv("HERALDER_SOURCE_DIR") + "\\examples\\update.txt");
        ASSERT_TRUE(document);
        items = parseUpdateDocument(normalizeLineEnds(*document));
        ASSERT_EQ(items.size(), 9u);
        banner = readFileBytes(testEnv("HERALDER_SOURCE_DIR") + "\\examples\\images\\" + kBanner);
        ASSERT_TRUE(banner);

        settings() = Settings{};
        settings().CurrentTransactionDate = "11-22-2026";
        settings().PromptMultipleItems = 0;
    }

    void TearDown() override {
        if (productFolder.empty()) return;
        removeFolder(productFolder);
        if (movedAside) MoveFileA(asideFolder.c_str(), productFolder.c_str());
        settings() = savedRecord;
    }

    Settings savedRecord;
    std::string productFolder, asideFolder;
    bool movedAside = false;
    std::vector<UpdateItem> items;
    std::optional<std::string> banner;
};

TEST_F(WindowsRun, SampleFeedAppliesUpdatesAndRemembersEveryItemOnDisk) {
    LoopbackRunHost host;
    // Nothing here should ask the user anything; a box would be an error report.
    std::string unexpected;
    DialogDriver driver([&](HWND box) {
        unexpected = itemText(box, IDC_MESSAGETEXT);
        pressKey(box, VK_ESCAPE);
    });
    EXPECT_TRUE(runNotifications(host, items));
    EXPECT_FALSE(driver.ran()) << unexpected;

    EXPECT_EQ(host.fetched, std::vector<std::string>{"/update/images/heralder_banner.png"});
    // The body as it was held in memory: the file, then 16 zero bytes.
    EXPECT_EQ(readFileBytes(productFolder + kBanner), *banner + std::string(16, '\0'));
    EXPECT_EQ(GetFileAttributesA((productFolder + kBanner + ".temp").c_str()),
              INVALID_FILE_ATTRIBUTES);

    EXPECT_EQ(settings().PromptMultipleCount, 6u);
    EXPECT_EQ(settings().AlertFontSize, 18u);

    // Alerts, tips, notices and off-topic items show; the two products of the
    // version items are not installed here, so the default filter skips them.
    EXPECT_EQ(host.shown, (std::vector<int32_t>{2101, 2104, 2105, 2106}));
    auto list = readFileBytes(productFolder + "Heralder.lst");
    ASSERT_TRUE(list);
    EXPECT_EQ(seenNumbers(*list), (std::set<int32_t>{2101, 2104, 2105, 2106, 2107, 2108, 2109}));

    // A second run finds everything seen and shows nothing.
    LoopbackRunHost again;
    EXPECT_TRUE(runNotifications(again, items));
    EXPECT_TRUE(again.shown.empty());
    EXPECT_TRUE(again.fetched.empty());
}

TEST_F(WindowsRun, FailedGraphicWriteIsReportedAndKeepsTheOldPicture) {
    ASSERT_TRUE(CreateDirectoryA(productFolder.c_str(), nullptr));
    const std::string old = "the picture the user has now";
    std::FILE* f = std::fopen((productFolder + kBanner).c_str(), "wb");
    ASSERT_TRUE(f);
    std::fwrite(old.data(), 1, old.size(), f);
    std::fclose(f);
    // A folder where the temporary file should go makes the write fail.
    ASSERT_TRUE(CreateDirectoryA((productFolder + kBanner + ".temp").c_str(), nullptr));

    std::string reported;
    LoopbackRunHost host;
    DialogDriver driver([&](HWND box) {
        reported = itemText(box, IDC_MESSAGETEXT);
        saveWindowScreenshot(box, "run_graphic_error");
        clickItem(box, IDC_BUTTON1);
    });
    EXPECT_TRUE(runNotifications(host, items));

    EXPECT_TRUE(driver.ran());
    EXPECT_EQ(reported, "There has been an error upgrading the new graphic heralder_banner.png.");
    EXPECT_EQ(readFileBytes(productFolder + kBanner), old);
    // Not marked by the graphic pass, but by the window pass that follows.
    auto list = readFileBytes(productFolder + "Heralder.lst");
    ASSERT_TRUE(list);
    EXPECT_EQ(seenNumbers(*list).count(2109), 1u);
}

}  // namespace
