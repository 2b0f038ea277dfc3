"""The whole road of a model: a surface from nothing, given points, weights and knots, made into a mesh, saved as STL,
loaded again and cut."""

import struct

from harness import PROGRAM_NAME, UiTestCase, main
from harness import commands as do
from harness.table_dialog import TableDialog

SIZES = {"X制御点数": 2, "Y制御点数": 2, "X階数(次数+1)": 2, "Y階数(次数+1)": 2, "X解像度:": 9, "Y解像度:": 9}
QUADS = 8 * 8
CUT_TITLE = "ポリゴン編集"

# A tetrahedron that stands through the middle of the surface below.
CUTTER = "\r\n".join([
    "begin polygon_surface,4,16",
    "position -0.21,-0.17,-0.4", "position 0.23,-0.12,-0.45", "position 0.02,0.26,-0.42", "position 0.03,0.01,0.5",
    *(f"element {index}" for index in (0, 2, 1, -1, 0, 1, 3, -1, 1, 2, 3, -1, 2, 0, 3, -1)),
    *["tangent 1,0,0", "binormal 0,1,0", "normal 0,0,1"] * 4, "end", ""])


def mesh_size(path):
    """(vertices, elements) of the last model in a scene file."""
    openings = [line for line in path.read_text().splitlines() if line.startswith("begin polygon_surface,")]
    return tuple(int(field) for field in openings[-1].split(",")[1:])


class WholeRoad(UiTestCase):
    def test_from_nothing_to_a_cut_mesh(self):
        self.program = self.start()
        self.make_surface()
        self.fill_tables()
        stl = self.program.folder / "surface.stl"
        do.polygonize(self.program)
        do.give_save_current_as(self.program, stl)
        self.program.wait_title(f"surface.stl - {PROGRAM_NAME}")
        self.program.wait_main_active()
        self.assert_is_the_surface(stl.read_bytes())

        do.delete_current(self.program)
        self.open_model(self.program, CUTTER)
        do.open_scene(self.program, stl, f"surface.stl - {PROGRAM_NAME}")
        before = mesh_size(self.save("before.ulk"))
        self.assertEqual(before, (3 * 2 * QUADS, 4 * 2 * QUADS))
        do.select_model(self.program, 0)
        do.cut(self.program)
        self.program.message(CUT_TITLE)
        self.program.keys("Return")
        self.program.wait_gone(CUT_TITLE)
        after = mesh_size(self.save("after.ulk"))
        self.assertGreater(after[0], before[0])
        do.leave(self.program)
        self.assertEqual(self.program.wait_exit(), 0)

    def make_surface(self):
        dialog = do.add_nurbs(self.program)
        for name, value in SIZES.items():
            if dialog.fields()[name] != str(value):
                dialog.fill(name, str(value))
        dialog.accept()

    def fill_tables(self):
        points = TableDialog(self.program, "p", "制御点")
        for row, y in enumerate((-0.5, 0.5)):
            for column, x in enumerate((-0.5, 0.5)):
                points.enter(f"制御点 {column},{row} x", str(x))
                points.enter(f"制御点 {column},{row} y", str(y))
        points.end("OK")
        for letter, title, kind, row_values in (("w", "重み付け一覧", "重み", (1, 1)),
                                                ("h", "横ノット列一覧", "横ノット", (0, 0, 1, 1)),
                                                ("v", "縦ノット列一覧", "縦ノット", (0, 0, 1, 1))):
            table = TableDialog(self.program, letter, title)
            for row in (0, 1):
                for element, value in enumerate(row_values):
                    if value:
                        # By its column and row in the table, in which the vectors of columns stand upright.
                        name = f"{kind} {row},{element}" if kind == "縦ノット" else f"{kind} {element},{row}"
                        table.enter(name, str(value))
            table.end("OK")

    def assert_is_the_surface(self, stl):
        """A flat square of one unit, all of it and nothing else."""
        self.assertEqual(struct.unpack_from("<I", stl, 80)[0], 2 * QUADS)
        area = 0
        for index in range(2 * QUADS):
            corners = struct.unpack_from("<9f", stl, 84 + 50 * index + 12)
            (ax, ay, az), (bx, by, bz), (cx, cy, cz) = corners[0:3], corners[3:6], corners[6:9]
            self.assertEqual((az, bz, cz), (0, 0, 0))
            area += abs((bx - ax) * (cy - ay) - (by - ay) * (cx - ax)) / 2
        self.assertAlmostEqual(area, 1, 5)

    def save(self, name):
        path = self.program.folder / name
        do.give_save_as(self.program, path)
        self.program.wait_title(f"{name} - {PROGRAM_NAME}")
        self.program.wait_main_active()
        return path


if __name__ == "__main__":
    main()
