#!/usr/bin/env python3
"""Runs one test file on a private desktop: launch.py PROGRAM ARTIFACT_FOLDER TEST_FILE [unittest options].

The desktop is an Xvfb with a window manager and a session bus, and a home folder that goes away. Nothing of the
desktop that the caller sits at is seen or touched.
"""

import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
START_SECONDS = 30
SCREEN = "1280x1024x24"


def private_environment(home):
    """The caller's environment without its desktop, and with folders of this run."""
    environment = {name: value for name, value in os.environ.items()
                   if not name.startswith(("XDG_", "DBUS_", "GTK_", "GDK_", "LC_", "G_"))
                   and name not in ("DISPLAY", "WAYLAND_DISPLAY", "LANGUAGE", "AT_SPI_BUS_ADDRESS", "NO_AT_BRIDGE")}
    for name, folder in (("XDG_CONFIG_HOME", ".config"), ("XDG_CACHE_HOME", ".cache"),
                         ("XDG_DATA_HOME", ".local/share"), ("XDG_RUNTIME_DIR", "runtime")):
        (home / folder).mkdir(parents=True, mode=0o700)
        environment[name] = str(home / folder)
    environment.update(HOME=str(home), LANG="C.UTF-8", GDK_BACKEND="x11", GTK_THEME="Adwaita",
                       # Without this the toolkit's settings come from a service and are written to the home folder.
                       GSETTINGS_BACKEND="memory",
                       PYTHONPATH=str(HERE), PYTHONDONTWRITEBYTECODE="1")
    return environment


def start_display(folder, environment):
    """Starts an X server on a free display number; its picture is the file Xvfb_screen0 in the folder."""
    reader, writer = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-screen", "0", SCREEN, "-fbdir", str(folder),
                               "-nolisten", "tcp", "-noreset"],
                              pass_fds=[writer], start_new_session=True, env=environment, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL)
    os.close(writer)
    with os.fdopen(reader) as pipe:
        number = pipe.readline().strip()
    if not number:
        server.wait()
        sys.exit("Xvfb did not start.")
    return server, ":" + number


def start_window_manager(environment):
    manager = subprocess.Popen(["openbox", "--sm-disable", "--config-file", str(HERE / "openbox.xml")],
                               start_new_session=True, env=environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    deadline = time.monotonic() + START_SECONDS
    while subprocess.run(["xdotool", "get_desktop"], env=environment, capture_output=True).returncode != 0:
        if time.monotonic() > deadline or manager.poll() is not None:
            sys.exit("The window manager did not start.")
        time.sleep(0.05)
    return manager


def stop(process):
    """Ends a process and what it has started; each was given a process group of its own."""
    for number in (signal.SIGTERM, signal.SIGKILL):
        try:
            os.killpg(process.pid, number)
            process.wait(5)
        except ProcessLookupError:
            return
        except subprocess.TimeoutExpired:
            pass


def main():
    # A test that ctest ends for its time is ended like this; what was started has to go then, too.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    program, artifacts, test_file = (os.path.abspath(argument) for argument in sys.argv[1:4])
    os.makedirs(artifacts, exist_ok=True)
    started = []
    with tempfile.TemporaryDirectory(prefix="ulk-", ignore_cleanup_errors=True) as folder:
        folder = pathlib.Path(folder)
        environment = private_environment(folder / "home")
        try:
            server, display = start_display(folder, environment)
            started.append(server)
            environment["DISPLAY"] = display
            started.append(start_window_manager(environment))
            environment.update(ULK_UI_PROGRAM=program, ULK_UI_ARTIFACTS=artifacts,
                               ULK_UI_SCREEN=str(folder / "Xvfb_screen0"))
            test = subprocess.Popen(["dbus-run-session", "--", sys.executable, test_file, *sys.argv[4:]],
                                    start_new_session=True, env=environment, stdin=subprocess.DEVNULL)
            started.append(test)
            return test.wait()
        finally:
            for process in reversed(started):
                stop(process)


if __name__ == "__main__":
    sys.exit(main())
