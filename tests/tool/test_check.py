"""ulktool check."""

import json
import os
import pathlib
import shutil
import struct
import subprocess
import unittest

from pictures import png_chunk, png, png_of_one_pixel, bmp, tga
from tool_test_case import PROGRAM, SAMPLES, SQUARE, ToolTestCase, run


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
            "the block that begins in line 1 has no end", told, "line 21: normal: an empty value is read as 0",
            "does not load"], 1))

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
        facet = b"facet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet\n"
        lines, status = self.lines_of("a.stl", b"solid part\n" + facet * 9 + b"endsolid part\n")
        if "this build can not read text .stl files" in lines:
            self.assertEqual((lines[1:], status), ([
                "this looks like a text STL file; only binary ones are read", "does not load"], 1))
        else:
            self.assertEqual((lines, status), ([
                "this looks like a text STL file; the modeller itself reads only binary ones", "loads"], 0))

    def test_a_line_of_any_length_is_told_as_a_whole(self):
        line = b"\0" * 3000000
        path = self.folder / "a.ulk"
        path.write_bytes(b"nonsense\n" + line + b"\nmore\n")
        done = subprocess.run([PROGRAM, "check", path], capture_output=True, timeout=60)
        name = str(path).encode()
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout, b"".join(name + b": " + text + b"\n" for text in (
            b"unknown line: nonsense", b"unknown line: " + line, b"unknown line: more", b"does not load")))

    def test_values_that_are_read_otherwise_than_written_are_told(self):
        scene = SQUARE.format(maps="").encode().replace(b"position 1,1,", b"position 1,1+-2,").replace(b"t 3", b"t 3.5")
        self.assertEqual(self.lines_of("a.ulk", scene), ([
            "line 5: position: 1+-2 is read as 3, not as -1", "line 9: element: 3.5 is read as 3", "loads"], 0))

    def test_an_stl_file_without_triangles_is_told(self):
        self.assertEqual(self.lines_of("a.stl", b""), (["the file is empty", "loads"], 0))
        self.assertEqual(self.lines_of("a.stl", bytes(84)), (["the file has no triangles", "loads"], 0))

    def test_an_ending_that_no_format_has_is_refused(self):
        told, status = self.lines_of("a.xyzw", SQUARE.format(maps="").encode())
        self.assertEqual(status, 1)
        self.assertRegex(told[0], r"^no format has the ending \.xyzw; known are \.ulk")
        self.assertEqual(told[1:], ["does not load"])
        for name in ("a.ulk~", "a.ULK", "a", ".a", "b.c/a"):
            (self.folder / "b.c").mkdir(exist_ok=True)
            self.assertEqual(self.lines_of(name, SQUARE.format(maps="").encode()), (["loads"], 0))

    def test_a_report_in_json_says_the_same(self):
        good = self.file("good.ulk", SQUARE.format(maps=""))
        lost = self.file("lost.ulk", SQUARE.format(maps="texture none.png\n"))
        bad = self.file('b "\\\x01\u00e9.ulk', "nonsense \u3042\n")
        done = run("check", "--json", good, lost, bad)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(json.loads(done.stdout), {"files": [
            {"name": str(good), "loads": True, "shows_all_pictures": True, "messages": []},
            {"name": str(lost), "loads": True, "shows_all_pictures": False,
             "messages": ["model 0: texture none.png: no such file"]},
            {"name": str(bad), "loads": False, "shows_all_pictures": True, "messages": [
                "unknown line: nonsense \u3042"]}]})
        self.assertEqual(run("check", "--json", good).returncode, 0)

    def test_json_keeps_bytes_that_are_no_characters(self):
        path = os.fsencode(self.folder / "a") + b"\xff\xc3\xed\xa0\x80.ulk"
        pathlib.Path(os.fsdecode(path)).write_text(SQUARE.format(maps=""))
        done = subprocess.run([PROGRAM, "check", "--json", path], capture_output=True, timeout=60)
        self.assertEqual(os.fsencode(json.loads(done.stdout.decode())["files"][0]["name"]), path)

    def test_no_file_is_wrong_usage(self):
        self.assertEqual(run("check").returncode, 2)


if __name__ == "__main__":
    unittest.main()
