#!/usr/bin/env bash
# Draws the sample feed's small item pictures with ImageMagick: drawn at four
# times their size and scaled down, so the edges fade into transparency. They
# are 32 pixels tall because an alert window of the smallest height shows only
# about the top 35 rows of its picture. Rewrites the files beside this script.
set -euo pipefail
cd "$(dirname "$0")"
font=DejaVu-Sans-Bold

# A red rounded square with a white warning triangle: a transparent PNG.
convert -size 128x128 xc:none \
    -fill '#c62828' -stroke '#8e1b1b' -strokewidth 4 -draw 'roundrectangle 4,4 123,123 20,20' \
    -fill white -stroke none -draw 'polygon 64,20 112,106 16,106' \
    -fill '#c62828' -draw 'roundrectangle 58,46 70,82 5,5' -draw 'circle 64,94 64,101' \
    -resize 32x32 -depth 8 PNG32:alert.png

# An orange disc with a question mark: a transparent PNG.
convert -size 128x128 xc:none \
    -fill '#f7a21b' -stroke '#c77c08' -strokewidth 4 -draw 'circle 64,64 64,4' \
    -fill '#5a3a1a' -stroke none -font "$font" -pointsize 84 -gravity center \
    -annotate +0+2 '?' \
    -resize 32x32 -depth 8 PNG32:tip.png

# The off-topic picture is a photograph-like JPEG: no transparency there.
convert -size 128x128 plasma:'#7040c0'-'#f060a0' -seed 7 -blur 0x2 \
    -fill white -font "$font" -pointsize 56 -gravity center -annotate +0+0 'Q' \
    -resize 32x32 -quality 90 offtopic.jpg
