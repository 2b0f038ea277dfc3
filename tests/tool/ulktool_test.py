"""Runs the command-line companion as scripts do: arguments in, files, output and exit status out.

ulktool_test.py PROGRAM [unittest options]
"""

import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

PROGRAM = sys.argv.pop(1)
SAMPLES = pathlib.Path(__file__).resolve().parents[2] / "samples"
SQUARE = ("begin polygon_surface,4,4\n{maps}position -1,-1,0\nposition 1,-1,0\nposition -1,1,0\nposition 1,1,0\n"
          + "element 0\nelement 1\nelement 2\nelement 3\n"
          + "tangent 1,0,0\nbinormal 0,1,0\nnormal 0,0,1\n" * 4 + "end\n")
COMMANDS = ("render", "check", "info", "convert")


def run(*arguments):
    return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True, timeout=60)


def png_size(path):
    data = path.read_bytes()
    assert data[:8] == b"\x89PNG\r\n\x1a\n"
    return struct.unpack(">II", data[16:24])


def first_pixel(path):
    """Of an RGBA picture. There is nothing before it that a filter of its row could have taken off."""
    data = path.read_bytes()
    start = data.index(b"IDAT")
    size = struct.unpack(">I", data[start - 4:start])[0]
    return tuple(zlib.decompressobj().decompress(data[start + 4:start + 4 + size], 5)[1:])


def png_chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(width, height, depth, colour_type, lines, *chunks):
    """`lines` are the rows, each behind its filter byte."""
    return (b"\x89PNG\r\n\x1a\n"
            + png_chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, depth, colour_type, 0, 0, 0)) + b"".join(chunks)
            + png_chunk(b"IDAT", zlib.compress(lines, 9)) + png_chunk(b"IEND", b""))


def png_of_one_pixel(*values):
    """Grey or RGB."""
    return png(1, 1, 8, {1: 0, 3: 2}[len(values)], bytes([0, *values]))


def bmp(width, height, bits, pixels, palette=b"", header_size=40):
    """`palette` follows the header."""
    offset = 14 + header_size + len(palette)
    return (struct.pack("<2sIII", b"BM", offset + len(pixels), 0, offset)
            + struct.pack("<IiiHHIIiiII", header_size, width, height, 1, bits, 0, 0, 0, 0, 0, 0)
            + bytes(header_size - 40) + palette + pixels)


def tga(width, height, depth, descriptor, pixels):
    return struct.pack("<BBBHHBHHHHBB", 0, 0, 2, 0, 0, 0, 0, 0, width, height, depth, descriptor) + pixels


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
        for words in ((), ("a.ulk",), ("a.ulk", "b.png", "c"), ("a.ulk", "b.png", "--size"),
                      ("a.ulk", "b.png", "--size", "0x10"), ("a.ulk", "b.png", "--size", "10"),
                      ("a.ulk", "b.png", "--size", "10x-1"), ("a.ulk", "b.png", "--size", "10x10x"),
                      ("a.ulk", "b.png", "--size", "99999x10"), ("a.ulk", "b.png", "--view", "back"),
                      ("a.ulk", "b.png", "--colour")):
            self.assertEqual(run("render", *words).returncode, 2, words)


class Check(ToolTestCase):
    def test_good_files_load(self):
        done = run("check", SAMPLES / "cube.ulk", SAMPLES / "patch.ulk")
        self.assertEqual(done.returncode, 0)
        self.assertEqual(done.stdout, f"{SAMPLES}/cube.ulk: loads\n{SAMPLES}/patch.ulk: loads\n")

    def test_one_bad_file_fails_and_its_messages_are_told(self):
        bad = self.file("bad.ulk", "nonsense\nbegin polygon_surface,1,1\nposition\nend\n")
        done = run("check", bad, SAMPLES / "cube.ulk")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout.splitlines(), [
            f"{bad}: unknown line: nonsense",
            f"{bad}: 2: position parm is not set. position",
            f"{bad}: 3: vertex(0) < 1: too few vertex.",
            f"{bad}: 3: element(0) < 1: too few element.",
            f"{bad}: 3: tangent(0) < 1: too few tangent.",
            f"{bad}: 3: binormal(0) < 1: too few binormal.",
            f"{bad}: 3: normal(0) < 1: too few normal.",
            f"{bad}: does not load",
            f"{SAMPLES}/cube.ulk: loads"])

    def check_square(self, maps):
        """The lines that a square with these lines of maps gives, without the path of the scene; and the status."""
        scene = self.file("square.ulk", SQUARE.format(maps="".join(line + "\n" for line in maps)))
        done = run("check", scene)
        return [line.replace(f"{scene}: ", "") for line in done.stdout.splitlines()], done.returncode

    def test_pictures_that_are_well_are_not_told(self):
        (self.folder / "a.png").write_bytes(png_of_one_pixel(1, 2, 3))
        maps = ["texture a.png", "bumpmap a.png", "bump2mono true", "specular a.png"]
        self.assertEqual(self.check_square(maps), (["loads"], 0))

    def test_samples_have_all_their_pictures(self):
        done = run("check", *sorted(SAMPLES.glob("*.ulk")))
        self.assertEqual(done.returncode, 0, done.stdout)
        self.assertEqual(done.stderr, "")

    def test_every_picture_with_a_fault_is_told(self):
        (self.folder / "folder.png").mkdir()
        (self.folder / "text.png").write_text("no picture")
        self.assertEqual(self.check_square(["texture none.png", "bumpmap folder.png", "specular text.png"]), ([
            "model 0: texture none.png: no such file",
            "model 0: bumpmap folder.png: not a file",
            "model 0: specular text.png: not a picture that can be read",
            "loads, but not with all its pictures"], 1))

    def test_a_form_that_is_not_read_is_told(self):
        (self.folder / "a.gif").write_bytes(b"GIF89a")
        self.assertEqual(self.check_square(["specular a.gif"]), ([
            "model 0: specular a.gif: not named .jpg, .bmp, .png or .tga", "loads, but not with all its pictures"], 1))

    def test_a_picture_that_is_cut_short_is_told(self):
        (self.folder / "a.bmp").write_bytes(b"BM" + bytes(20))
        self.assertEqual(self.check_square(["texture a.bmp"])[0][0],
                         "model 0: texture a.bmp: not a picture that can be read")

    def test_pictures_that_are_read_and_not_shown_are_told(self):
        deep_grey = png(1, 1, 16, 0, bytes(3))
        for name, data in (("top_down.bmp", bmp(4, -4, 24, bytes(48))), ("cut.bmp", bmp(4, 4, 24, bytes(40))),
                           ("grey2.png", png(4, 1, 2, 0, bytes(2))),
                           ("wide.png", png(70000, 1, 1, 0, bytes(1 + 8750)))):
            (self.folder / name).write_bytes(data)
            for key in ("texture", "bumpmap", "specular"):
                self.assertEqual(self.check_square([f"{key} {name}"]), ([
                    f"model 0: {key} {name}: not a picture that can be read",
                    "loads, but not with all its pictures"], 1))
        (self.folder / "deep.png").write_bytes(deep_grey)
        self.assertEqual(self.check_square(["texture deep.png"]), (["loads"], 0))
        self.assertEqual(self.check_square(["bumpmap deep.png"]), ([
            "model 0: bumpmap deep.png: can not be turned into normals; the surface stays smooth",
            "loads, but not with all its pictures"], 1))

    def test_a_picture_that_lacks_only_what_fills_its_last_row_is_well(self):
        (self.folder / "a.bmp").write_bytes(bmp(3, 2, 24, bytes(12 + 9)))
        self.assertEqual(self.check_square(["texture a.bmp"]), (["loads"], 0))

    def test_maps_behind_one_that_fails_are_judged_too(self):
        (self.folder / "good.png").write_bytes(png_of_one_pixel(1, 2, 3))
        (self.folder / "grey2.png").write_bytes(png(4, 1, 2, 0, bytes(2)))
        self.assertEqual(self.check_square(["texture none.png", "bumpmap good.png", "specular grey2.png"])[0], [
            "model 0: texture none.png: no such file",
            "model 0: specular grey2.png: not a picture that can be read", "loads, but not with all its pictures"])

    def test_a_picture_of_a_few_bytes_does_not_take_the_memory(self):
        # 200 MB of bits, and 1.6 GB of bytes.
        side = 40000
        (self.folder / "a.png").write_bytes(png(side, side, 1, 0, bytes((1 + side // 8) * side)))
        self.assertEqual(self.check_square(["texture a.png"])[0][0],
                         "model 0: texture a.png: not a picture that can be read")

    def test_pictures_that_look_wrong_are_told_and_do_not_fail(self):
        palette = bytes(range(8)) * 2
        invisible = "it has no opacity anywhere, and the model is invisible"
        rows = [
            ("clear.bmp", bmp(2, 1, 32, bytes([1, 2, 3, 0] * 2)), invisible),
            ("clear.tga", tga(2, 1, 16, 0, bytes([255, 127] * 2)), invisible),
            ("mirrored.tga", tga(4, 1, 24, 0x10, bytes(12)), "it is stored from right to left, and shows mirrored"),
            ("skewed.tga", tga(3, 2, 24, 0, bytes(18 + 26)),
             "its rows are no whole groups of four bytes, and it shows skewed"),
            ("cut_out.png", png(1, 1, 8, 2, bytes(4), png_chunk(b"tRNS", bytes(6))),
             "its transparent colours (tRNS) show opaque"),
            ("long.bmp", bmp(4, 1, 4, bytes(4), palette, 108),
             "its header is longer than 40 bytes, and its colours are wrong"),
        ]
        for name, data, warning in rows:
            (self.folder / name).write_bytes(data)
            self.assertEqual(self.check_square([f"texture {name}"]),
                             ([f"model 0: texture {name}: {warning}", "loads"], 0))
        self.assertEqual(self.check_square(["specular clear.bmp"]), (["loads"], 0))
        for name, data in (("half.bmp", bmp(2, 1, 32, bytes([1, 2, 3, 0, 1, 2, 3, 1]))),
                           ("padded.tga", tga(3, 2, 24, 0, bytes(24))),
                           ("usual.bmp", bmp(4, 1, 4, bytes(4), palette))):
            (self.folder / name).write_bytes(data)
            self.assertEqual(self.check_square([f"texture {name}"]), (["loads"], 0))

    def test_a_scene_is_judged_alike_when_it_comes_again(self):
        scene = self.sky()
        (self.folder / "sky_posy.png").unlink()
        lines = run("check", scene, scene).stdout.splitlines()
        self.assertEqual(lines[:len(lines) // 2], lines[len(lines) // 2:])
        self.assertEqual(lines[-1], f"{scene}: does not load")

    def test_pictures_beside_a_scene_in_a_folder_with_a_long_path_are_found(self):
        folder = self.folder / ("図" * 60) / ("形" * 60)
        folder.mkdir(parents=True)
        (folder / "a.png").write_bytes(png_of_one_pixel(1, 2, 3))
        scene = folder / "square.ulk"
        scene.write_text(SQUARE.format(maps="texture a.png\n"))
        done = run("check", scene)
        self.assertEqual((done.stdout, done.stderr), (f"{scene}: loads\n", ""))

    def test_bump2mono_of_a_picture_without_colours_is_told(self):
        (self.folder / "grey.png").write_bytes(png_of_one_pixel(9))
        self.assertEqual(self.check_square(["bumpmap grey.png"]), (["loads"], 0))
        self.assertEqual(self.check_square(["bumpmap grey.png", "bump2mono true"]), ([
            "model 0: bumpmap grey.png: bump2mono takes only pictures with red, green and blue; "
            "the surface stays smooth",
            "loads, but not with all its pictures"], 1))

    def test_faces_that_are_missing_or_do_not_fit_are_told(self):
        scene = self.sky()
        (self.folder / "sky_posy.png").unlink()
        (self.folder / "sky_posz.png").unlink()
        done = run("check", scene)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout.splitlines(), [
            f"{scene}: environment.initex() failed.",
            f"{scene}: environment: cubetex {self.folder}/sky_posy.png: no such file",
            f"{scene}: environment: cubetex {self.folder}/sky_posz.png: no such file",
            f"{scene}: does not load"])

    def test_faces_that_are_not_square_or_not_of_one_size_are_told(self):
        scene = self.sky()
        shutil.copy(SAMPLES / "maps" / "globe.png", self.folder / "sky_posy.png")
        shutil.copy(SAMPLES / "maps" / "dents.png", self.folder / "sky_negz.png")
        done = run("check", scene)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout.splitlines(), [
            f"{scene}: environment: cubetex {self.folder}/sky_posy.png: not square: 512 x 256",
            f"{scene}: environment: cubetex {self.folder}/sky_negz.png: not as large as the other faces: 40 x 40",
            f"{scene}: loads, but not with all its pictures"])

    def test_a_missing_file_does_not_load(self):
        done = run("check", self.folder / "none.ulk")
        self.assertEqual(done.returncode, 1)
        self.assertIn("none.ulk: file open error.", done.stdout)

    def lines_of(self, name, data):
        """The lines about a file of these bytes, without its path; and the status."""
        path = self.folder / name
        path.write_bytes(data)
        done = run("check", path)
        return [line.replace(f"{path}: ", "") for line in done.stdout.splitlines()], done.returncode

    def test_a_block_without_an_end_is_told(self):
        net = (SAMPLES / "patch.ulk").read_bytes()
        start = net[:net.index(b"begin")].count(b"\n") + 1
        message = f"the block that begins in line {start} has no end"
        cut = net[:net.rindex(b"end")]
        self.assertEqual(self.lines_of("net.ulk", cut), ([message, "loads"], 0))
        square = b"# one\n" + SQUARE.format(maps="").encode()
        self.assertEqual(self.lines_of("square.ulk", square), (["loads"], 0))
        self.assertEqual(self.lines_of("square.ulk", square[:-4]), ([
            "the block that begins in line 2 has no end", "does not load"], 1))

    def test_a_last_line_without_a_line_feed_is_told(self):
        square = SQUARE.format(maps="").encode()
        told = "the last line has no line feed; the file may be cut off"
        self.assertEqual(self.lines_of("square.ulk", square[:-1]), ([told, "loads"], 0))
        self.assertEqual(self.lines_of("square.ulk", square[:-6]), ([
            "the block that begins in line 1 has no end", told, "does not load"], 1))

    def test_an_stl_file_whose_length_does_not_fit_its_count_is_told(self):
        def stl(count, size):
            return bytes(80) + struct.pack("<I", count) + bytes(size)
        self.assertEqual(self.lines_of("a.stl", stl(2, 100)), (["loads"], 0))
        self.assertEqual(self.lines_of("a.STL", stl(9, 416)), ([
            "a count of 9 triangles makes 534 bytes, but the file has 500; it ends too early", "loads"], 0))
        self.assertEqual(self.lines_of("a.stl", stl(2, 101)), ([
            "a count of 2 triangles makes 184 bytes, but the file has 185; the rest is not read", "loads"], 0))
        self.assertEqual(self.lines_of("a.stl", bytes(83)), ([
            "a count of 0 triangles makes 84 bytes, but the file has 83; it ends too early", "loads"], 0))
        # A scene file is not judged as one, nor the other way round.
        self.assertEqual(self.lines_of("a.ulk", stl(2, 99))[1], 1)

    def test_a_text_stl_file_is_told(self):
        text = b"solid part\nfacet normal 0 0 1\nouter loop\n" + b"vertex 0 0 0\n" * 30 + b"endsolid part\n"
        self.assertEqual(self.lines_of("a.stl", text), ([
            "this looks like a text STL file; only binary ones are read", "loads"], 0))

    def test_a_line_of_any_length_is_told_as_a_whole(self):
        line = b"\0" * 3000000
        path = self.folder / "a.ulk"
        path.write_bytes(b"nonsense\n" + line + b"\nmore\n")
        done = subprocess.run([PROGRAM, "check", path], capture_output=True, timeout=60)
        name = str(path).encode()
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout, b"".join(name + b": " + text + b"\n" for text in (
            b"unknown line: nonsense", b"unknown line: " + line, b"unknown line: more", b"does not load")))

    def test_no_file_is_wrong_usage(self):
        self.assertEqual(run("check").returncode, 2)


class Info(ToolTestCase):
    def test_prints_models_counts_and_boxes(self):
        triangle = ("begin environment\ncubetex\nend\nbegin polygon_surface,3,4\nposition 0,0,0\nposition 2,0,0\n"
                    "position 0,1,-1\nelement 0\nelement 1\nelement 2\nelement -1\n"
                    + "tangent 1,0,0\nbinormal 0,1,0\nnormal 0,0,1\n" * 3 + "end\n")
        done = run("info", self.file("one.ulk", triangle))
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout.splitlines(), [
            "models: 1", "model 0: polygon surface", "  mesh: 3 vertices, 4 elements, 1 triangles",
            "  box: (0, 0, -1) to (2, 1, 0)"])

    def test_tells_nets_and_resolutions(self):
        done = run("info", SAMPLES / "patch.ulk")
        self.assertEqual(done.returncode, 0)
        self.assertIn("nurbs surface, 2 x 2 points, order 2 x 2, resolution", done.stdout)

    def test_tells_the_pictures_of_a_model(self):
        done = run("info", SAMPLES / "relief.ulk")
        self.assertEqual([line for line in done.stdout.splitlines() if "maps/" in line], [
            "  texture: maps/bricks.png, 128 x 128", "  bumpmap: maps/brick-depth.bmp, 64 x 64",
            "  specular: maps/dull.tga, 4 x 4", "  texture: maps/glaze.jpg, 128 x 128",
            "  bumpmap: maps/rosette-normals.png, 128 x 128"])
        done = run("info", self.file("square.ulk", SQUARE.format(maps="texture none.png\n")))
        self.assertEqual(done.returncode, 0)
        self.assertIn("  texture: none.png, no such file\n", done.stdout)
        (self.folder / "mirrored.tga").write_bytes(tga(4, 1, 24, 0x10, bytes(12)))
        done = run("info", self.file("square.ulk", SQUARE.format(maps="specular mirrored.tga\n")))
        self.assertIn("  specular: mirrored.tga, 4 x 1; it is stored from right to left, and shows mirrored\n",
                      done.stdout)

    def test_tells_the_environment(self):
        done = run("info", self.sky())
        self.assertEqual(done.stdout, "environment: sky.png\nmodels: 0\n")

    def test_a_file_that_does_not_load_is_a_failure(self):
        self.assertEqual(run("info", self.file("empty.ulk", "")).returncode, 1)

    def test_one_file_is_needed(self):
        self.assertEqual(run("info").returncode, 2)
        self.assertEqual(run("info", "a", "b").returncode, 2)


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


class Usage(ToolTestCase):
    def test_help_and_version_on_every_command(self):
        version = run("--version").stdout
        self.assertRegex(version, r"^ulktool \d+\.\d+\.\d+\n$")
        for command in COMMANDS:
            helped = run(command, "--help")
            self.assertEqual(helped.returncode, 0)
            self.assertTrue(helped.stdout.startswith(f"ulktool {command} "), helped.stdout)
            self.assertEqual(run(command, "--version").stdout, version)
            self.assertIn(f"ulktool {command} ", run("--help").stdout)

    def test_no_command_and_unknown_commands_are_wrong_usage(self):
        self.assertEqual(run().returncode, 2)
        done = run("paint")
        self.assertEqual(done.returncode, 2)
        self.assertIn("unknown command: paint", done.stderr)


if __name__ == "__main__":
    unittest.main()
