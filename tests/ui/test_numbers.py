"""Numbers that are typed, and the wheel over numbers, in dialogs and in the toolbar."""

from harness import commands as do
from harness import main, wait_for
from harness.models import net, quad
from harness.net_case import NetTestCase
from harness.table_dialog import TableDialog

WHEEL_UP, WHEEL_DOWN = 4, 5
NO_NUMBERS = ("abc", "", "-", "1,5", "2/")
GRID_STEP = "方眼間隔"
REFLECTION = "反射強度"
VERTICES = "頂点数"


class Typing(NetTestCase):
    def leave_with(self, dialog, name, text, shown):
        """Types over a number and leaves it with Tab."""
        node = dialog.fill(name, text)
        self.program.keys("Tab")
        wait_for(lambda: not node.is_focused and node.text == shown,
                 lambda: f"{text!r} became {node.text!r} and not {shown!r}")

    def test_in_tables(self):
        self.start_with(net(3, 2))
        dialog = TableDialog(self.program, "p", "制御点")
        name = "制御点 1,1 y"
        self.leave_with(dialog, name, "2/3", "0.6666667")
        for text in NO_NUMBERS:
            self.leave_with(dialog, name, text, "0.6666667")
        self.leave_with(dialog, name, "1e-3", "0.0010000")
        self.leave_with(dialog, name, "+5", "5.0000000")
        self.leave_with(dialog, "制御点 0,0 x", "(1+2)/4", "0.7500000")
        dialog.end("OK")
        self.assert_saved_with("position", {0: (0.75, -0.25, 0), 4: (0.25, 5, 0.125)})
        dialog = TableDialog(self.program, "w", "重み付け一覧")
        for text in NO_NUMBERS:
            self.leave_with(dialog, "重み 1,0", text, "1.1250000")
        dialog.end("OK")
        self.assert_saved_with("position", {0: (0.75, -0.25, 0), 4: (0.25, 5, 0.125)})

    def test_that_are_accepted_while_they_are_being_typed(self):
        self.start_with(net(3, 2))
        for text, changes in (("abc", {}), ("1/4", {4: 0.25})):
            dialog = TableDialog(self.program, "w", "重み付け一覧")
            dialog.fill("重み 1,1", text)
            self.program.keys("alt+o")
            self.program.wait_gone("重み付け一覧")
            self.assert_saved_with("weight", changes)

    def test_in_settings(self):
        program = self.program = self.start()
        self.open_model(program, quad())
        dialog = do.open_dialog(program, "i", "環境設定")
        self.leave_with(dialog, REFLECTION, "1/4", "0.25000")
        for text in NO_NUMBERS:
            self.leave_with(dialog, REFLECTION, text, "0.25000")
        dialog.cancel()
        dialog = do.open_dialog(program, "o", "ポリゴン設定")
        for text in NO_NUMBERS:
            self.leave_with(dialog, VERTICES, text, "4")
        self.leave_with(dialog, VERTICES, "2*3", "6")
        dialog.cancel()

    def test_in_the_toolbar(self):
        """Its numbers take no keyboard; who dictates gives them a text."""
        program = self.start()
        spin = program.control("spin button", GRID_STEP)
        for text, shown in (("1/4", "0.30"), ("abc", "0.35"), ("1,5", "0.40")):
            spin.put_text(text)
            program.spin(GRID_STEP, 1)
            wait_for(lambda: spin.text == shown, lambda: f"{text!r} became {spin.text!r} and not {shown!r}")


class Wheel(NetTestCase):
    def middle(self, dialog, name):
        x, y, width, height = dialog.rectangle(name)
        return x + width // 4, y + height // 2

    def test_it_scrolls_a_table_and_turns_the_number_with_the_keyboard(self):
        self.start_with(net(3, 40))
        dialog = TableDialog(self.program, "w", "重み付け一覧")
        dialog.wait_focused("重み 0,0")
        name = "重み 1,1"
        before = dialog.rectangle(name)
        self.program.click(*self.middle(dialog, name), WHEEL_UP)
        wait_for(lambda: dialog.rectangle(name)[1] > before[1], "the table was not scrolled")
        self.assertEqual(dialog.value(name), 2.125)
        self.assertEqual(dialog.focused(), "重み 0,0")
        self.program.click(*self.middle(dialog, "重み 1,8"), WHEEL_DOWN)
        wait_for(lambda: dialog.rectangle(name) == before, "the table was not scrolled back")
        self.assertEqual(dialog.value("重み 1,8"), 9.125)

        dialog.focus(name)
        self.program.click(*self.middle(dialog, name), WHEEL_UP)
        wait_for(lambda: abs(dialog.value(name) - 2.15) < 1e-6, "the number was not turned")
        self.assertEqual(dialog.rectangle(name), before)
        dialog.end("Cancel")

    def test_it_turns_no_setting_that_it_passes_over(self):
        program = self.program = self.start()
        self.open_model(program, quad())
        dialog = do.open_dialog(program, "o", "ポリゴン設定")
        node = dialog.control(VERTICES)
        x, y, width, height = node.rectangle
        program.click(x + width // 4, y + height // 2, WHEEL_UP)
        dialog.focus(VERTICES)
        program.click(x + width // 4, y + height // 2, WHEEL_UP)
        # One step, and not two.
        wait_for(lambda: node.text != "4", "the number was not turned")
        self.assertEqual(node.text, "5")
        dialog.cancel()

    def test_it_turns_the_numbers_of_the_toolbar(self):
        program = self.start()
        spin = program.control("spin button", GRID_STEP)
        x, y, width, height = spin.rectangle
        program.click(x + width // 4, y + height // 2, WHEEL_UP)
        wait_for(lambda: spin.text == "0.15", "the number was not turned")


class ViewArea(NetTestCase):
    def test_it_has_a_name(self):
        program = self.start()
        self.assertEqual(program.tree().find("drawing area").name, "編集画面")


if __name__ == "__main__":
    main()
