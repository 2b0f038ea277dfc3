"""The command line of ulktool: help, version, wrong words and the standard streams."""

import contextlib
import os
import pathlib
import pty
import re
import subprocess
import time
import unittest

from tool_test_case import PROGRAM, SAMPLES, SQUARE, ToolTestCase, run

COMMANDS = re.findall(r"^ulktool (\w+) ", run("--help").stdout, re.MULTILINE)


class Usage(ToolTestCase):
    def assert_wrong(self, words, message):
        """Wrong usage is one line that names what is wrong, and the way to the help."""
        done = run(*words)
        self.assertEqual((done.returncode, done.stdout), (2, ""), words)
        command = f" {words[0]}" if words and words[0] in COMMANDS else ""
        self.assertEqual(done.stderr, f"ulktool{command}: {message}; see ulktool{command} --help\n")

    def test_the_commands_are_known(self):
        for command in ("render", "check", "info", "convert"):
            self.assertIn(command, COMMANDS)

    def test_help_and_version_on_every_command(self):
        version = run("--version").stdout
        self.assertRegex(version, r"^ulktool \d+\.\d+\.\d+\n$")
        self.assertEqual(run("-h").stdout, run("--help").stdout)
        for command in COMMANDS:
            helped = run(command, "--help")
            self.assertEqual((helped.returncode, helped.stderr), (0, ""))
            self.assertTrue(helped.stdout.startswith(f"ulktool {command} "), helped.stdout)
            self.assertEqual(run(command, "-h").stdout, helped.stdout)
            self.assertEqual(run(command, "scene.ulk", "--version").stdout, version)
            # The long help begins with what the short one says, and ends with an example.
            summary = helped.stdout.split("\n\n")[0]
            self.assertIn(summary.rstrip() + "\n", run("--help").stdout)
            self.assertRegex(helped.stdout, f"\n    Example:\n        .*ulktool {command} .*\n$")
            self.assertLessEqual(max(map(len, helped.stdout.splitlines())), 100)

    def test_every_option_is_explained_and_in_the_short_help(self):
        for command in COMMANDS:
            text = run(command, "--help").stdout
            summary = text.split("\n\n")[0]
            options = re.findall(r"[ [](--?[a-z][a-z-]*)", summary[:summary.index("\n    ", 1)])
            for option in options:
                self.assertRegex(text, rf"\n    {option}( .*)?\n        \S", (command, option))

    def test_no_command_and_unknown_commands_are_wrong_usage(self):
        done = run()
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertEqual(done.stderr, run("--help").stdout)
        self.assert_wrong(["paint"], "paint: there is no such command")
        self.assert_wrong(["--size"], "--size: there is no such command")

    def test_a_message_names_the_wrong_word(self):
        self.assert_wrong(["check"], "FILE... is missing")
        self.assert_wrong(["convert", "a.ulk"], "OUT is missing")
        self.assert_wrong(["convert", "a.ulk", "b.ulk", "c.ulk", "d.ulk"], "c.ulk: too many files")
        self.assert_wrong(["convert", "a.ulk", "b.xyzw"],
                          "b.xyzw: nothing is written with the ending .xyzw; " + known_output_endings())
        self.assert_wrong(["render", "a.ulk", "b.png", "--colour"], "--colour: there is no such option")
        self.assert_wrong(["render", "a.ulk", "b.png", "-x"], "-x: there is no such option")
        self.assert_wrong(["render", "a.ulk", "b.png", "--sise=1"], "--sise: there is no such option")
        self.assert_wrong(["render", "a.ulk", "b.png", "--size"], "--size: WxH is missing behind it")
        self.assert_wrong(["render", "a.ulk", "b.png", "--transparent=1"],
                          "--transparent=1: this option takes no value")

    def test_a_value_may_follow_behind_an_equals_sign(self):
        first, second = self.folder / "a.png", self.folder / "b.png"
        self.assertEqual(run("render", SAMPLES / "cube.ulk", first, "--size=64x48").returncode, 0)
        self.assertEqual(run("render", SAMPLES / "cube.ulk", second, "--size", "64x48").returncode, 0)
        self.assertEqual(first.read_bytes(), second.read_bytes())

    def test_behind_two_dashes_all_words_are_files(self):
        self.file("--help", SQUARE.format(maps=""))
        self.assertEqual(run("check", "--", "--help", cwd=self.folder).stdout, "--help: loads\n")
        self.assert_wrong(["convert", "--", "--help", "b.ulk", "--version"], "--version: too many files")


def known_endings():
    return re.search(r"known are .*", run("info", "a.xyzw").stderr).group()


def known_output_endings():
    return re.search(r"known are [^;]*", run("convert", "a.ulk", "a.xyzw").stderr).group()


class StandardStreams(ToolTestCase):
    def test_a_dash_reads_the_standard_input(self):
        scene = SQUARE.format(maps="texture none.png\n")
        done = run("check", "-", input=scene)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout.splitlines()[-1], "-: loads, but not with all its pictures")
        told = run("info", self.file("square.ulk", scene)).stdout
        self.assertEqual(run("info", "-", input=scene).stdout, told)
        with open(self.folder / "square.ulk", encoding="utf-8") as file:
            self.assertEqual(run("info", "-", stdin=file).stdout, told)
        picture = self.folder / "a.png"
        self.assertEqual(run("render", "-", picture, input=scene).returncode, 0)
        self.assertTrue(picture.exists())

    def test_pictures_of_the_standard_input_lie_in_the_working_folder(self):
        scene = (SAMPLES / "relief.ulk").read_text()
        self.assertEqual(run("check", "-", input=scene, cwd=SAMPLES).stdout, "-: loads\n")
        self.assertEqual(run("check", "-", input=scene, cwd=self.folder).returncode, 1)

    def test_a_dash_writes_to_the_standard_output(self):
        out = self.folder / "out.ulk"
        self.assertEqual(run("convert", SAMPLES / "mixed.ulk", out).returncode, 0)
        done = run("convert", SAMPLES / "mixed.ulk", "-", text=False)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.assertEqual(done.stdout, out.read_bytes())
        # Redirected into a file it takes the place of what the file had, or is appended, as the shell says.
        into = self.folder / "into.ulk"
        into.write_text("# kept\n")
        with open(into, "ab") as file:
            self.assertEqual(run("convert", "-", "-", stdout=file, input=done.stdout, text=False,
                                 capture_output=False).returncode, 0)
        self.assertEqual(into.read_bytes(), b"# kept\n" + done.stdout)

    def test_an_empty_or_bad_standard_input_does_not_load(self):
        for text in ("", "nonsense\n"):
            done = run("convert", "-", self.folder / "out.ulk", input=text)
            self.assertEqual(done.returncode, 1)
            self.assertTrue(done.stderr.endswith("-: does not load\n"), done.stderr)
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_standard_streams_that_are_closed_are_not_taken_by_files(self):
        scene, out = self.file("a.ulk", SQUARE.format(maps="")), self.folder / "b.ulk"
        for stream in ("<", ">"):
            done = subprocess.run(["sh", "-c", f'"$0" convert "$1" "$2" {stream}&-', PROGRAM, scene, out], timeout=60,
                                  capture_output=True)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertTrue(out.read_bytes().startswith(b"begin polygon_surface,4,4"))
        done = subprocess.run(["sh", "-c", '"$0" info "$1" >&-', PROGRAM, scene], timeout=60, capture_output=True)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(run("info", "-", stdin=subprocess.DEVNULL).returncode, 1)
        done = subprocess.run(["sh", "-c", '"$0" info - <&-', PROGRAM], timeout=60, capture_output=True)
        self.assertEqual(done.returncode, 1)

    def test_the_places_of_closed_streams_are_taken(self):
        end, start = os.pipe()
        # Standard input that does not end yet keeps the program running.
        program = subprocess.Popen(["sh", "-c", 'exec "$0" info - >&- 2>&-', PROGRAM], stdin=end)
        os.close(end)
        places = pathlib.Path(f"/proc/{program.pid}/fd")
        deadline = time.monotonic() + 20
        while (places / "1").exists() + (places / "2").exists() < 2 and time.monotonic() < deadline:
            time.sleep(0.02)
        time.sleep(0.3)
        self.assertEqual([os.readlink(places / name) for name in ("1", "2")], ["/dev/null"] * 2)
        os.close(start)
        self.assertEqual(program.wait(timeout=60), 1)

    def test_output_that_can_not_be_written_is_a_failure(self):
        scene = self.file("a.ulk", SQUARE.format(maps=""))
        for words in (("check", scene), ("info", scene), ("--help",), ("--version",), ("check", "--help")):
            with open("/dev/full", "wb") as full:
                done = run(*words, stdout=full, stderr=subprocess.PIPE, capture_output=False)
            self.assertEqual((done.returncode, done.stderr),
                             (1, "ulktool: the standard output stream could not be written\n"), words)
        with open("/dev/full", "wb") as full:
            done = run("convert", scene, "-", stdout=full, stderr=subprocess.PIPE, capture_output=False)
        self.assertEqual((done.returncode, done.stderr), (1, "-: could not be written\n"))

    def long_work(self, stderr):
        """A program that reads a standard input which does not end before the other end of its pipe is closed."""
        end, start = os.pipe()
        program = subprocess.Popen([PROGRAM, "info", "-"], stdin=end, stdout=subprocess.DEVNULL, stderr=stderr)
        os.close(end)
        return program, start

    def test_a_long_work_shows_a_line_on_a_terminal(self):
        master, slave = pty.openpty()
        program, start = self.long_work(slave)
        os.close(slave)
        told = os.read(master, 1000)
        os.close(start)
        program.wait(timeout=60)
        # The end of a terminal that nobody has open any more is an error.
        with contextlib.suppress(OSError):
            while more := os.read(master, 1000):
                told += more
        os.close(master)
        self.assertRegex(told, rb"^(\rreading -: \d+ s\x1b\[K)+\r\x1b\[K-: does not load\r\n$")

    def test_a_long_work_shows_no_line_elsewhere(self):
        program, start = self.long_work(subprocess.PIPE)
        time.sleep(1.5)
        os.close(start)
        _, told = program.communicate(timeout=60)
        self.assertEqual(told, b"-: does not load\n")

    def test_a_reader_that_goes_away_ends_the_program_quietly(self):
        self.file("many.ulk", "nonsense\n" * 50000)
        self.file("big.ulk", SQUARE.format(maps="") * 2000)
        for words in (("check", "many.ulk"), ("info", "big.ulk"), ("convert", "big.ulk", "-")):
            end, start = os.pipe()
            os.close(end)
            done = run(*words, cwd=self.folder, stdout=start, stderr=subprocess.PIPE, capture_output=False)
            os.close(start)
            self.assertEqual((done.returncode, done.stderr), (1, ""), words)


if __name__ == "__main__":
    unittest.main()
