"""ulktool convert."""

import json
import struct
import unittest

from pictures import png_of_one_pixel
from tool_test_case import SAMPLES, SQUARE, ToolTestCase, run


class Convert(ToolTestCase):
    def test_a_second_conversion_changes_nothing(self):
        first, second = self.folder / "first.ulk", self.folder / "second.ulk"
        self.assertEqual(run("convert", SAMPLES / "mixed.ulk", first).returncode, 0)
        self.assertEqual(run("convert", first, second).returncode, 0)
        self.assertEqual(first.read_bytes(), second.read_bytes())
        self.assertEqual(run("info", first).stdout, run("info", second).stdout)

    def test_keeps_the_environment(self):
        out = self.folder / "out.ulk"
        self.assertEqual(run("convert", self.sky(), out).returncode, 0)
        self.assertTrue(out.read_text().startswith("begin environment\n"), out.read_text())

    def test_an_environment_without_its_pictures_does_not_load(self):
        scene = self.sky()
        (self.folder / "sky_negz.png").unlink()
        done = run("convert", scene, self.folder / "out.ulk")
        self.assertEqual(done.returncode, 1)
        self.assertIn("sky_negz.png: autoloadformat failed.", done.stderr)

    def test_a_scene_becomes_triangles_and_triangles_become_a_scene(self):
        stl, back, again = self.folder / "cube.stl", self.folder / "cube.ulk", self.folder / "again.STL"
        done = run("convert", SAMPLES / "cube.ulk", stl)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        triangles = stl.read_bytes()
        self.assertEqual(triangles[:80], str(stl).encode()[:80].ljust(80, b"\0"))
        self.assertEqual(struct.unpack_from("<I", triangles, 80), (12,))
        self.assertEqual(len(triangles), 84 + 12 * 50)
        self.assertEqual(run("check", stl).stdout, f"{stl}: loads\n")
        self.assertEqual(run("info", stl).stdout.splitlines(), [
            "models: 1", "model 0: polygon surface", "  mesh: 36 vertices, 48 elements, 12 triangles",
            run("info", SAMPLES / "cube.ulk").stdout.splitlines()[-1]])

        self.assertEqual(run("convert", stl, back).returncode, 0)
        self.assertTrue(back.read_bytes().startswith(b"begin polygon_surface,36,48\r\n"))
        self.assertEqual(run("info", back).stdout, run("info", stl).stdout)
        self.assertEqual(run("convert", back, again).returncode, 0)
        self.assertEqual(again.read_bytes()[80:], triangles[80:])

    def test_all_models_of_a_scene_become_one_list_of_triangles(self):
        stl = self.folder / "mixed.stl"
        self.assertEqual(run("convert", SAMPLES / "mixed.ulk", stl).returncode, 0)
        counts = [int(line.split()[-2]) for line in run("info", SAMPLES / "mixed.ulk").stdout.splitlines()
                  if line.startswith("  mesh: ")]
        self.assertGreater(len(counts), 1)
        self.assertEqual(stl.stat().st_size, 84 + 50 * sum(counts))
        self.assertIn(f" {sum(counts)} triangles", run("info", stl).stdout)

    def test_an_empty_stl_file_is_an_empty_model(self):
        stl, scene, picture = self.folder / "empty.stl", self.folder / "empty.ulk", self.folder / "empty.png"
        stl.write_bytes(b"")
        self.assertEqual(run("convert", stl, scene).returncode, 0)
        self.assertEqual(scene.read_bytes(), b"")
        self.assertEqual(run("render", stl, picture).returncode, 0)

    def test_an_stl_file_that_is_not_there_or_can_not_be_written(self):
        missing, full = self.folder / "none.stl", self.folder / "full.stl"
        done = run("convert", missing, self.folder / "out.ulk")
        self.assertEqual((done.returncode, done.stderr), (1, f"{missing}: does not load\n"))
        full.symlink_to("/dev/full")
        done = run("convert", SAMPLES / "cube.ulk", full)
        self.assertEqual((done.returncode, done.stderr), (1, f"{full}: could not be written\n"))

    def test_failures_of_either_file(self):
        done = run("convert", self.folder / "none.ulk", self.folder / "out.ulk")
        self.assertEqual(done.returncode, 1)
        self.assertFalse((self.folder / "out.ulk").exists())
        done = run("convert", SAMPLES / "cube.ulk", "/dev/full")
        self.assertEqual(done.returncode, 1)
        self.assertIn("/dev/full: could not be written", done.stderr)

    def test_pictures_that_will_not_be_found_are_told(self):
        square = self.file("square.ulk", SQUARE.format(maps="texture a.png\nbumpmap b/c.png\n"))
        (self.folder / "a.png").write_bytes(png_of_one_pixel(0))
        (self.folder / "b").mkdir()
        (self.folder / "b" / "c.png").write_bytes(png_of_one_pixel(0))
        beside, below = self.folder / "out.ulk", self.folder / "b" / "out.ulk"
        done = run("convert", square, beside)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        done = run("convert", square, below)
        self.assertEqual((done.returncode, done.stderr), (
            0, f"{below}: model 0: texture a.png will not be found there\n"
            f"{below}: model 0: bumpmap b/c.png will not be found there\n"))
        # Neither does an STL file have pictures.
        self.assertEqual(run("convert", square, self.folder / "b" / "out.stl").stderr, "")

    def test_every_command_that_saves_tells_of_pictures_that_will_not_be_found(self):
        square = self.file("square.ulk", SQUARE.format(maps="texture a.png\n"))
        (self.folder / "a.png").write_bytes(png_of_one_pixel(1, 2, 3))
        out = self.folder / "b" / "out.ulk"
        out.parent.mkdir()
        for words in (("cut", "--cutter", 0), ("polygonize",), ("place", "--move", "1,0,0"),
                      ("fold", "--model", 0, "--polygons", 0, "--axis", "0,1", "--angle", 30)):
            done = run(*words, square, "-o", out)
            self.assertEqual((done.returncode, done.stderr), (
                0, f"{out}: model 0: texture a.png will not be found there\n"), words)

    def test_rebase_gives_pictures_the_names_that_lead_to_them(self):
        square = self.file("square.ulk", SQUARE.format(maps="texture a.png\nbumpmap b/c.png\nspecular ./b/../a.png\n"))
        (self.folder / "a.png").write_bytes(png_of_one_pixel(1, 2, 3))
        (self.folder / "b").mkdir()
        (self.folder / "b" / "c.png").write_bytes(png_of_one_pixel(0))
        (self.folder / "link").symlink_to("b")
        for name, names in (("out.ulk", ["a.png", "b/c.png", "a.png"]),
                            ("b/out.ulk", ["../a.png", "c.png", "../a.png"]),
                            ("link/other.ulk", ["../a.png", "c.png", "../a.png"])):
            out = self.folder / name
            done = run("convert", "--rebase", square, out)
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            told = json.loads(run("info", "--json", out).stdout)["files"][0]["models"][0]["pictures"]
            self.assertEqual([picture["name"] for picture in told], names)
            self.assertEqual(run("check", out).returncode, 0)
        # A relative name of the scene, of the output, and the standard streams.
        done = run("convert", "--rebase", "square.ulk", "b/out.ulk", cwd=self.folder)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        done = run("convert", "--rebase", "-", "-", cwd=self.folder / "b", input=out.read_text())
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("texture ../a.png\n", done.stdout)

    def test_rebase_moves_the_environment(self):
        sky, out = self.sky(), self.folder / "b" / "out.ulk"
        out.parent.mkdir()
        done = run("convert", sky, out)
        self.assertEqual((done.returncode, done.stderr), (
            0, f"{out}: environment: cubetex sky.png will not be found there\n"))
        done = run("convert", "--rebase", sky, out)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(run("check", out).returncode, 0)

    def test_two_files_are_needed(self):
        self.assertEqual(run("convert", "a.ulk").returncode, 2)


if __name__ == "__main__":
    unittest.main()
