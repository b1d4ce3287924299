#!/usr/bin/env bash
# Makes the program's icons from heralder_icon.mvg with ImageMagick:
#   heralder.ico        16 to 48 pixels as bitmaps, 64, 128 and 256 as PNG
#                       frames: the icon button draws any of 16 to 256, and
#                       Explorer, the Start menu and "Apps & features" use it
#   heralder_small.ico  16 to 48 pixels: the window class and the caption,
#                       which never draw larger
# Each ICON statement of a resource script stores a whole copy of its file, so
# the small one and the compressed large frames keep the program small.
# Rewrites both files beside this script.
set -euo pipefail
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
convert -background none mvg:heralder_icon.mvg -depth 8 -define png:compression-level=9 \
    "PNG32:$work/big.png"
for size in 16 24 32 48 64 128; do
    convert "$work/big.png" -resize ${size}x$size -depth 8 -define png:compression-level=9 \
        "PNG32:$work/$size.png"
done
convert "$work"/{16,24,32,48}.png heralder_small.ico
# ImageMagick stores frames below 256 pixels as bitmaps; the large ones are
# appended as PNG frames, which every Windows since Vista reads at any size.
python3 - "$work" <<'PY'
import struct, sys
work = sys.argv[1]
small = open("heralder_small.ico", "rb").read()
count = struct.unpack_from("<HHH", small)[2]
frames = []
for i in range(count):
    w, h, colours, _, planes, bits, size, offset = struct.unpack_from("<BBBBHHII", small, 6 + 16 * i)
    frames.append((w, h, colours, planes, bits, small[offset:offset + size]))
for side, name in ((64, "64.png"), (128, "128.png"), (256, "big.png")):
    data = open(f"{work}/{name}", "rb").read()
    frames.append((side % 256, side % 256, 0, 1, 32, data))
out = struct.pack("<HHH", 0, 1, len(frames))
offset = 6 + 16 * len(frames)
for w, h, colours, planes, bits, data in frames:
    out += struct.pack("<BBBBHHII", w, h, colours, 0, planes, bits, len(data), offset)
    offset += len(data)
out += b"".join(f[5] for f in frames)
open("heralder.ico", "wb").write(out)
PY
