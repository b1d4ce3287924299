// Pictures as bytes: bitmap headers that lie, pixel access in both row orders,
// the blend over a colour, and the item pictures' decoder choice, limits and rows.
#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "base/packed_dib.h"
#include "shell/item_graphics.h"

namespace {

void put32(std::vector<uint8_t>& b, std::size_t at, uint32_t v) {
    std::memcpy(&b[at], &v, 4);
}

// A packed DIB of the given size; a negative height makes it top-down.
std::vector<uint8_t> dib(int32_t width, int32_t height, uint16_t bits) {
    std::vector<uint8_t> bytes = makePackedDib(width, height < 0 ? -height : height, bits);
    put32(bytes, 8, static_cast<uint32_t>(height));
    return bytes;
}

// A bitmap file around a packed DIB without colour table.
std::vector<uint8_t> bmpFile(const std::vector<uint8_t>& dib) {
    std::vector<uint8_t> file(kFileHeaderSize, 0);
    file[0] = 'B', file[1] = 'M';
    put32(file, 2, uint32_t(kFileHeaderSize + dib.size()));
    put32(file, 10, kFileHeaderSize + kInfoHeaderSize);
    file.insert(file.end(), dib.begin(), dib.end());
    return file;
}

// A decoder's output: three pixels per row, two rows, top row first, rows padded to 16 bytes.
std::vector<uint8_t> bgraRows(uint8_t topLeftAlpha) {
    return {1,  2,  3,  topLeftAlpha, 4,  5,  6,  255, 7,  8,  9,  255, 0xEE, 0xEE, 0xEE, 0xEE,
            11, 12, 13, 255,          14, 15, 16, 255, 17, 18, 19, 255, 0xEE, 0xEE, 0xEE, 0xEE};
}

}  // namespace

TEST(PackedDib, BlendTruncatesEachQuotient) {
    const std::tuple<uint32_t, uint32_t, uint32_t> cases[] = {
        {0x00123456, 0x00ABCDEF, 0x00ABCDEF},  // transparent: the colour
        {0xFF123456, 0x00ABCDEF, 0x00123456},  // opaque: the pixel
        {0x800000FF, 0x00000000, 0x00000080},  // 255 * 128 / 255 = 128
        {0x80FFFFFF, 0x00FFFFFF, 0x00FFFFFF},  // 128 + 127
        // 1*128/255 + 1*127/255 = 0 + 0, where a single division gives 1.
        {0x80010101, 0x00010101, 0x00000000},
        // Red 200*128/255 + 100*127/255 = 100 + 49, not 150; green 50 + 24;
        // blue 30 + 14: each channel from its own bytes.
        {0x803C64C8, 0x001E3264, 0x002C4A95},
        {0x01FFFFFF, 0x00FFFFFF, 0x00FFFFFF},  // 1 + 254
        {0xFE000000, 0x00FFFFFF, 0x00010101},  // 0 + 255 * 1 / 255
    };
    for (const auto& [pixel, colour, want] : cases) {  // pixels are 0xAABBGGRR
        std::vector<uint8_t> src = makePackedDib(1, 1, 32);
        setDibPixel(src, *getDibInfo(src), 0, 0, pixel);
        const std::vector<uint8_t> out = compositeOverColour(src, *getDibInfo(src), colour);
        const std::optional<DibInfo> info = getDibInfo(out);
        ASSERT_TRUE(info && info->bitCount == 24);
        EXPECT_EQ(getDibPixel(out, *info, 0, 0), want) << std::hex << pixel << " over " << colour;
    }
    std::vector<uint8_t> deep24 = makePackedDib(2, 2, 24);
    EXPECT_TRUE(compositeOverColour(deep24, *getDibInfo(deep24), 0).empty());
}

// Each pixel opaque with its own x and y, so a part's pixels tell where they
// came from; the parts' widths need every amount of row padding.
TEST(PackedDib, BlendOfAPartIsClippedPaddedAndBottomUp) {
    for (int32_t height : {4, -4}) {  // bottom-up and top-down sources
        std::vector<uint8_t> src = dib(5, height, 32);
        const DibInfo in = *getDibInfo(src);
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 5; ++x) setDibPixel(src, in, x, y, 0xFF000000u | y << 8 | x);
        // The top-left pixel sits in the last stored row when bottom-up.
        EXPECT_EQ(src[in.bottomUp ? 40 + 3 * in.stride : 40], 0);
        EXPECT_EQ(compositeOverColour(src, in, 0x00FFFFFF),
                  compositeOverColour(src, in, 0x00FFFFFF, {0, 0, 5, 4}));
        const struct {
            PixelRect part;
            int left, top, width, height;  // what comes out; width 0: nothing
        } cases[] = {
            {{0, 0, 5, 4}, 0, 0, 5, 4},   {{1, 2, 3, 2}, 1, 2, 3, 2}, {{1, 0, 4, 1}, 1, 0, 4, 1},
            {{-2, -1, 4, 3}, 0, 0, 2, 2},  // hangs over the top-left corner
            {{4, 2, 10, 10}, 4, 2, 1, 2},  // and over the bottom-right one
            {{5, 0, 2, 2}, 0, 0, 0, 0},    // beside the picture
            {{0, 0, 0, 4}, 0, 0, 0, 0},    // empty
        };
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << "height " << height << ", row " << &c - cases);
            const std::vector<uint8_t> out = compositeOverColour(src, in, 0x00FFFFFF, c.part);
            if (c.width == 0) {
                EXPECT_TRUE(out.empty());
                continue;
            }
            const std::size_t stride = (c.width * 3 + 3) / 4 * 4;
            ASSERT_EQ(out.size(), 40 + c.height * stride);
            std::vector<uint8_t> sized = out;  // the image size field
            put32(sized, 20, c.height * stride);
            EXPECT_EQ(sized, out);
            const std::optional<DibInfo> o = getDibInfo(out);
            ASSERT_TRUE(o && o->width == c.width && o->height == c.height && o->bottomUp);
            for (int y = 0; y < c.height; ++y) {
                for (int x = 0; x < c.width; ++x)
                    EXPECT_EQ(getDibPixel(out, *o, x, y),
                              uint32_t((c.top + y) << 8 | (c.left + x)));
                for (std::size_t pad = c.width * 3; pad < stride; ++pad)
                    EXPECT_EQ(out[40 + y * stride + pad], 0);
            }
        }
    }
}

TEST(PackedDib, PixelsOutsideThePicture) {
    std::vector<uint8_t> bytes = makePackedDib(3, 2, 32);
    const DibInfo info = *getDibInfo(bytes);
    for (auto [x, y] : {std::pair{-1, 0}, {0, -1}, {3, 0}, {0, 2}}) {
        EXPECT_EQ(getDibPixel(bytes, info, x, y), kNoPixel);
        EXPECT_FALSE(setDibPixel(bytes, info, x, y, 0));
    }
    EXPECT_TRUE(setDibPixel(bytes, info, 2, 1, 0x11223344));
    EXPECT_EQ(getDibPixel(bytes, info, 2, 1), 0x11223344u);
    // A picture described as larger than the bytes given is not touched beyond them.
    EXPECT_EQ(getDibPixel(std::span(bytes).first(44), info, 2, 0), kNoPixel);
}

TEST(PackedDib, FileHeadersAreReadAndLiesRefused) {
    std::vector<uint8_t> good = bmpFile(makePackedDib(4, 4, 32));
    const std::optional<DibInfo> info = readBmpFileInfo(good);
    ASSERT_TRUE(info);
    EXPECT_EQ(std::tie(info->width, info->height, info->bitCount, info->stride, info->headerOffset,
                       info->bitsOffset),
              std::tuple(4, 4, 32, 16u, kFileHeaderSize, kFileHeaderSize + kInfoHeaderSize));
    for (std::size_t n = 0; n < good.size(); ++n)
        EXPECT_FALSE(readBmpFileInfo(std::span(good).first(n))) << "cut to " << n;

    // Each field of the file (the info header at 14), its size and the values that lie.
    const std::tuple<std::size_t, int, std::vector<uint32_t>> lies[] = {
        {0, 1, {'M'}},                              // not BM
        {10, 4, {53, 60, 0xFFFFFFF0}},              // pixels inside the header, past the end
        {14, 4, {12, 0x7FFFFFFF}},                  // header too small, larger than the file
        {18, 4, {0, uint32_t(-4), 0x01000000}},     // width zero, negative, huge
        {22, 4, {0, 5, uint32_t(-5), 0x80000000}},  // height zero, more rows than bytes, INT_MIN
        {26, 2, {2}},                               // two planes
        {28, 2, {7}},                               // odd depth
        {30, 4, {1}},                               // compressed
        {46, 4, {300}},                             // colour table past the pixels
    };
    for (const auto& [at, bytes, values] : lies)
        for (uint32_t value : values) {
            std::vector<uint8_t> bad = good;
            std::memcpy(&bad[at], &value, bytes);
            EXPECT_FALSE(readBmpFileInfo(bad)) << at << ": " << value;
        }
    // Pixels may start later than the header's end.
    put32(good, 10, 58);
    good.resize(good.size() + 4);
    EXPECT_EQ(readBmpFileInfo(good)->bitsOffset, 58u);

    // A packed DIB's colour table comes before its pixels: 8 bits with 256
    // entries needs 1024 bytes more than the pixels.
    std::vector<uint8_t> paletted = makePackedDib(4, 4, 24);
    paletted[14] = 8;
    EXPECT_FALSE(getDibInfo(paletted));
    paletted.resize(40 + 1024 + 16);
    const std::optional<DibInfo> withTable = getDibInfo(paletted);
    ASSERT_TRUE(withTable);
    EXPECT_EQ(withTable->bitsOffset, 40u + 1024u);
    put32(paletted, 32, 257);  // more colours than 8 bits can index
    EXPECT_FALSE(getDibInfo(paletted));
}

// By the extension of what comes before the first "/", in the 260 characters a
// path buffer holds.
TEST(ItemGraphics, DecoderChosenByExtension) {
    const std::pair<std::string, PictureDecoder> cases[] = {
        {"C:\\images\\photo.png", PictureDecoder::Png},
        {"photo.PNG", PictureDecoder::Png},
        {"photo.Jpg", PictureDecoder::Jpeg},
        {"C:photo.jpg", PictureDecoder::Jpeg},
        {"a.png/b.gif", PictureDecoder::Png},
        {std::string(255, 'a') + ".png", PictureDecoder::Png},
        {std::string(256, 'a') + ".png", PictureDecoder::None},
        {"images\\photo/x.png", PictureDecoder::None},
        {"C:\\pictures.png\\photo", PictureDecoder::None},  // a folder's dot
    };
    for (const auto& [path, decoder] : cases) EXPECT_EQ(chooseDecoder(path), decoder) << path;
    for (const char* path :
         {"photo.jpeg", "photo.bmp", "photo", "photo.", "archive.png.gz", "/photo.png", ""})
        EXPECT_EQ(chooseDecoder(path), PictureDecoder::None) << path;
}

TEST(ItemGraphics, SixteenMegabytesAnd4096PixelsAreTheLast) {
    const uint64_t mb16 = 16u * 1024 * 1024;
    const std::tuple<uint64_t, uint32_t, uint32_t, bool> cases[] = {
        {1000, 64, 64, true},         {mb16, 4096, 4096, true}, {mb16 + 1, 64, 64, false},
        {1000, 4097, 1, false},       {1000, 1, 4097, false},   {1000, 0, 10, false},
        {1000, 0xFFFFFFFF, 1, false},
    };
    for (const auto& [bytes, width, height, within] : cases)
        EXPECT_EQ(pictureWithinLimits(bytes, width, height), within)
            << bytes << " " << width << "x" << height;
}

TEST(ItemGraphics, DecoderRowsBecomeBottomUpPicturesOfEitherDepth) {
    const std::vector<uint8_t> rows = bgraRows(0);
    for (int bits : {32, 24}) {
        const std::vector<uint8_t> bytes = packedDibFromBgraRows(rows, 16, 3, 2, bits);
        const std::optional<DibInfo> info = getDibInfo(bytes);
        ASSERT_TRUE(info && info->bitCount == bits && info->bottomUp) << bits;
        const uint32_t alpha = bits == 32 ? 0xFF000000 : 0;
        // Alpha 0 keeps its colour; the bottom row is stored first.
        EXPECT_EQ(
            (std::vector<uint32_t>{getDibPixel(bytes, *info, 0, 0), getDibPixel(bytes, *info, 2, 0),
                                   getDibPixel(bytes, *info, 1, 1), bytes[kInfoHeaderSize]}),
            (std::vector<uint32_t>{0x00010203u, alpha | 0x070809, alpha | 0x0E0F10, 11}))
            << bits;
    }
    EXPECT_TRUE(packedDibFromBgraRows(rows, 16, 3, 2, 8).empty());

    std::vector<uint8_t> bgr(2 * 12, 0);
    bgr[12] = 0x30, bgr[13] = 0x20, bgr[14] = 0x10;  // bottom-left: red 0x10
    const std::vector<uint8_t> bytes = packedDibFromBgrRows(bgr, 12, 3, 2);
    const std::optional<DibInfo> info = getDibInfo(bytes);
    ASSERT_TRUE(info);
    EXPECT_EQ(getDibPixel(bytes, *info, 0, 1), 0x302010u);
}

TEST(ItemGraphics, ShortRowsGiveNothingAndAnyAlphaShortOfOpaqueIsTransparency) {
    const std::vector<uint8_t> rows = bgraRows(255);
    // The last row needs only its pixels, not its padding.
    EXPECT_FALSE(packedDibFromBgraRows(std::span(rows).first(28), 16, 3, 2, 32).empty());
    EXPECT_TRUE(packedDibFromBgraRows(std::span(rows).first(27), 16, 3, 2, 32).empty());
    EXPECT_TRUE(packedDibFromBgraRows(rows, 8, 3, 2, 32).empty());  // rows overlap
    EXPECT_TRUE(packedDibFromBgrRows(rows, 16, 6, 2).empty());

    EXPECT_FALSE(bgraRowsHaveTransparency(rows, 16, 3, 2));
    EXPECT_TRUE(bgraRowsHaveTransparency(bgraRows(254), 16, 3, 2));
}

// The default picture's copy from a bitmap file; rows are all zero, so
// top-down changes only the header.
TEST(ItemGraphics, OnlyThirtyTwoBitFilesAreCopiedWithTheirAlpha) {
    for (int32_t height : {2, -2}) {
        std::vector<uint8_t> file = bmpFile(dib(2, height, 32));
        setDibPixel(file, *readBmpFileInfo(file), 1, 0, 0x80112233);  // top right, half alpha
        const std::optional<std::vector<uint8_t>> picture = pictureFromBitmapFile(file);
        ASSERT_TRUE(picture) << height;
        const std::optional<DibInfo> out = getDibInfo(*picture);
        ASSERT_TRUE(out && out->bottomUp && out->bitCount == 32);
        EXPECT_EQ(getDibPixel(*picture, *out, 1, 0), 0x80112233u) << height;
        EXPECT_EQ(getDibPixel(*picture, *out, 0, 1), 0u) << height;
    }
    EXPECT_FALSE(pictureFromBitmapFile(bmpFile(dib(2, 2, 24))));
    std::vector<uint8_t> truncated = bmpFile(dib(2, 2, 32));
    truncated.pop_back();
    EXPECT_FALSE(pictureFromBitmapFile(truncated));
    EXPECT_FALSE(pictureFromBitmapFile({}));
}
