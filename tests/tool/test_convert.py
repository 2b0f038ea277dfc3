"""ulktool convert."""

import struct
import unittest

from tool_test_case import SAMPLES, ToolTestCase, run


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
                  if line.endswith(" triangles")]
        self.assertGreater(len(counts), 1)
        self.assertEqual(stl.stat().st_size, 84 + 50 * sum(counts))
        self.assertIn(f" {sum(counts)} triangles", run("info", stl).stdout)

    def test_an_empty_stl_file_is_an_empty_model(self):
        stl, scene, picture = self.folder / "empty.stl", self.folder / "empty.ulk", self.folder / "empty.png"
        stl.write_bytes(b"")
        self.assertEqual(run("check", stl).stdout, f"{stl}: loads\n")
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

    def test_two_files_are_needed(self):
        self.assertEqual(run("convert", "a.ulk").returncode, 2)


if __name__ == "__main__":
    unittest.main()
