"""Formats of other programs: what ulktool reads of theirs and writes for them."""

import random
import struct
import subprocess
import unittest

from pictures import png_of_one_pixel
from tool_test_case import SAMPLES, SQUARE, ToolTestCase, run

HAS_LIBRARY = "can not read" not in run("info", "none.obj").stderr
OBJ_SQUARE = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 1 2 3 4\n"


def triangles(path):
    """The triangles of a binary STL file, each with its corners turned so that the smallest comes first."""
    data = path.read_bytes()
    found = []
    for i in range(struct.unpack_from("<I", data, 80)[0]):
        numbers = struct.unpack_from("<9f", data, 84 + 50 * i + 12)
        corners = [numbers[k:k + 3] for k in (0, 3, 6)]
        first = corners.index(min(corners))
        found.append(tuple(corners[first:] + corners[:first]))
    return sorted(found)


def program(*words):
    return subprocess.run(list(map(str, words)), capture_output=True, check=True, timeout=60)


@unittest.skipIf(HAS_LIBRARY, "this build reads them")
class WithoutTheLibrary(ToolTestCase):
    def test_it_says_that_it_can_not(self):
        done = run("convert", self.file("a.obj", OBJ_SQUARE), self.folder / "a.ulk")
        self.assertEqual((done.returncode, done.stderr.splitlines()[0]), (1, "this build can not read .obj files"))
        out = self.folder / "a.ply"
        done = run("convert", SAMPLES / "cube.ulk", out)
        self.assertEqual((done.returncode, done.stderr),
                         (1, f"this build can not write .ply files\n{out}: could not be written\n"))


@unittest.skipUnless(HAS_LIBRARY, "this build can not read them")
class Foreign(ToolTestCase):
    def stl_of(self, path):
        out = self.folder / "seen.stl"
        done = run("convert", path, out)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return triangles(out)

    def lines(self, *words):
        """The status and the lines about an error."""
        done = run(*words)
        return done.returncode, done.stderr.splitlines()

    def test_files_of_other_programs_have_the_triangles_that_these_were_given(self):
        cube = self.folder / "cube.stl"
        self.assertEqual(run("convert", SAMPLES / "cube.ulk", cube).returncode, 0)
        expected = triangles(cube)
        names = {ending: self.folder / f"other.{ending}" for ending in ("off", "stl", "obj", "ply", "dae")}
        program("admesh", f"--write-off={names['off']}", f"--write-ascii-stl={names['stl']}", cube)
        for ending in ("obj", "ply", "dae"):
            program("ctmconv", cube, names[ending])
        for ending, path in names.items():
            with self.subTest(ending):
                self.assertEqual(self.stl_of(path), expected)

    def test_another_program_reads_what_is_written(self):
        for ending in ("obj", "ply"):
            out, seen = self.folder / f"out.{ending}", self.folder / "other.stl"
            self.assertEqual(run("convert", SAMPLES / "cube.ulk", out).returncode, 0)
            program("ctmconv", out, seen)
            self.assertEqual(triangles(seen), self.stl_of(SAMPLES / "cube.ulk"))

    def test_a_surface_goes_out_as_the_mesh_that_is_drawn(self):
        for ending in ("obj", "ply", "gltf", "glb"):
            out = self.folder / f"out.{ending}"
            done = run("convert", SAMPLES / "patch.ulk", out)
            self.assertEqual((done.returncode, done.stderr),
                             (0, "model 0: NURBS surface, written as the mesh that is drawn\n"))
            self.assertEqual(self.stl_of(out), self.stl_of(SAMPLES / "patch.ulk"))

    def test_a_map_is_found_from_another_folder(self):
        (self.folder / "maps").mkdir()
        (self.folder / "out").mkdir()
        (self.folder / "maps" / "my wood.png").write_bytes(png_of_one_pixel(1, 2, 3))
        scene = self.file("square.ulk", SQUARE.format(maps="texture maps/my wood.png\n"))
        for ending in ("obj", "ply", "gltf", "glb"):
            out, back = self.folder / "out" / f"square.{ending}", self.folder / "maps" / "back.ulk"
            self.assertEqual(self.lines("convert", scene, out), (0, []))
            self.assertIn("  texture: ../maps/my wood.png, 1 x 1\n", run("info", out).stdout)
            self.assertEqual(self.lines("convert", out, back), (0, []))
            self.assertIn(b"texture my wood.png\r\n", back.read_bytes())

    def test_text_stl_goes_out_and_comes_in(self):
        text = self.folder / "text.stl"
        self.assertEqual(self.lines("convert", "--text", SAMPLES / "cube.ulk", text), (0, []))
        self.assertTrue(text.read_bytes().startswith(b"solid "))
        self.assertEqual(self.stl_of(text), self.stl_of(SAMPLES / "cube.ulk"))
        status, lines = self.lines("convert", "--text", SAMPLES / "cube.ulk", self.folder / "a.obj")
        self.assertEqual((status, len(lines)), (2, 1))
        self.assertIn("--text: ", lines[0])
        full = self.folder / "full.stl"
        full.symlink_to("/dev/full")
        self.assertEqual(self.lines("convert", "--text", text, full), (1, [f"{full}: could not be written"]))

    def test_every_command_reads_them(self):
        path, picture = self.file("a.obj", OBJ_SQUARE), self.folder / "a.png"
        self.assertEqual(run("check", path).stdout, f"{path}: loads\n")
        self.assertEqual(self.lines("render", path, picture), (0, []))
        self.assertTrue(picture.exists())

    def test_endings_count_in_any_case(self):
        self.assertEqual(len(self.stl_of(self.file("A.OBJ", OBJ_SQUARE))), 2)
        self.assertEqual(self.lines("convert", SAMPLES / "cube.ulk", self.folder / "A.PLY"), (0, []))
        self.assertTrue((self.folder / "A.PLY").read_bytes().startswith(b"ply\n"))

    def test_an_ending_that_is_only_read_is_refused_for_output(self):
        status, lines = self.lines("convert", SAMPLES / "cube.ulk", self.folder / "a.dxf")
        self.assertEqual((status, len(lines)), (2, 1))
        self.assertIn("nothing is written with the ending .dxf; known are .ulk .stl .glb .gltf .obj .ply", lines[0])

    def test_a_bad_file_is_one_line_and_leaves_no_output(self):
        out = self.folder / "out.ulk"
        for name, data in (("a.obj", b""), ("a.ply", b"ply\n"), ("a.gltf", b"{}"), ("a.glb", b"glTF"),
                           ("a.obj", b"v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 7\n"), ("a.stl", b"solid a\nfacet\n" * 9)):
            path = self.folder / name
            path.write_bytes(data)
            status, lines = self.lines("convert", path, out)
            self.assertEqual((status, len(lines), lines[-1]), (1, 2, f"{path}: does not load"), (name, data, lines))
            self.assertFalse(out.exists())

    def test_a_count_that_the_file_can_not_fill_takes_no_time_and_memory(self):
        header = ("ply\nformat {}\nelement vertex {}\nproperty float x\nproperty float y\nproperty float z\n"
                  "element face 9\nproperty list uchar int vertex_indices\nend_header\n0 0 0\n")
        for form in ("ascii 1.0", "binary_little_endian 1.0"):
            for count in (16000000, 4000000000):
                path = self.file("a.ply", header.format(form, count))
                status, lines = self.lines("info", path)
                self.assertEqual((status, len(lines)), (1, 2), lines)

    def test_a_material_does_not_lead_to_a_device(self):
        path = self.file("a.obj", "mtllib /dev/zero\n" + OBJ_SQUARE)
        self.assertEqual(self.lines("info", path), (0, []))

    def test_damaged_files_end_well(self):
        seeds = {}
        for ending in ("obj", "ply", "glb", "gltf"):
            path = self.folder / f"seed.{ending}"
            self.assertEqual(run("convert", SAMPLES / "cube.ulk", path).returncode, 0)
            seeds[path] = path.read_bytes()
        numbers = random.Random(3)
        for path, data in seeds.items():
            for _ in range(8):
                damaged = bytearray(data)
                for _ in range(numbers.choice((1, 3, 9))):
                    damaged[numbers.randrange(len(damaged))] = numbers.randrange(256)
                path.write_bytes(damaged[:numbers.randrange(1, len(data))] if numbers.random() < 0.3 else damaged)
                status, lines = self.lines("info", path)
                self.assertIn(status, (0, 1), lines)
                if status == 1:
                    self.assertEqual(lines[-1], f"{path}: does not load")
            path.write_bytes(data)

    def test_output_that_can_not_be_written(self):
        full = self.folder / "full.ply"
        full.symlink_to("/dev/full")
        self.assertEqual(self.lines("convert", SAMPLES / "cube.ulk", full), (1, [f"{full}: could not be written"]))
        missing = self.folder / "none" / "a.obj"
        self.assertEqual(self.lines("convert", SAMPLES / "cube.ulk", missing),
                         (1, [f"{missing}: could not be written"]))

    def test_a_scene_without_triangles_is_not_written(self):
        out = self.folder / "a.obj"
        status, lines = self.lines("convert", self.sky(), out)
        self.assertEqual((status, lines[-1]), (1, f"{out}: could not be written"))
        self.assertFalse(out.exists())


if __name__ == "__main__":
    unittest.main()
