#!/usr/bin/env python3
"""Changes one operator, constant, condition or statement of a source at a time and tells which changes no test notices.

    scripts/mutate.py BUILD FOLDER [--sample N] [--seed S]

BUILD is a configured build folder with tests, FOLDER one below src/, such as formats/scene. Every change is built and run
against the tests of the same folder below tests/unit and tests/gl, and if these pass against all tests of both programs.
What survives is printed as FILE:LINE with the old and the new line.

Sources are changed in place and put back, so run it in a work tree of its own.
"""

import argparse
import os
import pathlib
import random
import re
import resource
import signal
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
PROGRAMS = ("unit_tests", "gl_tests")
# A pattern and what takes its place. Spaces around an operator keep templates, pointers and includes out.
CHANGES = [(re.compile(pattern), new) for pattern, new in (
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "), (r" == ", " != "), (r" != ", " == "),
    (r" \+ ", " - "), (r" - ", " + "), (r" \* ", " / "), (r" / ", " * "), (r" % ", " * "),
    (r" && ", " || "), (r" \|\| ", " && "), (r" & ", " | "), (r" \| ", " & "), (r" << (?=[\w(])", " >> "),
    (r" \+= ", " -= "), (r" -= ", " += "), (r"\+\+", "--"), (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
    (r"\bif \((.*)\)(?= \{$|$)", r"if (!(\1))"), (r"(?<=[( ])!(?=[a-z(])", ""), (r"\b(continue|break);", ";"),
    (r"^( +)(?!return |delete )[\w.:>\[\]-]+(\(| = ).*;$", r"\1;"),
    (r"(?<![\w.\"'])0(?![\w.\"'])", "1"), (r"(?<![\w.\"'])([1-9]\d*)(?![\w.\"'])", lambda match: str(int(match[1]) + 1)),
    (r"(?<![\w.])\d+\.\d+F?\b", r"(\g<0> + 1)"))]


def changes(path):
    """All changed lines of a source: (path, index of the line, the new line)."""
    for index, line in enumerate(path.read_text().split("\n")):
        code = line.split("//")[0].rstrip()
        if code.startswith(("#", "namespace", "template")) or "static_assert" in code:
            continue
        for pattern, new in CHANGES:
            for match in pattern.finditer(code):
                if code.count('"', 0, match.start()) % 2 == 0:
                    value = new(match) if callable(new) else match.expand(new)
                    yield path, index, code[:match.start()] + value + code[match.end():]


def suites(folder):
    """The filter of the tests that stand in the folder's place below tests/."""
    names = set()
    for kind in ("unit", "gl"):
        for path in (ROOT / "tests" / kind / folder).glob("**/*.cpp"):
            names |= set(re.findall(r"\bTEST(?:_F|_P)?\(\s*(\w+),", path.read_text()))
    return ":".join(f"{name}.*:*/{name}.*" for name in sorted(names))


def builds(build):
    command = ["ninja", "-j1", "-C", build, *PROGRAMS]
    return subprocess.run(command, env={**os.environ, "CCACHE_DISABLE": "1"}, capture_output=True).returncode == 0


def passes(build, folder, test_filter, seconds=600):
    """Whether the tests of a filter pass in both programs, each within a time; their files are made in the folder."""
    # Without the cache of compiled shaders the tests would take several times as long.
    environment = {**os.environ, "GALLIUM_DRIVER": "llvmpipe", "LIBGL_ALWAYS_SOFTWARE": "1", "TMPDIR": folder,
                   "XDG_CACHE_HOME": build / "cache", "LOCPATH": f"{build}/tests/locale:/usr/lib/locale"}
    # What is changed may be which file is written or removed. Not even root's tests shall reach other files than theirs.
    account = {"user": "nobody", "group": "nogroup", "extra_groups": []} if os.geteuid() == 0 else {}
    for program in PROGRAMS:
        # timeout ends what the tests have started, too.
        command = ["timeout", "--signal=KILL", str(seconds), build / "bin" / program, f"--gtest_filter={test_filter}",
                   "--gtest_brief=1", "--gtest_fail_fast", "--gtest_death_test_style=threadsafe"]
        if subprocess.run(command, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, **account).returncode != 0:
            return False
    return True


def try_changes(options, build, folder):
    if not builds(build):
        sys.exit("The tests do not build without a change.")
    limits = {}
    for test_filter in ("*", suites(options.folder)):
        start = time.monotonic()
        if not passes(build, folder, test_filter):
            sys.exit("The tests fail without a change.")
        limits[test_filter] = 10 + 2 * int(time.monotonic() - start)

    sources = sorted((ROOT / "src" / options.folder).glob("**/*.cpp"))
    candidates = [change for path in sources for change in changes(path)]
    if options.sample and options.sample < len(candidates):
        # In the order of the files: one that is put back is compiled once more.
        candidates = sorted(random.Random(options.seed).sample(candidates, options.sample))
    compiled = survivors = 0
    for path, index, new_line in candidates:
        text = path.read_text()
        lines = text.split("\n")
        old_line, lines[index] = lines[index], new_line
        path.write_text("\n".join(lines))
        try:
            if not builds(build):
                continue
            compiled += 1
            # First the folder's own tests, which mostly notice, and soon.
            if all(passes(build, folder, *limit) for limit in reversed(limits.items())):
                survivors += 1
                print(f"{path.relative_to(ROOT)}:{index + 1}\n  - {old_line.strip()}\n  + {new_line.strip()}", flush=True)
        finally:
            path.write_text(text)
    print(f"{options.folder}: {len(candidates)} changes, {compiled} compiled, {survivors} survived")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("folder")
    parser.add_argument("--sample", type=int, help="try this many of the changes, taken by chance")
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    # One who ends the script finds the sources put back, too.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("Ended."))
    # A change may make a loop that takes ever more.
    resource.setrlimit(resource.RLIMIT_AS, (8 << 30, 8 << 30))
    build = options.build.resolve()
    (build / "cache").mkdir(exist_ok=True)
    with tempfile.TemporaryDirectory() as folder:
        for written in (build / "cache", folder):
            os.chmod(written, 0o777)
        try_changes(options, build, folder)


if __name__ == "__main__":
    main()
