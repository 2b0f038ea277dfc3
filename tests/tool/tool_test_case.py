"""What the tests of ulktool share. It runs as in scripts: words in; files, output and exit status out.

The program's path is in the environment variable ULKTOOL.
"""

import os
import pathlib
import subprocess
import tempfile
import unittest

from pictures import png_of_one_pixel

PROGRAM = os.environ["ULKTOOL"]
SAMPLES = pathlib.Path(__file__).resolve().parents[2] / "samples"
SQUARE = ("begin polygon_surface,4,4\n{maps}position -1,-1,0\nposition 1,-1,0\nposition -1,1,0\nposition 1,1,0\n"
          + "element 0\nelement 1\nelement 2\nelement 3\n"
          + "tangent 1,0,0\nbinormal 0,1,0\nnormal 0,0,1\n" * 4 + "end\n")


def run(*arguments, **options):
    """Runs the program; `options` are those of subprocess.run, which gets text unless told otherwise."""
    options = {"capture_output": True, "text": True, "timeout": 60, **options}
    return subprocess.run([PROGRAM, *map(str, arguments)], **options)


class ToolTestCase(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def file(self, name, text):
        path = self.folder / name
        path.write_text(text)
        return path

    def sky(self):
        """A scene of an environment alone, with its six pictures."""
        for face in ("posx", "negx", "posy", "negy", "posz", "negz"):
            (self.folder / f"sky_{face}.png").write_bytes(png_of_one_pixel(0, 0, 255))
        return self.file("sky.ulk", "begin environment\ncubetex sky.png\nend\n")
