"""The base of the test classes."""

import os
import pathlib
import shutil
import subprocess
import unittest

from . import commands as do
from .program import Program
from .screen import Screen
from .view import View
from .wait import wait_for

SAMPLES = pathlib.Path(__file__).resolve().parents[3] / "samples"
PROGRAM_NAME = pathlib.Path(os.environ["ULK_UI_PROGRAM"]).name

CORNER = (1279, 0)


class UiTestCase(unittest.TestCase):
    """Ends every program that a test started, and leaves a picture of the screen of a test that failed."""

    maxDiff = None

    def start(self, *arguments, **options):
        program = Program(*arguments, **options)
        self.addCleanup(program.end)
        # Before the program goes, and also when a test fails while it is set up.
        self.addCleanup(self.leave_picture)
        program.wait_started()
        self.view = View(program, int((options.get("environment") or {}).get("GDK_SCALE", 1)))
        self.rest_pointer(program)
        # The first frame: everything grey has the background's colour.
        wait_for(lambda: self.view.shows_frame(), "the view area has drawn no frame")
        return program

    def file(self, program, name, content=b""):
        """A file of the program's own folder."""
        path = program.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def rest_pointer(self, program):
        """The pointer is part of the picture; it waits in a corner that no window covers."""
        program.move_pointer(*CORNER)

    def open_model(self, program, text):
        """Opens a scene file of this text."""
        do.open_scene(program, self.file(program, "model.ulk", text), f"model.ulk - {PROGRAM_NAME}")

    def sample(self, program, name, copy_as=None):
        """A sample, copied to the program's own folder so that the tree stays as it is."""
        return shutil.copy(SAMPLES / name, program.folder / (copy_as or name))

    def drop(self, program, *words, at=(0, 0)):
        """Drags words, as a text/uri-list, from the window of another program and drops them in the perspective view,
        `at` from its middle; whether they were taken."""
        corner = 1230, 20
        source = subprocess.Popen([os.environ["ULK_UI_DRAG_SOURCE"], *map(str, corner), *words], text=True,
                                  stdout=subprocess.PIPE)
        try:
            self.assertEqual(source.stdout.readline(), "shown\n")
            program.drag([place + 20 for place in corner], self.view.at("perspective", *at), steps=30)
            return {"taken\n": True, "not taken\n": False}[source.stdout.readline()]
        finally:
            source.kill()
            source.communicate()
            self.rest_pointer(program)

    def assert_ends_clean(self, program):
        self.assertEqual(program.wait_exit(), 0)
        self.assertEqual(program.stderr, "")

    def leave_picture(self):
        result = self._outcome.result
        if any(test is self for test, _ in result.failures + result.errors):
            Screen().save(pathlib.Path(os.environ["ULK_UI_ARTIFACTS"]) / f"{self.id()}.png")


def main():
    unittest.main(verbosity=2)
