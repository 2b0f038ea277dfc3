"""The dialog of the scene's environment."""

from harness import PROGRAM_NAME, DialogTestCase, Screen, main, wait_for
from harness import commands as do
from harness.models import quad
from harness.png import png_bytes

TITLE = "環境設定"
CUBE_MAP, REFLECTION, REFRACTION, INDEX = "キューブマップテクスチャファイル名", "反射強度", "屈折強度", "屈折率"
CONTROLS = [("text", CUBE_MAP), ("spin button", REFLECTION), ("spin button", REFRACTION), ("spin button", INDEX),
            ("push button", "OK"), ("push button", "Cancel"), ("push button", "Apply")]
FIRST_FIELDS = {CUBE_MAP: "", REFLECTION: "1.00000", REFRACTION: "0.00000", INDEX: "1.00000"}
ENVIRONMENT = ("begin environment\r\ncubetex sky.png\r\nreflectalpha 0.25\r\nrefractalpha 1/3\r\nrefractfactor 1.5\r\n"
               "end\r\n")
FILE_FIELDS = {CUBE_MAP: "sky.png", REFLECTION: "0.25000", REFRACTION: "0.33333", INDEX: "1.50000"}


class Environment(DialogTestCase):
    def start_with(self, model):
        program = self.start()
        self.make_sky(program, "sky")
        self.make_sky(program, "grey", bytes([90] * 12))
        self.open_model(program, model)
        return program

    def make_sky(self, program, name, row=bytes(range(6))):
        """The six faces of a cube map, of rows as these."""
        for face in ("posx", "negx", "posy", "negy", "posz", "negz"):
            self.file(program, f"{name}_{face}.png", png_bytes(len(row) // 3, [row] * (len(row) // 3)))

    def environment(self, program):
        return do.open_dialog(program, "i", TITLE)

    def fields_now(self, program):
        """What the dialog shows when it is opened anew."""
        dialog = self.environment(program)
        fields = dialog.fields()
        dialog.cancel()
        return fields

    def test_controls_and_first_values(self):
        program = self.start_with(quad())
        dialog = self.environment(program)
        self.assertEqual(dialog.controls(), CONTROLS)
        self.assertEqual(dialog.labels(), [CUBE_MAP, REFLECTION, REFRACTION, INDEX])
        self.assertEqual(dialog.fields(), FIRST_FIELDS)
        self.assertEqual(dialog.spin_values(REFLECTION), (1, 0, 1, 0.025))
        self.assertEqual(dialog.spin_values(REFRACTION), (0, 0, 1, 0.025))
        self.assertEqual(dialog.spin_values(INDEX), (1, 0, 100, 0.125))
        self.assert_labelled(dialog)
        self.assert_tab_order(program, dialog)
        for name in (REFLECTION, REFRACTION):
            self.assert_steps(program, dialog, name, "0.5", ("Page_Up", "Up"), "0.62500")
            self.assert_steps(program, dialog, name, "0.01", ("Down", "Down"), "0.00000")
            self.assert_steps(program, dialog, name, "1", ("Up",), "1.00000")
        self.assert_steps(program, dialog, INDEX, "5", ("Page_Up", "Up"), "6.12500")
        self.assert_steps(program, dialog, INDEX, "0.1", ("Down", "Down"), "0.00000")
        self.assert_steps(program, dialog, INDEX, "100", ("Up",), "100.00000")
        dialog.cancel()
        self.assertEqual(self.fields_now(program), FIRST_FIELDS)
        do.leave(program)
        self.assert_ends_clean(program)

    def test_a_file_sets_what_it_shows(self):
        program = self.start_with(ENVIRONMENT + quad())
        self.assertEqual(self.fields_now(program), FILE_FIELDS)
        # A file without an environment leaves it alone.
        do.open_scene(program, self.sample(program, "cube.ulk"), f"cube.ulk - {PROGRAM_NAME}")
        self.assertEqual(self.fields_now(program), FILE_FIELDS)

    def test_ok_stores_all_values(self):
        program = self.start_with(quad())
        dialog = self.environment(program)
        for name, text in ((CUBE_MAP, "sky.png"), (REFLECTION, "0.12345"), (REFRACTION, "0.5"), (INDEX, "99.875")):
            dialog.fill(name, text)
        dialog.accept()
        self.assertEqual(self.fields_now(program), {CUBE_MAP: "sky.png", REFLECTION: "0.12345", REFRACTION: "0.50000",
                                                    INDEX: "99.87500"})
        self.assertEqual(program.main_window.title, f"model.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), [f"v 0 Polygon {program.folder / 'model.ulk'}"])
        # The environment is not saved.
        self.assertEqual([line for line in do.save_text(program) if "environment" in line or "cubetex" in line], [])
        do.leave(program)
        self.assert_ends_clean(program)

    def test_cancel_keeps_what_apply_has_stored(self):
        program = self.start_with(quad())
        dialog = self.environment(program)
        dialog.fill(REFLECTION, "0.75")
        dialog.apply()
        dialog.fill(REFLECTION, "0.25")
        dialog.cancel()
        self.assertEqual(self.fields_now(program)[REFLECTION], "0.75000")
        dialog = self.environment(program)
        dialog.fill(INDEX, "2")
        dialog.close()
        self.assertEqual(self.fields_now(program)[INDEX], "1.00000")

    def test_numbers_beyond_the_range_are_moved_to_its_end(self):
        program = self.start_with(quad())
        dialog = self.environment(program)
        for name, text in ((REFLECTION, "7"), (REFRACTION, "-1"), (INDEX, "1000")):
            dialog.fill(name, text)
        dialog.accept()
        self.assertEqual(self.fields_now(program), {CUBE_MAP: "", REFLECTION: "1.00000", REFRACTION: "0.00000",
                                                    INDEX: "100.00000"})

    def test_the_factors_stay_when_the_map_can_not_be_read(self):
        program = self.start_with(quad())
        dialog = self.environment(program)
        dialog.fill(CUBE_MAP, "nowhere.png")
        dialog.fill(REFLECTION, "0.5")
        dialog.apply()
        dialog.apply()
        dialog.accept()
        self.assertEqual(self.fields_now(program), FIRST_FIELDS | {CUBE_MAP: "nowhere.png", REFLECTION: "0.50000"})
        # It is looked for beside the file of the current model, and once only.
        missing = program.folder / "nowhere_posx.png"
        self.assertEqual(program.stderr, f"{missing}: file open error, No such file or directory\n"
                                         f"{program.folder / 'model.ulk'}: base filename.\n"
                                         f"{missing}: autoloadformat failed.\n")
        do.leave(program)
        self.assertEqual(program.wait_exit(), 0)

    def test_without_a_model_the_map_lies_in_the_working_directory(self):
        program = self.start()
        self.make_sky(program, "sky")
        # The menu of a model that was taken back stays.
        do.add_nurbs(program).cancel()
        dialog = self.environment(program)
        dialog.fill(CUBE_MAP, "sky.png")
        dialog.accept()
        self.assertEqual(self.fields_now(program)[CUBE_MAP], "sky.png")
        do.leave(program)
        self.assert_ends_clean(program)

    def test_apply_shows_the_map_on_the_models(self):
        program = self.start_with(quad())
        # Near the magenta corner of the surface, which lacks green.
        place = self.view.at("perspective", 75, 75)
        dialog = self.environment(program)
        wait_for(lambda: self.green_at(place) < 100, lambda: f"{Screen().pixel(*place)} is not magenta")
        before = self.green_at(place)
        dialog.fill(CUBE_MAP, "grey.png")
        dialog.apply()
        wait_for(lambda: self.green_at(place) > before + 50, lambda: f"{Screen().pixel(*place)} mirrors nothing")
        dialog.fill(REFLECTION, "0")
        dialog.apply()
        wait_for(lambda: self.green_at(place) == before, lambda: f"{Screen().pixel(*place)} still mirrors the map")
        dialog.cancel()

    def green_at(self, place):
        return Screen().pixel(*place)[1]

    def test_a_name_that_can_not_be_shown_stays_as_it_is(self):
        program = self.start()
        for face in ("posx", "negx", "posy", "negy", "posz", "negz"):
            path = bytes(program.folder) + b"/a\xff_" + face.encode() + b".png"
            with open(path, "wb") as file:
                file.write(png_bytes(1, [bytes(3)]))
        path = self.file(program, "model.ulk", (ENVIRONMENT + quad()).encode().replace(b"sky.png", b"a\xff.png"))
        do.open_scene(program, path, f"model.ulk - {PROGRAM_NAME}")
        first = self.fields_now(program)
        self.assertTrue(first[CUBE_MAP].startswith("a"))
        self.environment(program).accept()
        self.assertEqual(self.fields_now(program), first)
        self.assertEqual(program.stderr, "")


if __name__ == "__main__":
    main()
