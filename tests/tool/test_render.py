"""ulktool render."""

import unittest

from pictures import png_size, first_pixel
from tool_test_case import SAMPLES, ToolTestCase, run


class Render(ToolTestCase):
    def test_draws_all_four_views_at_the_usual_size(self):
        picture = self.folder / "cube.png"
        done = run("render", SAMPLES / "cube.ulk", picture)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        self.assertEqual(png_size(picture), (1024, 768))

    def test_size_is_that_of_the_picture(self):
        picture = self.folder / "cube.png"
        self.assertEqual(run("render", SAMPLES / "cube.ulk", picture, "--size", "321x203").returncode, 0)
        self.assertEqual(png_size(picture), (321, 203))

    def test_each_view_has_a_picture_of_its_own_in_the_size_asked_for(self):
        pictures = set()
        for view in ("perspective", "front", "side", "top"):
            picture = self.folder / f"{view}.png"
            done = run("render", "--view", view, "--size", "160x120", SAMPLES / "mixed.ulk", picture)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertEqual(png_size(picture), (160, 120))
            pictures.add(picture.read_bytes())
        self.assertGreaterEqual(len(pictures), 2)

    def test_the_ground_is_opaque_unless_it_is_left_out(self):
        picture = self.folder / "cube.png"
        for words, alpha in (((), 255), (("--transparent",), 0)):
            self.assertEqual(run("render", SAMPLES / "cube.ulk", picture, "--view", "perspective", *words).returncode, 0)
            self.assertEqual(first_pixel(picture), (46, 46, 46, alpha))

    def test_a_scene_that_does_not_load_leaves_no_picture(self):
        picture = self.folder / "no.png"
        scene = self.file("bad.ulk", "begin polygon_surface,1,0\nend\n")
        done = run("render", scene, picture)
        self.assertEqual(done.returncode, 1)
        self.assertIn("1: vertex(0) < 1: too few vertex.", done.stderr)
        self.assertFalse(picture.exists())

    def test_a_picture_that_can_not_be_written_is_a_failure(self):
        done = run("render", SAMPLES / "cube.ulk", self.folder / "no" / "folder.png")
        self.assertEqual(done.returncode, 1)
        self.assertIn("could not be written", done.stderr)

    def test_wrong_words_are_wrong_usage(self):
        for words, message in (
                ((), "SCENE is missing"), (("a.ulk",), "PICTURE.png is missing"),
                (("a.ulk", "b.png", "c"), "c: too many files"),
                (("a.ulk", "b.png", "--view", "back"),
                 "--view back: this is not perspective, front, side or top")):
            done = run("render", *words)
            self.assertEqual((done.returncode, done.stderr), (2, f"ulktool render: {message}; see ulktool render --help\n"))
        for size in ("0x10", "10", "10x-1", "10x10x", "99999x10", "x10", "10x", "a", ""):
            done = run("render", "a.ulk", "b.png", "--size", size)
            self.assertEqual((done.returncode, done.stderr), (
                2, f"ulktool render: --size {size}: this is not a size as 800x600, up to 16384x16384; "
                "see ulktool render --help\n"))


if __name__ == "__main__":
    unittest.main()
