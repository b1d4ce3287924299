#pragma once
// Item pictures: files named by an item's GRAPHIC (PNG and JPEG, decoded by the
// Windows Imaging Component) and the default picture in the program's
// resources, all as packed DIBs (see base/packed_dib.h).
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/win_headers.h"
#include "resources/resource.h"

// A packed DIB: 40-byte header, colour table when under 9 bits, bottom-up rows.
using Picture = std::vector<uint8_t>;

inline constexpr int kDefaultPictureId = IDR_DEFAULT_PICTURE;  // 64 x 64, 32 bits with alpha

// The picture in a "png" or "jpg" file (by extension, any case; the path is cut
// at its first "/"); nullopt for any other file or when it cannot be decoded.
std::optional<Picture> loadGraphicFile(const std::string& path);
// A 32-bit bitmap file or a PNG file kept as a raw data resource; nullopt for
// other bitmap depths.
std::optional<Picture> loadBitmapResourceDib(int resourceId);
// Draws picture with its top-left corner at x, y, without scaling. A 32-bit
// picture is drawn as it stands (alpha ignored): blend it first, or use
// drawPictureOver. False when the picture is damaged or nothing was drawn.
bool drawPicture(HDC dc, int x, int y, const Picture& picture);
// Draws picture at x, y; a 32-bit one blended over background (0x00BBGGRR).
bool drawPictureOver(HDC dc, int x, int y, const Picture& picture, COLORREF background);
// Draws the part from of picture (rows counted from the top) into to,
// averaging pixels so that a picture at a display scale stays smooth. Alpha
// is ignored, as by drawPicture.
bool drawPictureStretched(HDC dc, const RECT& to, const Picture& picture, const RECT& from);
// drawPictureOver at dpi: the picture's size is taken as 96-DPI pixels.
bool drawPictureOverAt(HDC dc, int x, int y, const Picture& picture, COLORREF background,
                       unsigned dpi);

// The decoders. Files larger than kMaxPictureFileBytes or with a side above
// kMaxPictureSide (shell/item_graphics.h) are not decoded. A PNG with any
// pixel not fully opaque gives 32 bits (straight alpha), every other picture
// 24 bits. Damaged files give nullopt. Each call sets COM up for itself when
// the calling thread has not.
std::optional<Picture> ReadPngFile(const std::string& path);
std::optional<Picture> ReadJpegFile(const std::string& path);

struct ImageInfo {
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t bitsPerPixel = 0;  // of the file's own pixel format
    uint64_t fileBytes = 0;
};
// Size and depth of a picture file of any format the codec knows, read from
// its header without decoding the pixels.
std::optional<ImageInfo> GetImageInfo(const std::string& path);
