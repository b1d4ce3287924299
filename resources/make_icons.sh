#!/usr/bin/env bash
# Makes the program's icons from heralder_icon.mvg with ImageMagick:
#   heralder.ico        16 to 48 pixels and a 256-pixel PNG frame: Explorer,
#                       the Start menu and "Apps & features" show this one
#   heralder_small.ico  16 to 48 pixels: the window class, dialogs and message
#                       boxes, which never draw larger
# Each ICON statement of a resource script stores a whole copy of its file, so
# the small one keeps the program small. Rewrites both files beside this script.
set -euo pipefail
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
convert -background none mvg:heralder_icon.mvg -depth 8 "$work/big.png"
for size in 16 24 32 48; do
    convert "$work/big.png" -resize ${size}x$size -depth 8 "PNG32:$work/$size.png"
done
# Frames below 256 pixels are stored as bitmaps, the 256 one as compressed PNG.
convert "$work"/{16,24,32,48}.png heralder_small.ico
convert "$work"/{16,24,32,48}.png "$work/big.png" -define png:compression-level=9 heralder.ico
