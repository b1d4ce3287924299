// The bitmap header reader on arbitrary bytes, as a bitmap file and as a
// packed DIB; every pixel it then claims exists is read, and 32-bit pictures
// are blended, so a header check that lets a lie through shows as a read
// outside the input.
#include "tests/fuzz/fuzz_input.h"
#include "base/packed_dib.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::span<const uint8_t> bytes(data, size);
    for (const std::optional<DibInfo>& info : {readBmpFileInfo(bytes), getDibInfo(bytes)}) {
        if (!info || static_cast<uint64_t>(info->width) * info->height > 1 << 20) continue;
        uint32_t sum = 0;
        for (int y = 0; y < info->height; ++y)
            for (int x = 0; x < info->width; ++x) sum += getDibPixel(bytes, *info, x, y);
        if (info->bitCount == 32) compositeOverColour(bytes, *info, sum & 0xFFFFFF);
    }
    return 0;
}
