"""The picture of the private X server, which it keeps as a file in the format of xwd."""

import os
import pathlib
import struct

from .png import png_bytes


class Screen:
    """Pixels as they are at this moment."""

    def __init__(self, path=None):
        with open(path or os.environ["ULK_UI_SCREEN"], "rb") as file:
            data = file.read()
        header = struct.unpack(">25I", data[:100])
        header_size, self.width, self.height = header[0], header[4], header[5]
        bits, self.line_size, colours = header[11], header[12], header[19]
        if bits != 32:
            raise ValueError(f"{bits} bits to a pixel")
        # Blue, green, red, unused; twelve bytes to an entry of the colour table before them.
        self.pixels = data[header_size + 12 * colours:]

    def pixel(self, x, y):
        at = y * self.line_size + 4 * x
        blue, green, red = self.pixels[at:at + 3]
        return red, green, blue

    def colours(self, x, y, width, height):
        """How often each colour stands in a rectangle."""
        counts = {}
        for row in range(y, y + height):
            at = row * self.line_size + 4 * x
            line = self.pixels[at:at + 4 * width]
            for i in range(0, len(line), 4):
                colour = (line[i + 2], line[i + 1], line[i])
                counts[colour] = counts.get(colour, 0) + 1
        return counts

    def places(self, colour, x, y, width, height):
        """Where a colour stands in a rectangle: (x, y) of each pixel."""
        red, green, blue = colour
        wanted = bytes((blue, green, red))
        found = []
        for row in range(y, y + height):
            start = row * self.line_size
            at = self.pixels.find(wanted, start + 4 * x, start + 4 * (x + width))
            while at >= 0:
                # A match between two pixels is none.
                if (at - start) % 4 == 0:
                    found.append(((at - start) // 4, row))
                at = self.pixels.find(wanted, at + 1, start + 4 * (x + width))
        return found

    def rectangle(self, x, y, width, height):
        """The bytes of a rectangle, to compare with those of another moment."""
        return b"".join(self.pixels[row * self.line_size + 4 * x:row * self.line_size + 4 * (x + width)]
                        for row in range(y, y + height))

    def save(self, path, rectangle=None):
        """Writes a PNG file of the screen, or of (x, y, width, height) on it."""
        left, top, width, height = rectangle or (0, 0, self.width, self.height)
        rows = []
        for row in range(top, top + height):
            line = self.pixels[row * self.line_size + 4 * left:row * self.line_size + 4 * (left + width)]
            rgb = bytearray(3 * width)
            rgb[0::3], rgb[1::3], rgb[2::3] = line[2::4], line[1::4], line[0::4]
            rows.append(bytes(rgb))
        pathlib.Path(path).write_bytes(png_bytes(width, rows))
