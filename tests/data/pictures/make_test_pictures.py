#!/usr/bin/env python3
"""Rewrites the small pictures beside itself that the Windows picture tests
decode. PNG files are written byte by byte (zlib only), so their pixels are
known exactly and no encoder under test is involved; the JPEG is ImageMagick's."""
import os
import pathlib
import struct
import subprocess
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))


def chunk(kind, data):
    return (struct.pack(">I", len(data)) + kind + data +
            struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF))


def png(width, height, colour_type, rows):
    """rows: one bytes object per row, pixels only; filter 0 is added."""
    channels = {0: 1, 2: 3, 6: 4}[colour_type]
    assert all(len(r) == width * channels for r in rows)
    ihdr = struct.pack(">IIBBBBB", width, height, 8, colour_type, 0, 0, 0)
    raw = b"".join(b"\0" + r for r in rows)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", ihdr) + chunk(b"IDAT", zlib.compress(raw)) +
            chunk(b"IEND", b""))


def write(name, data):
    pathlib.Path(HERE, name).write_bytes(data)


def main():
    # 8 x 6, red-orange; the top-left pixel fully transparent, the bottom-right
    # one green at half alpha.
    fill = bytes((200, 40, 20, 255)) * 8
    rows = [bytes(4) + fill[4:]] + [fill] * 4 + [fill[:28] + bytes((10, 200, 30, 128))]
    alpha = png(8, 6, 6, rows)
    write("alpha.png", alpha)

    # 8 x 6 without an alpha channel, yellow top-left pixel.
    rows = [bytes((30, 90, 200)) * 8 for _ in range(6)]
    rows[0] = bytes((255, 255, 0)) + rows[0][3:]
    write("opaque.png", png(8, 6, 2, rows))

    # One pixel wider than any picture the agent decodes; a tiny file.
    write("wide.png", png(4097, 1, 0, [bytes(4097)]))

    # Damaged: cut inside the pixel data; and a pixel chunk with a wrong CRC.
    write("truncated.png", alpha[: len(alpha) - 20])
    broken = bytearray(alpha)
    idat = broken.index(b"IDAT")
    broken[idat + 6] ^= 0xFF
    write("bad_crc.png", bytes(broken))

    # A 24-bit bitmap file, which the default-picture loader must refuse.
    bits = bytes((0, 0, 255)) * 4 * 4
    info = struct.pack("<IiiHHIIiiII", 40, 4, 4, 1, 24, 0, len(bits), 0, 0, 0, 0)
    write("picture24.bmp",
          struct.pack("<2sIHHI", b"BM", 14 + 40 + len(bits), 0, 0, 14 + 40) + info + bits)

    subprocess.run(["convert", "-size", "16x16", "xc:rgb(32,96,160)", "-quality", "95",
                    os.path.join(HERE, "photo.jpg")], check=True)


if __name__ == "__main__":
    main()
