"""Makes the bytes of small pictures, and looks into PNG files."""

import struct
import zlib


class Picture:
    """The pixels of an RGBA picture of 8 bits: `rows[y][x]`, top row first."""

    def __init__(self, path):
        data = path.read_bytes()
        assert data[:8] == b"\x89PNG\r\n\x1a\n"
        self.width, self.height, depth, colour_type = struct.unpack(">IIBB", data[16:26])
        assert (depth, colour_type) == (8, 6)
        packed, place = b"", 8
        while place < len(data):
            size, kind = struct.unpack(">I4s", data[place:place + 8])
            if kind == b"IDAT":
                packed += data[place + 8:place + 8 + size]
            place += size + 12
        lines = zlib.decompress(packed)
        stride = self.width * 4
        above, self.rows = bytes(stride), []
        for y in range(self.height):
            start = y * (stride + 1)
            above = _unfiltered(lines[start], lines[start + 1:start + 1 + stride], above)
            self.rows.append([tuple(above[x:x + 4]) for x in range(0, stride, 4)])

    def box_of(self, is_in):
        """The columns and rows of the first and the last pixel of which `is_in` is true: left, top, right, bottom."""
        places = [(x, y) for y, row in enumerate(self.rows) for x, pixel in enumerate(row) if is_in(pixel)]
        columns, lines = [x for x, _ in places], [y for _, y in places]
        return min(columns), min(lines), max(columns), max(lines)


def _unfiltered(kind, line, above):
    """A row of pixels of four bytes; `kind` is one of the five filters of the format."""
    row = bytearray(line)
    for i, value in enumerate(line):
        left, up, corner = (row[i - 4] if i >= 4 else 0), above[i], (above[i - 4] if i >= 4 else 0)
        nearest = min((abs(up - corner), 0, left), (abs(left - corner), 1, up),
                      (abs(left + up - 2 * corner), 2, corner))[2]
        row[i] = (value + (0, left, up, (left + up) // 2, nearest)[kind]) & 255
    return row


def png_size(path):
    data = path.read_bytes()
    assert data[:8] == b"\x89PNG\r\n\x1a\n"
    return struct.unpack(">II", data[16:24])


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
