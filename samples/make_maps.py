#!/usr/bin/env python3
"""Writes the pictures of the sample scenes into maps/; with --check it writes nothing and tells which of them differ.

Each picture is a function of a place, counted as texture coordinates are: u to the right and v up, from 0 to 1.
"""

import math
import pathlib
import sys

import picture_files

FOLDER = pathlib.Path(__file__).resolve().parent / "maps"


# ---- colours and fields

def clamp(value, low=0.0, high=1.0):
    return max(low, min(high, value))


def mix(first, second, share):
    return tuple(a + (b - a) * share for a, b in zip(first, second))


def smooth(low, high, value):
    """0 below `low`, 1 above `high`, and a soft step between."""
    share = clamp((value - low) / (high - low))
    return share * share * (3 - 2 * share)


def gradient(stops, value):
    """`stops` holds pairs of a value and a colour, in rising order."""
    for (low, first), (high, second) in zip(stops, stops[1:]):
        if value <= high:
            return mix(first, second, clamp((value - low) / (high - low)))
    return stops[-1][1]


def ripple(x, y, z):
    """Uneven hills between about -1 and 1, the same on every machine."""
    return (math.sin(3.1 * x + 1.7 * math.sin(2.3 * y + 0.9)) + math.sin(3.7 * y + 1.9 * math.sin(2.9 * z + 2.1)) +
            math.sin(3.3 * z + 1.5 * math.sin(2.7 * x + 4.2))) / 3


def grain(column, row):
    """A number from 0 to 1 for every pixel or brick, without any pattern to be seen."""
    state = (column * 374761393 + row * 668265263) & 0xFFFFFFFF
    state = ((state ^ state >> 13) * 1274126177) & 0xFFFFFFFF
    return ((state ^ state >> 16) & 0xFFFF) / 0xFFFF


def picture(width, height, colour):
    """Rows of pixels, the uppermost first, from the colour (0..255, or a function of u and v) at their middles."""
    return [[tuple(round(clamp(c, 0, 255)) for c in colour((x + 0.5) / width, (y + 0.5) / height))
             for x in range(width)] for y in reversed(range(height))]


# ---- the globe: degrees of longitude from -180 to 180 over u, of latitude from -90 to 90 over v

# Coasts as pairs of longitude and latitude.
COASTS = [
    # North and Central America
    [(-168, 66), (-156, 71), (-128, 70), (-110, 68), (-95, 69), (-88, 68), (-94, 60), (-85, 55), (-80, 52), (-78, 62),
     (-65, 58), (-56, 52), (-66, 49), (-64, 45), (-70, 43), (-75, 38), (-76, 35), (-81, 31), (-80, 25), (-84, 30),
     (-94, 29), (-97, 25), (-95, 18), (-87, 21), (-88, 16), (-83, 14), (-82, 9), (-77, 8), (-83, 8), (-92, 14),
     (-105, 20), (-112, 29), (-110, 23), (-117, 33), (-124, 40), (-124, 48), (-135, 58), (-150, 60), (-160, 56),
     (-166, 61)],
    # Greenland
    [(-55, 82), (-30, 83), (-18, 77), (-22, 70), (-40, 65), (-44, 60), (-52, 65), (-56, 75), (-70, 78)],
    # South America
    [(-77, 8), (-72, 12), (-62, 10), (-51, 4), (-50, 0), (-35, -6), (-39, -14), (-41, -22), (-48, -26), (-54, -34),
     (-58, -38), (-65, -42), (-69, -52), (-73, -52), (-74, -42), (-71, -30), (-70, -18), (-76, -14), (-81, -5),
     (-79, 2)],
    # Africa
    [(-6, 35), (10, 37), (20, 32), (32, 31), (37, 22), (43, 12), (51, 12), (41, -2), (40, -14), (35, -24), (27, -34),
     (18, -34), (12, -18), (13, -6), (9, 4), (-7, 4), (-17, 14), (-16, 24)],
    # Madagascar
    [(49, -12), (50, -16), (47, -25), (44, -22)],
    # Europe and Asia
    [(-9, 43), (-1, 44), (-4, 48), (4, 52), (9, 57), (12, 54), (20, 55), (24, 59), (22, 64), (17, 61), (11, 56),
     (5, 60), (14, 68), (26, 71), (40, 67), (60, 69), (75, 73), (104, 77), (130, 72), (160, 70), (179, 68), (177, 63),
     (163, 58), (156, 51), (154, 59), (141, 58), (136, 54), (141, 48), (130, 42), (129, 36), (126, 37), (121, 40),
     (119, 36), (122, 30), (114, 22), (108, 20), (109, 12), (101, 12), (104, 2), (98, 9), (97, 17), (90, 22), (80, 14),
     (77, 8), (72, 20), (66, 25), (57, 26), (50, 29), (57, 24), (59, 21), (45, 13), (35, 28), (36, 36), (27, 37),
     (30, 41), (41, 41), (38, 46), (28, 44), (23, 37), (19, 42), (13, 45), (18, 40), (15, 38), (9, 44), (0, 39),
     (-5, 36), (-9, 37)],
    # Britain, Iceland, Japan
    [(-5, 50), (1, 51), (-2, 55), (-3, 58), (-6, 57), (-4, 54)], [(-24, 65), (-15, 66), (-14, 64), (-22, 63)],
    [(130, 32), (136, 34), (141, 36), (142, 43), (145, 44), (141, 45), (139, 38), (132, 35)],
    # Sumatra, Borneo, New Guinea, the Philippines
    [(95, 5), (106, -6), (102, -4)], [(109, 1), (117, 7), (119, 1), (114, -4)],
    [(131, -1), (141, -3), (150, -10), (143, -8), (136, -4)], [(120, 18), (122, 17), (126, 7), (121, 12)],
    # Australia and New Zealand
    [(114, -22), (122, -18), (130, -12), (136, -12), (137, -17), (142, -11), (146, -19), (153, -26), (150, -37),
     (144, -39), (137, -34), (129, -32), (116, -35)],
    [(173, -35), (178, -38), (171, -44), (167, -46), (173, -40)],
    # Antarctica
    [(-180, -79), (-150, -77), (-120, -74), (-75, -73), (-60, -64), (-62, -75), (-30, -78), (0, -70), (50, -67),
     (100, -66), (140, -67), (170, -72), (180, -79), (180, -90), (-180, -90)],
]


def land_cover(width, height, fine=4):
    """How much of each pixel is land, 0..1, the lowest row first: spans between the coasts on `fine` lines a row."""
    cover = [[0.0] * width for _ in range(height)]
    for line in range(height * fine):
        latitude = ((line + 0.5) / (height * fine) - 0.5) * 180
        row = cover[line // fine]
        for coast in COASTS:
            crossings = sorted(
                ((x0 + (x1 - x0) * (latitude - y0) / (y1 - y0)) / 360 + 0.5) * width
                for (x0, y0), (x1, y1) in zip(coast, coast[1:] + coast[:1]) if (y0 > latitude) != (y1 > latitude))
            for left, right in zip(crossings[::2], crossings[1::2]):
                for x in range(max(0, int(left)), min(width, int(right) + 1)):
                    row[x] += max(0.0, min(right, x + 1) - max(left, x)) / fine
    return [[min(1.0, share) for share in row] for row in cover]


def blurred(field, reach):
    """The mean over a square, around the globe in u."""
    def mean(row):
        ring = row[-reach:] + row + row[:reach]
        return [sum(ring[x:x + 2 * reach + 1]) / (2 * reach + 1) for x in range(len(row))]

    field = [mean(row) for row in field]
    return [[sum(field[clamp(y + d, 0, len(field) - 1)][x] for d in range(-reach, reach + 1)) / (2 * reach + 1)
             for x in range(len(field[0]))] for y in range(len(field))]


LAND = [(0, (52, 120, 58)), (12, (84, 142, 62)), (20, (214, 186, 112)), (31, (206, 180, 108)), (40, (120, 156, 74)),
        (56, (72, 122, 70)), (66, (146, 154, 128)), (73, (238, 242, 246)), (90, (250, 252, 255))]
DEEP, SHALLOW, GRID, EQUATOR = (16, 52, 116), (70, 156, 196), (214, 226, 240), (244, 196, 90)


def globe(width=512, height=256):
    cover = land_cover(width, height)
    shore = blurred(cover, 5)

    def line(degrees, every, thickness):
        off = abs((degrees + every / 2) % every - every / 2)
        return 1 - smooth(thickness * 0.4, thickness, off)

    def colour(u, v):
        x, y = int(u * width), int(v * height)
        longitude, latitude = (u - 0.5) * 360, (v - 0.5) * 180
        a, b = math.radians(longitude), math.radians(latitude)
        hills = ripple(4 * math.cos(b) * math.cos(a), 4 * math.cos(b) * math.sin(a), 4 * math.sin(b))
        shade = 1 + 0.1 * hills
        land = tuple(c * shade for c in gradient(LAND, clamp(abs(latitude) + 9 * hills, 0, 90)))
        if latitude < -62:
            land = LAND[-1][1]
        sea = mix(DEEP, SHALLOW, clamp(1.5 * shore[y][x]))
        ground = mix(sea, land, cover[y][x])
        lines = max(line(longitude, 30, 0.8 / max(0.2, math.cos(b))) if abs(latitude) < 75.5 else 0,
                    line(latitude, 30, 0.9))
        return mix(ground, EQUATOR if abs(latitude) < 5 and line(latitude, 30, 0.9) == lines else GRID, 0.6 * lines)

    return picture(width, height, colour)


def globe_gloss(width=128, height=64):
    """Water shines and land hardly does."""
    cover = land_cover(width, height)
    return picture(width, height, lambda u, v: mix((170,) * 3, (14,) * 3, cover[int(v * height)][int(u * width)]))


# ---- a wall

BRICK_ROWS, BRICKS, JOINT = 4, 2, 0.09


def brick_at(u, v):
    """Column and row of the brick at a place, and how far it is to the nearest edge, in heights of a brick."""
    row = int(v * BRICK_ROWS)
    along = (u * BRICKS + 0.5 * (row % 2)) % BRICKS
    y, x = v * BRICK_ROWS - row, along - int(along)
    return int(along), row, min(y, 1 - y, min(x, 1 - x) * BRICK_ROWS / BRICKS)


def bricks(size=128):
    def colour(u, v):
        column, row, edge = brick_at(u, v)
        speckle = 0.9 + 0.1 * grain(int(u * size) // 2, int(v * size) // 2) + 0.06 * ripple(20 * u, 20 * v, 3)
        burnt = mix((206, 98, 66), (150, 56, 44), grain(column + 7, row + 3))
        brick = mix(burnt, (226, 140, 92), 0.5 * grain(column + 31, row + 17) ** 2)
        return tuple(c * speckle for c in mix((206, 198, 184), brick, smooth(JOINT * 0.8, JOINT * 1.3, edge)))

    return picture(size, size, colour)


def brick_depth(size=64):
    """A map of heights as the modeller takes it, which lights dark places as the high ones."""
    def colour(u, v):
        _, _, edge = brick_at(u, v)
        rough = 26 * grain(int(u * size) + 5, int(v * size) + 9) + 10 * ripple(16 * u, 16 * v, 1)
        return (10 + rough + 220 * (1 - smooth(JOINT * 0.7, JOINT * 2.0, edge)),) * 3

    return picture(size, size, colour)


# ---- a glazed tile with a rosette

def rosette_height(x, y):
    """Height over the ground in widths of the tile; x and y from -1 to 1."""
    radius, angle = math.hypot(x, y), math.atan2(y, x)
    petals = 0.62 + 0.2 * math.cos(8 * angle)
    flower = 0.11 * (1 - smooth(petals - 0.22, petals, radius)) * (1 - 0.25 * smooth(0.2, 0.4, radius) *
                                                               (1 - math.cos(8 * angle)))
    button = 0.1 * math.sqrt(max(0.0, 0.06 - radius * radius)) / 0.245
    frame = 0.05 * smooth(0.8, 0.84, max(abs(x), abs(y))) * (1 - smooth(0.93, 0.97, max(abs(x), abs(y))))
    return flower + button + frame


def rosette_normals(size=128):
    """Normals as the modeller takes them: every component times 127, in a signed byte; 192 stands for -64."""
    def colour(u, v):
        x, y, step = 2 * u - 1, 2 * v - 1, 1 / size
        slope_x = (rosette_height(x + step, y) - rosette_height(x - step, y)) / (2 * step)
        slope_y = (rosette_height(x, y + step) - rosette_height(x, y - step)) / (2 * step)
        length = math.sqrt(slope_x ** 2 + slope_y ** 2 + 1)
        return tuple(round(127 * c / length) % 256 for c in (-slope_x, -slope_y, 1))

    return picture(size, size, colour)


def glaze(size=128):
    def colour(u, v):
        x, y = 2 * u - 1, 2 * v - 1
        radius, angle = math.hypot(x, y), math.atan2(y, x)
        petals = 0.62 + 0.2 * math.cos(8 * angle)
        ground = mix((30, 92, 128), (22, 66, 110), 0.5 + 0.5 * ripple(5 * u, 5 * v, 2))
        flower = mix((250, 232, 190), (236, 132, 88), smooth(0.2, 0.75, radius))
        tone = mix(flower, ground, smooth(petals - 0.06, petals - 0.01, radius))
        tone = mix((240, 190, 70), tone, smooth(0.235, 0.26, radius))
        return mix(tone, (232, 226, 206), smooth(0.8, 0.83, max(abs(x), abs(y))))

    return picture(size, size, colour)


# ---- tiles around a ball, and beaten metal

TILES = (8, 6)


def in_joint(u, v):
    return u * TILES[0] % 1 < 0.1 or v * TILES[1] % 1 < 0.1


def tiles(u, v):
    if in_joint(u, v):
        return 90, 84, 80
    return (244, 236, 214) if (int(u * TILES[0]) + int(v * TILES[1])) % 2 else (38, 70, 160)


def joints(u, v):
    """Depths, without colours."""
    return (60 if in_joint(u, v) else 0,)


def dents(u, v):
    """Depths as a picture with colours."""
    return (120 + 110 / 3 * sum(math.sin(2 * math.pi * (a * u + b * v)) for a, b in ((3, 1), (-2, 4), (5, 3))),) * 3


def worn(u, v):
    """Shiny in the middle, dull at the edges."""
    shine = 255 * min(1, 6 * min(u, 1 - u, v, 1 - v))
    return shine, shine, shine, 0


# ---- surroundings: a plain with hills, a sky with a sun, and a balloon to every side

# Suffix of each face, and the direction that its middle, its right edge and its upper edge have. Seen from within,
# the pictures lie upside down: the four at the sides have the ground at their upper edges.
FACES = {
    "posx": ((1, 0, 0), (0, 0, -1), (0, -1, 0)), "negx": ((-1, 0, 0), (0, 0, 1), (0, -1, 0)),
    "posy": ((0, 1, 0), (1, 0, 0), (0, 0, 1)), "negy": ((0, -1, 0), (1, 0, 0), (0, 0, -1)),
    "posz": ((0, 0, 1), (1, 0, 0), (0, -1, 0)), "negz": ((0, 0, -1), (-1, 0, 0), (0, -1, 0)),
}
HEAVEN = [(0.0, (244, 226, 204)), (0.12, (190, 216, 236)), (0.45, (104, 164, 226)), (1.0, (36, 92, 180))]
BALLOONS = [((1, 0.3, 0.1), (240, 178, 60)), ((-1, 0.3, -0.1), (126, 70, 150)),
            ((-0.12, 0.3, 1), (236, 96, 80)), ((0.1, 0.3, -1), (28, 150, 150))]
SUN = (0.36, 0.84, 0.4)


def unit(v):
    length = math.sqrt(sum(c * c for c in v))
    return tuple(c / length for c in v)


def dot(a, b):
    return sum(p * q for p, q in zip(a, b))


def waves(value, sharpness):
    """From 0 to 1 and back once for each unit, with soft edges."""
    return clamp(0.5 + sharpness * math.sin(2 * math.pi * value))


def floor_colour(direction):
    """Tiles of a courtyard, fading into the haze."""
    x, z = direction[0] / -direction[1], direction[2] / -direction[1]
    distance = math.hypot(x, z)
    sharpness = 9 / (1 + distance)
    across, along = waves(x, sharpness), waves(z, sharpness)
    tile = mix((74, 104, 70), (212, 208, 174), across + along - 2 * across * along)
    return mix(tile, (150, 164, 120), smooth(2.5, 7.0, distance))


def surroundings(direction):
    direction = unit(direction)
    x, y, z = direction
    bearing = math.atan2(x, z)
    hills = 0.1 + 0.045 * math.sin(5 * bearing + 1) + 0.03 * math.sin(9 * bearing) + 0.012 * math.sin(23 * bearing)
    if y < 0:
        return floor_colour(direction)
    colour = mix(mix((104, 138, 96), (128, 142, 160), y / hills), gradient(HEAVEN, y), smooth(-0.006, 0.006, y - hills))
    if y < hills:
        return colour
    clouds = smooth(0.25, 0.75, ripple(3 * x, 9 * y + 2, 3 * z)) * smooth(0.14, 0.35, y) * (1 - smooth(0.5, 0.9, y))
    colour = mix(colour, (255, 252, 246), 0.75 * clouds)
    sun = dot(direction, unit(SUN))
    colour = mix(colour, (255, 246, 208), smooth(0.9, 1.0, sun) * 0.7)
    colour = mix(colour, (255, 255, 240), smooth(0.985, 0.99, sun))
    for place, balloon in BALLOONS:
        colour = balloon_over(colour, direction, unit(place), balloon)
    return colour


def balloon_over(colour, direction, place, balloon):
    """A ball that narrows downwards, with stripes, and a basket below."""
    ahead = dot(direction, place)
    if ahead < 0.7:
        return colour
    right = unit((place[2], 0, -place[0]))
    across, up = dot(direction, right) / ahead, (direction[1] / ahead - place[1]) / math.sqrt(1 - place[1] ** 2)
    radius = 0.2 + 0.18 * min(0.0, up)
    inside = math.hypot(across, up if up > 0 else 0.74 * up) / radius
    if inside < 1.08:
        stripe = math.asin(clamp(across / radius, -1, 1)) * 4.5 / math.pi
        cloth = mix((248, 240, 222), balloon, waves(stripe + 0.25, 4))
        shade = 0.72 + 0.28 * clamp(0.6 + 2.4 * up - 1.2 * across)
        return mix(tuple(c * shade for c in cloth), colour, smooth(0.98, 1.04, inside))
    basket = (1 - smooth(0.028, 0.042, abs(across))) * (1 - smooth(0.028, 0.042, abs(up + 0.33)))
    return mix(colour, (104, 72, 44), basket)


def face(name, size=128):
    middle, right, up = FACES[name]

    def colour(u, v):
        return surroundings(tuple(m + (2 * u - 1) * r + (2 * v - 1) * t for m, r, t in zip(middle, right, up)))

    return picture(size, size, colour)


# ---- files

MAPS = {
    "globe.png": (picture_files.png, globe),
    "globe-gloss.tga": (picture_files.tga, globe_gloss),
    "bricks.png": (picture_files.png, bricks),
    "brick-depth.bmp": (picture_files.bmp, brick_depth),
    "glaze.jpg": (picture_files.jpeg, glaze),
    "rosette-normals.png": (picture_files.png, rosette_normals),
    "tiles.png": (picture_files.png, lambda: picture(128, 96, tiles)),
    "joints.png": (picture_files.png, lambda: picture(128, 96, joints)),
    "dents.png": (picture_files.png, lambda: picture(40, 40, dents)),
    "worn.png": (picture_files.png, lambda: picture(32, 32, worn)),
    "dull.tga": (picture_files.tga, lambda: picture(4, 4, lambda u, v: (56, 56, 56))),
    **{f"plain_{name}.png": (picture_files.png, lambda name=name: face(name)) for name in FACES},
}


def main():
    check = sys.argv[1:] == ["--check"]
    FOLDER.mkdir(exist_ok=True)
    differing = []
    for name, (write, draw) in MAPS.items():
        path, data = FOLDER / name, write(draw())
        if not check:
            path.write_bytes(data)
        elif not path.is_file() or picture_files.content(path.read_bytes()) != picture_files.content(data):
            differing.append(name)
    if differing:
        sys.exit("not as make_maps.py writes them: " + ", ".join(differing))


if __name__ == "__main__":
    main()
