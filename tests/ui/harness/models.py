"""Small scenes whose points have colours of their own, so that a test finds each of them in the picture."""

RED = (255, 0, 0)
GREEN = (0, 255, 0)
BLUE = (0, 0, 255)
MAGENTA = (255, 0, 255)

# The half width of the quad below in its two directions, and what a box's size is multiplied by when it is fitted.
QUAD_REACH = 0.4
FIT_ROOM = 1.125


def quad(back=0.0, elements=(0, 1, 2, 3)):
    """A polygon model of two triangles in one strip, facing the perspective view; the upper corners lie at z = back.

    The corners are red and green below, blue and magenta above, from the left.
    """
    r = QUAD_REACH
    corners = ((RED, (-r, -r, 0)), (GREEN, (r, -r, 0)), (BLUE, (-r, r, back)), (MAGENTA, (r, r, back)))
    lines = ["begin polygon_surface,4,4"]
    for colour, position in corners:
        lines.append("color %d,%d,%d,255" % colour)
        lines.append("position %g,%g,%g" % position)
    lines += [f"element {index}" for index in elements]
    lines += ["tangent 1,0,0", "binormal 0,1,0", "normal 0,0,1"] * 4
    return "\r\n".join(lines + ["end", ""])


def patch():
    """A flat NURBS surface of order 2 with the corners of the quad as its control points."""
    r = QUAD_REACH
    lines = ["begin nurbs_surface,2,2,2,2", "resolution 9,9"]
    for colours, y in (((RED, GREEN), -r), ((BLUE, MAGENTA), r)):
        lines += ["knot1 0", "knot1 0", "knot1 1", "knot1 1", "weight 1", "weight 1"]
        for colour, x in zip(colours, (-r, r)):
            lines += ["color %d,%d,%d,255" % colour, f"position {x},{y},0"]
    lines += ["knot2 0", "knot2 0", "knot2 1", "knot2 1"] * 2
    return "\r\n".join(lines + ["end", ""])


def place_of(column, row):
    return column / 4, row / 4 - 0.25, (column * row) / 8


def colour_of(column, row):
    return (40 * column + 10) % 256, (60 * row + 20) % 256, (200 - 30 * column) % 256, 255


def knots_of(count, order):
    """As many knots as a row of `count` points of an order has, clamped at both ends."""
    inner = max(count - order, 0)
    return ([0] * order + [(i + 1) / (inner + 1) for i in range(inner)] + [1] * order)[:count + order]


def net(columns, rows, order1=2, order2=2, knot1=None, knot2=None):
    """A NURBS surface of which every control point has a place and a colour of its own."""
    lines = [f"begin nurbs_surface,{columns},{order1},{rows},{order2}", "resolution 5,5"]
    for row in range(rows):
        lines += [f"knot1 {knot:g}" for knot in knot1 or knots_of(columns, order1)]
        lines += [f"weight {1 + row + column / 8:g}" for column in range(columns)]
        for column in range(columns):
            lines += ["color %d,%d,%d,%d" % colour_of(column, row), "position %g,%g,%g" % place_of(column, row)]
    for column in range(columns):
        lines += [f"knot2 {knot:g}" for knot in knot2 or knots_of(rows, order2)]
    return "\r\n".join(lines + ["end", ""])


def read_net(path):
    """What a file with a NURBS surface holds: lists of numbers by key, and of tuples for points and their colours."""
    found = {"knot1": [], "knot2": [], "weight": [], "position": [], "color": []}
    colour = (255, 255, 255, 255)
    for line in path.read_text().splitlines():
        key, _, value = line.partition(" ")
        if key == "color":
            colour = tuple(int(channel) for channel in value.split(","))
        elif key == "position":
            found["position"].append(tuple(float(number) for number in value.split(",")))
            found["color"].append(colour)
        elif key in found:
            found[key].append(float(value))
    return found
