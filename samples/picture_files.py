"""Picture files in four forms, made of rows of pixels.

A picture is a list of rows, the uppermost first; a row is a list of pixels, each of them red, green and blue as whole
numbers from 0 to 255. Every function gives the bytes of a file.
"""

import math
import struct
import zlib

PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"


def png(rows):
    """8 bits; each row with the filter that leaves the smallest differences. Pixels may also be grey alone, or have an
    opacity behind their blue."""
    channels = len(rows[0][0])

    def filtered(row, above):
        left = bytes(channels) + row[:-channels]
        corner = bytes(channels) + above[:-channels]
        forms = [bytes([0]) + row] + [
            bytes([number]) + bytes((a - b) & 255 for a, b in zip(row, guesses))
            for number, guesses in ((1, left), (2, above), (4, map(paeth, left, above, corner)))]
        return min(forms, key=lambda form: sum(min(byte, 256 - byte) for byte in form[1:]))

    lines = [bytes(value for pixel in row for value in pixel) for row in rows]
    data = b"".join(map(filtered, lines, [bytes(len(lines[0]))] + lines))
    header = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, {1: 0, 3: 2, 4: 6}[channels], 0, 0, 0)
    return PNG_SIGNATURE + b"".join(
        struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
        for kind, data in ((b"IHDR", header), (b"IDAT", zlib.compress(data, 9)), (b"IEND", b"")))


def content(data):
    """What counts when files are compared: other versions of zlib write other bytes for the same picture."""
    if not data.startswith(PNG_SIGNATURE):
        return data
    chunks, place = [], len(PNG_SIGNATURE)
    while place < len(data):
        length, kind = struct.unpack(">I4s", data[place:place + 8])
        chunk = data[place + 8:place + 8 + length]
        chunks.append((kind, zlib.decompress(chunk) if kind == b"IDAT" else chunk))
        place += length + 12
    return chunks


def paeth(left, above, corner):
    guess = left + above - corner
    return min((left, above, corner), key=lambda value: abs(guess - value))


def bmp(rows):
    """24 bits, the lowest row first."""
    width, height = len(rows[0]), len(rows)
    padding = bytes(-3 * width % 4)
    data = b"".join(bytes(value for r, g, b in row for value in (b, g, r)) + padding for row in reversed(rows))
    return (struct.pack("<2sIHHI", b"BM", 54 + len(data), 0, 0, 54) +
            struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(data), 2835, 2835, 0, 0) + data)


def tga(rows):
    """24 bits, the lowest row first. The width has to be a multiple of 4: the modeller takes rows of whole groups of
    four bytes, and the form has no padding."""
    width, height = len(rows[0]), len(rows)
    assert width % 4 == 0
    return (struct.pack("<BBBHHBHHHHBB", 0, 0, 2, 0, 0, 0, 0, 0, width, height, 24, 0) +
            bytes(value for row in reversed(rows) for r, g, b in row for value in (b, g, r)))


# ---- JPEG: baseline, without subsampling, with the tables that the standard gives as examples (Annex K)

ZIGZAG = [0, 1, 8, 16, 9, 2, 3, 10, 17, 24, 32, 25, 18, 11, 4, 5, 12, 19, 26, 33, 40, 48, 41, 34, 27, 20, 13, 6, 7, 14,
          21, 28, 35, 42, 49, 56, 57, 50, 43, 36, 29, 22, 15, 23, 30, 37, 44, 51, 58, 59, 52, 45, 38, 31, 39, 46, 53,
          60, 61, 54, 47, 55, 62, 63]
LUMINANCE = [16, 11, 10, 16, 24, 40, 51, 61, 12, 12, 14, 19, 26, 58, 60, 55, 14, 13, 16, 24, 40, 57, 69, 56, 14, 17, 22,
             29, 51, 87, 80, 62, 18, 22, 37, 56, 68, 109, 103, 77, 24, 35, 55, 64, 81, 104, 113, 92, 49, 64, 78, 87,
             103, 121, 120, 101, 72, 92, 95, 98, 112, 100, 103, 99]
# How many codes there are of each length from 1 to 16 bits, and what they stand for.
DC_COUNTS, DC_SYMBOLS = [0, 1, 5, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0], list(range(12))
AC_COUNTS = [0, 2, 1, 3, 3, 2, 4, 3, 5, 5, 4, 4, 0, 0, 1, 125]
AC_SYMBOLS = list(bytes.fromhex(
    "01020300041105122131410613516107227114328191a1082342b1c11552d1f02433627282090a161718191a25262728292a34353637"
    "38393a434445464748494a535455565758595a636465666768696a737475767778797a838485868788898a92939495969798999aa2a3"
    "a4a5a6a7a8a9aab2b3b4b5b6b7b8b9bac2c3c4c5c6c7c8c9cad2d3d4d5d6d7d8d9dae1e2e3e4e5e6e7e8e9eaf1f2f3f4f5f6f7f8f9fa"))
# The cosine transform of eight values, each frequency a row.
COSINES = [[(math.sqrt(0.125) if k == 0 else 0.5) * math.cos((2 * x + 1) * k * math.pi / 16) for x in range(8)]
           for k in range(8)]


def codes(counts, symbols):
    """Symbol to code and its length."""
    table, code, place = {}, 0, 0
    for length, count in enumerate(counts, 1):
        for symbol in symbols[place:place + count]:
            table[symbol] = code, length
            code += 1
        code, place = code << 1, place + count
    return table


def jpeg(rows, coarseness=0.25):
    """Width and height have to be multiples of 8."""
    width, height = len(rows[0]), len(rows)
    assert width % 8 == 0 and height % 8 == 0
    steps = [max(1, min(255, round(step * coarseness))) for step in LUMINANCE]

    def segment(marker, data):
        return struct.pack(">BBH", 255, marker, len(data) + 2) + data

    def huffman(kind, counts, symbols):
        return segment(0xC4, bytes([kind, *counts, *symbols]))

    return (b"\xff\xd8" + segment(0xE0, b"JFIF\0\1\1" + struct.pack(">BHHBB", 1, 72, 72, 0, 0)) +
            segment(0xDB, bytes([0] + [steps[place] for place in ZIGZAG])) +
            segment(0xC0, struct.pack(">BHHB", 8, height, width, 3) + bytes([1, 17, 0, 2, 17, 0, 3, 17, 0])) +
            huffman(0, DC_COUNTS, DC_SYMBOLS) + huffman(16, AC_COUNTS, AC_SYMBOLS) +
            segment(0xDA, bytes([3, 1, 0, 2, 0, 3, 0, 0, 63, 0])) + scan(rows, steps) + b"\xff\xd9")


# Brightness about 0, and the two differences of colour, from red, green and blue; the last number is added.
COMPONENTS = ((0.299, 0.587, 0.114, -128), (-0.168736, -0.331264, 0.5, 0), (0.5, -0.418688, -0.081312, 0))


def scan(rows, steps):
    planes = [[[r * red + g * green + b * blue + more for red, green, blue in row] for row in rows]
              for r, g, b, more in COMPONENTS]
    dc_codes, ac_codes = codes(DC_COUNTS, DC_SYMBOLS), codes(AC_COUNTS, AC_SYMBOLS)
    bits = []

    def put(table, symbol, value, size):
        code, length = table[symbol]
        bits.append(f"{code:0{length}b}")
        if size:
            bits.append(f"{value if value > 0 else value + (1 << size) - 1:0{size}b}")

    last = [0, 0, 0]
    for y in range(0, len(rows), 8):
        for x in range(0, len(rows[0]), 8):
            for component, plane in enumerate(planes):
                values = transformed([row[x:x + 8] for row in plane[y:y + 8]], steps)
                change, last[component] = values[0] - last[component], values[0]
                size = abs(change).bit_length()
                put(dc_codes, size, change, size)
                zeros = 0
                for value in values[1:max((i for i in range(64) if values[i]), default=0) + 1]:
                    if value == 0:
                        zeros += 1
                        continue
                    for _ in range(zeros // 16):
                        put(ac_codes, 0xF0, 0, 0)
                    size = abs(value).bit_length()
                    put(ac_codes, zeros % 16 << 4 | size, value, size)
                    zeros = 0
                if not values[63]:
                    put(ac_codes, 0, 0, 0)
    text = "".join(bits)
    text += "1" * (-len(text) % 8)
    return int(text, 2).to_bytes(len(text) // 8, "big").replace(b"\xff", b"\xff\0")


def transformed(block, steps):
    """The 64 frequencies of a block in steps of the table, in zigzag order."""
    columns = [[sum(c * v for c, v in zip(cosines, row)) for cosines in COSINES] for row in block]
    result = []
    for place in ZIGZAG:
        v, u = divmod(place, 8)
        result.append(round(sum(COSINES[v][y] * columns[y][u] for y in range(8)) / steps[place]))
    return result
