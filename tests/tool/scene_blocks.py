"""Blocks of scene files for tests, and what can be measured of them."""


def block(positions, triangles, colour="255,0,0,255"):
    """A polygon model with a strip for each triangle."""
    lines = [f"begin polygon_surface,{len(positions)},{4 * len(triangles)}"]
    for position in positions:
        lines += [f"color {colour}", "position " + ",".join(f"{value:g}" for value in position)]
    for triangle in triangles:
        lines += [f"element {corner}" for corner in triangle] + ["element -1"]
    lines += ["tangent 1,0,0", "binormal 0,1,0", "normal 0,0,1"] * len(positions)
    return "\n".join(lines + ["end", ""])


def box(low, high, colour="255,0,0,255"):
    corners = [tuple((high if n >> axis & 1 else low)[axis] for axis in range(3)) for n in range(8)]
    return block(corners, [(0, 2, 1), (1, 2, 3), (4, 5, 6), (5, 7, 6), (0, 1, 4), (1, 5, 4), (2, 6, 3), (3, 6, 7),
                           (0, 4, 2), (2, 4, 6), (1, 3, 5), (3, 7, 5)], colour)


def triangles(text):
    """The corners of the triangles of a saved polygon model, in the order of their winding."""
    def values(key):
        return [line.split(" ", 1)[1] for line in text.splitlines() if line.startswith(key + " ")]
    positions = [tuple(map(float, value.split(","))) for value in values("position")]
    strip, found = [], []
    for index in map(int, values("element")):
        if not 0 <= index < len(positions):
            strip = []
            continue
        strip.append(positions[index])
        if len(strip) >= 3:
            a, b, c = strip[-3:]
            found.append((a, b, c) if len(strip) % 2 == 1 else (b, a, c))
    return found


def volume(text):
    """What the triangles of a saved polygon model enclose."""
    return sum(a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2])
               + a[2] * (b[0] * c[1] - b[1] * c[0]) for a, b, c in triangles(text)) / 6
