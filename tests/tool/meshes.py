"""Meshes for the tests of ulktool, and what scene files and STL files hold of them."""

import collections
import math
import struct


def single(number):
    """A number as it is kept in single precision."""
    return struct.unpack("<f", struct.pack("<f", number))[0]


def sphere(around, down):
    """The corners of the triangles of a globe, and how many different points they have."""
    def point(i, j):
        if j in (0, down):
            return (0.0, 0.0, 1.0 if j == 0 else -1.0)
        a, b = 2 * math.pi * (i % around) / around, math.pi * j / down
        return tuple(map(single, (math.sin(b) * math.cos(a), math.sin(b) * math.sin(a), math.cos(b))))

    triangles = []
    for j in range(down):
        for i in range(around):
            a, b, c, d = point(i, j), point(i, j + 1), point(i + 1, j + 1), point(i + 1, j)
            triangles += [(a, b, c)] * (j < down - 1) + [(a, c, d)] * (j > 0)
    return triangles, around * (down - 1) + 2


def write_stl(path, triangles):
    records = (struct.pack("<12fH", 0, 0, 0, *a, *b, *c, 0) for a, b, c in triangles)
    path.write_bytes(bytes(80) + struct.pack("<I", len(triangles)) + b"".join(records))


def read_stl(path):
    """The triangles, each beginning with its least corner, as bytes: what is compared is every bit."""
    data = path.read_bytes()
    triangles = []
    for start in range(84, len(data), 50):
        corners = [data[start + 12 * n:start + 12 * (n + 1)] for n in (1, 2, 3)]
        least = corners.index(min(corners))
        triangles.append(tuple(corners[least:] + corners[:least]))
    return collections.Counter(triangles)


class Mesh:
    """The first polygon block of a scene's text."""

    def __init__(self, text):
        lines = text[text.index("begin polygon_surface"):].splitlines()
        lines = [line.split(" ", 1) for line in lines[:lines.index("end")]]
        self.of = lambda key: [tuple(map(float, value.split(","))) for name, value in lines if name == key]
        self.positions, self.normals = self.of("position"), self.of("normal")
        self.elements = [int(value) for name, value in lines if name == "element"]

    def strips(self):
        strips = [[]]
        for element in self.elements:
            if 0 <= element < len(self.positions):
                strips[-1].append(element)
            else:
                strips.append([])
        return [strip for strip in strips if len(strip) >= 3]

    def triangles(self):
        triangles = []
        for strip in self.strips():
            for n in range(len(strip) - 2):
                a, b, c = strip[n:n + 3]
                triangles.append((b, a, c) if n % 2 else (a, b, c))
        return triangles
