"""The program on a Wayland display: it starts, draws without an error, and ends clean."""

import os
import pathlib
import re
import signal
import subprocess
import unittest

from harness import PROGRAM_NAME, Program, main, wait_for

SOCKET = "ulkedit-test"


class Wayland(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.compositor = subprocess.Popen(
            ["weston", "--backend=headless-backend.so", f"--socket={SOCKET}", "--no-config", "--idle-time=0",
             "--width=1280", "--height=1024"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(self.stop_compositor)
        socket = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / SOCKET
        wait_for(socket.exists, "weston did not start")

    def stop_compositor(self):
        self.compositor.send_signal(signal.SIGTERM)
        self.compositor.wait(10)

    def own_words(self, program):
        """The error stream without the toolkit's complaints that this display has no keyboard."""
        return [line for line in program.stderr.splitlines()
                if line and not re.match(r"\(\S+:\d+\): (Gdk|Gtk|GLib-GObject)-(CRITICAL|WARNING)", line)]

    def activate(self, program, menu, label):
        next(item for item in program.menu(menu).children if item.name == label).activate()

    def test_start_and_exit(self):
        program = Program(environment={"GDK_BACKEND": "wayland", "WAYLAND_DISPLAY": SOCKET})
        self.addCleanup(program.end)
        bar = wait_for(lambda: program.tree() and program.menu_bar(), lambda: f"no menu bar: {program.stderr}")
        self.assertEqual([item.name for item in bar.children], ["File", "Edit", "Dialog", "View"])
        # Keys can not be given here. Nothing modal opens, so the tree can be asked to do what a user would.
        self.activate(program, "Edit", "Delete current Model")
        wait_for(lambda: program.tree().find("frame", PROGRAM_NAME), "the title was not set")
        self.activate(program, "File", "eXit")
        self.assertEqual(program.wait_exit(), 0)
        self.assertEqual(self.own_words(program), [])


if __name__ == "__main__":
    main()
