"""A desktop of its own for programs under test: X server with a German keyboard, window manager, session bus and
accessibility bus. Whoever works at it has folders that belong to nobody else, so that nothing of the real user's
desktop or settings is touched.

    with Desk() as desk:
        user = desk.user()
        subprocess.Popen([...], env=user.environment)
"""

import ctypes
import os
import pathlib
import shlex
import shutil
import signal
import subprocess
import tempfile
import time

START_SECONDS = 60
STOP_SECONDS = 10
SCREEN = "1280x1000x24"
BUS_LAUNCHERS = ("/usr/libexec/at-spi-bus-launcher", "/usr/lib/at-spi2-core/at-spi-bus-launcher")
# Of the environment that the tests run in, only this reaches the programs.
KEPT = ("PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS")

_libc = ctypes.CDLL(None, use_errno=True)


def die_with_parent():
    """Called in a child before it becomes its program: it ends when this process ends, however that comes about."""
    set_parent_death_signal = 1  # PR_SET_PDEATHSIG
    _libc.prctl(set_parent_death_signal, signal.SIGKILL)


class User:
    """Somebody who works at a desk: an environment and a home folder, both new."""

    def __init__(self, folder, environment, numbers):
        folder.mkdir()
        self.environment = dict(environment)
        for name, sub in (("HOME", "home"), ("XDG_CONFIG_HOME", "config"), ("XDG_DATA_HOME", "data"),
                          ("XDG_CACHE_HOME", "cache"), ("XDG_STATE_HOME", "state"), ("TMPDIR", "tmp")):
            (folder / sub).mkdir(mode=0o700)
            self.environment[name] = str(folder / sub)
        self.environment["LANG"] = "de_DE.UTF-8"
        self.environment["LANGUAGE"] = "de"
        if numbers != "de_DE":
            self.environment["LC_NUMERIC"] = numbers + ".UTF-8"
        self.folder = folder
        self.home = folder / "home"


class Desk:
    def __enter__(self):
        self._processes = []
        self._users = 0
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="wendral-"))
        try:
            self.environment = {name: os.environ[name] for name in KEPT if name in os.environ}
            self.environment["XDG_RUNTIME_DIR"] = str(self.folder / "run")
            self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
            self.environment["CUPS_SERVER"] = str(self.folder / "no-printers")
            (self.folder / "run").mkdir(mode=0o700)
            self._make_locales()
            self._start_display()
            self._start_buses()
            self._start_window_manager()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            process.terminate()
            try:
                process.wait(STOP_SECONDS)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
            if process.stdout:
                process.stdout.close()
        shutil.rmtree(self.folder, ignore_errors=True)

    def user(self, numbers="de_DE"):
        """A user with German language; numbers names the locale that theirs look like."""
        self._users += 1
        return User(self.folder / f"user{self._users}", self.environment, numbers)

    def _make_locales(self):
        """The C library's own idea of both locales, which a bare machine doesn't have."""
        making = [subprocess.Popen(["localedef", "-i", name, "-f", "UTF-8", str(self.folder / (name + ".UTF-8"))])
                  for name in ("de_DE", "en_US")]
        if any([process.wait() for process in making]):
            raise RuntimeError("localedef can't make the German and the English locale")
        self.environment["LOCPATH"] = str(self.folder)

    def _start(self, *command, **options):
        process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   preexec_fn=die_with_parent, **({"stdout": subprocess.DEVNULL} | options))
        self._processes.append(process)
        return process

    def _start_display(self):
        reading, writing = os.pipe()
        self._start("Xvfb", "-displayfd", str(writing), "-screen", "0", SCREEN, "-nolisten", "tcp", "-noreset",
                    pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        self.environment["DISPLAY"] = ":" + number
        # Umlauts, ² and the decimal comma have keys of their own on it.
        subprocess.run(["setxkbmap", "de"], env=self.environment, check=True)

    def _start_buses(self):
        bus = self._start("dbus-daemon", "--session", "--nofork", "--print-address", stdout=subprocess.PIPE)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().decode().strip()
        launcher = next((path for path in BUS_LAUNCHERS if os.path.exists(path)), BUS_LAUNCHERS[0])
        self._start(launcher, "--launch-immediately")

    def _start_window_manager(self):
        """Waits for more than its name on the root window: windows that are shown before it is through with its own
        start may never appear, and what it is told to run at its start it runs after that."""
        ready = self.folder / "window-manager"
        self._start("openbox", "--sm-disable", "--startup", "touch " + shlex.quote(str(ready)))
        end = time.monotonic() + START_SECONDS
        while not ready.exists():
            if time.monotonic() > end:
                raise RuntimeError("the window manager did not start")
            time.sleep(0.02)
