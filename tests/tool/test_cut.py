"""ulktool cut."""

import os
import re
import subprocess
import unittest

from scene_blocks import block, box, volume
from tool_test_case import SAMPLES, ToolTestCase, run


class Cut(ToolTestCase):
    def scene(self, *blocks):
        return self.file("scene.ulk", "".join(blocks))

    def plate_and_drill(self):
        return self.scene(box((-1, -1, -0.25), (1, 1, 0.25)),
                          box((-0.5, -0.5, -1), (0.5, 0.5, 1), colour="0,0,255,255"))

    def models(self, path):
        return path.read_text().split("begin ")[1:]

    def test_takes_a_model_out_of_all_others(self):
        out = self.folder / "cut.ulk"
        done = run("cut", self.plate_and_drill(), "--cutter", 1, "-o", out)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        plate, drill = self.models(out)
        self.assertIn("position -1,-1,-0.25", plate)
        self.assertTrue(drill.startswith("polygon_surface,8,"))
        # Its hole has no walls.
        self.assertNotIn("color 0,0,255,255", plate)

    def test_walls_close_what_was_closed(self):
        out = self.folder / "walled.ulk"
        done = run("cut", self.plate_and_drill(), "--cutter", 1, "--walls", "-o", out)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        plate, drill = self.models(out)
        self.assertIn("color 0,0,255,255", plate)
        self.assertAlmostEqual(volume(plate), 2 - 0.5, places=6)
        self.assertAlmostEqual(volume(drill), 2, places=6)

    def test_cuts_one_after_the_other_through_pipes(self):
        scene = self.scene(box((-1, -1, -1), (1, 1, 1)), box((0, 0, 0), (2, 2, 2)), box((-2, -2, -2), (0, 0, 0)))
        first = run("cut", scene, "--cutter", 1, "--walls", "-o", "-")
        second = run("cut", "-", "--cutter", 2, "--walls", "-o", "-", input=first.stdout)
        self.assertEqual((first.returncode, second.returncode), (0, 0))
        self.assertAlmostEqual(volume(second.stdout.split("begin ")[1]), 8 - 2, places=5)

    def test_an_environment_stays(self):
        self.sky()
        scene = self.scene("begin environment\ncubetex sky.png\nend\n", box((0, 0, 0), (1, 1, 1)))
        out = self.folder / "out.ulk"
        self.assertEqual(run("cut", scene, "--cutter", 0, "-o", out).returncode, 0)
        self.assertIn("cubetex sky.png", out.read_text())

    def test_saves_as_stl(self):
        out = self.folder / "cut.stl"
        self.assertEqual(run("cut", self.plate_and_drill(), "--cutter", 1, "-o", out).returncode, 0)
        self.assertGreater(out.stat().st_size, 84)

    def assert_fails(self, message, *words, status=1):
        out = self.folder / "none.ulk"
        done = run("cut", *words, "-o", out)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (status, "", message))
        self.assertFalse(out.exists())

    def test_a_model_that_is_not_there_is_named(self):
        scene = self.plate_and_drill()
        self.assert_fails(f"{scene}: there is no model 2; there are 2, from 0\n", scene, "--cutter", 2)
        sky = self.sky()
        self.assert_fails(f"{sky}: there is no model 0; there are 0, from 0\n", sky, "--cutter", 0)

    def test_a_surface_is_no_cutter(self):
        vase = SAMPLES / "vase.ulk"
        self.assert_fails(f"{vase}: model 0 is a NURBS surface, not a polygon model; ulktool polygonize makes it one\n",
                          vase, "--cutter", 0)

    def test_a_file_that_does_not_load_is_told(self):
        missing = self.folder / "missing.ulk"
        self.assert_fails(f"{missing}: file open error.\n{missing}: does not load\n", missing, "--cutter", 0)

    def test_wrong_words_are_usage_errors(self):
        see = "; see ulktool cut --help\n"
        self.assert_fails("ulktool cut: --cutter N is missing" + see, "a.ulk", status=2)
        for number in ("x", "-1", "1.5", ""):
            self.assert_fails(f"ulktool cut: --cutter {number}: this is not a whole number that counts from 0" + see,
                              "a.ulk", "--cutter", number, status=2)
        done = run("cut", "a.ulk", "--cutter", 0, "-o", self.folder / "a.xyz")
        self.assertEqual(done.returncode, 2)
        self.assertIn(".xyz", done.stderr)
        self.assertEqual(run("cut", "a.ulk", "--cutter", 0).returncode, 2)

    @unittest.skipUnless(os.path.exists("/dev/full"), "there is no full device")
    def test_an_output_that_can_not_be_written_is_a_failure(self):
        with open("/dev/full", "w") as full:
            done = run("cut", self.plate_and_drill(), "--cutter", 1, "-o", "-", capture_output=False, stdout=full,
                       stderr=subprocess.PIPE)
        self.assertEqual((done.returncode, done.stderr), (1, "-: could not be written\n"))
        nowhere = self.folder / "no" / "cut.ulk"
        done = run("cut", self.plate_and_drill(), "--cutter", 1, "-o", nowhere)
        self.assertEqual((done.returncode, done.stderr), (1, f"{nowhere}: could not be written\n"))

    def test_the_help_has_an_example(self):
        done = run("cut", "--help")
        self.assertEqual(done.returncode, 0)
        self.assertTrue(re.search(r"--cutter N.*--walls.*-o OUT", done.stdout, re.DOTALL))
        self.assertIn("    Example:\n        ulktool cut ", done.stdout)

    def test_strange_meshes_do_no_harm(self):
        nan = box((0, 0, 0), (1, 1, 1)).replace("position 0,0,0", "position nan,inf,0")
        out_of_range = box((0, 0, 0), (1, 1, 1)).replace("element 7", "element 4000000000")
        empty = block([], [])
        for text in (nan, out_of_range, empty):
            scene = self.scene(text, box((0.25, 0.25, 0.25), (2, 2, 2)))
            for cutter in (0, 1):
                with self.subTest(text=text[:60], cutter=cutter):
                    out = self.folder / "out.ulk"
                    done = run("cut", scene, "--cutter", cutter, "--walls", "-o", out)
                    self.assertEqual(done.returncode, 0, done.stderr)


if __name__ == "__main__":
    unittest.main()
