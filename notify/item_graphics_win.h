#pragma once
// Item pictures: files named by an item's GRAPHIC (PNG and JPEG, decoded by the
// Windows Imaging Component) and the default picture in the program's
// resources, all as packed DIBs (see base/packed_dib.h).
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/win_headers.h"

// A packed DIB: 40-byte header, colour table when under 9 bits, bottom-up rows.
using Picture = std::vector<uint8_t>;

inline constexpr int kDefaultPictureId = 7773;  // 64 x 64, 32 bits with alpha

// The picture in a "png" or "jpg" file (by extension, any case; the path is cut
// at its first "/"); nullopt for any other file or when it cannot be decoded.
std::optional<Picture> loadGraphicFile(const std::string& path);
// A 32-bit bitmap file kept as a raw data resource; nullopt for other depths.
std::optional<Picture> loadBitmapResourceDib(int resourceId);
// Draws picture with its top-left corner at x, y, without scaling.
void drawPicture(HDC dc, int x, int y, const Picture& picture);
