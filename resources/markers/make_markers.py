#!/usr/bin/env python3
"""Draws the item list's row markers: a small glossy ball in the colours of
each importance, 16 x 16 pixels and, for screens at twice the scale, the same
drawing at 32 x 32 ("_2x"), written as 32-bit bitmap files (blue, green, red,
alpha; straight alpha; bottom-up) that the program embeds as raw data.

Each pixel is the average of 8 x 8 samples, so the ball's rim and its soft
shadow fade into transparency instead of showing steps. Run it from anywhere;
it rewrites the .bmp files beside itself."""
import math
import os
import struct

SIZE = 16
SAMPLES = 8
CENTRE = (7.6, 7.4)
RADIUS = 6.3

# (file, light, fill, dark) as (red, green, blue); the row's bevelled square
# uses the same three colours when the picture cannot be drawn.
MARKERS = [
    ("marker_other.bmp", (0xB3, 0xCE, 0xDF), (0x76, 0xA9, 0xC7), (0x38, 0x6C, 0x8B)),
    ("marker_high.bmp", (0xFF, 0x00, 0x00), (0xC0, 0x00, 0x00), (0x40, 0x00, 0x00)),
    ("marker_medium.bmp", (0xFF, 0xFF, 0x00), (0xC0, 0xC0, 0x00), (0x40, 0x40, 0x00)),
    ("marker_low.bmp", (0x00, 0xFF, 0x00), (0x00, 0xC0, 0x00), (0x00, 0x40, 0x00)),
]


def mix(a, b, t):
    return tuple(x + (y - x) * t for x, y in zip(a, b))


def smooth(t):
    t = min(max(t, 0.0), 1.0)
    return t * t * (3 - 2 * t)


def over(top, top_alpha, bottom, bottom_alpha):
    """Straight-alpha "over" of two samples."""
    alpha = top_alpha + bottom_alpha * (1 - top_alpha)
    if alpha == 0:
        return (0.0, 0.0, 0.0), 0.0
    colour = tuple((t * top_alpha + b * bottom_alpha * (1 - top_alpha)) / alpha
                   for t, b in zip(top, bottom))
    return colour, alpha


def sample(x, y, light, fill, dark):
    """Colour and coverage of one point of the picture."""
    # A soft shadow below and to the right of the ball.
    sd = math.hypot(x - CENTRE[0] - 0.7, y - CENTRE[1] - 0.9)
    shadow_alpha = 0.35 * (1 - smooth((sd - RADIUS + 0.6) / 1.6))
    colour, alpha = (0.0, 0.0, 0.0), shadow_alpha

    d = math.hypot(x - CENTRE[0], y - CENTRE[1])
    if d > RADIUS:
        return colour, alpha
    # Lit from the top left: light there, the fill colour in the middle and
    # the dark colour towards the lower right rim.
    ld = math.hypot(x - (CENTRE[0] - 2.4), y - (CENTRE[1] - 2.6)) / (RADIUS * 1.55)
    body = mix(light, fill, smooth(ld * 1.6)) if ld < 0.62 else mix(fill, dark, smooth((ld - 0.62) / 0.55))
    # A thin darker rim keeps the ball apart from a background of its own colour.
    body = mix(body, dark, 0.55 * smooth((d - RADIUS + 1.1) / 1.0))
    # The gloss: a white ellipse near the top.
    gx, gy = (x - (CENTRE[0] - 1.5)) / 2.7, (y - (CENTRE[1] - 2.7)) / 1.7
    gloss = 0.85 * (1 - smooth((math.hypot(gx, gy) - 0.45) / 0.55))
    body = mix(body, (255, 255, 255), gloss)
    return over(body, 1.0, colour, alpha)


def pixel(px, py, colours, scale):
    total = [0.0, 0.0, 0.0]
    coverage = 0.0
    for sy in range(SAMPLES):
        for sx in range(SAMPLES):
            x = (px + (sx + 0.5) / SAMPLES) / scale
            y = (py + (sy + 0.5) / SAMPLES) / scale
            colour, alpha = sample(x, y, *colours)
            coverage += alpha
            for i in range(3):
                total[i] += colour[i] * alpha
    if coverage == 0:
        return (0, 0, 0, 0)
    # Straight alpha: the colour is the coverage-weighted average.
    r, g, b = (min(255, round(c / coverage)) for c in total)
    a = round(255 * coverage / (SAMPLES * SAMPLES))
    return (r, g, b, a) if a else (0, 0, 0, 0)


def bitmap_file(colours, scale):
    size = SIZE * scale
    rows = []
    for py in reversed(range(size)):  # bottom-up
        row = b"".join(struct.pack("<BBBB", b, g, r, a)
                       for r, g, b, a in (pixel(px, py, colours, scale) for px in range(size)))
        rows.append(row)
    bits = b"".join(rows)
    info = struct.pack("<IiiHHIIiiII", 40, size, size, 1, 32, 0, len(bits), 2835, 2835, 0, 0)
    header = struct.pack("<2sIHHI", b"BM", 14 + len(info) + len(bits), 0, 0, 14 + len(info))
    return header + info + bits


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    for name, *colours in MARKERS:
        for scale, suffix in ((1, ""), (2, "_2x")):
            with open(os.path.join(here, name.replace(".bmp", suffix + ".bmp")), "wb") as f:
                f.write(bitmap_file(colours, scale))


if __name__ == "__main__":
    main()
