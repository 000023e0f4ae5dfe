#!/usr/bin/python3
"""Works with the program at random for a long time, as no user would but as every user may.

    tests/e2e/soak.py PROGRAM [--minutes 60] [--seed N]

The seed is printed, so that the same actions can be tried again. It ends with 1 where the program ended, stuck,
complained on the terminal, or kept memory or open files.
"""

import argparse
import collections
import os
import pathlib
import random
import shutil
import statistics
import sys
import time

from desk import Desk
from program import POLL_SECONDS, PRODUCT, Program
from wizard import OPENING, SAVING, open_file

TEXTS = ("", " ", "3", "4", "7", "12", "99,5", "1.234,5", "0,65", "-4", "1,5", "abc", "Übergänge", "EVD", "F", "%",
         "Prüffeld 3", "1,2E-03", "--")
FILE_DIALOGS = (OPENING, SAVING, "Als PDF speichern", "Export nach MS Excel")
WELCOME_BOX = "Diese Seite nicht mehr anzeigen."
# The first leads out of the program into the system's own windows; the page of the box is where to come back to.
NOT_PRESSED = ("Drucken ...", WELCOME_BOX)
FRAME_BUTTON = "Schließen"  # of the main window: ends the program
TABLE_KEYS = ("Up", "Down", "Left", "Right", "Page_Down", "Page_Up", "Home", "End", "Tab", "F2", "Delete", "Return",
              "ctrl+c", "ctrl+x", "ctrl+v", "ctrl+a", "shift+Down", "Escape")
FORWARD = "weiter >"
COMMANDS = (("ctrl+s",), ("ctrl+shift+s",), ("ctrl+o",), ("ctrl+n",), ("alt+d", "Return"), ("alt+d", "Down", "Return"),
            ("alt+d", "Escape", "Escape"), ("alt+h", "i"))
EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples"
REST_EVERY = 100  # actions, until all is put away and measured
OPENED_SHARE = 0.8  # how often the work starts with an example, not with a new document
KEPT_SHARE = 1.1  # of the memory at first, more is a leak
LEAVING_LOOKS = 500  # until a dialog that doesn't close is one more window to work in
MEASURED_SHARE = 0.25  # of the samples, at the start and at the end


class Monkey:
    def __init__(self, program, chance, home):
        self.program = program
        self.chance = chance
        self.home = home
        self.done = collections.Counter()
        self.samples = []

    def act(self):
        """One action on the window that has the keyboard."""
        window = self.program.window()
        name, role = window.get_name(), window.get_role_name()
        if role == "alert":
            self.press(window)
        elif name in FILE_DIALOGS:
            self.file_dialog(window)
        elif name.startswith(PRODUCT) and self.chance.random() < 0.2:
            self.press(window, FORWARD)
        elif name.startswith(PRODUCT) and self.chance.random() < 0.1:
            self.keys(*self.chance.choice(COMMANDS))
        elif role == "frame" and name == "Protokoll" and self.chance.random() < 0.1:
            self.keys(self.chance.choice(("alt+F4", "Page_Down", "Page_Up", "ctrl+plus", "ctrl+minus")))
        elif role == "dialog" and self.chance.random() < 0.1:
            self.keys("Escape")
        else:
            self.work(window)

    def keys(self, *keys):
        self.done[" ".join(keys)] += 1
        self.program.keys(*keys)

    def controls(self, window, *roles):
        return [control for control in self.program.controls(window)
                if control.get_role_name() in roles and self.program.is_(control, "ENABLED")
                and control.get_name() not in NOT_PRESSED
                and not (control.get_name() == FRAME_BUTTON and window.get_role_name() == "frame")]

    def press(self, window, *names):
        """A button, one of those names where there are any."""
        buttons = [button for button in self.controls(window, "push button")
                   if not names or button.get_name() in names]
        if buttons:
            button = self.chance.choice(buttons)
            self.done[button.get_name()] += 1
            if self.program.is_(button, "FOCUSABLE"):
                self.program.grab_focus(button)
                self.program.keys("space")
            elif action := button.get_action_iface():  # none where it has gone meanwhile
                action.do_action(0)

    def file_dialog(self, window):
        name = window.get_name()
        self.done[name] += 1
        if self.chance.random() < 0.3:
            self.program.keys("Escape")
        else:
            number = self.chance.randrange(3)
            suffix = {"Als PDF speichern": ".pdf", "Export nach MS Excel": ".xlsx"}.get(name, ".xml")
            self.program.enter("Dateiname:", str(self.home / f"datei{number}{suffix}"))
            self.program.keys("Return")
        # So that the next action doesn't look for the boxes of a dialog that is just closing.
        for _ in range(LEAVING_LOOKS):
            if self.program.active_window() != window:
                break
            time.sleep(POLL_SECONDS)

    def work(self, window):
        kind = self.chance.choice(("button", "button", "text", "table", "table", "box"))
        if kind == "button":
            self.press(window)
            return
        roles = {"text": ("text",), "table": ("table", "tree", "list"), "box": ("check box", "combo box")}[kind]
        found = self.controls(window, *roles)
        if not found:
            self.press(window)
            return
        control = self.chance.choice(found)
        self.done[kind] += 1
        if kind == "text" and self.program.is_(control, "EDITABLE"):
            self.program.grab_focus(control)
            self.program.keys("ctrl+a", "Delete")
            self.program.type(self.chance.choice(TEXTS) + self.chance.choice("\t\n"))
        elif kind == "table":
            self.work_in_table()
        elif kind == "box":
            self.program.grab_focus(control)
            self.program.keys("space" if control.get_role_name() == "check box"
                              else self.chance.choice(("Down", "Up", "Tab")))

    def work_in_table(self):
        for _ in range(self.chance.randrange(1, 6)):
            if self.chance.random() < 0.5:
                self.program.keys(self.chance.choice(TABLE_KEYS))
            else:
                self.program.type(self.chance.choice(TEXTS) + "\n")

    def rest(self):
        """Puts everything away without saving, down to a new document, measures, and mostly opens an example."""
        self.program.wait_until(self.is_put_away, "there is a way back to a new document")
        # The page of a new document may also show one that has been changed: that asks first.
        self.program.keys("Escape", "ctrl+n")
        self.settle()
        self.program.wait_until(self.is_put_away, "the new document is a clean one")
        self.measure()
        for number, example in enumerate(sorted(EXAMPLES.glob("*.xml"))):
            shutil.copy(example, self.home / f"datei{number}.xml")
        if self.chance.random() < OPENED_SHARE:
            open_file(self.program, self.home / "datei0.xml")

    def is_put_away(self):
        """Whether the welcome page of a new document shows; otherwise goes a step there."""
        window = self.program.window()
        if not window.get_name().startswith(PRODUCT) or window.get_role_name() == "alert":
            self.put_away(window)
        elif window.get_name() == PRODUCT and self.program.find_now(WELCOME_BOX, "check box"):
            return True
        elif self.program.find_now(FRAME_BUTTON, "push button"):
            self.program.keys("Escape", "Escape", "ctrl+n")
            self.settle()
        return False

    def put_away(self, window):
        names = [button.get_name() for button in self.controls(window, "push button")]
        if "Nein" in names:
            self.program.answer("Nein")
        elif window.get_role_name() == "alert":
            self.program.keys("Return")
        elif window.get_role_name() == "frame":
            self.program.keys("alt+F4")
        else:
            self.program.keys("Escape")
        self.settle()

    def settle(self):
        """Asks something, so that what was pressed is done."""
        for _ in range(3):
            self.program.windows()

    def measure(self):
        folder = pathlib.Path("/proc", str(self.program.process.pid))
        memory = next(int(line.split()[1]) for line in (folder / "status").read_text().splitlines()
                      if line.startswith("VmRSS:"))
        self.samples.append((memory, len(os.listdir(folder / "fd"))))
        print(f"{sum(self.done.values())} actions: {memory} KiB, {self.samples[-1][1]} open files", flush=True)


def soak(arguments, seed):
    os.environ["WENDRAL_PROGRAM"] = str(arguments.program.resolve())
    begun = time.monotonic()
    actions = 0
    with Desk() as desk:
        user = desk.user()
        with Program(desk, user) as program:
            monkey = Monkey(program, random.Random(seed), user.home)
            monkey.rest()
            while time.monotonic() - begun < arguments.minutes * 60:
                program.safely(monkey.act)
                actions += 1
                if actions % REST_EVERY == 0:
                    monkey.rest()
            monkey.rest()
            complaints = program.complaints()
    return report(monkey, actions, time.monotonic() - begun, complaints)


def report(monkey, actions, seconds, complaints):
    share = max(1, int(len(monkey.samples) * MEASURED_SHARE))
    # The first samples are of a program that has not yet shown all of its windows.
    warm = monkey.samples[share:2 * share] or monkey.samples
    late = monkey.samples[-share:]
    memory = [statistics.median(sample[0] for sample in part) for part in (warm, late)]
    handles = [statistics.median(sample[1] for sample in part) for part in (warm, late)]
    print(f"{actions} actions in {seconds / 60:.1f} minutes; most often: {monkey.done.most_common(12)}")
    print(f"memory in KiB: {monkey.samples[0][0]} at the start, {memory[0]:.0f} warm, {memory[1]:.0f} at the end")
    print(f"open files: {monkey.samples[0][1]} at the start, {handles[0]:.0f} warm, {handles[1]:.0f} at the end")
    print(f"written to the terminal: {complaints or 'nothing'}")
    good = memory[1] <= memory[0] * KEPT_SHARE and handles[1] <= handles[0] and not complaints
    return 0 if good else 1


def main():
    parser = argparse.ArgumentParser(description="works with the program at random")
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--minutes", type=float, default=60)
    parser.add_argument("--seed", type=int, default=random.randrange(1_000_000))
    arguments = parser.parse_args()
    print(f"seed {arguments.seed}", flush=True)
    return soak(arguments, arguments.seed)


if __name__ == "__main__":
    sys.exit(main())
