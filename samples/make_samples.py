#!/usr/bin/env python3
"""Writes the sample scenes beside this file; with --check it writes nothing and tells which of them differ.
make_maps.py makes the pictures that some of them use.

All models are about one unit large, stand around the origin and show their front to the +z axis, from where the
perspective view looks at a scene that has just been opened.
"""

import math
import pathlib
import sys

FOLDER = pathlib.Path(__file__).resolve().parent

CREAM = (244, 236, 214)
COBALT = (38, 70, 160)
TEAL = (28, 150, 150)
CORAL = (236, 96, 80)
GOLD = (240, 178, 60)
PLUM = (126, 70, 150)
LEAF = (110, 176, 84)
SKY = (120, 180, 232)
STEEL = (118, 136, 176)
WHITE = (255, 255, 255)
INK = (30, 34, 48)
BLACK = (0, 0, 0)


# ---- numbers, colours, places

def number(value):
    """Six significant digits, as the modeller writes; never a negative zero."""
    text = f"{round(value, 5):.6g}"
    return "0" if text == "-0" else text


def numbers(values):
    return ",".join(number(value) for value in values)


def mix(first, second, share):
    return tuple(round(a + (b - a) * share) for a, b in zip(first, second))


def gradient(colours, share):
    """The colour at share 0..1 along evenly spaced colours."""
    place = share * (len(colours) - 1)
    index = min(int(place), len(colours) - 2)
    return mix(colours[index], colours[index + 1], place - index)


def turn_x(degrees):
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    return lambda p: (p[0], c * p[1] - s * p[2], s * p[1] + c * p[2])


def turn_y(degrees):
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    return lambda p: (c * p[0] + s * p[2], p[1], -s * p[0] + c * p[2])


class Placement:
    """Turns, then scales, then moves. Directions are only turned."""

    def __init__(self, *turns, scale=1.0, move=(0.0, 0.0, 0.0)):
        self.turns, self.scale, self.move = turns, scale, move

    def direction(self, v):
        for turn in self.turns:
            v = turn(v)
        return v

    def position(self, p):
        return tuple(self.scale * a + b for a, b in zip(self.direction(p), self.move))


AS_BUILT = Placement()


# ---- writing of blocks; every function gives lines

def colour_line(colour):
    return "color " + ",".join(str(c) for c in colour) + ",255"


def point_line(point, placement):
    """A point is a place, or a ready line of the file such as a polar point."""
    return point if isinstance(point, str) else "position " + numbers(placement.position(point))


def nurbs(order1, order2, knot1, knot2, rows, weights=None, resolution=(33, 33), placement=AS_BUILT, maps=()):
    """`rows` holds rows of (point, colour). `knot1` gives the knots of a row, `knot2` those of a column. `maps` are
    lines of texture keys."""
    count1, count2 = len(rows[0]), len(rows)
    lines = [f"begin nurbs_surface,{count1},{order1},{count2},{order2}", f"resolution {resolution[0]},{resolution[1]}"]
    lines += maps
    colour = None
    for j, row in enumerate(rows):
        lines += ["knot1 " + number(k) for k in knot1(j)]
        lines += ["weight " + number(weights[j][i] if weights else 1) for i in range(count1)]
        for point, point_colour in row:
            if point_colour != colour:
                colour = point_colour
                lines.append(colour_line(colour))
            lines.append(point_line(point, placement))
    lines.append("")
    for i in range(count1):
        lines += ["knot2 " + number(k) for k in knot2(i)]
    return lines + ["end", ""]


def polygon(vertices, strips, placement=AS_BUILT, maps=()):
    """`vertices` holds (point, colour, texture coordinate, tangent, normal); every strip is closed by a mark. `maps`
    are lines of texture keys."""
    elements = [e for strip in strips for e in (*strip, -1)]
    lines = [f"begin polygon_surface,{len(vertices)},{len(elements)}", *maps]
    colour = None
    for point, vertex_colour, texcoord, _, _ in vertices:
        if vertex_colour != colour:
            colour = vertex_colour
            lines.append(colour_line(colour))
        lines += ["texcoord " + numbers(texcoord), point_line(point, placement)]
    lines += [f"element {e}" for e in elements]
    for _, _, _, tangent, normal in vertices:
        t, n = placement.direction(tangent), placement.direction(normal)
        lines += ["tangent " + numbers(t), "binormal " + numbers(cross(n, t)), "normal " + numbers(n)]
    return lines + ["end", ""]


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


# ---- knots

def clamped(count, order):
    """Touches the first and the last control point; inner knots evenly spaced."""
    spans = count - order + 1
    return [0] * order + [k / spans for k in range(1, spans)] + [1] * order


def closed(count, order):
    """For a row whose last order-1 points repeat its first: the whole of 0..1 lies inside the knots."""
    spans = count - order + 1
    return [k / spans for k in range(1 - order, spans + order)]


def wrap(row, order=4):
    return row + row[: order - 1]


# ---- the models

def bilinear_patch():
    corners = [((-0.5, -0.5, 0.25), CORAL), ((0.5, -0.5, -0.25), GOLD),
               ((-0.5, 0.5, -0.25), PLUM), ((0.5, 0.5, 0.25), TEAL)]
    return nurbs(2, 2, lambda j: clamped(2, 2), lambda i: clamped(2, 2), [corners[:2], corners[2:]])


# Radius and height of the vase, from the middle of its foot over the outside and the lip to the inner ground.
VASE_PROFILE = [
    (0, -0.6), (0.26, -0.6), (0.3, -0.58), (0.2, -0.46), (0.4, -0.3), (0.5, 0.02), (0.36, 0.32), (0.15, 0.42),
    (0.2, 0.56), (0.3, 0.6), (0.27, 0.61), (0.15, 0.52), (0.13, 0.4), (0.32, 0.26), (0.42, -0.02), (0.3, -0.3),
    (0, -0.42)]
VASE_COLOURS = [COBALT, COBALT, COBALT, CREAM, CREAM, SKY, COBALT, CREAM, COBALT, COBALT, CREAM, CREAM, CREAM,
                CREAM, CREAM, CREAM, CREAM]
VASE_SIDES = 8


def vase(point, placement=AS_BUILT):
    """`point` makes the point of the given radius, side and height."""
    rows = [wrap([(point(radius, side, height), colour) for side in range(VASE_SIDES)])
            for (radius, height), colour in zip(VASE_PROFILE, VASE_COLOURS)]
    return nurbs(4, 4, lambda j: closed(len(rows[0]), 4), lambda i: clamped(len(rows), 4), rows,
                 resolution=(33, 49), placement=placement)


def polar_point(radius, side, height):
    return f"circle {number(radius)}*1.1,360/{VASE_SIDES}*{side},{number(height)}"


def upright_point(radius, side, height):
    angle = 2 * math.pi * side / VASE_SIDES
    return (-radius * 1.1 * math.sin(angle), height, -radius * 1.1 * math.cos(angle))


def torus(placement=AS_BUILT, ring=0.44, tube=0.2, sides=8, colours=(CORAL, GOLD, CORAL, PLUM)):
    def point(row, column):
        a, b = 2 * math.pi * column / sides, 2 * math.pi * row / sides
        radius = ring - tube * math.cos(b)
        return (radius * math.sin(a), -radius * math.cos(a), -tube * math.sin(b))

    rows = [wrap([(point(j, i), colours[i % len(colours)]) for i in range(sides)]) for j in range(sides)]
    return nurbs(4, 4, lambda j: closed(sides + 3, 4), lambda i: closed(sides + 3, 4), wrap(rows),
                 resolution=(49, 33), placement=placement)


def sheared_knots(placement=AS_BUILT, size=6):
    """A hilly field. The inner knots shift from row to row and from column to column, so its stripes slant."""
    def inner(index):
        shift = 0.08 * index
        return [0] * 4 + [0.1 + shift, 0.4 + shift] + [1] * 4

    def height(i, j):
        return 0.3 * math.sin(2.1 * i) * math.cos(1.7 * j)

    colours = [TEAL, LEAF, GOLD, TEAL, LEAF, GOLD]
    rows = [[((i / (size - 1) - 0.5, j / (size - 1) - 0.5, height(i, j)), colours[i]) for i in range(size)]
            for j in range(size)]
    weights = [[1 + (i * j) % 3 / 2 for i in range(size)] for j in range(size)]
    return nurbs(4, 4, inner, inner, rows, weights, placement=placement)


def cube(placement=AS_BUILT, colour_of_all=None, maps=()):
    # Normal and tangent of every face.
    faces = [((0, 0, 1), (1, 0, 0), CORAL), ((0, 0, -1), (-1, 0, 0), TEAL), ((1, 0, 0), (0, 0, -1), GOLD),
             ((-1, 0, 0), (0, 0, 1), PLUM), ((0, 1, 0), (1, 0, 0), SKY), ((0, -1, 0), (1, 0, 0), LEAF)]
    vertices, strips = [], []
    for normal, tangent, colour in faces:
        colour = colour_of_all or colour
        binormal = cross(normal, tangent)
        first = len(vertices)
        for v in (0, 1):
            for u in (0, 1):
                point = tuple(0.5 * n + (u - 0.5) * t + (v - 0.5) * b for n, t, b in zip(normal, tangent, binormal))
                vertices.append((point, mix(colour, CREAM, 0.5 * v), (u, v), tangent, normal))
        strips.append([first, first + 1, first + 2, first + 3])
    return polygon(vertices, strips, placement, maps)


def sphere(placement=AS_BUILT, columns=24, rows=12, radius=0.5, polar=False, colour_of_all=None, maps=()):
    """A ball with soft stripes. The poles lie on the z axis; their caps are strips of one triangle each."""
    def vertex(row, column):
        a, b = math.pi * row / rows, 2 * math.pi * (column % columns) / columns
        normal = (-math.sin(a) * math.sin(b), math.sin(a) * math.cos(b), math.cos(a))
        place = tuple(radius * n for n in normal)
        if polar:
            place = f"sphere {number(radius)},180/{rows}*{row},360/{columns}*{column % columns}"
        colour = CREAM if column % columns % 4 < 2 else CORAL
        if row in (0, rows):
            colour = GOLD
        tangent = (-math.cos(b), -math.sin(b), 0)
        return place, colour_of_all or colour, (column / columns, 1 - row / rows), tangent, normal

    width = columns + 1
    vertices = [vertex(0, 0)]
    vertices += [vertex(row, column) for row in range(1, rows) for column in range(width)]
    vertices.append(vertex(rows, 0))
    north, south = 0, len(vertices) - 1

    def at(row, column):
        return 1 + (row - 1) * width + column

    strips = [[at(1, c), at(1, c + 1), north] for c in range(columns)]
    for row in range(1, rows - 1):
        strips.append([e for c in range(width) for e in (at(row, c), at(row + 1, c))])
    strips += [[at(rows - 1, c + 1), at(rows - 1, c), south] for c in range(columns)]
    return polygon(vertices, strips, placement, maps)


def paper(placement=AS_BUILT, quads=20, ruled_every=5, curl=0.0):
    """A square sheet with coloured lines. `curl` lifts two corners."""
    vertices = []
    for row in range(quads + 1):
        for column in range(quads + 1):
            u, v = column / quads, row / quads
            lift = curl * (u - v) ** 2
            slope = 2 * curl * (u - v)
            length = math.hypot(1, slope)
            normal = (-slope, slope, 1)
            size = math.sqrt(sum(n * n for n in normal))
            ruled = row % ruled_every == 0 or column % ruled_every == 0
            vertices.append(((u - 0.5, v - 0.5, lift), SKY if ruled else CREAM, (u, v),
                             (1 / length, 0, slope / length), tuple(n / size for n in normal)))
    width = quads + 1
    strips = [[e for c in range(width) for e in ((r + 1) * width + c, r * width + c)] for r in range(quads)]
    return polygon(vertices, strips, placement)


# The squares of a net, by column and row from below: a cross that folds into a box.
NET_SQUARES = {(1, 0): SKY, (0, 1): CORAL, (1, 1): GOLD, (2, 1): LEAF, (1, 2): PLUM, (1, 3): TEAL}


def net(placement=AS_BUILT, size=0.3):
    """All in one piece: neighbours share the vertices of their edge, and strips run through them. Every square is two
    by two quads, so that its colour has a place besides the edges."""
    def colour(x, y):
        return NET_SQUARES[x // 2, y // 2] if x % 2 and y % 2 else STEEL

    def point(x, y):
        return ((x / 2 - 1.5) * size, (y / 2 - 2) * size, 0)

    vertices, numbers_by_place, strips = [], {}, []

    def number_of(x, y):
        if (x, y) not in numbers_by_place:
            numbers_by_place[x, y] = len(vertices)
            vertices.append((point(x, y), colour(x, y), (x / 8, y / 8), (1, 0, 0), (0, 0, 1)))
        return numbers_by_place[x, y]

    for row in range(8):
        columns = [x for x in range(6) if (x // 2, row // 2) in NET_SQUARES]
        strips.append([e for x in (*columns, columns[-1] + 1) for e in (number_of(x, row + 1), number_of(x, row))])
    return polygon(vertices, strips, placement)


def star(placement=AS_BUILT, points=5, outer=0.34, inner=0.15, depth=1.3):
    """A closed prism along z: its two faces are fans of single triangles, its side one strip for each wall."""
    outline = []
    for k in range(2 * points):
        angle, radius = math.pi * k / points, inner if k % 2 else outer
        outline.append((-radius * math.sin(angle), radius * math.cos(angle)))
    vertices, strips = [], []

    def add(point, colour, tangent, normal):
        vertices.append((point, colour, (point[0] + 0.5, point[1] + 0.5), tangent, normal))
        return len(vertices) - 1

    for side in (1, -1):
        z, normal, tangent = side * depth / 2, (0, 0, side), (side, 0, 0)
        centre = add((0, 0, z), GOLD, tangent, normal)
        rim = [add((x, y, z), CORAL, tangent, normal) for x, y in outline]
        for k, this in enumerate(rim):
            following = rim[(k + 1) % len(rim)]
            strips.append([centre, this, following] if side > 0 else [centre, following, this])
    for (x0, y0), (x1, y1) in zip(outline, outline[1:] + outline[:1]):
        length = math.hypot(x1 - x0, y1 - y0)
        tangent = ((x1 - x0) / length, (y1 - y0) / length, 0)
        normal = cross(tangent, (0, 0, 1))
        strips.append([add((x, y, z), CORAL, tangent, normal)
                       for x, y in ((x0, y0), (x1, y1)) for z in (depth / 2, -depth / 2)])
    return polygon(vertices, strips, placement)


def star_cutter():
    return (
        ["# The cutter comes first, so that it is the current model."] +
        star(Placement(turn_y(8), turn_x(-6), move=(0.05, 0.02, 0.1))) +
        ["# What it is cut out of: a ball and the sheet before it."] +
        sphere(Placement(turn_x(-65), turn_y(20)), columns=32, rows=16) +
        paper(Placement(turn_x(-12), turn_y(10), move=(0, 0, 0.45)), quads=12, ruled_every=3, curl=0.15))


# Letters on a grid: the outline, counter-clockwise, and rectangles (left, bottom, right, top) that cover it.
LETTERS = [
    ([(0, 0), (3, 0), (3, 1), (1, 1), (1, 5), (0, 5)], [(0, 0, 3, 1), (0, 1, 1, 5)]),
    ([(0, 0), (3, 0), (3, 5), (2, 5), (2, 1), (1, 1), (1, 5), (0, 5)], [(0, 0, 3, 1), (0, 1, 1, 5), (2, 1, 3, 5)]),
    ([(1, 0), (2, 0), (2, 4), (3, 4), (3, 5), (0, 5), (0, 4), (1, 4)], [(0, 4, 3, 5), (1, 0, 2, 4)])]


def block(vertices, strips, outline, rectangles, low, high, colour):
    """A closed prism along z, appended to lists for polygon()."""
    def quad(corners, tangent, normal):
        strips.append(range(len(vertices), len(vertices) + 4))
        vertices.extend((p, colour, (p[0] + 0.5, p[1] + 0.5), tangent, normal) for p in corners)

    for x0, y0, x1, y1 in rectangles:
        quad([(x0, y0, high), (x1, y0, high), (x0, y1, high), (x1, y1, high)], (1, 0, 0), (0, 0, 1))
        quad([(x0, y0, low), (x0, y1, low), (x1, y0, low), (x1, y1, low)], (-1, 0, 0), (0, 0, -1))
    for (x0, y0), (x1, y1) in zip(outline, outline[1:] + outline[:1]):
        length = math.hypot(x1 - x0, y1 - y0)
        tangent = ((x1 - x0) / length, (y1 - y0) / length, 0)
        quad([(x0, y0, low), (x1, y1, low), (x0, y0, high), (x1, y1, high)], tangent, cross(tangent, (0, 0, 1)))


def engraving(thickness=0.05, cell=0.08):
    letters, plate = ([], []), ([], [])
    for k, (outline, rectangles) in enumerate(LETTERS):
        def x(column):
            return (column + 4 * k - 5.5) * cell

        def y(row):
            return (row - 2.5) * cell

        block(*letters, [(x(a), y(b)) for a, b in outline],
              [(x(a), y(b), x(c), y(d)) for a, b, c, d in rectangles], 0, thickness, GOLD)
    block(*plate, [(-0.5, -0.3), (0.5, -0.3), (0.5, 0.3), (-0.5, 0.3)], [(-0.5, -0.3, 0.5, 0.3)],
          -thickness, thickness, SKY)
    return (["# The letters come first, so that they are the current model."] + polygon(*letters) +
            ["# What they are cut out of: a plate, with its front in the plane of theirs."] + polygon(*plate))


def mixed():
    return (
        ["# Upper row: a vase, a torus, a hilly field."] +
        vase(upright_point, Placement(turn_x(22), scale=0.85, move=(-1.15, 0.6, 0))) +
        torus(Placement(turn_x(-40), turn_y(20), scale=0.95, move=(0, 0.6, 0))) +
        sheared_knots(Placement(turn_x(-35), turn_y(15), scale=0.9, move=(1.15, 0.6, 0))) +
        ["# Lower row: a cube, a ball, a sheet of paper."] +
        cube(Placement(turn_y(-35), turn_x(28), scale=0.6, move=(-1.15, -0.6, 0))) +
        sphere(Placement(turn_x(-65), turn_y(20), scale=0.9, move=(0, -0.6, 0)), columns=16, rows=8) +
        paper(Placement(turn_x(-40), turn_y(-25), scale=0.9, move=(1.15, -0.6, 0)), quads=8, ruled_every=4, curl=0.35))


# ---- models with pictures


def ball(placement=AS_BUILT, colour=WHITE, columns=32, rows=16, radius=0.5, maps=()):
    """A ball that stands on its south pole. u runs from west to east, with 0.5 on the z axis, and v with the height, as
    a map of longitudes and latitudes wants it under `mercatorsphere`."""
    def vertex(latitude, u):
        a, b = math.radians(latitude), 2 * math.pi * (u - 0.5)
        normal = (math.cos(a) * math.sin(b), math.sin(a), math.cos(a) * math.cos(b))
        # A v of 1 would count as 0: the map repeats.
        v = min(0.5 + 0.5 * math.sin(a), 0.99999)
        return tuple(radius * n for n in normal), colour, (u, v), (math.cos(b), 0, -math.sin(b)), normal

    width = columns + 1
    # Each triangle at a pole has a pole of its own, so that the map is not twisted there.
    vertices = [vertex(90 - 180 * row / rows, column / columns) for row in range(1, rows) for column in range(width)]
    north = len(vertices)
    vertices += [vertex(90, (column + 0.5) / columns) for column in range(columns)]
    south = len(vertices)
    vertices += [vertex(-90, (column + 0.5) / columns) for column in range(columns)]
    last = (rows - 2) * width
    strips = [[c, c + 1, north + c] for c in range(columns)]
    strips += [[e for c in range(width) for e in (row * width + c, row * width + width + c)] for row in range(rows - 2)]
    strips += [[last + c + 1, last + c, south + c] for c in range(columns)]
    return polygon(vertices, strips, placement, maps)


def ring(placement=AS_BUILT, colour=WHITE, radius=0.5, tube=0.1, sides=8, maps=()):
    """A torus around the y axis, of one colour."""
    def point(row, column):
        a, b = 2 * math.pi * column / sides, -2 * math.pi * row / sides
        reach = radius - tube * math.cos(b)
        return (reach * math.sin(a), tube * math.sin(b), reach * math.cos(a))

    rows = [wrap([(point(j, i), colour) for i in range(sides)]) for j in range(sides)]
    return nurbs(4, 4, lambda j: closed(sides + 3, 4), lambda i: closed(sides + 3, 4), wrap(rows),
                 resolution=(65, 25), placement=placement, maps=maps)


def exact_ball(placement=AS_BUILT, colour=WHITE, radius=0.5, maps=()):
    """Half a circle of five points, turned about the y axis over nine: with the weight of the corners a true ball."""
    corner = math.sqrt(0.5)
    half = [(0, -1), (1, -1), (1, 0), (1, 1), (0, 1)]
    circle = [(0, 1), (1, 1), (1, 0), (1, -1), (0, -1), (-1, -1), (-1, 0), (-1, 1), (0, 1)]
    rows = [[((radius * r * x, radius * y, radius * r * z), colour) for x, z in circle] for r, y in half]
    weights = [[corner ** (j % 2 + i % 2) for i in range(9)] for j in range(5)]
    return nurbs(3, 3, lambda j: [0, 0, 0, 0.25, 0.25, 0.5, 0.5, 0.75, 0.75, 1, 1, 1],
                 lambda i: [0, 0, 0, 0.5, 0.5, 1, 1, 1], rows, weights, resolution=(65, 33), placement=placement,
                 maps=maps)


def slab(placement=AS_BUILT, maps=()):
    """An upright square, white. Its tangent runs along u, so that reliefs are lit from where the light is."""
    vertices = [((u - 0.5, v - 0.5, 0), WHITE, (u, v), (1, 0, 0), (0, 0, 1)) for v in (0, 1) for u in (0, 1)]
    return polygon(vertices, [[0, 1, 2, 3]], placement, maps)


def globe():
    maps = ["texture maps/globe.png", "specular maps/globe-gloss.tga", "mercatorsphere true"]
    return ball(Placement(turn_y(32), turn_x(24)), maps=maps)


def relief():
    wall = ["texture maps/bricks.png", "# Depths in a picture with colours: they are taken as grey.",
            "bumpmap maps/brick-depth.bmp", "bump2mono true", "specular maps/dull.tga"]
    tile = ["texture maps/glaze.jpg", "# Normals in signed bytes.", "bumpmap maps/rosette-normals.png"]
    return (slab(Placement(turn_y(35), move=(-0.46, 0, 0)), maps=wall) +
            slab(Placement(turn_y(-35), move=(0.46, 0, 0)), maps=tile))


def surroundings(reflect, refract, factor):
    return ["begin environment", "# The six pictures maps/plain_posx.png, plain_negx.png and so on.",
            "cubetex maps/plain.png", f"reflectalpha {reflect}", f"refractalpha {refract}", f"refractfactor {factor}",
            "end", ""]


DULL = ["specular maps/dull.tga"]


def mirror():
    return (surroundings("0.95", "0", "1") + exact_ball(colour=BLACK, maps=DULL) +
            ring(Placement(turn_x(24), turn_y(10)), (96, 60, 10), radius=0.7, tube=0.08, maps=DULL))


def glass():
    # Light is bent where it goes in and not where it comes out; a smaller factor than that of glass makes up for it.
    return surroundings("0.12", "0.9", "0.3") + exact_ball(colour=BLACK, maps=DULL)


def gallery():
    return (
        surroundings("0.3", "0", "1") + ["# A tiled ball, a mirror in the form of a ring, a cube of beaten metal."] +
        sphere(Placement(turn_x(-65), turn_y(20), move=(-1.2, 0, 0)), colour_of_all=WHITE,
               maps=["texture maps/tiles.png", "bumpmap maps/joints.png"]) +
        torus(Placement(turn_x(-40), turn_y(20), scale=1.1), colours=[INK]) +
        cube(Placement(turn_y(-35), turn_x(28), scale=0.85, move=(1.2, 0, 0)), colour_of_all=GOLD,
             maps=["bumpmap maps/dents.png", "bump2mono true", "specular maps/worn.png"]))


SAMPLES = {
    "patch.ulk": ("A bilinear patch: the smallest NURBS surface.", bilinear_patch),
    "vase.ulk": ("A vase of polar points. It stands on the z axis, with its mouth to the viewer.",
                 lambda: vase(polar_point)),
    "torus.ulk": ("A torus, closed along its rows and along its columns.",
                  lambda: torus(Placement(turn_x(-40), turn_y(20)))),
    "knots.ulk": ("A hilly field with other knots in every row and every column.", sheared_knots),
    "cube.ulk": ("A cube of six strips.", cube),
    "sphere.ulk": ("A ball of polar points; its caps are strips of one triangle.", lambda: sphere(polar=True)),
    "paper.ulk": ("A sheet of paper of 20 by 20 quads, flat, to be folded.", paper),
    "net.ulk": ("The net of a box, in one piece, to be folded.", net),
    "cut.ulk": ("A star to be cut out of a ball and of a sheet.", star_cutter),
    "letters.ulk": ("Letters to be cut out of a plate, half as deep as it is thick.", engraving),
    "mixed.ulk": ("NURBS surfaces and polygon models side by side.", mixed),
    "globe.ulk": ("A globe: a map of longitudes and latitudes around a ball, with water that shines.", globe),
    "relief.ulk": ("Two flat pieces that look carved: a wall by a map of depths, a tile by a map of normals.", relief),
    "mirror.ulk": ("A mirror ball and a golden ring in surroundings of six pictures.", mirror),
    "glass.ulk": ("A ball of glass in the same surroundings.", glass),
    "gallery.ulk": ("Pictures on surfaces, and an environment that they mirror.", gallery),
}


def content(title, build):
    return "".join(line + "\r\n" for line in ["# " + title, *build()]).encode("ascii")


def main():
    check = sys.argv[1:] == ["--check"]
    differing = []
    for name, (title, build) in SAMPLES.items():
        path, data = FOLDER / name, content(title, build)
        if not check:
            path.write_bytes(data)
        elif not path.is_file() or path.read_bytes() != data:
            differing.append(name)
    if differing:
        sys.exit("not as make_samples.py writes them: " + ", ".join(differing))


if __name__ == "__main__":
    main()
