// Item pictures under the real codec, drawn and read back pixel by pixel. The
// choice by name and the limits are the portable core's; here the real
// decoders follow them.
#include <gtest/gtest.h>

#include <fstream>
#include <thread>
#include <tuple>

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

DibInfo infoOf(const Picture& picture) {
    return getDibInfo(picture).value_or(DibInfo{});
}

uint32_t pixelAt(const Picture& picture, int x, int y) {
    return getDibPixel(picture, infoOf(picture), x, y);
}

// A scratch folder for files the tests make, emptied and removed afterwards.
struct ScratchFolder {
    ~ScratchFolder() {
        RemoveDirectoryA(file("folder.png").c_str());
        deleteFilesIn(path);
        RemoveDirectoryA(path.c_str());
    }
    std::string file(const std::string& name) const { return path + name; }
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream(file(name), std::ios::binary) << bytes;
        return file(name);
    }
    const std::string path = scratchFolder("heralder_pictures");
};

TEST(ItemGraphicsFiles, EachFileDecodesToItsDepthOrToNothing) {
    ScratchFolder scratch;
    const std::string png = readFileBytes(dataFile("alpha.png")).value_or("");
    const std::string jpeg = readFileBytes(dataFile("photo.jpg")).value_or("");
    CreateDirectoryA(scratch.file("folder.png").c_str(), nullptr);
    ASSERT_TRUE(writeLargePng(scratch.file("large.png"), kMaxPictureSide));
    struct Pixel {
        int x, y;
        uint32_t mask, want;
        int tolerance = 0;  // a channel may differ by this much (JPEG)
    };
    const struct {
        std::string path;
        int width, bits;  // 0: gives nothing
        std::vector<Pixel> pixels;
    } cases[] = {
        // clang-format off
        // Transparency keeps straight (not premultiplied) alpha at 32 bits.
        {dataFile("alpha.png"), 8, 32,
         {{0, 0, 0xFF000000, 0}, {7, 5, ~0u, 0x801EC80A}, {3, 2, ~0u, 0xFF1428C8}}},
        {dataFile("opaque.png"), 8, 24, {{0, 0, ~0u, 0x00FFFF}, {7, 5, ~0u, 0xC85A1E}}},
        {dataFile("photo.jpg"), 16, 24, {{8, 8, ~0u, 0xA06020, 3}}},
        {scratch.file("large.png"), int(kMaxPictureSide), 32, {}},
        // The PNG decoder refuses a JPEG named .png.
        {scratch.write("mislabelled.png", jpeg), 0, 0, {}},
        {dataFile("truncated.png"), 0, 0, {}},
        {dataFile("bad_crc.png"), 0, 0, {}},
        {dataFile("wide.png"), 0, 0, {}},  // 4097 pixels wide
        {scratch.write("empty.png", ""), 0, 0, {}},
        {scratch.write("text.jpg", "<html>Not found</html>"), 0, 0, {}},
        {scratch.file("missing.png"), 0, 0, {}},
        {scratch.file("folder.png"), 0, 0, {}},
        // Decoders ignore what follows the end chunk: only the size on disk stops it.
        {scratch.write("padded.png", png + std::string(kMaxPictureFileBytes - png.size(), '\0')),
         8, 32, {}},
        {scratch.write("over.png", png + std::string(kMaxPictureFileBytes + 1 - png.size(), '\0')),
         0, 0, {}},
        // clang-format on
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        const std::optional<Picture> picture = loadGraphicFile(c.path);
        ASSERT_EQ(picture.has_value(), c.width != 0);
        if (!picture) continue;
        const DibInfo info = infoOf(*picture);
        EXPECT_EQ(std::tuple(info.width, info.bitCount, info.bottomUp),
                  std::tuple(c.width, c.bits, true));
        for (const Pixel& p : c.pixels)
            for (int shift = 0; shift < 32; shift += 8)
                EXPECT_NEAR(int((pixelAt(*picture, p.x, p.y) & p.mask) >> shift & 0xFF),
                            int(p.want >> shift & 0xFF), p.tolerance)
                    << p.x << "," << p.y;
    }
    // A JPEG cut short may still yield the rows it has; it must never crash.
    if (auto cut = loadGraphicFile(scratch.write("cut.jpg", jpeg.substr(0, jpeg.size() / 2)))) {
        EXPECT_EQ(infoOf(*cut).bitCount, 24);
    }
    const std::optional<ImageInfo> wide = GetImageInfo(dataFile("wide.png"));
    ASSERT_TRUE(wide);
    EXPECT_EQ(std::tuple(wide->width, wide->height, wide->bitsPerPixel), std::tuple(4097u, 1u, 8u));
    EXPECT_EQ(GetImageInfo(scratch.file("over.png")).value_or(ImageInfo{}).fileBytes,
              kMaxPictureFileBytes + 1);
}

// 64 x 64 with alpha, nothing below row 35 (the smallest alert window shows no
// more of it); a resource of another depth, or none, gives nothing.
TEST(ItemGraphicsResources, DefaultPictureIsSixtyFourSquareWithAlpha) {
    const std::optional<Picture> bell = loadBitmapResourceDib(kDefaultPictureId);
    ASSERT_TRUE(bell);
    const DibInfo info = infoOf(*bell);
    EXPECT_EQ(std::tuple(info.width, info.height, info.bitCount, info.bottomUp),
              std::tuple(64, 64, 32, true));
    EXPECT_EQ(pixelAt(*bell, 32, 16) >> 24, 255u);  // the bell itself
    for (int y = 35; y < 64; ++y)
        for (int x = 0; x < 64; ++x) ASSERT_EQ(pixelAt(*bell, x, y) >> 24, 0u) << x << "," << y;
    EXPECT_FALSE(loadBitmapResourceDib(IDR_TEST_PICTURE_24));
    EXPECT_FALSE(loadBitmapResourceDib(4321));
}

TEST(ItemGraphicsDrawing, PicturesLandPixelForPixelWhereAsked) {
    const COLORREF paper = 0x808080;
    // 24 bits: every pixel different, so a flip or a shift shows.
    Picture picture = makePackedDib(3, 2, 24);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            setDibPixel(picture, infoOf(picture), x, y, 0x102030 + 0x40 * x + 0x4000 * y);
    Canvas canvas(16, 16, paper);
    ASSERT_TRUE(drawPicture(canvas.dc(), 5, 7, picture));
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(canvas.at(5 + x, 7 + y), pixelAt(picture, x, y)) << x << "," << y;
    for (auto [x, y] : {std::pair{4, 7}, {8, 7}, {5, 9}}) EXPECT_EQ(canvas.at(x, y), paper);

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

// Decoding on a thread without COM sets it up and undoes it; on one with
// multithreaded COM uses it as it is and leaves it there. What CoInitializeEx
// answers afterwards tells.
TEST(ItemGraphicsCom, DecodingLeavesEachThreadsComAsItWas) {
    for (auto [mt, after] : {std::pair{false, S_OK}, {true, S_FALSE}}) {
        const bool multithreaded = mt;
        HRESULT got = E_FAIL;
        bool decoded = false;
        std::thread([&] {
            if (multithreaded) CoInitializeEx(nullptr, COINIT_MULTITHREADED);
            decoded = ReadPngFile(dataFile("alpha.png")).has_value();
            got = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
            if (SUCCEEDED(got)) CoUninitialize();
            if (multithreaded) CoUninitialize();
        }).join();
        EXPECT_TRUE(decoded);
        EXPECT_EQ(got, after) << multithreaded;
    }
}

}  // namespace
