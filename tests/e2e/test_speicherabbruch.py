"""The program is killed while it saves, again and again: the file is always the old or the new version as a whole."""

import os
import random
import shutil
import time

from e2etest import (EndToEndTest, long_example, main, setUpModule,  # noqa: F401 - unittest calls them
                     tearDownModule)
from program import PATIENCE_SECONDS
from rowset import rows
from wizard import go_back, open_file, wait_for_title

KILLS = int(os.environ.get("WENDRAL_KILLS", "200"))
ENTRIES = 5000  # so that writing takes its time
MOST_SAVED = 2  # before the save in which the kill comes
LONGEST_SAVES = 2  # times as long as typing and saving took before, until the kill comes
LONGEST_WRITE_SECONDS = 0.0005
KEY = "Messwert direktes Prüfmerkmal 1.1"
DIGITS = "123456789"


class KilledSaves(EndToEndTest):
    def test_the_file_is_always_the_old_or_the_new_version(self):
        self.file = self.home / "kalibrierung.xml"
        seed = random.randrange(1_000_000)
        self.random = random.Random(seed)
        self.versions = self.make_versions()
        met = {"old": 0, "new": 0}
        cut_short = 0
        for number in range(1, KILLS + 1):
            old, new = self.kill_while_saving(in_a_write=number % 2 == 0)
            self.digit = self.saved_digit()
            self.assertIn(self.digit, (old, new), f"kill {number}, seed {seed}: {new} was to replace {old} in a file "
                                                  f"of now {self.file.stat().st_size} bytes")
            met["old" if self.digit == old else "new"] += 1
            cut_short += self.remove_unfinished()
        print(f"{KILLS} kills, seed {seed}; versions met: {met}; {cut_short} of the kills cut a write short")
        self.assertGreater(min(met.values()), 0, "the kills came before and after saves were done")
        self.assertGreater(cut_short, 0, "some kills came within a write")

    def make_versions(self):
        """The digit that the first value has, by the bytes that the program then saves."""
        self.file.write_bytes(long_example(ENTRIES))
        program = self.start()
        open_file(program, self.file)
        go_back(program, 3)
        program.focus("Messwerte", "table")
        versions = {}
        for digit in DIGITS:
            program.keys(*self.typed_and_saved(digit))
            program.wait_until(lambda: dict(rows(self.file))[KEY] == digit, f"the file holds {digit}")
            versions[self.file.read_bytes()] = self.digit = digit
        program.keys("ctrl+q")
        program.wait_for_end()
        self.assertEqual(len(versions), len(DIGITS))
        return versions

    @staticmethod
    def typed_and_saved(digit):
        """Keys that put the digit into the current cell, stay there and save."""
        return digit, "Return", "Left", "ctrl+s"

    def saved_digit(self):
        """The one in the file, None where that is no whole version."""
        return self.versions.get(self.file.read_bytes())

    def kill_while_saving(self, in_a_write):
        """Returns the digit that was last seen in the file and the one that was being saved."""
        self.user = self.user_with_same_settings()
        with self.start() as program:
            program.keys("alt+d", *["Down"] * 4, "Return")  # the file that was opened last
            wait_for_title(program, self.file)
            program.focus("Messwerte", "table")
            old = self.digit
            for _ in range(self.random.randint(1, MOST_SAVED)):
                old = self.after(old)
                begun = time.monotonic()
                program.keys(*self.typed_and_saved(old))
                program.wait_until(lambda: self.saved_digit() == old, f"the file holds {old}")
                one_save = time.monotonic() - begun
            new = self.after(old)
            before = self.file.stat().st_ino
            typing = program.begin_keys(*self.typed_and_saved(new))
            if in_a_write:
                self.wait_for_a_write(before)
            else:
                time.sleep(self.random.uniform(0, LONGEST_SAVES * one_save))
            program.kill()
            typing.wait()  # what is left goes to nobody
        return old, new

    def wait_for_a_write(self, before):
        """Until the new file is being written beside the old one or is in its place, and some moments longer."""
        end = time.monotonic() + PATIENCE_SECONDS
        while len(os.listdir(self.home)) == 1 and self.file.stat().st_ino == before:
            self.assertLess(time.monotonic(), end, "nothing is written")
        time.sleep(self.random.uniform(0, LONGEST_WRITE_SECONDS))

    @staticmethod
    def after(digit):
        """In turn, so that every save has a change to write and is told from the others."""
        return DIGITS[(DIGITS.index(digit) + 1) % len(DIGITS)]

    def user_with_same_settings(self):
        """Another user, who finds nothing of the killed program but its settings."""
        user = self.new_user()
        shutil.copytree(self.user.environment["XDG_CONFIG_HOME"], user.environment["XDG_CONFIG_HOME"],
                        dirs_exist_ok=True)
        return user

    def remove_unfinished(self):
        unfinished = [path for path in self.home.iterdir() if path != self.file]
        for path in unfinished:
            path.unlink()
        return len(unfinished)


if __name__ == "__main__":
    main()
