"""ulktool place."""

import math
import re
import unittest

from meshes import Mesh, read_stl, sphere, write_stl
from tool_test_case import SAMPLES, SQUARE, ToolTestCase, run


def turned(p, degrees):
    """A plain turn about x, then y, then z."""
    for axis, angle in enumerate(map(math.radians, degrees)):
        i, k = (axis + 1) % 3, (axis + 2) % 3
        p = list(p)
        p[i], p[k] = (math.cos(angle) * p[i] - math.sin(angle) * p[k], math.sin(angle) * p[i] + math.cos(angle) * p[k])
    return tuple(p)


class Place(ToolTestCase):
    def setUp(self):
        super().setUp()
        self.out = self.folder / "out.ulk"
        self.square = self.file("square.ulk", SQUARE.format(maps=""))

    def place(self, scene, *options):
        done = run("place", scene, "-o", self.out, *options)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        return [Mesh(block) for block in re.findall(r"(?ms)^begin polygon_surface.*?^end$", self.out.read_text())]

    def assert_near(self, found, wanted):
        self.assertEqual(len(found), len(wanted))
        for a, b in zip(found, wanted):
            for x, y in zip(a, b):
                self.assertAlmostEqual(x, y, 5)

    def test_options_work_in_their_order(self):
        mesh, = self.place(self.square, "--move", "1,0,0", "--scale", "2", "--turn", "0,0,90")
        self.assertEqual(mesh.positions, [(2, 0, 0), (2, 4, 0), (-2, 0, 0), (-2, 4, 0)])
        mesh, = self.place(self.square, "--turn", "0,0,90", "--scale", "2", "--move", "1,0,0")
        self.assertEqual(mesh.positions, [(3, -2, 0), (3, 2, 0), (-1, -2, 0), (-1, 2, 0)])
        mesh, = self.place(self.square, "--move=-1,-2,-3", "--move", "-1e1,0,0.5")
        self.assertEqual(mesh.positions[0], (-12, -3, -2.5))

    def test_equals_a_plain_turn(self):
        stl = self.folder / "ball.stl"
        write_stl(stl, sphere(12, 6)[0])
        plain, = self.place(stl)
        for degrees in ((30, 0, 0), (0, 40, 0), (0, 0, -50), (10, 20, 30), (-100, 200, 333.25)):
            mesh, = self.place(stl, "--turn", ",".join(map(str, degrees)))
            self.assert_near(mesh.positions, [turned(p, degrees) for p in plain.positions])
            self.assert_near(mesh.normals, [turned(n, degrees) for n in plain.normals])
            self.assert_near(mesh.of("tangent"), [turned(t, degrees) for t in plain.of("tangent")])
            self.assert_near(mesh.of("binormal"), [turned(b, degrees) for b in plain.of("binormal")])

    def test_frames_are_not_scaled(self):
        plain, = self.place(self.square)
        mesh, = self.place(self.square, "--scale", "0.001", "--move", "7,8,9")
        self.assertEqual(mesh.normals, plain.normals)
        self.assertEqual(mesh.of("tangent"), plain.of("tangent"))

    def test_what_changes_nothing_keeps_every_bit(self):
        stl, again = self.folder / "ball.stl", self.folder / "again.stl"
        write_stl(stl, sphere(20, 10)[0] + [((-0.0, 0, math.nan), (1, math.inf, 0), (0, 1, 1e-45))])
        for options in ([], ["--move", "0,0,0", "--turn", "0,0,0", "--scale", "1"], ["--turn", "360,-360,720"]):
            self.assertEqual(run("place", stl, "-o", again, *options).returncode, 0)
            self.assertEqual(read_stl(again), read_stl(stl), options)
        # Four quarters are a whole turn.
        self.assertEqual(run("place", stl, "-o", again, *["--turn", "0,90,0"] * 4).returncode, 0)
        finite = [t for t in read_stl(stl) if b"\0\0\xc0\x7f" not in b"".join(t)]
        self.assertGreater(len(finite), 300)

    def test_center_and_unit(self):
        scene = self.file("two.ulk", SQUARE.format(maps="")
                          + SQUARE.format(maps="").replace("position 1,", "position 7,"))
        first, second = self.place(scene, "--center")
        self.assertEqual(first.positions, [(-4, -1, 0), (-2, -1, 0), (-4, 1, 0), (-2, 1, 0)])
        self.assertEqual(second.positions, [(-4, -1, 0), (4, -1, 0), (-4, 1, 0), (4, 1, 0)])
        first, second = self.place(scene, "--unit")
        self.assertEqual(second.positions[0] + second.positions[3], (-0.5, -0.125, 0, 0.5, 0.125, 0))
        self.assertEqual(first.positions[3], (-0.25, 0.125, 0))
        # Behind --model each is a body of its own.
        first, second = self.place(scene, "--model", 0, "--unit", "--model", 1, "--center")
        self.assertEqual(first.positions[3], (0.5, 0.5, 0))
        self.assertEqual(second.positions[3], (4, 1, 0))

    def test_a_box_without_size_is_only_centred(self):
        scene = self.file("point.ulk", re.sub("position .*", "position 3,4,5", SQUARE.format(maps="")))
        mesh, = self.place(scene, "--unit", "--move", "0,0,1")
        self.assertEqual(mesh.positions, [(0, 0, 1)] * 4)

    def test_each_model_takes_what_follows_it(self):
        scene = self.file("three.ulk", SQUARE.format(maps="") * 3)
        meshes = self.place(scene, "--move", "0,0,1", "--model", "2", "--move", "10,0,0", "--scale", "2",
                            "--model", "0", "--move", "0,5,0", "--model", "2", "--move", "0,0,-4")
        self.assertEqual([mesh.positions[3] for mesh in meshes], [(1, 6, 1), (1, 1, 1), (22, 2, -2)])

    def test_a_nurbs_surface_goes_with_its_net(self):
        plain, placed = self.folder / "plain.stl", self.folder / "placed.stl"
        self.assertEqual(run("convert", SAMPLES / "patch.ulk", plain).returncode, 0)
        self.assertEqual(run("place", SAMPLES / "patch.ulk", "-o", placed, "--turn", "0,90,0", "--move", "0,0,3")
                         .returncode, 0)
        box = [float(n) for n in re.findall(r"-?[\d.e-]+(?=[,)])", run("info", plain).stdout.split("box: ")[1])]
        moved = [float(n) for n in re.findall(r"-?[\d.e-]+(?=[,)])", run("info", placed).stdout.split("box: ")[1])]
        wanted = [box[2], box[1], 3 - box[3], box[5], box[4], 3 - box[0]]
        for found, value in zip(moved, wanted):
            self.assertAlmostEqual(found, value, 5)
        # Net and weights of a scene.
        run("convert", SAMPLES / "patch.ulk", self.folder / "plain.ulk")
        self.place(SAMPLES / "patch.ulk", "--move", "0,0,3")
        before = (self.folder / "plain.ulk").read_text().splitlines()
        after = self.out.read_text().splitlines()
        self.assertEqual(len(before), len(after))
        for old, new in zip(before, after):
            if old.startswith("position "):
                x, y, z = map(float, old[9:].split(","))
                self.assert_near([tuple(map(float, new[9:].split(",")))], [(x, y, z + 3)])
            else:
                self.assertEqual(old, new)

    def assert_wrong(self, words, message):
        done = run("place", *words)
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertEqual(done.stderr, f"ulktool place: {message}; see ulktool place --help\n")

    def test_wrong_words_are_named(self):
        self.assert_wrong(["a.ulk"], "-o OUT is missing")
        line = ["a.ulk", "-o", "b.ulk"]
        for factor in ("0", "-2"):
            self.assert_wrong([*line, "--scale", factor], f"--scale {factor}: this is not above 0")
        self.assert_wrong([*line, "--scale", "inf"], "--scale inf: this is not a number")
        for triple in ("1,2", "1,2,3,4", "1,2,x", "1 2 3", "nan,0,0"):
            for option in ("--move", "--turn"):
                self.assert_wrong([*line, option, triple],
                                  f"{option} {triple}: this is not three numbers with commas between them")
        self.assert_wrong([*line, "--model", "first"], "--model first: this is not a whole number that counts from 0")
        self.assert_wrong([*line, "--center=1"], "--center=1: this option takes no value")
        self.assert_wrong(["a.ulk", "-o", "b.xyzw"],
                          run("convert", "a.ulk", "b.xyzw").stderr.split(": ", 1)[1].split("; see")[0])

    def test_failures_leave_no_file(self):
        missing = self.folder / "none.ulk"
        for scene, options, message in (
                (missing, [], f"{missing}: does not load\n"),
                (self.square, ["--model", "1"], f"{self.square}: there is no model 1; there is 1, from 0\n"),
                (self.square, ["--scale", "1e39"], f"{self.square}: model 0: a coordinate would be too large\n")):
            done = run("place", scene, "-o", self.out, *options)
            self.assertEqual((done.returncode, done.stdout), (1, ""))
            self.assertTrue(done.stderr.endswith(message), done.stderr)
            self.assertFalse(self.out.exists())
        done = run("place", self.square, "-o", "/dev/full")
        self.assertEqual((done.returncode, done.stderr), (1, "/dev/full: could not be written\n"))

    def test_the_standard_streams(self):
        done = run("place", "-", "-o", "-", "--move", "0,0,2", input=self.square.read_text())
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(Mesh(done.stdout).positions[0], (-1, -1, 2))

    def test_an_environment_and_an_empty_model_stay(self):
        scene = self.sky()
        scene.write_text(scene.read_text() + SQUARE.format(maps=""))
        mesh, = self.place(scene, "--center")
        self.assertTrue(self.out.read_text().startswith("begin environment\n"))
        self.assertEqual(mesh.positions[0], (-1, -1, 0))
        empty = self.folder / "empty.stl"
        empty.write_bytes(b"")
        self.assertEqual(self.place(empty, "--unit", "--turn", "1,2,3"), [])


if __name__ == "__main__":
    unittest.main()
