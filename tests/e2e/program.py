"""The program as its user has it: started on a desk, seen through the accessibility bus, worked with the keyboard.

Controls are found by their accessible names only; nothing here knows a class of the program.
"""

import os
import re
import resource
import signal
import subprocess
import time

from desk import die_with_parent

PATIENCE_SECONDS = int(os.environ.get("WENDRAL_PATIENCE", "60"))
POLL_SECONDS = 0.01
MISSED_SECONDS = 0.5
PRODUCT = "Kalibrierung nach Wendral"
NOT_DESCENDED = ("table", "tree", "list")  # they may have thousands of cells

# Characters whose key has another name than the character.
KEY_NAMES = {",": "comma", ".": "period", "-": "minus", "/": "slash", "_": "underscore", " ": "space",
             "%": "percent", "ä": "adiaeresis", "ö": "odiaeresis", "ü": "udiaeresis", "Ä": "Adiaeresis",
             "Ö": "Odiaeresis", "Ü": "Udiaeresis", "ß": "ssharp", "\t": "Tab", "\n": "Return"}


class TookTooLong(AssertionError):
    """Something that was waited for did not come."""


def wait_until(condition, what, seconds=PATIENCE_SECONDS):
    """The first true answer of condition; what says in the failure for what was waited."""
    end = time.monotonic() + seconds
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise TookTooLong(f"{what} (waited {seconds} s)")
        time.sleep(POLL_SECONDS)


def load_accessibility(desk):
    """Atspi speaks to the bus of the environment that it is loaded in, so it is loaded when there is a desk."""
    os.environ.update({name: desk.environment[name] for name in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS",
                                                                 "XDG_RUNTIME_DIR")})
    global Atspi, GLib
    import gi
    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib
    milliseconds = PATIENCE_SECONDS * 1000
    Atspi.set_timeout(milliseconds, milliseconds)  # its own is less than a second, too short on a busy machine


def without_privileges(command):
    """The command such that file permissions hold for it, for the superuser as well."""
    if os.geteuid() != 0:
        return command
    return ["setpriv", "--bounding-set=-all", "--inh-caps=-all", "--", *command]


def before_program():
    die_with_parent()
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)  # a limit of the file size is to look like a full disk


class Program:
    """One run of the program for a user. It is killed where it still runs in the end."""

    def __init__(self, desk, user, arguments=()):
        load_accessibility(desk)
        self._environment = user.environment
        started = len(list(user.folder.glob("stderr-*")))
        self._errors = user.folder / f"stderr-{started + 1}"  # what earlier runs wrote stays
        with open(self._errors, "wb") as errors:
            self.process = subprocess.Popen(
                without_privileges([os.environ["WENDRAL_PROGRAM"], *arguments]), env=user.environment, cwd=user.home,
                stdin=subprocess.DEVNULL, stdout=errors, stderr=errors, preexec_fn=before_program)
        self.application = wait_until(lambda: self.safely(self._find_application), "the program shows itself")
        self.window()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.kill()

    def kill(self):
        """Ends the program as a power cut would."""
        self.process.kill()
        self.process.wait()

    def wait_for_end(self):
        """The exit code of a program that ends by itself."""
        return self.process.wait(PATIENCE_SECONDS)

    def complaints(self):
        """What the program and its libraries wrote to the terminal."""
        return self._errors.read_text(errors="replace")

    def limit_file_size(self, size=resource.RLIM_INFINITY):
        """From now on every file that the program writes ends after that many bytes, as on a full disk."""
        resource.prlimit(self.process.pid, resource.RLIMIT_FSIZE, (size, resource.RLIM_INFINITY))

    def _find_application(self):
        desktop = Atspi.get_desktop(0)
        for child in self.children(desktop):
            if child.get_process_id() == self.process.pid:
                child.set_cache_mask(Atspi.Cache.NONE)
                return child
        self._expect_alive()
        return None

    def _expect_alive(self):
        assert self.process.poll() is None, f"the program ended with {self.process.returncode}: {self.complaints()}"

    def safely(self, question):
        """Controls may go while they are being asked; the question is put again then."""
        try:
            return question()
        except GLib.Error:
            self._expect_alive()
            return None

    def wait_until(self, condition, what):
        try:
            return wait_until(lambda: self.safely(condition), what)
        except TookTooLong as failure:
            raise TookTooLong(f"{failure}; there are {self.describe()}") from None

    def children(self, control):
        children = (control.get_child_at_index(index) for index in range(control.get_child_count()))
        return [child for child in children if child]

    def is_(self, control, state):
        return control.get_state_set().contains(getattr(Atspi.StateType, state))

    def windows(self):
        return [child for child in self.children(self.application) if self.is_(child, "SHOWING")]

    def controls(self, root):
        """All that shows below root, without the cells of tables."""
        for child in self.children(root):
            if self.is_(child, "SHOWING"):
                yield child
                if child.get_role_name() not in NOT_DESCENDED:
                    yield from self.controls(child)

    def active_window(self):
        return next((window for window in self.windows() if self.is_(window, "ACTIVE")), None)

    def window(self, title=None):
        """Waits until the window of that title, or the one in front, has the keyboard."""
        def wanted():
            return [window for window in self.windows() if title in (None, window.get_name())][-1:]
        return self._wait_for_keyboard(wanted, f"the window „{title or 'in front'}“ has the keyboard")

    def _wait_for_keyboard(self, wanted, what):
        """Waits until one of the windows that wanted tells has the keyboard. Returns it."""
        missed_since = None

        def found():
            nonlocal missed_since
            windows = wanted()
            active = self.active_window()
            if active in windows:
                return active
            missed_since = (missed_since or time.monotonic()) if windows else None
            if windows and time.monotonic() - missed_since > MISSED_SECONDS:
                self._choose_window(windows[-1])
                missed_since = None
            return None
        return self.wait_until(found, what)

    def _choose_window(self, window):
        """Makes a window active as a click into it would. When two boxes close at once, the window manager may leave
        the keyboard with one that is gone, or with a window behind."""
        subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(window.get_name())}$",
                        "windowactivate"], env=self._environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def describe(self):
        """The windows that show and, of message boxes, their texts; for failures."""
        return [(window.get_role_name(), window.get_name(),
                 [control.get_name() for control in self.controls(window)
                  if window.get_role_name() == "alert" and control.get_role_name() == "label"])
                for window in self.windows()]

    def find_now(self, name, role=None):
        """The control of that name in the active window, or None."""
        window = self.active_window()
        return next((control for control in (self.controls(window) if window else ())
                     if control.get_name() == name and role in (None, control.get_role_name())), None)

    def find(self, name, role=None):
        """Waits until a control of that name shows in the active window."""
        return self.wait_until(lambda: self.find_now(name, role), f"„{name}“ shows")

    def text(self, name):
        """What stands in a text box or another control that has a text."""
        return Atspi.Text.get_text(self.find(name, "text"), 0, -1)

    def table(self, name, role="table"):
        """The texts of a table, row by row, without headers."""
        table = self.find(name, role)
        columns = range(Atspi.Table.get_n_columns(table))
        return [[Atspi.Table.get_accessible_at(table, row, column).get_name() for column in columns]
                for row in range(Atspi.Table.get_n_rows(table))]

    def keys(self, *names):
        """Presses keys: "Return", "ctrl+s", "alt+d". Waits for a window to take them: between one that goes and the
        next that gets the keyboard they would be lost."""
        self._wait_for_keyboard(self.windows, "a window has the keyboard")
        assert self.begin_keys(*names).wait() == 0, f"these keys can't be pressed: {names}"

    def begin_keys(self, *names):
        """The same without waiting; returns what presses them, to be waited for."""
        return subprocess.Popen(["xdotool", "key", "--delay", "2", *names], env=self._environment)

    def type(self, text):
        self.keys(*(KEY_NAMES.get(character, character) for character in text))

    def grab_focus(self, control):
        """Asks a control to take the keyboard; nothing happens where it has gone meanwhile."""
        component = control.get_component_iface()
        if component:
            component.grab_focus()

    def focus(self, name, role=None):
        """Gives a control the keyboard; tables and lists, which can't be told to take it, by the tab key."""
        def focused():
            control = self.find_now(name, role)
            if not control or self.is_(control, "FOCUSED"):
                return control
            if control.get_role_name() in NOT_DESCENDED:
                self.keys("Tab")
            else:
                self.grab_focus(control)
            return None
        return self.wait_until(focused, f"„{name}“ has the focus")

    def press(self, name):
        """Presses a button, as the space bar does."""
        self.wait_until(lambda: self.is_(self.find(name, "push button"), "ENABLED"), f"„{name}“ can be pressed")
        self.focus(name, "push button")
        self.keys("space")

    def enter(self, name, text):
        """Replaces what stands in a text box by typing."""
        self.focus(name, "text")
        self.keys("ctrl+a")
        self.type(text)
        self.wait_until(lambda: self.text(name) == text, f"„{name}“ holds „{text}“")

    def _message_box(self):
        def found():
            window = self.active_window()
            return window if window and window.get_role_name() == "alert" else None
        return self.wait_until(found, "a message box shows")

    def message(self):
        """Waits for a message box. Returns its text."""
        box = self._message_box()
        return next(control.get_name() for control in self.controls(box)
                    if control.get_role_name() == "label" and control.get_name())

    def answer(self, button):
        """Presses a button of the message box that shows and waits until the box is gone, maybe with the program."""
        box = self._message_box()
        self.press(button)

        def gone():
            try:
                return box not in self.windows()
            except GLib.Error:
                return self.process.poll() is not None
        self.wait_until(gone, f"the box goes after „{button}“")
