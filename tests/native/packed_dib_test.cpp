// Bitmap headers, pixel access and the blend over a colour: the arithmetic
// where separate truncation shows, row padding, both row orders, and headers
// that lie about what follows them.
#include <gtest/gtest.h>

#include <cstring>

#include "base/packed_dib.h"
#include "tests/native/bmp_file.h"

namespace {

void put32(std::vector<uint8_t>& b, std::size_t at, uint32_t v) {
    std::memcpy(&b[at], &v, 4);
}

// One source pixel (0xAABBGGRR) over one colour.
uint32_t blendOne(uint32_t pixel, uint32_t colour) {
    std::vector<uint8_t> src = makePackedDib(1, 1, 32);
    const DibInfo info = *readPackedDibInfo(src);
    setDibPixel(src, info, 0, 0, pixel);
    const std::vector<uint8_t> out = compositeOverColour(src, info, colour);
    const std::optional<DibInfo> outInfo = readPackedDibInfo(out);
    if (!outInfo || outInfo->bitCount != 24) return kNoPixel;
    return getDibPixel(out, *outInfo, 0, 0);
}

}  // namespace

TEST(PackedDib, BlendTruncatesEachQuotient) {
    const struct {
        uint32_t pixel, colour, want;
    } cases[] = {
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
    for (const auto& c : cases)
        EXPECT_EQ(blendOne(c.pixel, c.colour), c.want)
            << std::hex << c.pixel << " over " << c.colour;
}

TEST(PackedDib, BlendKeepsSizeOrientationAndPadsRows) {
    for (int32_t width : {1, 3, 4, 5}) {
        for (int32_t height : {2, -2}) {  // bottom-up and top-down sources
            SCOPED_TRACE(testing::Message() << width << " x " << height);
            std::vector<uint8_t> src = makePackedDib(width, 2, 32);
            put32(src, 8, static_cast<uint32_t>(height));
            const DibInfo in = *readPackedDibInfo(src);
            EXPECT_EQ(in.bottomUp, height > 0);
            for (int y = 0; y < 2; ++y)
                for (int x = 0; x < width; ++x)
                    setDibPixel(src, in, x, y, 0xFF000000u | (y * 16 + x) * 0x010101u);
            // The top-left pixel sits in the last stored row when bottom-up.
            EXPECT_EQ(src[in.bottomUp ? 40 + in.stride : 40], 0);

            const std::vector<uint8_t> out = compositeOverColour(src, in, 0x00808080);
            const std::size_t stride = dibStride(width, 24);
            EXPECT_EQ(stride % 4, 0u);
            EXPECT_GE(stride, std::size_t(width) * 3);
            ASSERT_EQ(out.size(), 40 + 2 * stride);
            const DibInfo o = *readPackedDibInfo(out);
            EXPECT_EQ(o.width, width);
            EXPECT_EQ(o.height, 2);
            EXPECT_TRUE(o.bottomUp);
            EXPECT_EQ(o.stride, stride);
            uint32_t imageSize;
            std::memcpy(&imageSize, &out[20], 4);
            EXPECT_EQ(imageSize, 2 * stride);
            for (int y = 0; y < 2; ++y) {
                for (int x = 0; x < width; ++x)
                    EXPECT_EQ(getDibPixel(out, o, x, y), (y * 16 + x) * 0x010101u);
                for (std::size_t pad = width * 3; pad < stride; ++pad)
                    EXPECT_EQ(out[40 + y * stride + pad], 0);
            }
        }
    }
    EXPECT_EQ(dibStride(3, 24), 12u);
    EXPECT_EQ(dibStride(3, 8), 4u);
    EXPECT_EQ(dibStride(33, 1), 8u);
}

TEST(PackedDib, BlendOfAPartIsClippedToThePicture) {
    // 5 x 4, each pixel opaque with its own x and y: a part's pixels tell
    // where in the picture they came from.
    std::vector<uint8_t> src = makePackedDib(5, 4, 32);
    const DibInfo in = *readPackedDibInfo(src);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 5; ++x) setDibPixel(src, in, x, y, 0xFF000000u | y << 8 | x);
    const struct {
        PixelRect part;
        int left, top, width, height;  // what comes out; width 0: nothing
    } cases[] = {
        {{1, 2, 3, 2}, 1, 2, 3, 2},
        {{-2, -1, 4, 3}, 0, 0, 2, 2},  // hangs over the top-left corner
        {{3, 2, 10, 10}, 3, 2, 2, 2},  // and over the bottom-right one
        {{5, 0, 2, 2}, 0, 0, 0, 0},    // beside the picture
        {{0, 0, 0, 4}, 0, 0, 0, 0},    // empty
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.part.x << "," << c.part.y << " " << c.part.width
                                        << "x" << c.part.height);
        const std::vector<uint8_t> out = compositeOverColour(src, in, 0x00FFFFFF, c.part);
        if (c.width == 0) {
            EXPECT_TRUE(out.empty());
            continue;
        }
        const std::optional<DibInfo> o = readPackedDibInfo(out);
        ASSERT_TRUE(o);
        ASSERT_EQ(o->width, c.width);
        ASSERT_EQ(o->height, c.height);
        for (int y = 0; y < c.height; ++y)
            for (int x = 0; x < c.width; ++x)
                EXPECT_EQ(getDibPixel(out, *o, x, y), uint32_t((c.top + y) << 8 | (c.left + x)));
    }
}

TEST(PackedDib, BlendNeedsThirtyTwoBits) {
    std::vector<uint8_t> src = makePackedDib(2, 2, 24);
    EXPECT_TRUE(compositeOverColour(src, *readPackedDibInfo(src), 0).empty());
}

TEST(PackedDib, PixelsOutsideThePicture) {
    std::vector<uint8_t> dib = makePackedDib(3, 2, 32);
    const DibInfo info = *readPackedDibInfo(dib);
    for (auto [x, y] : {std::pair{-1, 0}, {0, -1}, {3, 0}, {0, 2}}) {
        EXPECT_EQ(getDibPixel(dib, info, x, y), kNoPixel);
        EXPECT_FALSE(setDibPixel(dib, info, x, y, 0));
    }
    EXPECT_TRUE(setDibPixel(dib, info, 2, 1, 0x11223344));
    EXPECT_EQ(getDibPixel(dib, info, 2, 1), 0x11223344u);
    // A picture described as larger than the bytes given is not touched beyond them.
    EXPECT_EQ(getDibPixel(std::span(dib).first(44), info, 2, 0), kNoPixel);
}

TEST(PackedDib, FileHeaderFields) {
    std::vector<uint8_t> file = bmpFileAround(makePackedDib(16, 16, 32));
    const std::optional<DibInfo> info = readBmpFileInfo(file);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 16);
    EXPECT_EQ(info->height, 16);
    EXPECT_EQ(info->bitCount, 32);
    EXPECT_EQ(info->stride, 64u);
    EXPECT_EQ(info->headerOffset, kFileHeaderSize);
    EXPECT_EQ(info->bitsOffset, kFileHeaderSize + kInfoHeaderSize);
    // Pixels may start later than the header's end.
    put32(file, 10, 58);
    file.resize(file.size() + 4);
    EXPECT_EQ(readBmpFileInfo(file)->bitsOffset, 58u);
}

TEST(PackedDib, MalformedHeadersFail) {
    const std::vector<uint8_t> good = bmpFileAround(makePackedDib(4, 4, 32));
    ASSERT_TRUE(readBmpFileInfo(good));
    for (std::size_t n = 0; n < good.size(); ++n)
        EXPECT_FALSE(readBmpFileInfo(std::span(good).first(n))) << "cut to " << n;

    // Offsets are those of the file: info header at 14.
    const struct {
        const char* name;
        std::size_t at;
        uint32_t value;
        int bytes;
    } lies[] = {
        {"not BM", 0, 'M', 1},
        {"pixels before the header ends", 10, 53, 4},
        {"pixels past the end", 10, 60, 4},
        {"pixels far past the end", 10, 0xFFFFFFF0, 4},
        {"header too small", 14, 12, 4},
        {"header larger than the file", 14, 0x7FFFFFFF, 4},
        {"zero width", 18, 0, 4},
        {"negative width", 18, static_cast<uint32_t>(-4), 4},
        {"huge width", 18, 0x01000000, 4},
        {"zero height", 22, 0, 4},
        {"more rows than bytes", 22, 5, 4},
        {"more top-down rows than bytes", 22, static_cast<uint32_t>(-5), 4},
        {"most negative height", 22, 0x80000000, 4},
        {"two planes", 26, 2, 2},
        {"odd depth", 28, 7, 2},
        {"compressed", 30, 1, 4},
        {"colour table past the pixels", 46, 300, 4},
    };
    for (const auto& lie : lies) {
        std::vector<uint8_t> bad = good;
        std::memcpy(&bad[lie.at], &lie.value, lie.bytes);
        EXPECT_FALSE(readBmpFileInfo(bad)) << lie.name;
    }

    // A packed DIB's colour table comes before its pixels: 8 bits with 256
    // entries needs 1024 bytes more than the pixels.
    std::vector<uint8_t> paletted = makePackedDib(4, 4, 24);
    paletted[14] = 8;
    EXPECT_FALSE(readPackedDibInfo(paletted));
    paletted.resize(40 + 1024 + 16);
    const std::optional<DibInfo> withTable = readPackedDibInfo(paletted);
    ASSERT_TRUE(withTable);
    EXPECT_EQ(withTable->bitsOffset, 40u + 1024u);
    put32(paletted, 32, 257);  // more colours than 8 bits can index
    EXPECT_FALSE(readPackedDibInfo(paletted));
}
