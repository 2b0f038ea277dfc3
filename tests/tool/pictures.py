"""Makes the bytes of small pictures, and looks into PNG files."""

import struct
import zlib


def png_size(path):
    data = path.read_bytes()
    assert data[:8] == b"\x89PNG\r\n\x1a\n"
    return struct.unpack(">II", data[16:24])


def first_pixel(path):
    """Of an RGBA picture. There is nothing before it that a filter of its row could have taken off."""
    data = path.read_bytes()
    start = data.index(b"IDAT")
    size = struct.unpack(">I", data[start - 4:start])[0]
    return tuple(zlib.decompressobj().decompress(data[start + 4:start + 4 + size], 5)[1:])


def png_chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(width, height, depth, colour_type, lines, *chunks):
    """`lines` are the rows, each behind its filter byte."""
    return (b"\x89PNG\r\n\x1a\n"
            + png_chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, depth, colour_type, 0, 0, 0)) + b"".join(chunks)
            + png_chunk(b"IDAT", zlib.compress(lines, 9)) + png_chunk(b"IEND", b""))


def png_of_one_pixel(*values):
    """Grey or RGB."""
    return png(1, 1, 8, {1: 0, 3: 2}[len(values)], bytes([0, *values]))


def bmp(width, height, bits, pixels, palette=b"", header_size=40):
    """`palette` follows the header."""
    offset = 14 + header_size + len(palette)
    return (struct.pack("<2sIII", b"BM", offset + len(pixels), 0, offset)
            + struct.pack("<IiiHHIIiiII", header_size, width, height, 1, bits, 0, 0, 0, 0, 0, 0)
            + bytes(header_size - 40) + palette + pixels)


def tga(width, height, depth, descriptor, pixels):
    return struct.pack("<BBBHHBHHHHBB", 0, 0, 2, 0, 0, 0, 0, 0, width, height, depth, descriptor) + pixels
