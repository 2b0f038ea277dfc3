"""The commands of the menus as a user gives them, with the letters that the labels underline."""

OPEN_TITLE = "開く"
SAVE_TITLE = "保存"
OVERWRITE_TITLE = "上書き確認"
OPEN_ERROR_TITLE = "ファイルオープンエラー"
SAVE_ERROR_TITLE = "ファイル保存エラー"


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


def delete_current(program):
    program.choose("Edit", "e", "d")


def polygonize(program):
    program.choose("Edit", "e", "z")


def cut(program):
    program.choose("Edit", "e", "c")


def select_model(program, index):
    program.choose("Edit", "e", "s", str(index))


def leave(program):
    program.choose("File", "f", "x")


def model_labels(program):
    return program.menu_labels("Edit", "Select Model...")
