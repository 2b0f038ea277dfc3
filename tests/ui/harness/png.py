"""Writes PNG files."""

import struct
import zlib


def png_bytes(width, rows):
    """A picture of rows of red, green, blue, a byte each."""
    lines = []
    above = bytes(3 * width)
    for row in rows:
        # Each line as its difference to the one above it, which packs best.
        lines.append(b"\2" + bytes((value - over) & 255 for value, over in zip(row, above)))
        above = row

    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    return b"".join((b"\x89PNG\r\n\x1a\n", chunk(b"IHDR", struct.pack(">IIBBBBB", width, len(rows), 8, 2, 0, 0, 0)),
                     chunk(b"IDAT", zlib.compress(b"".join(lines), 9)), chunk(b"IEND", b"")))
