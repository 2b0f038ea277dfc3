"""Runs the tests that are inside the process of their window, and looks for complaints of the toolkit."""

import os
import subprocess
import unittest

from harness import main
from harness.program import xdotool


class Window(unittest.TestCase):
    def test_its_own_tests_pass_without_a_complaint(self):
        # Away from the windows, which are laid out anew when the pointer comes over them.
        xdotool("mousemove", 1279, 0)
        done = subprocess.run([os.environ["ULK_UI_WINDOW_TESTS"]], capture_output=True, text=True, timeout=300)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        # The window can end the process, and then does so with a status of 0.
        self.assertIn("[  PASSED  ]", done.stdout)
        self.assertEqual(done.stderr, "")


if __name__ == "__main__":
    main()
