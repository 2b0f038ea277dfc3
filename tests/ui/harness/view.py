"""The view area on the screen and its four viewports."""

from .screen import Screen

BACKGROUND = (46, 46, 46)
VIEWPORTS = {"top": (0, 0), "perspective": (1, 0), "front": (0, 1), "side": (1, 1)}


class View:
    def __init__(self, program):
        self.program = program

    def rectangle(self, viewport):
        """(x, y, width, height) on the screen."""
        x, y, width, height = self.program.tree().find("drawing area").rectangle
        column, row = VIEWPORTS[viewport]
        half_width, half_height = width // 2, height // 2
        return (x + column * (half_width + width % 2), y + row * (half_height + height % 2), half_width, half_height)

    def centre(self, viewport):
        x, y, width, height = self.rectangle(viewport)
        return x + width // 2, y + height // 2

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
        return Screen().pixel(x + width - 4, y + 4) == BACKGROUND
