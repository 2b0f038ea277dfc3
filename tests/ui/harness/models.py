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
