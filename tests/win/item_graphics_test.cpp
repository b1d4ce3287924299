// Item pictures under the real codec: what each kind of file decodes to, the
// names that never reach a decoder, damaged and oversized files, the default
// picture and its refusal of other depths, drawing read back pixel by pixel,
// and COM left as each thread had it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <thread>

#include "base/file_io.h"
#include "base/packed_dib.h"
#include "shell/item_graphics.h"
#include "shell/item_graphics_win.h"
#include "tests/win/large_png.h"
#include "tests/win/recorder/recording.h"
#include "tests/win/test_dialogs.h"
#include "tests/win/test_support.h"

namespace {

std::string dataFile(const std::string& name) {
    return testEnv("HERALDER_TEST_DATA") + "\\pictures\\" + name;
}

// A scratch folder for files the tests make, emptied and removed afterwards.
struct ScratchFolder {
    ~ScratchFolder() {
        deleteFilesIn(path);
        RemoveDirectoryA(path.c_str());
    }
    std::string file(const std::string& name) const { return path + name; }
    std::string copy(const std::string& from, const std::string& name) const {
        CopyFileA(from.c_str(), file(name).c_str(), FALSE);
        return file(name);
    }
    const std::string path = scratchFolder("heralder_pictures");
};

DibInfo infoOf(const Picture& picture) {
    const std::optional<DibInfo> info = getDibInfo(picture);
    return info ? *info : DibInfo{};
}

uint32_t pixelAt(const Picture& picture, int x, int y) {
    return getDibPixel(picture, infoOf(picture), x, y);
}

bool closeTo(uint32_t a, uint32_t b, int tolerance) {
    for (int shift = 0; shift < 32; shift += 8)
        if (std::abs(int(a >> shift & 0xFF) - int(b >> shift & 0xFF)) > tolerance) return false;
    return true;
}

TEST(ItemGraphicsFiles, PngWithTransparencyKeepsStraightAlphaAtThirtyTwoBits) {
    const std::optional<Picture> picture = loadGraphicFile(dataFile("alpha.png"));
    ASSERT_TRUE(picture);
    const DibInfo info = infoOf(*picture);
    EXPECT_EQ(info.width, 8);
    EXPECT_EQ(info.height, 6);
    EXPECT_EQ(info.bitCount, 32);
    EXPECT_TRUE(info.bottomUp);
    EXPECT_EQ(pixelAt(*picture, 0, 0) >> 24, 0u);     // transparent corner
    EXPECT_EQ(pixelAt(*picture, 7, 5), 0x801EC80Au);  // not premultiplied
    EXPECT_EQ(pixelAt(*picture, 3, 2), 0xFF1428C8u);
}

TEST(ItemGraphicsFiles, OpaquePngAndJpegAreTwentyFourBits) {
    const std::optional<Picture> png = loadGraphicFile(dataFile("opaque.png"));
    ASSERT_TRUE(png);
    EXPECT_EQ(infoOf(*png).bitCount, 24);
    EXPECT_EQ(pixelAt(*png, 0, 0), 0x00FFFFu);
    EXPECT_EQ(pixelAt(*png, 7, 5), 0xC85A1Eu);

    const std::optional<Picture> jpeg = loadGraphicFile(dataFile("photo.jpg"));
    ASSERT_TRUE(jpeg);
    const DibInfo info = infoOf(*jpeg);
    EXPECT_EQ(info.bitCount, 24);
    EXPECT_EQ(info.width, 16);
    EXPECT_TRUE(closeTo(pixelAt(*jpeg, 8, 8), 0xA06020, 3)) << std::hex << pixelAt(*jpeg, 8, 8);
}

// The choice by name is the portable core's; here the real decoders follow it.
TEST(ItemGraphicsFiles, OnlyPngAndJpgNamesReachADecoder) {
    ScratchFolder scratch;
    const struct {
        std::string source, name;
        bool loads;
    } cases[] = {
        {"alpha.png", "photo.PNG", true},
        {"photo.jpg", "photo.JPG", true},
        {"photo.jpg", "photo.jpeg", false},
        // The extension names the decoder: a JPEG named .png is not a PNG.
        {"photo.jpg", "mislabelled.png", false},
    };
    for (const auto& c : cases) {
        const std::string path = scratch.copy(dataFile(c.source), c.name);
        EXPECT_EQ(loadGraphicFile(path).has_value(), c.loads) << c.name;
    }
}

TEST(ItemGraphicsFiles, DamagedOrMissingFilesGiveNothing) {
    ScratchFolder scratch;
    std::ofstream(scratch.file("empty.png"), std::ios::binary);
    std::ofstream(scratch.file("text.png"), std::ios::binary) << "<html>Not found</html>";
    std::ofstream(scratch.file("text.jpg"), std::ios::binary) << "<html>Not found</html>";
    const std::string jpegBytes = readFileBytes(dataFile("photo.jpg")).value_or("");
    std::ofstream(scratch.file("cut.jpg"), std::ios::binary)
        << jpegBytes.substr(0, jpegBytes.size() / 2);
    CreateDirectoryA(scratch.file("folder.png").c_str(), nullptr);

    for (const std::string& path :
         {dataFile("truncated.png"), dataFile("bad_crc.png"), scratch.file("empty.png"),
          scratch.file("text.png"), scratch.file("text.jpg"), scratch.file("missing.png"),
          scratch.file("folder.png")})
        EXPECT_FALSE(loadGraphicFile(path)) << path;
    RemoveDirectoryA(scratch.file("folder.png").c_str());
    // A JPEG cut short may still yield the rows it has; it must never crash.
    const std::optional<Picture> cut = loadGraphicFile(scratch.file("cut.jpg"));
    if (cut) {
        EXPECT_EQ(infoOf(*cut).bitCount, 24);
    }
}

TEST(ItemGraphicsFiles, FilesBeyondTheLimitsAreNotDecoded) {
    const std::optional<ImageInfo> wide = GetImageInfo(dataFile("wide.png"));
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->width, 4097u);
    EXPECT_EQ(wide->height, 1u);
    EXPECT_EQ(wide->bitsPerPixel, 8u);
    EXPECT_FALSE(loadGraphicFile(dataFile("wide.png")));

    // A valid picture followed by padding: decoders ignore what follows the
    // end chunk, so only the size on disk stops it.
    ScratchFolder scratch;
    const std::string bytes = readFileBytes(dataFile("alpha.png")).value_or("");
    for (uint64_t total : {kMaxPictureFileBytes, kMaxPictureFileBytes + 1}) {
        const std::string path = scratch.file("padded" + std::to_string(total) + ".png");
        {
            std::ofstream out(path, std::ios::binary);
            out << bytes << std::string(total - bytes.size(), '\0');
        }
        const std::optional<ImageInfo> info = GetImageInfo(path);
        ASSERT_TRUE(info);
        EXPECT_EQ(info->fileBytes, total);
        EXPECT_EQ(loadGraphicFile(path).has_value(), total <= kMaxPictureFileBytes) << total;
    }
}

TEST(ItemGraphicsResources, DefaultPictureIsSixtyFourSquareWithAlpha) {
    const std::optional<Picture> picture = loadBitmapResourceDib(kDefaultPictureId);
    ASSERT_TRUE(picture);
    const DibInfo info = infoOf(*picture);
    EXPECT_EQ(info.width, 64);
    EXPECT_EQ(info.height, 64);
    EXPECT_EQ(info.bitCount, 32);
    EXPECT_TRUE(info.bottomUp);
    EXPECT_EQ(pixelAt(*picture, 0, 0) >> 24, 0u);      // transparent corner
    EXPECT_EQ(pixelAt(*picture, 32, 16) >> 24, 255u);  // the bell itself
    // Nothing below row 35: the smallest alert window shows no more of it.
    for (int y = 35; y < 64; ++y)
        for (int x = 0; x < 64; ++x) ASSERT_EQ(pixelAt(*picture, x, y) >> 24, 0u) << x << "," << y;

    EXPECT_FALSE(loadBitmapResourceDib(IDR_TEST_PICTURE_24));
    EXPECT_FALSE(loadBitmapResourceDib(4321));  // no such resource
}

TEST(ItemGraphicsDrawing, PicturesLandPixelForPixelWhereAsked) {
    const COLORREF paper = 0x808080;
    // 24 bits: every pixel different, so a flip or a shift shows.
    Picture picture = makePackedDib(3, 2, 24);
    const DibInfo info = infoOf(picture);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            setDibPixel(picture, info, x, y, 0x102030 + 0x40 * x + 0x4000 * y);
    Canvas canvas(16, 16, paper);
    ASSERT_TRUE(drawPicture(canvas.dc(), 5, 7, picture));
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(canvas.at(5 + x, 7 + y), pixelAt(picture, x, y)) << x << "," << y;
    EXPECT_EQ(canvas.at(4, 7), paper);
    EXPECT_EQ(canvas.at(8, 7), paper);
    EXPECT_EQ(canvas.at(5, 9), paper);

    // 4 bits through the colour table: the pixels start after 16 entries.
    const uint32_t table[16] = {0x000000, 0x0000FF, 0x00FF00};  // blue, green as RGBQUAD
    Picture indexed = makeColourTableDib(2, 1, 4, table);
    indexed[getDibInfo(indexed)->bitsOffset] = 0x12;  // left 1, right 2
    ASSERT_TRUE(drawPicture(canvas.dc(), 0, 0, indexed));
    EXPECT_EQ(canvas.at(0, 0), 0xFF0000u);  // COLORREF blue
    EXPECT_EQ(canvas.at(1, 0), 0x00FF00u);

    // With alpha, over a colour: the transparent corner shows the colour.
    const std::optional<Picture> alpha = loadGraphicFile(dataFile("alpha.png"));
    ASSERT_TRUE(alpha);
    ASSERT_TRUE(drawPictureOver(canvas.dc(), 8, 8, *alpha, 0x00FFFF));
    EXPECT_EQ(canvas.at(8, 8), 0x00FFFFu);
    EXPECT_EQ(canvas.at(9, 8), 0x1428C8u);
    // Green 200 at alpha 128 over yellow: 200 * 128 / 255 + 255 * 127 / 255.
    EXPECT_EQ(canvas.at(15, 13), 0x0FE384u);

    EXPECT_FALSE(drawPicture(canvas.dc(), 0, 0, Picture{}));
}

// The default picture as the alert window shows it, over a light, a grey and
// a dark background, for people to look at.
TEST(ItemGraphicsDrawing, DefaultPictureSheet) {
    const std::optional<Picture> bell = loadBitmapResourceDib(kDefaultPictureId);
    ASSERT_TRUE(bell);
    const COLORREF backgrounds[] = {0xFFFFFF, GetSysColor(COLOR_BTNFACE), 0x603010};
    Canvas sheet(3 * 80, 80, 0);
    for (int i = 0; i < 3; ++i) {
        sheet.fill({80 * i, 0, 80 * i + 80, 80}, backgrounds[i]);
        ASSERT_TRUE(drawPictureOver(sheet.dc(), 80 * i + 8, 8, *bell, backgrounds[i]));
        EXPECT_EQ(sheet.at(80 * i + 8, 8), backgrounds[i]);  // transparent corner
    }
    sheet.save("default_picture");
}

// Decoding on a thread in a given COM state; the state afterwards is what
// CoInitializeEx then answers.
HRESULT comAfterDecodeOnThread(bool multithreaded, bool* decoded) {
    HRESULT after = E_FAIL;
    std::thread([&] {
        if (multithreaded) CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        *decoded = ReadPngFile(dataFile("alpha.png")).has_value();
        after = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        if (SUCCEEDED(after)) CoUninitialize();
        if (multithreaded) CoUninitialize();
    }).join();
    return after;
}

TEST(ItemGraphicsCom, DecodingLeavesEachThreadsComAsItWas) {
    bool decoded = false;
    // No COM before: set up and undone, so the thread is free to choose.
    EXPECT_EQ(comAfterDecodeOnThread(false, &decoded), S_OK);
    EXPECT_TRUE(decoded);
    // Multithreaded COM before: used as it is and still there afterwards.
    decoded = false;
    EXPECT_EQ(comAfterDecodeOnThread(true, &decoded), S_FALSE);
    EXPECT_TRUE(decoded);
}

// The largest picture accepted decodes whole (its load time is a figure of
// the window benchmark).
TEST(ItemGraphicsFiles, LargestAcceptedPngDecodes) {
    ScratchFolder scratch;
    const std::string path = scratch.file("large.png");
    ASSERT_TRUE(writeLargePng(path, kMaxPictureSide));
    const std::optional<Picture> picture = loadGraphicFile(path);
    ASSERT_TRUE(picture);
    EXPECT_EQ(infoOf(*picture).width, int32_t(kMaxPictureSide));
    EXPECT_EQ(infoOf(*picture).bitCount, 32);
}

}  // namespace
