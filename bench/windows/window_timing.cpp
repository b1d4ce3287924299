// Window timing benchmark (figures only), run under Wine by bench/wine_windows.sh.
//
//   window_timing FEED IMAGES_DIR
//
// 1. Shows every alert and version item of the sample feed FEED in turn, its
//    pictures already in the images folder, and measures from each window's
//    Next to the next window fully painted.
// 2. Opens an alert with a 4096 x 4096 PNG picture, and one with a 5 MB text,
//    and measures from the call to the window fully painted.
//
// "Fully painted" is the first moment the dialog's modal loop finds its queue
// empty: it then sends WM_ENTERIDLE to the owner, after every posted message
// (the height fit) and every WM_PAINT has been handled.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "app/app_win.h"
#include "app/run_host_win.h"
#include "base/packed_dib.h"
#include "feed/document_file.h"
#include "feed/document_parser.h"
#include "notify/alert_box_win.h"
#include "notify/version_box_win.h"
#include "settings/file_locations_win.h"
#include "settings/settings.h"
#include "shell/item_graphics.h"
#include "shell/item_graphics_win.h"
#include "tests/win/large_png.h"

namespace {

using Clock = std::chrono::steady_clock;

struct NothingInstalled : InstalledLookup {
    std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem&) override {
        return std::nullopt;
    }
};

// What the owner window does on each idle of a dialog: record the first idle
// of every new dialog and, when asked, press Next there.
struct Stopwatch {
    HWND lastDialog = nullptr;
    Clock::time_point start;
    std::vector<double> paintedMs;  // start to first idle, one per dialog
    bool pressNext = true;
};
Stopwatch watch;

LRESULT CALLBACK ownerProcedure(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_ENTERIDLE && wp == MSGF_DIALOGBOX) {
        HWND dialog = reinterpret_cast<HWND>(lp);
        if (dialog != watch.lastDialog) {
            watch.lastDialog = dialog;
            watch.paintedMs.push_back(
                std::chrono::duration<double, std::milli>(Clock::now() - watch.start).count());
            // The next window's clock starts at this window's Next.
            watch.start = Clock::now();
            PostMessageA(dialog, WM_COMMAND, IDOK, 0);
        }
        return 0;
    }
    return DefWindowProcA(hwnd, msg, wp, lp);
}

HWND createOwner() {
    WNDCLASSA c{};
    c.lpfnWndProc = ownerProcedure;
    c.hInstance = GetModuleHandleA(nullptr);
    c.lpszClassName = "HeralderWindowTiming";
    RegisterClassA(&c);
    return CreateWindowA(c.lpszClassName, "", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr,
                         c.hInstance, nullptr);
}

double median(std::vector<double> v) {
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// One alert from the call to its first idle.
double timeOneAlert(HWND owner, UpdateItem item, const Settings& record) {
    watch = {};
    watch.start = Clock::now();
    showAlertBox(owner, item, notifyLook(), record);
    return watch.paintedMs.empty() ? -1 : watch.paintedMs.front();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: window_timing FEED IMAGES_DIR\n", stderr);
        return 2;
    }
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    Settings record;
    record.DownloadGraphics = 0;  // pictures come from the images folder only
    record.BeNoisy = 0;
    describeAlertLook(record);
    ensureDataFolders();
    const std::string images = getUserHeralderPath("images");
    CreateDirectoryA(images.c_str(), nullptr);
    const std::string source = argv[2];
    for (const char* name : {"alert.png", "tip.png", "offtopic.jpg", "atlas.jpg", "ledger.png"})
        CopyFileA((source + "\\" + name).c_str(), (images + "\\" + name).c_str(), FALSE);

    const std::optional<std::string> document = readLocalDocument(argv[1]);
    if (!document) {
        std::fprintf(stderr, "window_timing: cannot read %s\n", argv[1]);
        return 1;
    }
    std::vector<UpdateItem> items = parseUpdateDocument(*document);
    HWND owner = createOwner();
    NothingInstalled nothing;

    // Every window of the feed, one after another, as the daily run shows them.
    watch = {};
    watch.start = Clock::now();
    int shown = 0;
    std::vector<std::string> names;  // what each window showed, for the figures
    for (UpdateItem& item : items) {
        if (item.type == ItemType::Version || item.type == ItemType::Alert ||
            item.type == ItemType::Tip || item.type == ItemType::Notice ||
            item.type == ItemType::OffTopic)
            names.push_back(itemTypeTag(item.type) + " " + item.graphic.value_or("(default)"));
        switch (item.type) {
            case ItemType::Version:
                showVersionBox(owner, item, notifyLook(), record, nothing);
                ++shown;
                break;
            case ItemType::Alert:
            case ItemType::Tip:
            case ItemType::Notice:
            case ItemType::OffTopic:
                showAlertBox(owner, item, notifyLook(), record);
                ++shown;
                break;
            default:
                break;
        }
    }
    if (watch.paintedMs.size() >= 2) {
        // The first figure is the first window's opening, not a Next.
        std::vector<double> afterNext(watch.paintedMs.begin() + 1, watch.paintedMs.end());
        std::printf(
            "Next to next window painted: median %.1f ms, worst %.1f ms over %zu "
            "windows (aim under 50 ms)\n",
            median(afterNext), *std::max_element(afterNext.begin(), afterNext.end()),
            afterNext.size());
        for (std::size_t i = 0; i < watch.paintedMs.size() && i < names.size(); ++i)
            std::printf("  %-24s %6.1f ms%s\n", names[i].c_str(), watch.paintedMs[i],
                        i == 0 ? " (the first window, from its call)" : "");
    } else {
        std::printf("Next to next window painted: only %d windows shown\n", shown);
    }

    // The largest picture the program decodes.
    const std::string large = images + "\\large.png";
    if (writeLargePng(large, kMaxPictureSide)) {
        UpdateItem item;
        item.type = ItemType::Alert;
        item.title = "Large picture";
        item.plainText = "A picture of 4096 x 4096 pixels.";
        item.graphic = "large.png";
        std::vector<double> runs;
        for (int i = 0; i < 3; ++i) runs.push_back(timeOneAlert(owner, item, record));
        const auto t0 = Clock::now();
        const std::optional<Picture> picture = loadGraphicFile(large);
        const auto t1 = Clock::now();
        if (picture) {
            const std::optional<DibInfo> info = getDibInfo(*picture);
            const Picture blended = compositeOverColour(*picture, *info, 0xE0F0FF);
            const auto t2 = Clock::now();
            std::printf("  of which: decoding %.1f ms, one blend %.1f ms\n",
                        std::chrono::duration<double, std::milli>(t1 - t0).count(),
                        std::chrono::duration<double, std::milli>(t2 - t1).count());
        }
        std::printf("alert with a %u x %u PNG: median %.1f ms over %zu runs (aim under 1000 ms)\n",
                    kMaxPictureSide, kMaxPictureSide, median(runs), runs.size());
    } else {
        std::printf("alert with a large PNG: could not write the picture\n");
    }

    // Several megabytes of text.
    {
        UpdateItem item;
        item.type = ItemType::Alert;
        item.title = "Long text";
        std::string text;
        while (text.size() < 5u << 20) text += "Several megabytes of words, wrapped at the edge. ";
        item.plainText = text;
        std::vector<double> runs;
        for (int i = 0; i < 3; ++i) runs.push_back(timeOneAlert(owner, item, record));
        std::printf("alert with a %.1f MB text: median %.1f ms over %zu runs (aim under 1000 ms)\n",
                    text.size() / 1048576.0, median(runs), runs.size());
    }
    DestroyWindow(owner);
    CoUninitialize();
    return 0;
}
