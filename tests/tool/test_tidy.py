"""ulktool tidy."""

import collections
import math
import os
import re
import struct
import subprocess
import unittest

from meshes import Mesh, read_stl, sphere, write_stl
from tool_test_case import PROGRAM, SAMPLES, SQUARE, ToolTestCase, run

IS_THERE = "built without" not in run("tidy", SAMPLES / "cube.ulk", "-o", "/dev/null").stderr


def counts(line):
    """The numbers before and after, by their names."""
    found = re.findall(r"(\w+) (\d+) -> (\d+)", line)
    return {name: (int(before), int(after)) for name, before, after in found}


def peak_memory(*words):
    """The most memory that the program takes, in KiB."""
    program = subprocess.Popen([PROGRAM, *map(str, words)], stdout=subprocess.DEVNULL)
    _, status, used = os.wait4(program.pid, 0)
    program.returncode = os.waitstatus_to_exitcode(status)
    if program.returncode != 0:
        raise AssertionError(f"{words} ended with status {program.returncode}")
    return used.ru_maxrss


class TidyUsage(ToolTestCase):
    def assert_wrong(self, words, message):
        done = run("tidy", *words)
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertEqual(done.stderr, f"ulktool tidy: {message}; see ulktool tidy --help\n")

    @unittest.skipUnless(IS_THERE, "built without meshoptimizer")
    def test_wrong_words_are_named(self):
        self.assert_wrong(["a.ulk"], "-o OUT is missing")
        self.assert_wrong(["a.ulk", "-o", "b.xyzw"], run("convert", "a.ulk", "b.xyzw").stderr.split(": ", 1)[1]
                          .split("; see")[0])
        self.assert_wrong(["a.ulk", "-o", "b.ulk", "--weld=wide"], "--weld wide: this is not a number")
        self.assert_wrong(["a.ulk", "-o", "b.ulk", "--weld", "-0.1"], "--weld -0.1: this is below 0")
        self.assert_wrong(["a.ulk", "-o", "b.ulk", "--smooth", "181"],
                          "--smooth 181: this is not an angle from 0 to 180 degrees")
        self.assert_wrong(["a.ulk", "-o", "b.ulk", "--smooth", "-1"],
                          "--smooth -1: this is not an angle from 0 to 180 degrees")
        self.assert_wrong(["a.ulk", "-o", "b.ulk", "--smooth", "nan"], "--smooth nan: this is not a number")
        for number in ("0", "-5", "1.5", "many"):
            self.assert_wrong(["a.ulk", "-o", "b.ulk", "--simplify", number],
                              f"--simplify {number}: this is not a whole number from 1 to 2000000000")
        self.assert_wrong(["a.ulk", "-o", "b.ulk", "--model", "-1"],
                          "--model -1: this is not a whole number that counts from 0")

    @unittest.skipIf(IS_THERE, "built with meshoptimizer")
    def test_without_the_library_it_says_so(self):
        done = run("tidy", SAMPLES / "cube.ulk", "-o", self.folder / "out.ulk")
        self.assertEqual((done.returncode, done.stdout, done.stderr),
                         (1, "", "ulktool tidy: this ulktool was built without meshoptimizer, which is needed for it\n"))
        self.assertFalse((self.folder / "out.ulk").exists())


@unittest.skipUnless(IS_THERE, "built without meshoptimizer")
class Tidy(ToolTestCase):
    def setUp(self):
        super().setUp()
        self.out = self.folder / "out.ulk"

    def tidy(self, scene, *options, out=None):
        """Tidies a file; the counts of its first model, and the mesh of the first block."""
        done = run("tidy", scene, "-o", out or self.out, *options)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return counts(done.stdout.splitlines()[0])

    def mesh(self):
        return Mesh(self.out.read_text())

    def ball(self, around=48, down=24):
        triangles, points = sphere(around, down)
        write_stl(self.folder / "ball.stl", triangles)
        return self.folder / "ball.stl", len(triangles), points

    def test_an_stl_sphere_becomes_whole(self):
        stl, triangles, points = self.ball()
        found = self.tidy(stl, "--weld")
        self.assertEqual(found["triangles"], (triangles, triangles))
        self.assertEqual(found["vertices"], (3 * triangles, points))
        self.assertEqual(found["bytes"][0], triangles * (3 * 72 + 16))
        self.assertLess(2 * found["bytes"][1], found["bytes"][0])
        self.assertGreaterEqual(triangles, 4 * found["strips"][1])

        mesh = self.mesh()
        self.assertEqual(len(mesh.positions), points)
        self.assertEqual(len(mesh.strips()), found["strips"][1])
        self.assertEqual(72 * points + 4 * len(mesh.elements), found["bytes"][1])
        edges = collections.Counter(edge for a, b, c in mesh.triangles() for edge in ((a, b), (b, c), (c, a)))
        self.assertEqual(set(edges.values()), {1})
        self.assertEqual(set(edges), {(b, a) for a, b in edges})
        for position, normal in zip(mesh.positions, mesh.normals):
            self.assertGreater(sum(p * n for p, n in zip(position, normal)), 0.999)

        plain = self.folder / "plain.ulk"
        self.assertEqual(run("convert", stl, plain).returncode, 0)
        self.assertLess(2 * self.out.stat().st_size, plain.stat().st_size)

    def test_the_surface_is_the_same_to_the_last_bit(self):
        stl, _, _ = self.ball()
        again = self.folder / "again.stl"
        for options in (["--weld"], ["--smooth", "30"], ["--weld", "--smooth", "1"], []):
            self.tidy(stl, *options, out=again)
            self.assertEqual(read_stl(again), read_stl(stl), options)

    def test_tidying_a_scene_twice_changes_nothing_more(self):
        for name in ("cut", "letters", "paper"):
            for options in (["--weld"], ["--weld", "0.1", "--simplify", "100", "--smooth", "20"], []):
                first, second = self.folder / "1.ulk", self.folder / "2.ulk"
                # A scene file keeps six digits; from then on they are the numbers of the mesh.
                self.assertEqual(run("tidy", SAMPLES / f"{name}.ulk", "-o", self.out, *options).returncode, 0)
                self.assertEqual(run("tidy", self.out, "-o", first, *options).returncode, 0)
                done = run("tidy", first, "-o", second, *options)
                self.assertEqual(first.read_bytes(), second.read_bytes(), (name, options))
                for before, after in counts(done.stdout).values():
                    self.assertEqual(before, after)

    def test_the_tolerance_of_the_weld(self):
        # Two triangles beside each other, with a gap of 0.01 between them.
        write_stl(self.folder / "gap.stl", [((0, 0, 0), (1, 0, 0), (0, 1, 0)),
                                            ((1.01, 0, 0), (1, 1, 0), (0, 1.01, 0))])
        gap = self.folder / "gap.stl"
        for options, vertices in ((["--weld"], 6), (["--weld", "0.009"], 6), (["--weld", "0.011"], 4),
                                  (["--weld=0.011"], 4), ([], 6)):
            self.assertEqual(self.tidy(gap, *options)["vertices"], (6, vertices), options)
        self.tidy(gap, "--weld", "0.011")
        self.assertEqual(set(self.mesh().positions), {(0, 0, 0), (1, 0, 0), (0, 1, 0), (1, 1, 0)})
        done = run("tidy", gap, "-o", self.folder / "none.ulk", "--weld", "5")
        self.assertEqual((done.returncode, done.stdout, done.stderr),
                         (1, "", f"{gap}: model 0: no triangle would be left\n"))
        self.assertFalse((self.folder / "none.ulk").exists())

    def test_edges_of_a_cube_are_sharp_or_smooth(self):
        stl = self.folder / "cube.stl"
        self.assertEqual(run("convert", SAMPLES / "cube.ulk", stl).returncode, 0)
        self.assertEqual(self.tidy(stl, "--weld", "--smooth", "30")["vertices"], (36, 24))
        for normal in self.mesh().normals:
            self.assertEqual(sorted(map(abs, normal)), [0, 0, 1])
        self.assertEqual(self.tidy(stl, "--weld", "--smooth", "100")["vertices"], (36, 8))
        for position, normal in zip(self.mesh().positions, self.mesh().normals):
            for p, n in zip(position, normal):
                self.assertAlmostEqual(n, math.copysign(3 ** -0.5, p), 5)

    def test_simplify_reaches_its_number(self):
        stl, triangles, _ = self.ball()
        for most in (1000, 100, 8):
            found = self.tidy(stl, "--weld", "--simplify", most)["triangles"]
            self.assertEqual(found[0], triangles)
            self.assertLessEqual(found[1], most)
            self.assertGreaterEqual(found[1], most - 2)
        self.assertEqual(self.tidy(stl, "--weld", "--simplify", triangles)["triangles"], (triangles, triangles))
        # Single triangles have no edges in common; that fewer are not possible is told.
        done = run("tidy", stl, "-o", self.out, "--simplify", 100)
        self.assertEqual(done.returncode, 0)
        self.assertEqual(done.stderr, f"{stl}: model 0: with fewer than {triangles} triangles its surface would not "
                         + "stay whole\n")

    def test_only_the_models_that_are_named(self):
        soup = SQUARE.format(maps="").replace("polygon_surface,4,4", "polygon_surface,4,7") \
            .replace("element 3\n", "element -1\nelement 2\nelement 1\nelement 3\n")
        scene = self.file("three.ulk", soup * 3)
        done = run("tidy", scene, "-o", self.out, "--model", 2, "--model=0")
        self.assertEqual(done.returncode, 0)
        self.assertEqual(re.findall(r"model (\d+): .* strips (\d+) -> (\d+)", done.stdout),
                         [("0", "2", "1"), ("2", "2", "1")])
        self.assertEqual(re.findall(r"surface,(\d+),(\d+)", self.out.read_text()),
                         [("4", "4"), ("4", "7"), ("4", "4")])
        done = run("tidy", scene, "-o", self.folder / "none.ulk", "--model", 3)
        self.assertEqual((done.returncode, done.stderr), (1, f"{scene}: there is no model 3; there are 3, from 0\n"))
        self.assertFalse((self.folder / "none.ulk").exists())

    def test_nurbs_surfaces_stay(self):
        done = run("tidy", SAMPLES / "patch.ulk", "-o", self.out, "--weld", "--smooth", 30, "--simplify", 1)
        self.assertEqual((done.returncode, done.stdout), (0, "model 0: nurbs surface, left as it is\n"))
        plain = self.folder / "plain.ulk"
        self.assertEqual(run("convert", SAMPLES / "patch.ulk", plain).returncode, 0)
        self.assertEqual(self.out.read_bytes(), plain.read_bytes())

    def test_colours_and_maps_stay(self):
        scene = self.file("square.ulk", SQUARE.format(maps="texture none.png\nspecular 1,0.5,0.25,1\n"))
        run("convert", scene, self.folder / "plain.ulk")
        run("tidy", scene, "-o", self.out, "--weld")
        self.assertEqual(self.out.read_bytes(), (self.folder / "plain.ulk").read_bytes())

    def test_the_standard_streams(self):
        stl, _, points = self.ball(12, 6)
        done = run("tidy", stl, "-o", "-", "--weld")
        self.assertEqual(done.returncode, 0)
        self.assertEqual(len(Mesh(done.stdout).positions), points)
        self.assertRegex(done.stderr, r"^model 0: triangles \d+ -> \d+, .*\n$")
        again = run("tidy", "-", "-o", self.out, "--weld", input=done.stdout)
        self.assertEqual(again.returncode, 0)
        self.assertEqual(self.out.read_bytes().decode(), done.stdout.replace("\n", "\r\n"))
        full = run("tidy", stl, "-o", self.out, "--weld", capture_output=False, stdout=open("/dev/full", "w"))
        self.assertEqual(full.returncode, 1)

    def test_meshes_without_triangles_and_with_odd_numbers(self):
        empty = self.folder / "empty.stl"
        empty.write_bytes(b"")
        self.assertEqual(self.tidy(empty, "--weld", "--smooth", 30)["triangles"], (0, 0))
        points = self.file("points.ulk", SQUARE.format(maps="").replace("element", "element 9\n#"))
        self.assertEqual(self.tidy(points, "--weld")["vertices"], (4, 4))
        nan, inf = math.nan, math.inf
        triangles = sphere(24, 12)[0] + [((nan, 0, 0), (1, inf, 0), (0, 1, 3e38)), ((nan, 0, 0),) * 3]
        write_stl(self.folder / "odd.stl", triangles)
        done = run("tidy", self.folder / "odd.stl", "-o", self.out, "--weld", 0.01, "--simplify", 50, "--smooth", 30)
        self.assertEqual(done.returncode, 0)
        self.assertIn(f"triangles {len(triangles)} -> ", done.stdout)

    def test_it_takes_no_more_memory_than_a_second_copy_of_the_mesh_besides(self):
        write_stl(self.folder / "ball.stl", sphere(64, 32)[0])
        triangles = (self.folder / "ball.stl").read_bytes()[84:]
        many, out = self.folder / "many.stl", self.folder / "out.stl"
        many.write_bytes(bytes(80) + struct.pack("<I", 100 * len(triangles) // 50) + 100 * triangles)
        plain = peak_memory("convert", many, out)
        for options in (["--weld"], ["--weld", "0.001", "--simplify", "1000", "--smooth", "30"], ["--smooth", "30"]):
            self.assertLess(peak_memory("tidy", many, "-o", out, *options), 2.5 * plain, options)

    def test_files_that_can_not_be_read_or_written(self):
        missing = self.folder / "none.ulk"
        done = run("tidy", missing, "-o", self.out)
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertTrue(done.stderr.endswith(f"{missing}: does not load\n"))
        self.assertFalse(self.out.exists())
        done = run("tidy", SAMPLES / "cube.ulk", "-o", "/dev/full")
        self.assertEqual(done.returncode, 1)
        self.assertIn("/dev/full: could not be written", done.stderr)


if __name__ == "__main__":
    unittest.main()
