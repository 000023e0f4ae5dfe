"""The program is killed while it saves, again and again: the file is always one whole version of the document."""

import os
import random
import shutil
import time

from e2etest import (EndToEndTest, long_example, main, setUpModule,  # noqa: F401 - unittest calls them
                     tearDownModule)
from rowset import rows
from wizard import go_back, open_file, wait_for_title

KILLS = int(os.environ.get("WENDRAL_KILLS", "200"))
ENTRIES = 5000  # so that writing takes its time
SAVES = 12  # are under way when the kill comes
LONGEST_SECONDS = 0.2  # about as long as these saves take
LONGEST_WRITE_SECONDS = 0.0005
KEY = "Messwert direktes Prüfmerkmal 1.1"
DIGITS = "123456789"


class KilledSaves(EndToEndTest):
    def test_the_file_is_always_a_whole_version(self):
        self.file = self.home / "kalibrierung.xml"
        seed = random.randrange(1_000_000)
        self.random = random.Random(seed)
        versions = self.make_versions()
        met = dict.fromkeys(DIGITS, 0)
        cut_short = 0
        for number in range(1, KILLS + 1):
            self.kill_while_saving(in_a_write=number % 2 == 0)
            content = self.file.read_bytes()
            self.assertTrue(content in versions, f"kill {number}, seed {seed}: a file of {len(content)} bytes")
            self.digit = versions[content]
            met[self.digit] += 1
            cut_short += self.remove_unfinished()
        print(f"{KILLS} kills, seed {seed}; versions met: {met}; {cut_short} of the kills cut a write short")
        self.assertGreater(min(met.values()), 0, "the kills came at all moments")
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
    def typed_and_saved(digits):
        """Keys that put each digit into the current cell, stay there and save."""
        return [key for digit in digits for key in (digit, "Return", "Left", "ctrl+s")]

    def kill_while_saving(self, in_a_write):
        self.user = self.user_with_same_settings()
        with self.start() as program:
            program.keys("alt+d", *["Down"] * 4, "Return")  # the file that was opened last
            wait_for_title(program, self.file)
            program.focus("Messwerte", "table")
            typing = program.begin_keys(*self.typed_and_saved(self.next_digits()))
            if in_a_write:
                self.wait_for_a_write(typing)
            else:
                time.sleep(self.random.uniform(0, LONGEST_SECONDS))
            program.kill()
            typing.wait()  # what is left goes to nobody

    def wait_for_a_write(self, typing):
        """Until the new file is being written beside the old one, and some moments longer."""
        while len(os.listdir(self.home)) == 1 and typing.poll() is None:
            pass
        time.sleep(self.random.uniform(0, LONGEST_WRITE_SECONDS))

    def next_digits(self):
        """In turn from what the file holds on, so that every save has a change to write."""
        start = DIGITS.index(self.digit) + 1
        return [DIGITS[(start + i) % len(DIGITS)] for i in range(SAVES)]

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
