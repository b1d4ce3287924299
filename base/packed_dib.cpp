// Bitmap headers, pixels and the blend over a colour (see packed_dib.h). Every
// size is checked in 64-bit arithmetic against the bytes actually present
// before any pixel is touched.
#include "base/packed_dib.h"

#include <algorithm>

namespace {

uint32_t read16(std::span<const uint8_t> b, std::size_t at) {
    return b[at] | b[at + 1] << 8;
}

uint32_t read32(std::span<const uint8_t> b, std::size_t at) {
    return static_cast<uint32_t>(b[at]) | static_cast<uint32_t>(b[at + 1]) << 8 |
           static_cast<uint32_t>(b[at + 2]) << 16 | static_cast<uint32_t>(b[at + 3]) << 24;
}

void write16(uint8_t* p, uint32_t v) {
    p[0] = static_cast<uint8_t>(v);
    p[1] = static_cast<uint8_t>(v >> 8);
}

void write32(uint8_t* p, uint32_t v) {
    for (int i = 0; i < 4; ++i) p[i] = static_cast<uint8_t>(v >> (8 * i));
}

constexpr uint32_t kBiRgb = 0;

// The info header at headerOffset; bitsOffset is given for files and left 0
// for packed DIBs, where the pixels follow the colour table.
std::optional<DibInfo> readInfoHeader(std::span<const uint8_t> b, std::size_t headerOffset,
                                      uint64_t bitsOffset) {
    if (b.size() < headerOffset + kInfoHeaderSize) return std::nullopt;
    const uint32_t headerSize = read32(b, headerOffset);
    const int32_t width = static_cast<int32_t>(read32(b, headerOffset + 4));
    const int32_t height = static_cast<int32_t>(read32(b, headerOffset + 8));
    const uint32_t planes = read16(b, headerOffset + 12);
    const uint32_t bits = read16(b, headerOffset + 14);
    const uint32_t compression = read32(b, headerOffset + 16);
    const uint32_t coloursUsed = read32(b, headerOffset + 32);

    if (headerSize < kInfoHeaderSize || headerOffset + uint64_t{headerSize} > b.size())
        return std::nullopt;
    if (width <= 0 || width > kMaxDibSide || height == 0 || height < -kMaxDibSide ||
        height > kMaxDibSide || planes != 1 || compression != kBiRgb)
        return std::nullopt;
    if (bits != 1 && bits != 4 && bits != 8 && bits != 16 && bits != 24 && bits != 32)
        return std::nullopt;

    uint64_t colours = coloursUsed;
    if (bits <= 8) {
        if (colours > (1u << bits)) return std::nullopt;
        if (colours == 0) colours = 1u << bits;
    } else if (colours > 256) {
        return std::nullopt;
    }
    const uint64_t afterTable = headerOffset + uint64_t{headerSize} + 4 * colours;
    if (bitsOffset == 0) bitsOffset = afterTable;
    if (bitsOffset < afterTable) return std::nullopt;

    DibInfo info;
    info.width = width;
    info.height = height < 0 ? -height : height;
    info.bottomUp = height > 0;
    info.bitCount = static_cast<uint16_t>(bits);
    info.stride = dibStride(width, bits);
    info.headerOffset = headerOffset;
    if (bitsOffset + uint64_t{info.stride} * info.height > b.size()) return std::nullopt;
    info.bitsOffset = static_cast<std::size_t>(bitsOffset);
    return info;
}

// Where pixel (x, y from the top) starts, or -1 when it does not exist in bytes.
std::ptrdiff_t pixelOffset(std::size_t size, const DibInfo& info, int x, int y) {
    if ((info.bitCount != 24 && info.bitCount != 32) || x < 0 || y < 0 || x >= info.width ||
        y >= info.height)
        return -1;
    const std::size_t row = info.bottomUp ? info.height - 1 - y : y;
    const std::size_t at =
        info.bitsOffset + row * info.stride + std::size_t(x) * (info.bitCount / 8);
    return at + info.bitCount / 8 <= size ? static_cast<std::ptrdiff_t>(at) : -1;
}

}  // namespace

std::optional<DibInfo> readBmpFileInfo(std::span<const uint8_t> file) {
    if (file.size() < kFileHeaderSize || file[0] != 'B' || file[1] != 'M') return std::nullopt;
    const uint32_t bitsOffset = read32(file, 10);
    if (bitsOffset < kFileHeaderSize + kInfoHeaderSize) return std::nullopt;
    return readInfoHeader(file, kFileHeaderSize, bitsOffset);
}

std::optional<DibInfo> getDibInfo(std::span<const uint8_t> dib) {
    return readInfoHeader(dib, 0, 0);
}

uint32_t getDibPixel(std::span<const uint8_t> bytes, const DibInfo& info, int x, int y) {
    const std::ptrdiff_t at = pixelOffset(bytes.size(), info, x, y);
    if (at < 0) return kNoPixel;
    const uint8_t* p = bytes.data() + at;
    const uint32_t alpha = info.bitCount == 32 ? p[3] : 0;
    return uint32_t{p[2]} | uint32_t{p[1]} << 8 | uint32_t{p[0]} << 16 | alpha << 24;
}

bool setDibPixel(std::span<uint8_t> bytes, const DibInfo& info, int x, int y, uint32_t value) {
    const std::ptrdiff_t at = pixelOffset(bytes.size(), info, x, y);
    if (at < 0) return false;
    uint8_t* p = bytes.data() + at;
    p[0] = static_cast<uint8_t>(value >> 16);
    p[1] = static_cast<uint8_t>(value >> 8);
    p[2] = static_cast<uint8_t>(value);
    if (info.bitCount == 32) p[3] = static_cast<uint8_t>(value >> 24);
    return true;
}

std::vector<uint8_t> makePackedDib(int32_t width, int32_t height, uint16_t bitCount) {
    if (width <= 0 || height <= 0 || width > kMaxDibSide || height > kMaxDibSide ||
        (bitCount != 24 && bitCount != 32))
        return {};
    const std::size_t imageSize = dibStride(width, bitCount) * height;
    std::vector<uint8_t> dib(kInfoHeaderSize + imageSize);
    uint8_t* h = dib.data();
    write32(h, kInfoHeaderSize);
    write32(h + 4, static_cast<uint32_t>(width));
    write32(h + 8, static_cast<uint32_t>(height));
    write16(h + 12, 1);
    write16(h + 14, bitCount);
    write32(h + 16, kBiRgb);
    write32(h + 20, static_cast<uint32_t>(imageSize));
    return dib;
}

std::vector<uint8_t> compositeOverColour(std::span<const uint8_t> bytes, const DibInfo& source,
                                         uint32_t colour) {
    return compositeOverColour(bytes, source, colour, {0, 0, source.width, source.height});
}

std::vector<uint8_t> compositeOverColour(std::span<const uint8_t> bytes, const DibInfo& source,
                                         uint32_t colour, PixelRect part) {
    if (source.bitCount != 32 || source.width <= 0 || source.height <= 0 ||
        source.stride < std::size_t(source.width) * 4 ||
        source.bitsOffset + uint64_t{source.stride} * source.height > bytes.size())
        return {};
    const int64_t left = std::max<int64_t>(part.x, 0);
    const int64_t top = std::max<int64_t>(part.y, 0);
    const int64_t right = std::min<int64_t>(int64_t{part.x} + part.width, source.width);
    const int64_t bottom = std::min<int64_t>(int64_t{part.y} + part.height, source.height);
    if (left >= right || top >= bottom) return {};
    std::vector<uint8_t> out =
        makePackedDib(static_cast<int32_t>(right - left), static_cast<int32_t>(bottom - top), 24);
    const std::optional<DibInfo> target = getDibInfo(out);
    if (!target) return {};
    // Each channel is p * alpha / 255 + background * (255 - alpha) / 255, both
    // quotients truncated: looked up rather than divided, since a large
    // picture is blended afresh at every paint.
    static const auto scaled = [] {
        std::vector<uint8_t> table(256 * 256);
        for (uint32_t a = 0; a < 256; ++a)
            for (uint32_t p = 0; p < 256; ++p) table[a * 256 + p] = uint8_t(p * a / 255);
        return table;
    }();
    const uint32_t background[3] = {colour >> 16 & 0xFF, colour >> 8 & 0xFF, colour & 0xFF};
    uint8_t behind[3][256];  // stored order: blue, green, red
    for (int c = 0; c < 3; ++c)
        for (uint32_t a = 0; a < 256; ++a) behind[c][a] = uint8_t(background[c] * (255 - a) / 255);
    for (int64_t y = top; y < bottom; ++y) {
        const std::size_t sourceRow = source.bottomUp ? source.height - 1 - y : y;
        const uint8_t* from =
            bytes.data() + source.bitsOffset + sourceRow * source.stride + left * 4;
        uint8_t* to = out.data() + target->bitsOffset +
                      (target->height - 1 - (y - top)) * target->stride;
        for (int64_t x = left; x < right; ++x, from += 4, to += 3) {
            const uint32_t alpha = from[3];
            const uint8_t* times = scaled.data() + alpha * 256;
            for (int c = 0; c < 3; ++c) to[c] = uint8_t(times[from[c]] + behind[c][alpha]);
        }
    }
    return out;
}
