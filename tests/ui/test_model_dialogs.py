"""The dialogs of models: new models from nothing, sizes, file names, and what a change of them loses."""

from harness import PROGRAM_NAME, DialogTestCase, Screen, main, wait_for
from harness import commands as do
from harness.models import patch, quad
from harness.png import png_bytes
from test_open import NURBS_ITEMS, POLYGON_ITEMS

NAME, COLOUR_MAP, BUMP_MAP, SPECULAR_MAP = "保存ファイル名", "色テクスチャ", "バンプマップテクスチャ", "スペキュラテクスチャ"
VERTICES, ELEMENTS = "頂点数", "エレメント数"
COUNT_X, COUNT_Y, ORDER_X, ORDER_Y = "X制御点数", "Y制御点数", "X階数(次数+1)", "Y階数(次数+1)"
RESOLUTION_X, RESOLUTION_Y = "X解像度:", "Y解像度:"
BUTTONS = [("push button", "OK"), ("push button", "Cancel"), ("push button", "Apply")]
POLYGON_CONTROLS = [("text", NAME), ("spin button", VERTICES), ("spin button", ELEMENTS), ("text", COLOUR_MAP),
                    ("text", BUMP_MAP), ("text", SPECULAR_MAP), *BUTTONS]
NURBS_COUNTS = [COUNT_X, COUNT_Y, ORDER_X, ORDER_Y, RESOLUTION_X, RESOLUTION_Y]
NURBS_CONTROLS = [("text", NAME), *(("spin button", name) for name in NURBS_COUNTS), ("text", COLOUR_MAP),
                  ("text", BUMP_MAP), ("text", SPECULAR_MAP), *BUTTONS]
NO_MODEL_TITLE = PROGRAM_NAME
# Of a model without a name. The window's own begins with a blank, which is lost on the way here.
NO_NAME_TITLE = f"- {PROGRAM_NAME}"


class ModelDialogCase(DialogTestCase):
    def options(self, program, title):
        return do.open_dialog(program, "o", title)


class PolygonModel(ModelDialogCase):
    def test_the_dialog_shows_the_model(self):
        program = self.start()
        maps = "texture a b.png\r\nbumpmap c.png\r\nspecular d.png\r\n"
        self.open_model(program, quad().replace("color", maps + "color", 1))
        dialog = self.options(program, do.POLYGON_TITLE)
        self.assertEqual(dialog.controls(), POLYGON_CONTROLS)
        self.assertEqual(dialog.labels(), [NAME, VERTICES, ELEMENTS, COLOUR_MAP, BUMP_MAP, SPECULAR_MAP])
        self.assertEqual(dialog.fields(), {NAME: str(program.folder / "model.ulk"), VERTICES: "4", ELEMENTS: "4",
                                           COLOUR_MAP: "a b.png", BUMP_MAP: "c.png", SPECULAR_MAP: "d.png"})
        for name in (VERTICES, ELEMENTS):
            self.assertEqual(dialog.spin_values(name), (4, 0, 1048576, 1))
        self.assert_labelled(dialog)
        self.assert_tab_order(program, dialog)
        for name in (VERTICES, ELEMENTS):
            self.assert_count(program, dialog, name, 1048576)
        dialog.cancel()
        self.assertEqual(program.main_window.title, f"model.ulk - {PROGRAM_NAME}")

    def test_a_new_model_is_taken_back_by_cancel(self):
        program = self.start()
        dialog = do.add_polygon(program)
        # It is in the scene while its dialog is open.
        self.assertEqual(do.model_labels(program), ["v 0 Polygon "])
        self.assertEqual(program.menu_labels("Dialog"), POLYGON_ITEMS)
        self.assertEqual(dialog.fields(), {NAME: "", VERTICES: "0", ELEMENTS: "0", COLOUR_MAP: "", BUMP_MAP: "",
                                           SPECULAR_MAP: ""})
        dialog.fill(NAME, "never.ulk")
        dialog.cancel()
        self.assertEqual(do.model_labels(program), [])
        self.assertEqual(program.menu_labels("Dialog"), [])
        self.assertEqual(program.main_window.title, NO_MODEL_TITLE)
        do.leave(program)
        self.assert_ends_clean(program)

    def test_closing_the_window_takes_a_new_model_back(self):
        program = self.start()
        do.add_polygon(program).close()
        self.assertEqual(do.model_labels(program), [])

    def test_a_new_model_stays_after_ok(self):
        program = self.start()
        dialog = do.add_polygon(program)
        dialog.fill(NAME, "/nowhere/new.ulk")
        dialog.fill(VERTICES, "3")
        dialog.fill(ELEMENTS, "4")
        dialog.accept()
        program.wait_title(f"new.ulk - {PROGRAM_NAME}")
        # The list of models keeps the empty name until it is copied anew.
        self.assertEqual(do.model_labels(program), ["v 0 Polygon "])
        do.select_model(program, 0)
        wait_for(lambda: do.model_labels(program) == ["v 0 Polygon /nowhere/new.ulk"],
                 lambda: f"the menu shows {do.model_labels(program)}")
        self.assertEqual(do.save_text(program),
                         ["begin polygon_surface,3,4", "refractfactor 0", "mercatorsphere false",
                          *["texcoord 0,0", "position 0,0,0"] * 3, *["element -1"] * 4,
                          *["tangent 1,0,0", "binormal 0,1,0", "normal 0,0,1"] * 3, "end", ""])
        do.leave(program)
        self.assert_ends_clean(program)

    def test_a_new_model_stays_after_apply_and_cancel(self):
        program = self.start()
        dialog = do.add_polygon(program)
        dialog.fill(VERTICES, "5")
        dialog.fill(ELEMENTS, "2")
        dialog.apply()
        dialog.fill(VERTICES, "7")
        dialog.cancel()
        program.wait_title(NO_NAME_TITLE)
        self.assertEqual(do.model_labels(program), ["v 0 Polygon "])
        dialog = self.options(program, do.POLYGON_TITLE)
        self.assertEqual((dialog.fields()[VERTICES], dialog.fields()[ELEMENTS]), ("5", "2"))

    def test_counts_of_zero_make_an_empty_model(self):
        program = self.start()
        do.add_polygon(program).accept()
        program.wait_title(NO_NAME_TITLE)
        self.assertEqual(do.model_labels(program), ["v 0 Polygon "])
        # A mesh without vertices is no block of a file.
        self.assertEqual(do.save_text(program), [""])
        do.leave(program)
        self.assert_ends_clean(program)

    def test_a_cancelled_model_behind_others_leaves_its_row_in_the_place_of_the_last(self):
        program = self.start()
        self.open_model(program, quad())
        do.add_polygon(program).cancel()
        # The row that goes is that of the model which is current after the deletion.
        self.assertEqual(do.model_labels(program), ["v 0 Polygon "])
        self.assertEqual(program.menu_labels("Dialog"), POLYGON_ITEMS)
        self.assertEqual(program.main_window.title, f"model.ulk - {PROGRAM_NAME}")
        do.select_model(program, 0)
        wait_for(lambda: do.model_labels(program) == [f"v 0 Polygon {program.folder / 'model.ulk'}"],
                 lambda: f"the menu shows {do.model_labels(program)}")

    def test_a_mesh_grows_and_shrinks_and_keeps_what_it_has(self):
        program = self.start()
        self.open_model(program, quad())
        before = do.save_text(program)
        dialog = self.options(program, do.POLYGON_TITLE)
        dialog.fill(VERTICES, "5")
        dialog.fill(ELEMENTS, "6")
        dialog.accept()
        # Neither the title nor the menu is told.
        self.assertEqual(program.main_window.title, f"saved0.ulk - {PROGRAM_NAME}")
        frames = ["tangent 1,0,0", "binormal 0,1,0", "normal 0,0,1"]
        end = before.index("element 3") + 1
        self.assertEqual(do.save_text(program),
                         ["begin polygon_surface,5,6", *before[1:before.index("element 0")],
                          "color 128,128,128,255", "texcoord 0,0", "position 0,0,0",
                          *before[before.index("element 0"):end], "element -1", "element -1",
                          *frames * 5, "end", ""])

        dialog = self.options(program, do.POLYGON_TITLE)
        dialog.fill(VERTICES, "4")
        dialog.fill(ELEMENTS, "4")
        dialog.accept()
        self.assertEqual(do.save_text(program), before)
        do.leave(program)
        self.assert_ends_clean(program)

    def test_names_are_taken_with_apply(self):
        program = self.start()
        self.open_model(program, quad())
        dialog = self.options(program, do.POLYGON_TITLE)
        dialog.fill(NAME, "other.ulk")
        dialog.apply()
        dialog.fill(NAME, "third.ulk")
        dialog.cancel()
        # The title and the list of models follow when the model is chosen.
        self.assertEqual(program.main_window.title, f"model.ulk - {PROGRAM_NAME}")
        do.select_model(program, 0)
        program.wait_title(f"other.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), ["v 0 Polygon other.ulk"])

    def test_without_a_change_the_model_stays(self):
        program = self.start()
        self.open_model(program, quad())
        before = do.save_text(program)
        dialog = self.options(program, do.POLYGON_TITLE)
        dialog.apply()
        dialog.accept()
        self.assertEqual(do.save_text(program), before)

    def test_a_name_that_can_not_be_shown_stays_as_it_is(self):
        program = self.start()
        path = self.file(program, "model.ulk",
                         quad().encode().replace(b"color", b"specular a\xffb\xe3.png\r\ncolor", 1))
        do.open_scene(program, path, f"model.ulk - {PROGRAM_NAME}")
        dialog = self.options(program, do.POLYGON_TITLE)
        self.assertTrue(dialog.fields()[SPECULAR_MAP].startswith("a"))
        dialog.fill(VERTICES, "6")
        dialog.accept()
        lines = do.save_text(program)
        self.assertEqual(lines[0], "begin polygon_surface,6,4")
        self.assertIn("specular a\udcffb\udce3.png", lines)

    def test_a_map_that_is_named_shows(self):
        program = self.start()
        self.file(program, "green.png", png_bytes(1, [bytes((0, 255, 0))]))
        self.open_model(program, quad())
        # Near the magenta corner of the surface.
        place = self.view.at("perspective", 75, 75)
        wait_for(lambda: self.surplus_of_blue(place) > 50, lambda: f"{Screen().pixel(*place)} is not magenta")
        dialog = self.options(program, do.POLYGON_TITLE)
        dialog.fill(COLOUR_MAP, "green.png")
        dialog.apply()
        wait_for(lambda: self.surplus_of_blue(place) < 10, lambda: f"{Screen().pixel(*place)} is not seen through green")
        dialog.fill(COLOUR_MAP, "nowhere.png")
        dialog.accept()
        missing = program.folder / "nowhere.png"
        self.assertEqual(program.stderr, f"{missing}: file open error, No such file or directory\n"
                                         f"{program.folder / 'model.ulk'}: base filename.\n"
                                         f"{missing}: color autoloadformat failed.\n")
        self.assertIn("texture nowhere.png", do.save_text(program))

    def surplus_of_blue(self, place):
        _, green, blue = Screen().pixel(*place)
        return blue - green

    def test_half_width_and_full_width_letters_are_different_names(self):
        program = self.start()
        self.open_model(program, quad().replace("\r\n", "\r\ntexture ﾃｽﾄ.png\r\n", 1))
        dialog = self.options(program, do.POLYGON_TITLE)
        dialog.control(COLOUR_MAP).put_text("テスト.png")
        wait_for(lambda: dialog.fields()[COLOUR_MAP] == "テスト.png", "the name did not arrive")
        dialog.accept()
        self.assertIn("texture テスト.png", do.save_text(program))

    def test_a_japanese_name_comes_back(self):
        program = self.start()
        self.open_model(program, quad())
        dialog = self.options(program, do.POLYGON_TITLE)
        dialog.control(NAME).put_text("新しい.ulk")
        wait_for(lambda: dialog.fields()[NAME] == "新しい.ulk", "the name did not arrive")
        dialog.accept()
        do.select_model(program, 0)
        program.wait_title(f"新しい.ulk - {PROGRAM_NAME}")


class NurbsModel(ModelDialogCase):
    def test_the_dialog_shows_the_model(self):
        program = self.start()
        self.open_model(program, patch().replace("surface,2,2,2,2", "surface,2,2,2,2\r\ntexture a.png\r\nbumpmap b.png"))
        dialog = self.options(program, do.NURBS_TITLE)
        self.assertEqual(dialog.controls(), NURBS_CONTROLS)
        self.assertEqual(dialog.labels(), [name for role, name in NURBS_CONTROLS if role != "push button"])
        self.assertEqual(dialog.fields(), {NAME: str(program.folder / "model.ulk"), COUNT_X: "2", COUNT_Y: "2",
                                           ORDER_X: "2", ORDER_Y: "2", RESOLUTION_X: "9", RESOLUTION_Y: "9",
                                           COLOUR_MAP: "a.png", BUMP_MAP: "b.png", SPECULAR_MAP: ""})
        for name in NURBS_COUNTS:
            self.assertEqual(dialog.spin_values(name)[1:], (0, 1025, 1))
        self.assert_labelled(dialog)
        self.assert_tab_order(program, dialog)
        for name in NURBS_COUNTS:
            self.assert_count(program, dialog, name, 1025)

    def test_directions_are_not_mixed_up(self):
        program = self.start()
        dialog = do.add_nurbs(program)
        self.assertEqual(dialog.fields(), {NAME: "", COUNT_X: "0", COUNT_Y: "0", ORDER_X: "0", ORDER_Y: "0",
                                           RESOLUTION_X: "33", RESOLUTION_Y: "33", COLOUR_MAP: "", BUMP_MAP: "",
                                           SPECULAR_MAP: ""})
        for name, text in zip(NURBS_COUNTS, ("5", "3", "4", "2", "7", "4")):
            dialog.fill(name, text)
        dialog.fill(NAME, "new.ulk")
        dialog.accept()
        program.wait_title(f"new.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), ["v 0 Nurbs "])
        self.assertEqual(program.menu_labels("Dialog"), NURBS_ITEMS)
        lines = do.save_text(program)
        self.assertEqual(lines[:2], ["begin nurbs_surface,5,4,3,2", "resolution 7,4"])
        # A flat sheet, of which nothing has to be said.
        counted = ("knot1 0", "knot1 0.5", "knot1 1", "knot2 0", "knot2 1", "weight 1", "position -0.5,-0.5,0",
                   "position 0,0,0", "position 0.25,0.5,0")
        self.assertEqual({line: lines.count(line) for line in counted},
                         {"knot1 0": 12, "knot1 0.5": 3, "knot1 1": 12, "knot2 0": 10, "knot2 1": 10, "weight 1": 15,
                          "position -0.5,-0.5,0": 1, "position 0,0,0": 1, "position 0.25,0.5,0": 1})
        self.assertEqual(program.stderr, "")

        dialog = self.options(program, do.NURBS_TITLE)
        self.assertEqual([dialog.fields()[name] for name in NURBS_COUNTS], ["5", "3", "4", "2", "7", "4"])

    def test_a_new_model_is_taken_back_by_cancel(self):
        program = self.start()
        dialog = do.add_nurbs(program)
        self.assertEqual(do.model_labels(program), ["v 0 Nurbs "])
        dialog.cancel()
        self.assertEqual(do.model_labels(program), [])
        self.assertEqual(program.main_window.title, NO_MODEL_TITLE)
        # The menus were made while the model was still there; its dialogs find that it is gone.
        self.assertEqual(program.menu_labels("Dialog"), NURBS_ITEMS)
        program.choose("Dialog", "d", "o")
        program.wait_main_active()
        do.open_dialog(program, "i", "環境設定").cancel()
        self.assertIsNone(program.window(do.NURBS_TITLE))
        do.leave(program)
        self.assert_ends_clean(program)

    def test_a_cancelled_model_behind_others_leaves_their_rows(self):
        program = self.start()
        self.open_model(program, quad())
        do.add_nurbs(program).cancel()
        # The rows were made while the cancelled model was current: none is marked.
        self.assertEqual(do.model_labels(program), [f"  0 Polygon {program.folder / 'model.ulk'}"])
        self.assertEqual(program.menu_labels("Dialog"), NURBS_ITEMS)
        # The current model is the polygon one, whose settings open.
        self.options(program, do.POLYGON_TITLE).cancel()
        do.select_model(program, 0)
        wait_for(lambda: program.menu_labels("Dialog") == POLYGON_ITEMS, "the menu is still that of NURBS models")

    def test_a_new_model_stays_after_apply_and_cancel(self):
        program = self.start()
        dialog = do.add_nurbs(program)
        for name in NURBS_COUNTS:
            dialog.fill(name, "2")
        dialog.apply()
        dialog.cancel()
        program.wait_title(NO_NAME_TITLE)
        self.assertEqual(do.model_labels(program), ["v 0 Nurbs "])
        self.assertEqual(do.save_text(program)[0], "begin nurbs_surface,2,2,2,2")

    def test_without_a_change_the_surface_stays(self):
        program = self.start()
        self.open_model(program, patch())
        before = do.save_text(program)
        dialog = self.options(program, do.NURBS_TITLE)
        dialog.apply()
        dialog.accept()
        self.assertEqual(do.save_text(program), before)
        self.assertEqual(program.stderr, "")

    def test_a_new_name_alone_flattens_the_surface(self):
        """Users know that any change makes new tables."""
        program = self.start()
        self.open_model(program, patch())
        dialog = self.options(program, do.NURBS_TITLE)
        dialog.fill(NAME, "renamed.ulk")
        dialog.accept()
        lines = do.save_text(program)
        self.assertEqual(lines[:2], ["begin nurbs_surface,2,2,2,2", "resolution 9,9"])
        self.assertEqual([line for line in lines if line.startswith("position")],
                         ["position -0.5,-0.5,0", "position 0.5,-0.5,0", "position -0.5,0.5,0", "position 0.5,0.5,0"])
        wait_for(lambda: self.view.coloured("perspective") == 0, "the old surface still shows")

    def test_a_resolution_beyond_the_button_stays_while_it_is_not_touched(self):
        program = self.start()
        self.open_model(program, patch().replace("resolution 9,9", "resolution 2000,2"))
        dialog = self.options(program, do.NURBS_TITLE)
        self.assertEqual(dialog.fields()[RESOLUTION_X], "1025")
        dialog.fill(COUNT_X, "3")
        dialog.apply()
        dialog.fill(RESOLUTION_Y, "1")
        dialog.accept()
        self.assertEqual(do.save_text(program)[:2], ["begin nurbs_surface,3,2,2,2", "resolution 2000,1"])

        dialog = self.options(program, do.NURBS_TITLE)
        dialog.fill(RESOLUTION_X, "3")
        dialog.apply()
        dialog.fill(RESOLUTION_X, "1025")
        dialog.accept()
        self.assertEqual(do.save_text(program)[1], "resolution 1025,1")

    def test_a_resolution_that_is_typed_as_it_shows_is_touched(self):
        program = self.start()
        self.open_model(program, patch().replace("resolution 9,9", "resolution 2000,2"))
        dialog = self.options(program, do.NURBS_TITLE)
        dialog.fill(RESOLUTION_X, "1025")
        dialog.accept()
        self.assertEqual(do.save_text(program)[1], "resolution 1025,2")

    def test_strange_sizes_are_survived(self):
        program = self.start()
        dialog = do.add_nurbs(program)
        for values in (("0", "0", "0", "0", "0", "0"), ("1", "1", "1", "1", "1", "1"), ("0", "3", "2", "2", "3", "3"),
                       ("2", "2", "9", "7", "2", "3"), ("3", "3", "0", "0", "3", "0")):
            for name, text in zip(NURBS_COUNTS, values):
                if dialog.fields()[name] != text:
                    dialog.fill(name, text)
            dialog.apply()
        dialog.accept()
        program.wait_title(NO_NAME_TITLE)
        # A surface without an order is no block of a file.
        self.assertEqual(do.save_text(program), [""])
        do.leave(program)
        self.assertEqual(program.wait_exit(), 0)


if __name__ == "__main__":
    main()
