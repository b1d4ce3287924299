// Decoder choice, limits and row conversions of the item pictures (see
// item_graphics.h). Pixel arithmetic stays in base/packed_dib; this file only
// moves whole rows and writes headers.
#include "shell/item_graphics.h"

#include <algorithm>
#include <string>

#include "base/ascii.h"
#include "base/packed_dib.h"

namespace {

constexpr std::size_t kPathBuffer = 260;

struct DecoderRow {
    std::string_view extension;
    PictureDecoder decoder;
};

// First match wins, in this order.
constexpr DecoderRow kDecoders[] = {
    {"jpg", PictureDecoder::Jpeg},
    {"png", PictureDecoder::Png},
};

void write16(uint8_t* p, uint32_t v) {
    p[0] = static_cast<uint8_t>(v);
    p[1] = static_cast<uint8_t>(v >> 8);
}

void write32(uint8_t* p, uint32_t v) {
    for (int i = 0; i < 4; ++i) p[i] = static_cast<uint8_t>(v >> (8 * i));
}

bool rowsCover(std::span<const uint8_t> rows, std::size_t rowBytes, int32_t width, int32_t height,
               std::size_t pixelBytes) {
    if (width <= 0 || height <= 0 || width > kMaxDibSide || height > kMaxDibSide) return false;
    const uint64_t used = uint64_t(width) * pixelBytes;
    if (rowBytes < used) return false;
    return uint64_t(rowBytes) * (height - 1) + used <= rows.size();
}

// Copies each source row's first width pixels into the DIB, flipping the order.
template <class CopyPixel>
std::vector<uint8_t> flipRows(std::span<const uint8_t> rows, std::size_t rowBytes, int32_t width,
                              int32_t height, std::size_t sourcePixel, uint16_t bitCount,
                              CopyPixel copy) {
    if (!rowsCover(rows, rowBytes, width, height, sourcePixel)) return {};
    std::vector<uint8_t> dib = makePackedDib(width, height, bitCount);
    if (dib.empty()) return {};
    const std::size_t stride = dibStride(width, bitCount);
    const std::size_t targetPixel = bitCount / 8;
    for (int32_t y = 0; y < height; ++y) {
        const uint8_t* from = rows.data() + std::size_t(y) * rowBytes;
        uint8_t* to = dib.data() + kInfoHeaderSize + std::size_t(height - 1 - y) * stride;
        for (int32_t x = 0; x < width; ++x)
            copy(from + std::size_t(x) * sourcePixel, to + std::size_t(x) * targetPixel);
    }
    return dib;
}

}  // namespace

PictureDecoder chooseDecoder(std::string_view path) {
    std::string_view name = path.substr(0, std::min(path.size(), kPathBuffer - 1));
    name = name.substr(0, name.find('/'));
    const std::size_t folderEnd = name.find_last_of("\\:");
    if (folderEnd != std::string_view::npos) name.remove_prefix(folderEnd + 1);
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos) return PictureDecoder::None;
    const std::string_view extension = name.substr(dot + 1);
    for (const DecoderRow& row : kDecoders)
        if (equalsIgnoringAsciiCase(extension, row.extension)) return row.decoder;
    return PictureDecoder::None;
}

bool pictureWithinLimits(uint64_t fileBytes, uint32_t width, uint32_t height) {
    return fileBytes <= kMaxPictureFileBytes && width > 0 && height > 0 &&
           width <= kMaxPictureSide && height <= kMaxPictureSide;
}

int plainDibBits(int depth) {
    if (depth < 2) return 1;
    if (depth < 5) return 4;
    if (depth < 9) return 8;
    if (depth < 25) return 24;
    return 32;
}

int colourTableDibBits(int depth) {
    if (depth == 1) return 1;
    if (depth >= 2 && depth <= 4) return 4;
    if (depth >= 5 && depth <= 8) return 8;
    return 24;
}

std::vector<uint8_t> makeColourTableDib(int32_t width, int32_t height, int depth,
                                        std::span<const uint32_t> table) {
    const int bits = colourTableDibBits(depth);
    if (bits == 24) return makePackedDib(width, height, 24);
    if (width <= 0 || height <= 0 || width > kMaxDibSide || height > kMaxDibSide) return {};
    const std::size_t colours = std::size_t{1} << bits;
    const std::size_t imageSize = dibStride(width, bits) * height;
    std::vector<uint8_t> dib(kInfoHeaderSize + 4 * colours + imageSize);
    uint8_t* h = dib.data();
    write32(h, kInfoHeaderSize);
    write32(h + 4, static_cast<uint32_t>(width));
    write32(h + 8, static_cast<uint32_t>(height));
    write16(h + 12, 1);
    write16(h + 14, static_cast<uint32_t>(bits));
    write32(h + 20, static_cast<uint32_t>(imageSize));
    write32(h + 32, static_cast<uint32_t>(colours));
    write32(h + 36, static_cast<uint32_t>(colours));
    for (std::size_t i = 0; i < colours && i < table.size(); ++i)
        write32(h + kInfoHeaderSize + 4 * i, table[i]);
    return dib;
}

std::vector<uint8_t> packedDibFromBgraRows(std::span<const uint8_t> rows, std::size_t rowBytes,
                                           int32_t width, int32_t height, int bitCount) {
    if (bitCount == 32)
        return flipRows(rows, rowBytes, width, height, 4, 32,
                        [](const uint8_t* from, uint8_t* to) { std::copy_n(from, 4, to); });
    if (bitCount == 24)
        return flipRows(rows, rowBytes, width, height, 4, 24,
                        [](const uint8_t* from, uint8_t* to) { std::copy_n(from, 3, to); });
    return {};
}

std::vector<uint8_t> packedDibFromBgrRows(std::span<const uint8_t> rows, std::size_t rowBytes,
                                          int32_t width, int32_t height) {
    return flipRows(rows, rowBytes, width, height, 3, 24,
                    [](const uint8_t* from, uint8_t* to) { std::copy_n(from, 3, to); });
}

bool bgraRowsHaveTransparency(std::span<const uint8_t> rows, std::size_t rowBytes, int32_t width,
                              int32_t height) {
    if (!rowsCover(rows, rowBytes, width, height, 4)) return false;
    for (int32_t y = 0; y < height; ++y) {
        const uint8_t* row = rows.data() + std::size_t(y) * rowBytes;
        for (int32_t x = 0; x < width; ++x)
            if (row[std::size_t(x) * 4 + 3] != 0xFF) return true;
    }
    return false;
}

std::optional<std::vector<uint8_t>> pictureFromBitmapFile(std::span<const uint8_t> file) {
    const std::optional<DibInfo> source = readBmpFileInfo(file);
    if (!source || source->bitCount != 32) return std::nullopt;
    std::vector<uint8_t> picture = makePackedDib(source->width, source->height, 32);
    const std::optional<DibInfo> target = getDibInfo(picture);
    if (!target) return std::nullopt;
    for (int y = 0; y < source->height; ++y)
        for (int x = 0; x < source->width; ++x)
            setDibPixel(picture, *target, x, y, getDibPixel(file, *source, x, y));
    return picture;
}
