#pragma once
// Device-independent bitmaps as bytes: the header of a bitmap file or of a
// packed DIB (BITMAPINFOHEADER, colour table, pixels), pixel access, and the
// blend of a 32-bit picture with straight alpha over a solid colour. Portable
// so that the arithmetic and the header checks run under the sanitizers and
// the fuzzer: a header that lies about its size or its pixels yields nothing,
// never a read outside the bytes given.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

inline constexpr std::size_t kFileHeaderSize = 14;  // BITMAPFILEHEADER
inline constexpr std::size_t kInfoHeaderSize = 40;  // BITMAPINFOHEADER
inline constexpr int32_t kMaxDibSide = 32768;
inline constexpr uint32_t kNoPixel = 0xFFFFFFFF;

struct DibInfo {
    int32_t width = 0;
    int32_t height = 0;     // always positive
    bool bottomUp = true;   // rows stored from the bottom row up
    uint16_t bitCount = 0;  // 1, 4, 8, 16, 24 or 32
    std::size_t stride = 0;
    std::size_t headerOffset = 0;  // where the info header starts
    std::size_t bitsOffset = 0;    // where the first stored row starts
};

// Bytes per row: rows are padded to whole 32-bit words.
constexpr std::size_t dibStride(int32_t width, int bitCount) {
    return (static_cast<std::size_t>(width) * bitCount + 31) / 32 * 4;
}

// A bitmap file: "BM", the file header, then a packed DIB; the pixels start
// where the file header says.
std::optional<DibInfo> readBmpFileInfo(std::span<const uint8_t> file);
// A packed DIB: the pixels follow the header and its colour table.
std::optional<DibInfo> getDibInfo(std::span<const uint8_t> dib);

// Pixels of 24- and 32-bit pictures as 0xAABBGGRR (alpha 0 for 24 bits), y
// counted from the top row. kNoPixel outside the picture or at other depths.
uint32_t getDibPixel(std::span<const uint8_t> bytes, const DibInfo& info, int x, int y);
// False outside the picture or at other depths.
bool setDibPixel(std::span<uint8_t> bytes, const DibInfo& info, int x, int y, uint32_t value);

// A zeroed bottom-up packed DIB (24 or 32 bits, no colour table).
std::vector<uint8_t> makePackedDib(int32_t width, int32_t height, uint16_t bitCount);

// A 32-bit picture laid over colour (0x00BBGGRR): a new 24-bit bottom-up
// packed DIB of the same size where every channel is
// source * alpha / 255 + colour * (255 - alpha) / 255, each quotient
// truncated on its own. Empty when the source is not 32 bits deep.
std::vector<uint8_t> compositeOverColour(std::span<const uint8_t> bytes, const DibInfo& source,
                                         uint32_t colour);

// A part of a picture: x and y from the top-left corner.
struct PixelRect {
    int32_t x = 0, y = 0, width = 0, height = 0;
};
// The same blend of only the part of the picture inside part (a picture much
// larger than the screen needs only what shows): a 24-bit DIB of the part's
// size clipped to the picture. Empty when nothing of the part lies inside.
std::vector<uint8_t> compositeOverColour(std::span<const uint8_t> bytes, const DibInfo& source,
                                         uint32_t colour, PixelRect part);
