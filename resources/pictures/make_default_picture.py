#!/usr/bin/env python3
"""Draws the default picture of the notification windows: a golden hand bell
ringing, 64 x 64 pixels, written as a 32-bit bitmap file (blue, green, red,
alpha; straight alpha; bottom-up) that the program embeds as raw data and
lays over the alert window's background colour.

The same drawing at 128 x 128 (default_picture_2x.png, a PNG file for its size:
the program carries it in every copy) serves screens at twice the scale. Each pixel is the average of 6 x 6 samples, so edges and the
soft shadow fade into transparency. Run it from anywhere; it rewrites both
files beside itself."""
import math
import os
import struct
import zlib

SIZE = 64
SAMPLES = 6
# The bell is drawn on a 64-pixel grid and shown at this many pixels, at the
# top of the picture: an alert window of the smallest height shows only about
# the top 35 rows of its picture, and the bell must be whole there.
SHOWN = 34
CX = 32.0
OUTLINE = 1.1  # pixels of darker rim around every part

GOLD_LIGHT = (255, 241, 170)
GOLD_FILL = (240, 188, 44)
GOLD_DARK = (150, 96, 8)
RIM = (104, 62, 6)
WAVES = (214, 120, 24)


def mix(a, b, t):
    t = min(max(t, 0.0), 1.0)
    return tuple(x + (y - x) * t for x, y in zip(a, b))


def smooth(t):
    t = min(max(t, 0.0), 1.0)
    return t * t * (3 - 2 * t)


def body_half_width(y):
    """The bell's outline: a dome on top, flaring towards the mouth."""
    if y < 12 or y > 45:
        return None
    if y < 22:
        return math.sqrt(max(0.0, 11.0 ** 2 - (y - 22.0) ** 2))
    return 11.0 + 11.0 * ((y - 22.0) / 23.0) ** 2.2


def in_body(x, y):
    h = body_half_width(y)
    return h is not None and abs(x - CX) <= h


def in_lip(x, y):
    # A rounded band across the mouth of the bell.
    px = min(max(x, 10.0), 54.0)
    return math.hypot(x - px, y - 46.0) <= 3.2


def in_clapper(x, y):
    return math.hypot(x - CX, y - 52.0) <= 4.6


def in_handle(x, y):
    d = math.hypot(x - CX, y - 8.5)
    return 2.0 <= d <= 4.4


def in_waves(x, y):
    """Two short arcs on each side: the bell is ringing."""
    d = math.hypot(x - CX, y - 29.0)
    angle = abs(math.degrees(math.atan2(y - 29.0, abs(x - CX))))
    if angle > 20:
        return False
    return 25.0 <= d <= 26.8 or (angle < 14 and 29.0 <= d <= 30.6)


def near_edge(inside, x, y):
    for k in range(8):
        a = k * math.pi / 4
        if not inside(x + OUTLINE * math.cos(a), y + OUTLINE * math.sin(a)):
            return True
    return False


def gold(x, y, half_width, light_bias=0.0):
    """Lit from the upper left, like a cylinder: a highlight left of the
    middle, darkening towards the right-hand edge."""
    u = (x - CX) / max(half_width, 1.0)
    colour = mix(GOLD_FILL, GOLD_DARK, smooth((u + 0.2) / 1.2))
    colour = mix(colour, GOLD_LIGHT, math.exp(-((u + 0.5) / 0.22) ** 2) + light_bias)
    return colour


# Painted back to front; the first part that contains a point from the front
# decides its colour.
def sample(x, y):
    """Colour and coverage of one point of the picture."""
    if in_handle(x, y):
        if near_edge(in_handle, x, y):
            return RIM, 1.0
        return gold(x, y, 4.4, 0.1), 1.0
    if in_lip(x, y):
        if near_edge(in_lip, x, y):
            return RIM, 1.0
        return gold(x, y, 24.0, 0.05 if y < 46 else 0.0), 1.0
    if in_body(x, y):
        if near_edge(in_body, x, y):
            return RIM, 1.0
        top_glow = 0.35 * (1 - smooth((y - 12) / 12))
        return gold(x, y, body_half_width(y), top_glow), 1.0
    if in_clapper(x, y):
        if near_edge(in_clapper, x, y):
            return RIM, 1.0
        return mix(GOLD_DARK, GOLD_FILL, 0.5 - (x - CX) / 10), 1.0
    if in_waves(x, y):
        return WAVES, 0.9
    # A soft shadow on the ground below the bell.
    sd = math.hypot((x - CX) / 17.0, (y - 59.5) / 2.8)
    shadow = 0.3 * (1 - smooth((sd - 0.55) / 0.45))
    return (0.0, 0.0, 0.0), shadow


def pixel(px, py, density):
    total = [0.0, 0.0, 0.0]
    coverage = 0.0
    for sy in range(SAMPLES):
        for sx in range(SAMPLES):
            scale = SIZE / SHOWN
            x = CX + ((px + (sx + 0.5) / SAMPLES) / density - CX) * scale
            y = (py + (sy + 0.5) / SAMPLES) / density * scale
            colour, alpha = sample(x, y)
            coverage += alpha
            for i in range(3):
                total[i] += colour[i] * alpha
    if coverage == 0:
        return (0, 0, 0, 0)
    # Straight alpha: the colour is the coverage-weighted average.
    r, g, b = (min(255, round(c / coverage)) for c in total)
    a = round(255 * coverage / (SAMPLES * SAMPLES))
    return (r, g, b, a) if a else (0, 0, 0, 0)


def bitmap_file(density):
    size = SIZE * density
    rows = []
    for py in reversed(range(size)):  # bottom-up
        rows.append(b"".join(struct.pack("<BBBB", b, g, r, a)
                             for r, g, b, a in (pixel(px, py, density) for px in range(size))))
    bits = b"".join(rows)
    info = struct.pack("<IiiHHIIiiII", 40, size, size, 1, 32, 0, len(bits), 2835, 2835, 0, 0)
    header = struct.pack("<2sIHHI", b"BM", 14 + len(info) + len(bits), 0, 0, 14 + len(info))
    return header + info + bits


def png_file(density):
    size = SIZE * density
    rows = b"".join(b"\0" + bytes(v for px in range(size) for v in pixel(px, py, density))
                    for py in range(size))  # top-down, filter "none" on every row

    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF))

    return (b"\x89PNG\r\n\x1a\n" +
            chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(here, "default_picture.bmp"), "wb") as f:
        f.write(bitmap_file(1))
    with open(os.path.join(here, "default_picture_2x.png"), "wb") as f:
        f.write(png_file(2))


if __name__ == "__main__":
    main()
