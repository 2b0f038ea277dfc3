"""The commands of the menus as a user gives them, with the letters that the labels underline."""

from .dialog import Dialog

OPEN_TITLE = "開く"
SAVE_TITLE = "保存"
OVERWRITE_TITLE = "上書き確認"
OPEN_ERROR_TITLE = "ファイルオープンエラー"
SAVE_ERROR_TITLE = "ファイル保存エラー"
POLYGON_TITLE = "ポリゴン設定"
NURBS_TITLE = "NURBS設定"


def give_open(program, path):
    """_Open, up to the file; what follows is the caller's to see."""
    program.choose("File", "f", "o")
    program.choose_file(OPEN_TITLE, path)


def open_scene(program, path, title):
    """_Open of a file that loads."""
    give_open(program, path)
    program.wait_gone(OPEN_TITLE)
    program.wait_title(title)
    program.wait_main_active()


def give_save_as(program, path):
    program.choose("File", "f", "a")
    program.choose_file(SAVE_TITLE, path)


def give_save_current_as(program, path):
    program.choose("File", "f", "c")
    program.choose_file(SAVE_TITLE, path)


def save_text(program):
    """The lines of what Save_CurrentModelAs writes into a new file, which is named in the title then."""
    path = program.folder / f"saved{len(list(program.folder.glob('saved*')))}.ulk"
    give_save_current_as(program, path)
    program.wait_title(f"{path.name} - {program.name}")
    program.wait_main_active()
    return path.read_bytes().decode(errors="surrogateescape").split("\r\n")


def delete_current(program):
    program.choose("Edit", "e", "d")


def polygonize(program):
    program.choose("Edit", "e", "z")


def cut(program):
    program.choose("Edit", "e", "c")


def open_dialog(program, letter, title):
    """An editing dialog of the current model, by its letter in the menu."""
    program.choose("Dialog", "d", letter)
    return Dialog(program, title)


def add_polygon(program):
    program.choose("Edit", "e", "p")
    return Dialog(program, POLYGON_TITLE)


def add_nurbs(program):
    program.choose("Edit", "e", "n")
    return Dialog(program, NURBS_TITLE)


def select_model(program, index):
    program.choose("Edit", "e", "s", str(index))


def leave(program):
    program.choose("File", "f", "x")


def model_labels(program):
    return program.menu_labels("Edit", "Select Model...")


def model_items(program):
    return program.menu_items("Edit", "Select Model...")
