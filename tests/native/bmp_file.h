#pragma once
// A bitmap file around a packed DIB without colour table, for the picture tests.
#include <cstring>
#include <vector>

#include "base/packed_dib.h"

inline std::vector<uint8_t> bmpFileAround(const std::vector<uint8_t>& dib) {
    std::vector<uint8_t> file(kFileHeaderSize, 0);
    file[0] = 'B', file[1] = 'M';
    const uint32_t size = uint32_t(kFileHeaderSize + dib.size());
    const uint32_t offBits = kFileHeaderSize + kInfoHeaderSize;
    std::memcpy(&file[2], &size, 4);
    std::memcpy(&file[10], &offBits, 4);
    file.insert(file.end(), dib.begin(), dib.end());
    return file;
}
