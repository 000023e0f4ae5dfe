"""What the tests have in common: one desk for all tests of a process, a new user for each test."""

import os
import pathlib
import signal
import unittest

from desk import Desk
from program import Program

EXAMPLE = pathlib.Path(os.environ["WENDRAL_EXAMPLE"])  # a calibration file that opens on the plausibility page

_desk = None


def setUpModule():
    global _desk
    _desk = Desk().__enter__()


def tearDownModule():
    _desk.__exit__()


def long_example(entries):
    """The bytes of the example with so many further entries, which the program keeps as they are."""
    start, end = EXAMPLE.read_bytes().split(b"</rs:insert>")
    rows = (f"<z:row Variable='Weiterer Eintrag {i}' Wert='Beispiel {i}'/>\r\n" for i in range(entries))
    return start + "".join(rows).encode() + b"</rs:insert>" + end


class EndToEndTest(unittest.TestCase):
    numbers = "de_DE"

    def setUp(self):
        self.user = self.new_user()
        self.home = self.user.home

    def new_user(self):
        return _desk.user(self.numbers)

    def start(self, *arguments):
        """Starts the program; it is ended when the test ends, and must not have crashed or complained until then."""
        program = Program(_desk, self.user, arguments)
        self.addCleanup(self._end, program)
        return program

    def _end(self, program):
        program.kill()
        self.assertIn(program.process.returncode, (0, -signal.SIGKILL), f"the program crashed: {program.complaints()}")
        self.expect_no_complaint(program.complaints())

    def expect_no_complaint(self, complaints):
        self.assertEqual(complaints, "")


def main():
    unittest.main(verbosity=2, warnings="ignore")
