"""The view area on the screen and its four viewports."""

from typing import NamedTuple

from .screen import Screen

BACKGROUND = (46, 46, 46)
GRID = (128, 128, 128)
VIEWPORTS = {"top": (0, 0), "perspective": (1, 0), "front": (0, 1), "side": (1, 1)}


class Dot(NamedTuple):
    """The pixels of one colour in a viewport: their number, and their centre counted from the viewport's centre, to
    the right and up."""

    size: int
    x: float
    y: float


class View:
    def __init__(self, program, scale=1):
        self.program = program
        self.scale = scale
        self.node = None

    def area(self):
        """(x, y, width, height) of all four viewports on the screen."""
        if self.node is None:
            self.node = self.program.tree().find("drawing area")
        return tuple(self.scale * value for value in self.node.rectangle)

    def rectangle(self, viewport):
        """(x, y, width, height) on the screen."""
        x, y, width, height = self.area()
        column, row = VIEWPORTS[viewport]
        half_width, half_height = width // 2, height // 2
        return (x + column * (half_width + width % 2), y + row * (half_height + height % 2), half_width, half_height)

    def centre(self, viewport):
        x, y, width, height = self.rectangle(viewport)
        return x + width // 2, y + height // 2

    def at(self, viewport, x, y):
        """The place on the screen of a position counted from the viewport's centre, to the right and up."""
        centre_x, centre_y = self.centre(viewport)
        return centre_x + round(x), centre_y - round(y)

    def dot(self, viewport, colour):
        """The point that has a colour of its own, None when it does not show."""
        left, top, width, height = self.rectangle(viewport)
        places = Screen().places(colour, left, top, width, height)
        if not places:
            return None
        # The centre of a pixel lies half a pixel away from its corner.
        return Dot(len(places), sum(x for x, _ in places) / len(places) + 0.5 - left - width / 2,
                   top + height / 2 - sum(y for _, y in places) / len(places) - 0.5)

    def place(self, viewport, colour):
        """The place on the screen of the point that has a colour."""
        left, top, width, height = self.rectangle(viewport)
        places = Screen().places(colour, left, top, width, height)
        return tuple(round(sum(way) / len(places)) for way in zip(*places))

    def grid_pixels(self, viewport):
        return len(Screen().places(GRID, *self.rectangle(viewport)))

    def colours(self, viewport):
        """How often each colour stands in a viewport now."""
        return Screen().colours(*self.rectangle(viewport))

    def picture(self, viewport):
        return Screen().rectangle(*self.rectangle(viewport))

    def coloured(self, viewport):
        """How many pixels are neither black, white nor grey; grids and background are grey."""
        return sum(count for colour, count in self.colours(viewport).items() if max(colour) - min(colour) > 60)

    def shows_frame(self):
        """Whether the view has been drawn: an empty perspective view is all background."""
        x, y, width, height = self.rectangle("perspective")
        screen = Screen()
        corner = min(x + width, screen.width) - 4, y + 4
        return screen.pixel(*corner) == BACKGROUND
