#!/usr/bin/env python3
"""Draws the banner across the top of the first-run sign-up: a blue band
with a greeting and the ringing-bell waves of the program icon, fading out
to the right so that it runs into the window's button face whatever width
the window has at the user's font size. Written as a PNG file (straight
alpha) that the program embeds as raw data, decodes and lays over the
button-face colour; a PNG because every copy of the program carries it.

ImageMagick draws it (fonts: Debian's fonts-liberation); this script only
packs ImageMagick's pixels into the PNG file. Run it from anywhere; it
rewrites init_config_banner.png beside itself."""
import os
import struct
import zlib
import subprocess

WIDTH = 560
HEIGHT = 72
SOLID = 380  # the band is opaque up to here, then fades out
NAVY = "#1d3f8f"
BLUE = "#3d74c8"
GOLD = "#ffe9a8"


def draw_rgba():
    fade = WIDTH - SOLID
    command = [
        "convert",
        # The band: navy on the left, lighter to the right.
        "-size", f"{HEIGHT}x{WIDTH}", f"gradient:{NAVY}-{BLUE}", "-rotate", "-90",
        # A gold rule along the bottom edge.
        "-fill", "#e0a800", "-draw", f"rectangle 0,{HEIGHT - 4} {WIDTH},{HEIGHT - 3}",
        # The icon's bell, small, ringing.
        "-draw", "translate 10,7 scale 0.22,0.22 fill '#f4c430' stroke '#8a5a00' stroke-width 8 "
        "path 'M 128,46 C 86,46 74,84 72,122 C 70,156 62,170 48,186 L 208,186 C 194,170 186,156 "
        "184,122 C 182,84 170,46 128,46 Z' roundrectangle 42,180 214,200 10,10 "
        "circle 128,40 128,28 fill '#8a5a00' stroke none circle 128,212 128,198",
        "-fill", "none", "-stroke", GOLD, "-strokewidth", "2.5",
        "-draw", "path 'M 15,24 Q 8,34 15,44'", "-draw", "path 'M 61,24 Q 68,34 61,44'",
        "-stroke", "none",
        # The greeting.
        "-fill", "white", "-font", "Liberation-Serif-Bold", "-pointsize", "27",
        "-annotate", "+78+35", "Welcome to Heralder",
        "-fill", GOLD, "-font", "Liberation-Sans", "-pointsize", "13",
        "-annotate", "+80+56", "News about your Quenmark software, only when there is some.",
        # Opaque up to SOLID, then a smooth fade to nothing.
        "(", "-size", f"{SOLID}x{HEIGHT}", "xc:white",
        "(", "-size", f"{HEIGHT}x{fade}", "gradient:white-black", "-rotate", "-90", ")",
        "+append", ")",
        "-alpha", "off", "-compose", "CopyOpacity", "-composite",
        "-depth", "8", "rgba:-",
    ]
    pixels = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
    if len(pixels) != WIDTH * HEIGHT * 4:
        raise SystemExit(f"ImageMagick gave {len(pixels)} bytes")
    return pixels


def png_file(rgba):
    rows = b"".join(b"\0" + rgba[y * WIDTH * 4:(y + 1) * WIDTH * 4] for y in range(HEIGHT))

    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF))

    return (b"\x89PNG\r\n\x1a\n" +
            chunk(b"IHDR", struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(bytes(rows), 9)) + chunk(b"IEND", b""))


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(here, "init_config_banner.png"), "wb") as f:
        f.write(png_file(draw_rgba()))


if __name__ == "__main__":
    main()
