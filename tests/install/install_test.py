"""What is installed, what it tells the desktop, and the Debian package.

The build folder is in the environment variable ULK_BUILD. Nothing is written but into temporary folders.
"""

import os
import pathlib
import re
import shlex
import shutil
import stat
import subprocess
import tempfile
import unittest

BUILD = pathlib.Path(os.environ["ULK_BUILD"])
ROOT = pathlib.Path(__file__).resolve().parents[2]
SAMPLES = ROOT / "samples"


def run(*words, **options):
    options = {"capture_output": True, "text": True, "errors": "replace", "timeout": 120, **options}
    return subprocess.run(list(map(str, words)), **options)


class InstallTestCase(unittest.TestCase):
    """One installation for all tests of a class."""

    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.prefix = cls.folder / "a prefix"
        done = run("cmake", "--install", BUILD, "--prefix", cls.prefix)
        assert done.returncode == 0, done.stderr
        cls.share = cls.prefix / "share"
        cls.environment = {**os.environ, "PATH": f"{cls.prefix / 'bin'}:{os.environ['PATH']}",
                           "XDG_DATA_DIRS": str(cls.share), "XDG_DATA_HOME": str(cls.folder / "home"),
                           "LC_ALL": "C.UTF-8"}

    def assert_silent(self, *words, **options):
        done = run(*words, **options)
        self.assertEqual((done.returncode, done.stdout + done.stderr), (0, ""), words)


class Install(InstallTestCase):
    def test_everything_has_its_place(self):
        for path in ("bin/ulkedit", "bin/ulktool", "share/applications/ulkedit.desktop",
                     "share/icons/hicolor/scalable/apps/ulkedit.svg", "share/mime/packages/ulkedit.xml",
                     "share/thumbnailers/ulkedit.thumbnailer", "share/metainfo/org.ulkedit.ulkedit.metainfo.xml",
                     "share/bash-completion/completions/ulktool", "share/man/man1/ulkedit.1.gz",
                     "share/man/man1/ulktool.1.gz", "share/man/man5/ulk.5.gz", "share/man/ja/man1/ulkedit.1.gz",
                     "share/man/ja/man1/ulktool.1.gz", "share/man/ja/man5/ulk.5.gz", "share/doc/ulkedit/README.md",
                     "share/doc/ulkedit/README.ja.md", "share/doc/ulkedit/docs/manual.ja.md", "share/doc/ulkedit/docs/manual.md",
                     "share/doc/ulkedit/docs/file-format.md", "share/doc/ulkedit/docs/pictures/window.png",
                     "share/doc/ulkedit/samples/mixed.ulk", "share/doc/ulkedit/samples/maps/bricks.png"):
            self.assertTrue((self.prefix / path).is_file(), path)
        for path in self.prefix.rglob("*"):
            wanted = 0o755 if path.is_dir() or path.parent.name == "bin" else 0o644
            self.assertEqual(stat.S_IMODE(path.stat().st_mode), wanted, path)

    def test_the_texts_link_to_what_is_there(self):
        texts = list((self.share / "doc/ulkedit").rglob("*.md"))
        self.assertGreater(len(texts), 3)
        for text in texts:
            for target in re.findall(r"\]\(([^)#]+)", text.read_text()):
                if "://" not in target:
                    self.assertTrue((text.parent / target).exists(), f"{text}: {target}")

    def test_the_tool_runs_from_there(self):
        picture = self.folder / "a.png"
        done = run("ulktool", "render", self.share / "doc/ulkedit/samples/relief.ulk", picture, env=self.environment,
                   cwd="/")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertTrue(picture.exists())

    def test_a_package_can_be_made_below_another_root(self):
        root = self.folder / "root"
        done = run("cmake", "--install", BUILD, "--prefix", "/usr", env={**os.environ, "DESTDIR": str(root)})
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertTrue((root / "usr/bin/ulkedit").is_file())

    def test_a_place_that_can_not_be_written_is_told(self):
        self.folder.joinpath("file").write_text("")
        done = run("cmake", "--install", BUILD, "--prefix", self.folder / "file")
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("cannot", done.stderr.lower())


class Desktop(InstallTestCase):
    def test_the_entry_is_valid_and_promises_no_files(self):
        entry = self.share / "applications/ulkedit.desktop"
        self.assert_silent("desktop-file-validate", entry)
        lines = entry.read_text().splitlines()
        self.assertIn("Exec=ulkedit", lines)
        self.assertFalse(any(line.startswith("MimeType") or "%" in line for line in lines))
        for key in ("Name[ja]", "Comment[ja]", "Keywords", "Icon"):
            self.assertTrue(any(line.startswith(f"{key}=") for line in lines), key)

    def test_the_metainfo_is_valid_and_has_the_version(self):
        metainfo = self.share / "metainfo/org.ulkedit.ulkedit.metainfo.xml"
        done = run("appstreamcli", "validate", "--no-net", metainfo)
        self.assertEqual(done.returncode, 0, done.stdout)
        version = run("ulktool", "--version", env=self.environment).stdout.split()[-1]
        self.assertIn(f'<release version="{version}"', metainfo.read_text())

    def test_the_icon_is_a_picture_that_shows_on_light_and_dark(self):
        self.assert_silent("xmllint", "--noout", self.share / "icons/hicolor/scalable/apps/ulkedit.svg")


class FileTypes(InstallTestCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # The types of the system beside ours, in a database of their own.
        for name in ("freedesktop.org.xml",):
            shutil.copy(pathlib.Path("/usr/share/mime/packages") / name, cls.share / "mime/packages" / name)
        done = run("update-mime-database", cls.share / "mime")
        assert done.returncode == 0, done.stderr

    def type_of(self, name, content):
        path = self.folder / name
        path.write_bytes(content)
        done = run("gio", "info", "-a", "standard::content-type", path, env=self.environment)
        return re.search(r"standard::content-type: (.*)", done.stdout).group(1)

    def test_the_description_is_well_formed(self):
        self.assert_silent("xmllint", "--noout", self.share / "mime/packages/ulkedit.xml")

    def test_scenes_are_known_by_their_names(self):
        for sample in SAMPLES.glob("*.ulk"):
            self.assertEqual(self.type_of(sample.name, sample.read_bytes()), "model/x-ulk", sample)
        self.assertEqual(self.type_of("other.ulk", b"nothing of that kind"), "model/x-ulk")

    def test_scenes_without_a_name_are_known_by_their_first_block(self):
        for text in (b"begin polygon_surface,3,4\r\n", b"begin nurbs_surface,2,2,2,2\n", b"begin environment\n",
                     b"# A cube.\nbegin polygon_surface,3,4\n", b"# one\r\n# two\r\n\r\nbegin nurbs_surface,2,2,2,2\r\n"):
            self.assertEqual(self.type_of("scene", text), "model/x-ulk", text)
        self.assertEqual(self.type_of("note", b"# about begin polygon_surface\n"), "text/plain")
        self.assertEqual(self.type_of("note", b"nothing of that kind\n"), "text/plain")

    def test_scenes_are_texts(self):
        self.assertIn("model/x-ulk text/plain", (self.share / "mime/subclasses").read_text())

    def test_stl_files_keep_their_type(self):
        self.assertEqual(self.type_of("a.stl", bytes(84)), "model/stl")

    def test_the_type_has_a_japanese_name(self):
        self.assertIn('<comment xml:lang="ja">', (self.share / "mime/model/x-ulk.xml").read_text())


class Thumbnails(InstallTestCase):
    def draw(self, path, size=128, **variables):
        """Runs the command of the thumbnailer as a file manager does: the words may hold %i, %o and %s."""
        entry = (self.share / "thumbnailers/ulkedit.thumbnailer").read_text()
        command = re.search(r"^Exec=(.*)$", entry, re.MULTILINE).group(1)
        out = self.folder / "thumbnail.png"
        out.unlink(missing_ok=True)
        words = [word.replace("%i", str(path)).replace("%o", str(out)).replace("%s", str(size))
                 for word in shlex.split(command)]
        environment = {name: value for name, value in self.environment.items() if name != "DISPLAY"} | variables
        done = run(*words, env=environment, cwd="/", timeout=20)
        return done.returncode, out

    def test_they_are_of_scenes_and_stl_files(self):
        entry = (self.share / "thumbnailers/ulkedit.thumbnailer").read_text()
        self.assertIn("\nMimeType=model/x-ulk;model/stl;\n", entry)

    def test_every_sample_has_one(self):
        samples = [path for path in SAMPLES.glob("*.ulk")]
        self.assertGreater(len(samples), 5)
        for path in samples:
            status, out = self.draw(path)
            self.assertEqual(status, 0, path)
            self.assertEqual(out.read_bytes()[16:24], bytes([0, 0, 0, 128] * 2), path)

    def test_they_have_the_size_that_is_wanted(self):
        stl = self.folder / "cube.stl"
        self.assertEqual(run("ulktool", "convert", SAMPLES / "cube.ulk", stl, env=self.environment).returncode, 0)
        for size in (16, 256, 1024):
            status, out = self.draw(stl, size)
            self.assertEqual(status, 0, size)
            self.assertEqual(out.read_bytes()[16:24], size.to_bytes(4, "big") * 2)

    def test_a_driver_with_many_threads_keeps_within_the_memory(self):
        # As many as the machine has processors, unless it is told otherwise: each takes its share.
        self.assertEqual(self.draw(SAMPLES / "torus.ulk", LP_NUM_THREADS="32")[0], 0)

    def test_broken_huge_and_hostile_files_have_none(self):
        cube = (SAMPLES / "cube.ulk").read_bytes()
        huge = self.folder / "huge.stl"
        with open(huge, "wb") as file:
            file.write(bytes(80) + (100_000_000).to_bytes(4, "little"))
            file.truncate(84 + 50 * 100_000_000)
        files = {"empty.ulk": b"", "empty.stl": b"", "none.stl": bytes(84), "cut.ulk": cube[:len(cube) // 2],
                 "noise.ulk": bytes(range(256)) * 100, "noise.stl": b"\xff" * 50000,
                 "counts.ulk": b"begin polygon_surface,4000000000,4000000000\nend\n",
                 "deep.ulk": b"begin polygon_surface,1,1\nposition " + b"(" * 1_000_000 + b"\nend\n",
                 "orders.ulk": b"begin nurbs_surface,1000,1000,1000,1000\nresolution 60000,60000\nend\n",
                 "picture.ulk": b"\x89PNG\r\n\x1a\n"}
        paths = [huge, self.folder / "missing.ulk", self.folder]
        for name, content in files.items():
            paths.append(self.folder / name)
            paths[-1].write_bytes(content)
        for path in paths:
            status, out = self.draw(path)
            self.assertNotEqual(status, 0, path)
            self.assertFalse(out.exists(), path)
        huge.unlink()


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.folder.chmod(0o755)
        done = run("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", cls.folder, timeout=300)
        assert done.returncode == 0, done.stdout + done.stderr
        (cls.package,) = cls.folder.glob("*.deb")

    def field(self, name):
        return run("dpkg-deb", "--field", self.package, name).stdout.strip()

    def test_the_package_and_the_tool_have_one_version(self):
        version = run(BUILD / "bin/ulktool", "--version").stdout.split()[-1]
        self.assertEqual(self.field("Version"), version)
        self.assertEqual(self.package.name, f"ulkedit_{version}_{self.field('Architecture')}.deb")

    def test_it_depends_on_the_libraries_that_the_programs_use(self):
        for library in ("libgtkmm-3.0", "libglew", "libc6", "libjpeg", "libpng"):
            self.assertIn(library, self.field("Depends"))

    def test_the_distribution_finds_no_error(self):
        done = run("lintian", "--fail-on", "error", self.package, timeout=300)
        self.assertEqual((done.returncode, [line for line in done.stdout.splitlines() if line.startswith("E:")]), (0, []))

    def test_it_installs_runs_and_leaves_nothing_behind(self):
        root = self.folder / "root"
        admin = root / "var/lib/dpkg"
        (admin / "info").mkdir(parents=True)
        (admin / "updates").mkdir()
        (admin / "status").touch()
        dpkg = ("dpkg", f"--root={root}", "--force-depends", "--force-not-root", "--no-triggers",
                f"--log={self.folder / 'log'}")

        def left():
            return sorted(str(path.relative_to(root)) for path in root.rglob("*")
                          if not path.is_relative_to(root / "var") and path.is_file())
        done = run(*dpkg, "--install", self.package)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("usr/bin/ulkedit", left())
        picture = self.folder / "a.png"
        done = run(root / "usr/bin/ulktool", "render", root / "usr/share/doc/ulkedit/samples/relief.ulk", picture)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        done = run(*dpkg, "--purge", "ulkedit")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(left(), [])


if __name__ == "__main__":
    unittest.main()
