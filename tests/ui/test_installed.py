"""The program as it is when it was installed."""

import os
import pathlib
import subprocess
import tempfile

from harness import UiTestCase, main, wait_for
from harness import commands as do


class Installed(UiTestCase):
    def test_it_runs_below_any_prefix_with_its_icon(self):
        prefix = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory())) / "some where"
        subprocess.run(["cmake", "--install", os.environ["ULK_BUILD"], "--prefix", prefix], check=True,
                       stdout=subprocess.DEVNULL)
        program = self.start(path=prefix / "bin/ulkedit",
                             environment={"XDG_DATA_DIRS": f"{prefix / 'share'}:/usr/local/share:/usr/share"})
        do.open_scene(program, prefix / "share/doc/ulkedit/samples/relief.ulk", "relief.ulk - ulkedit")
        wait_for(lambda: self.view.coloured("perspective") > 2000, "the sample does not show")
        window = program.main_window.identifier
        shown = subprocess.run(["xprop", "-id", window, "_NET_WM_ICON", "WM_CLASS"], text=True, capture_output=True,
                               check=True).stdout
        self.assertIn("Icon (", shown)
        # As the entry has it, so that the desktop knows the window as this program's.
        self.assertIn('"ulkedit"', shown)
        do.leave(program)
        self.assert_ends_clean(program)


if __name__ == "__main__":
    main()
