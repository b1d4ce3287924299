// The portable half of the item pictures: which names reach a decoder, the
// limits, the creators' depths, the row flips that turn a decoder's output
// into a bottom-up DIB, and the default picture's copy from a bitmap file.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "base/packed_dib.h"
#include "notify/item_graphics.h"
#include "tests/native/bmp_file.h"

namespace {

TEST(ItemGraphicsDecoder, ChosenByExtensionOfTheNameBeforeTheFirstSlash) {
    const struct {
        std::string path;
        PictureDecoder expected;
    } cases[] = {
        {"C:\\images\\photo.png", PictureDecoder::Png},
        {"photo.PNG", PictureDecoder::Png},
        {"photo.Jpg", PictureDecoder::Jpeg},
        {"photo.jpeg", PictureDecoder::None},
        {"photo.bmp", PictureDecoder::None},
        {"photo.gif", PictureDecoder::None},
        {"photo", PictureDecoder::None},
        {"photo.", PictureDecoder::None},
        {"archive.png.gz", PictureDecoder::None},
        {"C:\\pictures.png\\photo", PictureDecoder::None},  // a folder's dot
        {"C:photo.jpg", PictureDecoder::Jpeg},
        // Cut at the first "/": only "images\photo" is judged, then "a.png".
        {"images\\photo/x.png", PictureDecoder::None},
        {"a.png/b.gif", PictureDecoder::Png},
        {"/photo.png", PictureDecoder::None},
        {"", PictureDecoder::None},
        // Only what a 260-character buffer holds is looked at.
        {std::string(255, 'a') + ".png", PictureDecoder::Png},
        {std::string(256, 'a') + ".png", PictureDecoder::None},
    };
    for (const auto& c : cases) EXPECT_EQ(chooseDecoder(c.path), c.expected) << c.path;
}

TEST(ItemGraphicsLimits, SixteenMegabytesAnd4096PixelsAreTheLast) {
    const uint64_t mb16 = 16u * 1024 * 1024;
    const struct {
        uint64_t bytes;
        uint32_t width, height;
        bool within;
    } cases[] = {
        {1000, 64, 64, true},         {mb16, 4096, 4096, true}, {mb16 + 1, 64, 64, false},
        {1000, 4097, 1, false},       {1000, 1, 4097, false},   {1000, 0, 10, false},
        {1000, 0xFFFFFFFF, 1, false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(pictureWithinLimits(c.bytes, c.width, c.height), c.within)
            << c.bytes << " " << c.width << "x" << c.height;
}

TEST(ItemGraphicsCreators, DepthsOfThePlainAndTheColourTableCreator) {
    const struct {
        int depth, plain, withTable;
    } cases[] = {
        {0, 1, 24},  {1, 1, 1},    {2, 4, 4},    {4, 4, 4},    {5, 8, 8},    {8, 8, 8},
        {9, 24, 24}, {16, 24, 24}, {24, 24, 24}, {25, 32, 24}, {32, 32, 24},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(plainDibBits(c.depth), c.plain) << c.depth;
        EXPECT_EQ(colourTableDibBits(c.depth), c.withTable) << c.depth;
    }
}

uint32_t header32(const std::vector<uint8_t>& dib, std::size_t at) {
    uint32_t v;
    std::memcpy(&v, &dib[at], 4);
    return v;
}

TEST(ItemGraphicsCreators, ColourTableSizesAndStrides) {
    const struct {
        int depth, width;
        uint32_t colours;
        std::size_t stride;
    } cases[] = {
        {1, 3, 2, 4}, {4, 3, 16, 4}, {8, 3, 256, 4}, {8, 5, 256, 8}, {24, 3, 0, 12},
    };
    for (const auto& c : cases) {
        const std::vector<uint8_t> dib = makeColourTableDib(c.width, 2, c.depth);
        const std::optional<DibInfo> info = readPackedDibInfo(dib);
        ASSERT_TRUE(info) << c.depth;
        EXPECT_EQ(header32(dib, 32), c.colours) << c.depth;  // colours used
        EXPECT_EQ(header32(dib, 36), c.colours) << c.depth;  // colours important
        EXPECT_EQ(info->stride, c.stride) << c.depth;
        EXPECT_EQ(info->bitsOffset, kInfoHeaderSize + 4 * c.colours) << c.depth;
        EXPECT_EQ(dib.size(), info->bitsOffset + 2 * c.stride) << c.depth;
    }
    const uint32_t table[] = {0x00FF0000, 0x0000FF00};
    const std::vector<uint8_t> twoColours = makeColourTableDib(8, 8, 1, table);
    EXPECT_EQ(header32(twoColours, kInfoHeaderSize), table[0]);
    EXPECT_EQ(header32(twoColours, kInfoHeaderSize + 4), table[1]);
    EXPECT_TRUE(makeColourTableDib(0, 8, 8).empty());
}

// Three pixels per row, two rows, top row first, rows padded to 16 bytes.
std::vector<uint8_t> bgraRows(uint8_t topLeftAlpha) {
    std::vector<uint8_t> rows(32, 0xEE);
    const uint8_t top[] = {1, 2, 3, topLeftAlpha, 4, 5, 6, 255, 7, 8, 9, 255};
    const uint8_t bottom[] = {11, 12, 13, 255, 14, 15, 16, 255, 17, 18, 19, 255};
    std::memcpy(&rows[0], top, sizeof top);
    std::memcpy(&rows[16], bottom, sizeof bottom);
    return rows;
}

TEST(ItemGraphicsRows, DecoderRowsBecomeBottomUpPicturesOfEitherDepth) {
    const std::vector<uint8_t> rows = bgraRows(0);
    for (int bits : {32, 24}) {
        const std::vector<uint8_t> dib = packedDibFromBgraRows(rows, 16, 3, 2, bits);
        const std::optional<DibInfo> info = readPackedDibInfo(dib);
        ASSERT_TRUE(info) << bits;
        EXPECT_EQ(info->bitCount, bits);
        EXPECT_TRUE(info->bottomUp);
        const uint32_t alpha = bits == 32 ? 0xFF000000 : 0;
        EXPECT_EQ(getDibPixel(dib, *info, 0, 0), 0x00010203u) << bits;  // alpha 0, colour kept
        EXPECT_EQ(getDibPixel(dib, *info, 2, 0), alpha | 0x070809) << bits;
        EXPECT_EQ(getDibPixel(dib, *info, 1, 1), alpha | 0x0E0F10) << bits;
        // The bottom row is stored first.
        EXPECT_EQ(dib[kInfoHeaderSize], 11);
    }
    EXPECT_TRUE(packedDibFromBgraRows(rows, 16, 3, 2, 8).empty());

    std::vector<uint8_t> bgr(2 * 12, 0);
    bgr[12] = 0x30, bgr[13] = 0x20, bgr[14] = 0x10;  // bottom-left: red 0x10
    const std::vector<uint8_t> dib = packedDibFromBgrRows(bgr, 12, 3, 2);
    const std::optional<DibInfo> info = readPackedDibInfo(dib);
    ASSERT_TRUE(info);
    EXPECT_EQ(getDibPixel(dib, *info, 0, 1), 0x302010u);
}

TEST(ItemGraphicsRows, ShortRowsGiveNothingAndAnyAlphaShortOfOpaqueIsTransparency) {
    const std::vector<uint8_t> rows = bgraRows(255);
    // The last row needs only its pixels, not its padding.
    EXPECT_FALSE(packedDibFromBgraRows(std::span(rows).first(28), 16, 3, 2, 32).empty());
    EXPECT_TRUE(packedDibFromBgraRows(std::span(rows).first(27), 16, 3, 2, 32).empty());
    EXPECT_TRUE(packedDibFromBgraRows(rows, 8, 3, 2, 32).empty());  // rows overlap
    EXPECT_TRUE(packedDibFromBgrRows(rows, 16, 6, 2).empty());

    EXPECT_FALSE(bgraRowsHaveTransparency(rows, 16, 3, 2));
    EXPECT_TRUE(bgraRowsHaveTransparency(bgraRows(254), 16, 3, 2));
}

// A 2 x 2 bitmap file; its rows are all zero, so top-down changes only the header.
std::vector<uint8_t> bmpFile(int bits, bool topDown = false) {
    std::vector<uint8_t> dib = makePackedDib(2, 2, bits);
    const int32_t height = topDown ? -2 : 2;
    std::memcpy(&dib[8], &height, 4);
    return bmpFileAround(dib);
}

TEST(ItemGraphicsBitmapFile, OnlyThirtyTwoBitFilesAreCopiedWithTheirAlpha) {
    for (bool topDown : {false, true}) {
        std::vector<uint8_t> file = bmpFile(32, topDown);
        setDibPixel(file, *readBmpFileInfo(file), 1, 0, 0x80112233);  // top right, half alpha
        const std::optional<std::vector<uint8_t>> picture = pictureFromBitmapFile(file);
        ASSERT_TRUE(picture) << topDown;
        const std::optional<DibInfo> out = readPackedDibInfo(*picture);
        ASSERT_TRUE(out);
        EXPECT_TRUE(out->bottomUp);
        EXPECT_EQ(out->bitCount, 32);
        EXPECT_EQ(getDibPixel(*picture, *out, 1, 0), 0x80112233u) << topDown;
        EXPECT_EQ(getDibPixel(*picture, *out, 0, 1), 0u) << topDown;
    }
    EXPECT_FALSE(pictureFromBitmapFile(bmpFile(24)));
    std::vector<uint8_t> truncated = bmpFile(32);
    truncated.pop_back();
    EXPECT_FALSE(pictureFromBitmapFile(truncated));
    EXPECT_FALSE(pictureFromBitmapFile({}));
}

}  // namespace
