#pragma once
// The portable half of the item pictures: which decoder a file name asks for,
// the limits a picture file must keep before anything decodes it, the bit
// depths of the two picture creators, and the conversions between the rows a
// decoder hands out and the packed DIB the windows keep. The decoding itself
// is platform code (item_graphics_win.cpp).
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

enum class PictureDecoder { None, Png, Jpeg };

// The decoder for a path: the path (at most 260 characters) is cut at its
// first "/", and the extension of what remains picks "png" or "jpg" in any
// case. Anything else, "jpeg" and names without an extension included, gets
// None and the file is left alone.
PictureDecoder chooseDecoder(std::string_view path);

// A picture file is decoded only within these bounds: a crafted file that
// announces a huge canvas must not make the agent allocate gigabytes.
inline constexpr uint64_t kMaxPictureFileBytes = 16u * 1024 * 1024;
inline constexpr uint32_t kMaxPictureSide = 4096;
bool pictureWithinLimits(uint64_t fileBytes, uint32_t width, uint32_t height);

// Bits per pixel that each creator makes for a requested depth.
int plainDibBits(int depth);        // 1, 4, 8, 24 or 32
int colourTableDibBits(int depth);  // 1, 4, 8 or 24

// A zeroed bottom-up packed DIB with a colour table of 2^bits entries for
// depths below 9 (colours used and important say so; 0 at 24 bits), the given
// entries copied in. Empty for a size the picture form cannot hold.
std::vector<uint8_t> makeColourTableDib(int32_t width, int32_t height, int depth,
                                        std::span<const uint32_t> table = {});

// Rows as a decoder writes them (top row first, 4 bytes blue, green, red,
// alpha per pixel, rowBytes apart) turned into a bottom-up packed DIB: 32 bits
// keeping the straight alpha, or 24 bits dropping it. Empty when the rows are
// shorter than the size says.
std::vector<uint8_t> packedDibFromBgraRows(std::span<const uint8_t> rows, std::size_t rowBytes,
                                           int32_t width, int32_t height, int bitCount);
// Same for rows of 3 bytes blue, green, red: a 24-bit packed DIB.
std::vector<uint8_t> packedDibFromBgrRows(std::span<const uint8_t> rows, std::size_t rowBytes,
                                          int32_t width, int32_t height);
// True when some pixel of such BGRA rows is not fully opaque.
bool bgraRowsHaveTransparency(std::span<const uint8_t> rows, std::size_t rowBytes, int32_t width,
                              int32_t height);

// A whole 32-bit bitmap file (file header, info header, pixels in either row
// order) copied pixel by pixel, alpha included, into a new bottom-up 32-bit
// packed DIB. nullopt for any other depth or a damaged file.
std::optional<std::vector<uint8_t>> pictureFromBitmapFile(std::span<const uint8_t> file);
