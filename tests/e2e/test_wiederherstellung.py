"""Unsaved work outlives the program: it is killed, started again, and offers what was typed."""

import base64
import binascii
import os
import re
import shutil

from e2etest import EXAMPLE, EndToEndTest, main, setUpModule, tearDownModule  # noqa: F401 - unittest calls them
from rowset import rows
from wizard import go_back, go_forward, open_file, title

CUT_OFF = "Das Programm wurde unerwartet beendet."
NOT_KEPT = "Ungespeicherte Arbeit kann zurzeit nicht gesichert werden ("
NOT_READ = "Ungespeicherte Arbeit aus einem früheren Programmlauf konnte nicht gelesen werden."
ROOM = 4096  # bytes, too few for the example
QUESTION = "Sollen die Änderungen gespeichert werden?"
FIRST = "Messwert direktes Prüfmerkmal 1.1"
SECOND = "Messwert indirektes Prüfmerkmal 1.1"


class Recovery(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.file = self.home / "kalibrierung.xml"
        shutil.copy(EXAMPLE, self.file)
        self.before = self.file.read_bytes()

    def work(self, program, first="77,25", second="44,75"):
        """A value that is taken over into the document and one that is still in the open editor."""
        open_file(program, self.file)
        go_back(program, 3)
        program.focus("Messwerte", "table")
        program.type(first + "\n" + second)
        program.wait_until(lambda: program.text("Messwerte: Eingabe") == second, "the editor holds what was typed")

    @staticmethod
    def holds(content, text):
        """Whether a file holds a text, be it inside of something packed."""
        packed = re.findall(rb"[A-Za-z0-9+/]{40,}=*", content)
        return text.encode() in content or any(text.encode("utf-16-be") in Recovery.unpacked(part) for part in packed)

    @staticmethod
    def unpacked(part):
        try:
            return base64.b64decode(part + b"==")
        except binascii.Error:  # it only looked packed
            return b""

    @staticmethod
    def content_of(path):
        """Empty for a file that is gone since its folder was read."""
        try:
            with open(path, "rb") as file:
                return file.read()
        except FileNotFoundError:
            return b""

    def kept(self, *texts):
        """The files outside of the user's own folder that hold all these texts."""
        found = []
        for folder, _, names in os.walk(self.user.folder):
            for path in (os.path.join(folder, name) for name in names):
                if not path.startswith(str(self.home)) and not path.endswith(".tmp"):
                    content = self.content_of(path)
                    if all(self.holds(content, text) for text in texts):
                        found.append(path)
        return found

    def kill_when_kept(self, program, *texts):
        program.wait_until(lambda: self.kept(*texts), f"{texts} are kept")
        program.kill()
        self.assertEqual(os.listdir(self.home), [self.file.name])
        self.assertTrue(self.file.read_bytes() == self.before, "the user's file was touched")

    def expect_offer(self, program, answer, name="kalibrierung.xml"):
        text = program.message()
        self.assertIn(CUT_OFF, text)
        self.assertIn(f"Datei: {name}", text)
        self.assertRegex(text, r"Stand: .+ \d\d:\d\d")
        program.answer(answer)

    def expect_no_offer(self, program):
        program.window(title())
        self.assertEqual(len(program.windows()), 1)
        go_forward(program, 1)  # works, so no box waits for an answer

    def expect_restored(self, program):
        """One value is in the table and the other one in the open editor again."""
        program.window(title(self.file))
        self.assertEqual(program.table("Messwerte")[0][2], "77,25")
        self.assertEqual(program.text("Messwerte: Eingabe"), "44,75")

    def end(self, program, answer=None):
        program.keys("ctrl+q")
        if answer:
            self.assertEqual(program.message(), QUESTION)
            program.press(answer)
        self.assertEqual(program.wait_for_end(), 0)

    def test_typed_values_are_restored_with_file_name_and_page(self):
        program = self.start()
        self.work(program)
        self.kill_when_kept(program, "77,25", "44,75")
        program = self.start()
        self.expect_offer(program, "Wiederherstellen")
        self.expect_restored(program)
        self.assertTrue(self.file.read_bytes() == self.before, "restoring is not saving")
        self.end(program, "Ja")
        saved = dict(rows(self.file))
        self.assertEqual((saved[FIRST], saved[SECOND]), ("77,25", "44,75"))
        for key, text in rows(EXAMPLE):
            if key not in (FIRST, SECOND, "AssistentActivePage", "IsDirty"):
                self.assertEqual(saved.get(key, "").split(), text.split(), key)
        self.expect_no_offer(self.start())

    def test_restored_work_outlives_a_second_kill(self):
        program = self.start()
        self.work(program)
        self.kill_when_kept(program, "77,25", "44,75")
        program = self.start()
        self.expect_offer(program, "Wiederherstellen")
        program.window(title(self.file))
        program.kill()
        program = self.start()
        self.expect_offer(program, "Wiederherstellen")
        self.expect_restored(program)

    def test_work_without_a_file_is_restored(self):
        self.file.unlink()
        program = self.start()
        go_forward(program, 1)
        program.focus("Direktes Prüfmerkmal: Name", "text")
        program.type("Probename")
        program.wait_until(lambda: self.kept("Probename"), "the name is kept")
        program.kill()
        program = self.start()
        self.expect_offer(program, "Wiederherstellen", "noch ohne Namen")
        program.window(title())
        self.assertEqual(program.text("Direktes Prüfmerkmal: Name"), "Probename")
        self.end(program, "Nein")
        self.assertEqual(os.listdir(self.home), [])

    def test_discarded_work_is_gone(self):
        program = self.start()
        self.work(program)
        self.kill_when_kept(program, "77,25", "44,75")
        program = self.start()
        self.expect_offer(program, "Verwerfen")
        self.expect_no_offer(program)
        self.assertEqual(self.kept("77,25"), [])
        self.end(program)
        self.expect_no_offer(self.start())

    def test_work_left_for_later_is_offered_again(self):
        program = self.start()
        self.work(program)
        self.kill_when_kept(program, "77,25", "44,75")
        program = self.start()
        self.expect_offer(program, "Später")
        self.expect_no_offer(program)
        self.end(program)
        program = self.start()
        self.expect_offer(program, "Wiederherstellen")
        self.expect_restored(program)

    def test_orderly_ends_leave_nothing(self):
        for answer in ("Ja", "Nein"):
            program = self.start()
            self.work(program, "71,5", "45,5")
            program.wait_until(lambda: self.kept("71,5"), "the value is kept")
            self.end(program, answer)
            self.assertEqual(self.kept("71,5"), [])
            shutil.copy(EXAMPLE, self.file)
        self.expect_no_offer(self.start())

    def test_saved_work_is_not_offered(self):
        program = self.start()
        self.work(program)
        program.wait_until(lambda: self.kept("77,25"), "the value is kept")
        program.keys("ctrl+s")
        program.wait_until(lambda: dict(rows(self.file))[FIRST] == "77,25", "the file is saved")
        program.wait_until(lambda: not self.kept("77,25"), "nothing is kept any more")
        program.kill()
        self.expect_no_offer(self.start())

    def test_two_programs_keep_their_own_work(self):
        first = self.start()
        self.work(first)
        first.wait_until(lambda: self.kept("77,25", "44,75"), "the values are kept")
        second = self.start()
        self.expect_no_offer(second)  # the first one is still at work
        second.enter("Direktes Prüfmerkmal: Name", "Probename")
        second.wait_until(lambda: self.kept("Probename"), "the name is kept")
        self.end(second, "Nein")
        self.assertEqual((len(self.kept("77,25")), self.kept("Probename")), (1, []))
        first.kill()
        third = self.start()
        self.expect_offer(third, "Wiederherstellen")
        self.expect_restored(third)

    def test_what_can_not_be_kept_is_told_once_and_disturbs_nothing(self):
        program = self.start()
        open_file(program, self.file)
        go_back(program, 3)
        program.limit_file_size(ROOM)
        program.focus("Messwerte", "table")
        program.type("77,25\n44,75")
        told = program.wait_until(lambda: self.notices(program), "it is told that nothing is kept")
        self.assertEqual(told, [NOT_KEPT + "Datenträger voll, 61). Bitte speichern Sie öfter."])
        # Typing went on.
        program.wait_until(lambda: program.text("Messwerte: Eingabe") == "44,75", "the editor holds what was typed")
        program.type("\n")
        program.wait_until(lambda: program.table("Messwerte")[0][2:] == ["77,25", "44,75"], "the table holds it")
        program.limit_file_size()
        program.wait_until(lambda: self.kept("77,25", "44,75"), "it is kept once there is room")
        program.wait_until(lambda: not self.notices(program), "the notice goes")
        program.kill()
        program = self.start()
        self.expect_offer(program, "Wiederherstellen")
        program.window(title(self.file))
        self.assertEqual(program.table("Messwerte")[0][2:], ["77,25", "44,75"])

    def test_a_disk_without_any_room_is_named(self):
        program = self.start()
        open_file(program, self.file)
        go_back(program, 3)
        program.limit_file_size(0)
        program.focus("Messwerte", "table")
        program.type("77,25\n44,75")
        told = program.wait_until(lambda: self.notices(program), "it is told that nothing is kept")
        self.assertEqual(told, [NOT_KEPT + "Datenträger voll, 61). Bitte speichern Sie öfter."])

    def test_a_place_that_can_not_be_written_disturbs_nothing(self):
        data = self.user.folder / "data"
        data.chmod(0o555)
        self.addCleanup(data.chmod, 0o755)
        program = self.start()
        self.work(program)
        told = program.wait_until(lambda: self.notices(program), "it is told that nothing is kept")
        self.assertRegex(told[0], re.escape(NOT_KEPT) + r".+, 70\)\. Bitte speichern Sie öfter\.")
        self.end(program, "Ja")
        self.assertEqual(dict(rows(self.file))[SECOND], "44,75")

    def notices(self, program):
        return [control.get_name() for control in program.controls(program.active_window())
                if control.get_name().startswith(NOT_KEPT)]

    def test_what_can_not_be_read_is_told_once(self):
        program = self.start()
        self.work(program)
        self.kill_when_kept(program, "77,25", "44,75")
        with open(self.kept("77,25")[0], "r+b") as file:
            file.truncate(1000)
        program = self.start()
        self.assertIn(NOT_READ, program.message())
        program.answer("OK")
        self.expect_no_offer(program)
        self.end(program)
        self.expect_no_offer(self.start())


if __name__ == "__main__":
    main()
