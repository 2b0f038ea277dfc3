#!/usr/bin/env python3
"""./fuzz: its arguments, what it builds and starts, and its status. The build and the target are stand-ins."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
TARGETS = sorted(source.stem for source in (ROOT / "tests/fuzz").glob("*.cpp"))

# Notes its arguments; --build makes the target, --preset its environment.
CMAKE = r"""#!/bin/bash
echo "cmake $*" >>calls
mkdir -p build/fuzz/bin build/fuzz/tests/fuzz
echo "export ULK_FROM_ENVIRONMENT='two words'" >build/fuzz/tests/fuzz/environment.sh
cp target build/fuzz/bin/fuzz_stl
"""

# Notes its arguments, and leaves what the test put into the file `finding` beside it.
TARGET = r"""#!/bin/bash
echo "target $*" >>calls
echo "environment $ULK_FROM_ENVIRONMENT" >>calls
for argument in "$@"; do
    [[ $argument == -artifact_prefix=* ]] && prefix=${argument#*=}
done
echo input >build/fuzzing/stl/found/new
[ -e finding ] || exit 0
cp finding "${prefix}crash-1"
exit 77
"""


class Script(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = pathlib.Path(folder.name)
        (self.tree / "scripts").mkdir()
        for name in ("fuzz", "scripts/packages.sh"):
            shutil.copy(ROOT / name, self.tree / name)
        (self.tree / "packages.txt").write_text("[build]\n")
        (self.tree / "tests/fuzz/corpus/stl").mkdir(parents=True)
        for name in ("stl", "scene"):
            (self.tree / f"tests/fuzz/{name}.cpp").touch()
        (self.tree / "bin").mkdir()
        for name, code in (("bin/cmake", CMAKE), ("target", TARGET)):
            (self.tree / name).write_text(code)
            (self.tree / name).chmod(0o755)

    def run_script(self, *arguments):
        return subprocess.run([self.tree / "fuzz", *arguments], capture_output=True, text=True, check=False,
                              env={"PATH": f"{self.tree / 'bin'}:/usr/bin:/bin"}, cwd="/")

    def calls(self):
        file = self.tree / "calls"
        return file.read_text().splitlines() if file.exists() else []

    def expect_usage(self, message, *arguments):
        result = self.run_script(*arguments)
        self.assertEqual(result.returncode, 2)
        self.assertEqual(result.stderr.splitlines(),
                         [message, "Usage: ./fuzz TARGET [SECONDS]", "The targets: scene stl"])
        self.assertEqual(result.stdout, "")
        self.assertEqual(self.calls(), [], "nothing may be built for wrong arguments")

    def test_wrong_arguments_list_the_targets(self):
        self.expect_usage("Which target?")
        self.expect_usage("There is no target obj.", "obj")
        self.expect_usage("There is no target .", "")
        self.expect_usage("There is no target scene stl.", "scene stl")
        self.expect_usage("Too many arguments.", "stl", "10", "20")
        for seconds in ("0", "-1", "soon", "1.5", "", "10 20", "99999999"):
            self.expect_usage(f"This is no number of seconds: {seconds}", "stl", seconds)

    def test_the_targets_of_the_tree_are_listed(self):
        result = subprocess.run([ROOT / "fuzz"], capture_output=True, text=True, check=False)
        self.assertEqual(result.returncode, 2)
        self.assertEqual(result.stderr.splitlines()[-1], "The targets: " + " ".join(TARGETS))
        self.assertIn("scene", TARGETS)

    def test_a_run_without_a_finding(self):
        result = self.run_script("stl")
        self.assertEqual(result.returncode, 0, result.stderr)
        preset, build, target, environment = self.calls()
        self.assertEqual(preset, "cmake --preset fuzz")
        self.assertEqual(build, "cmake --build --preset fuzz --target fuzz_stl ulk_test_locales")
        self.assertIn(" -max_total_time=60 ", target)
        self.assertTrue(target.endswith(" build/fuzzing/stl/found tests/fuzz/corpus/stl"), target)
        self.assertEqual(environment, "environment two words")
        self.assertIn("build/fuzzing/stl/found (1)", result.stdout)
        self.assertNotIn("indings", result.stdout)
        self.assertEqual(list((self.tree / "tests/fuzz/corpus/stl").iterdir()), [])

    def test_a_finding_is_kept_and_named(self):
        (self.tree / "finding").write_text("bytes")
        result = self.run_script("stl", "5")
        self.assertEqual(result.returncode, 1)
        self.assertIn(" -max_total_time=5 ", self.calls()[2])
        kept = self.tree / "build/fuzzing/stl/findings/crash-1"
        self.assertEqual(kept.read_text(), "bytes")
        self.assertIn(f"Findings, in {kept.parent}:", result.stdout.splitlines())
        self.assertIn("build/fuzzing/stl/findings/crash-1", result.stdout.splitlines())

    def test_findings_of_other_runs_are_not_named(self):
        (self.tree / "finding").write_text("bytes")
        old = self.tree / "build/fuzzing/stl/findings/crash-0"
        old.parent.mkdir(parents=True)
        old.touch()
        os.utime(old, (1, 1))
        self.assertNotIn("crash-0", self.run_script("stl").stdout)
        self.assertTrue(old.exists())

    def test_a_target_that_does_not_run_is_no_finding(self):
        (self.tree / "target").write_text("#!/bin/bash\nexit 1\n")
        result = self.run_script("stl")
        self.assertEqual(result.returncode, 2)
        self.assertEqual(result.stderr, "The target has failed without a finding.\n")

    def test_a_build_that_fails_is_no_finding(self):
        (self.tree / "bin/cmake").write_text("#!/bin/bash\nexit 1\n")
        result = self.run_script("stl")
        self.assertEqual(result.returncode, 2)
        self.assertNotIn("finding", result.stdout)


if __name__ == "__main__":
    unittest.main()
