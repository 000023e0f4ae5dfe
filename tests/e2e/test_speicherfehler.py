"""Saves that can't be done, on each way out of the program: calibration file, spreadsheet, PDF.

The file is the old or the new one as a whole, the message says what went wrong, nothing counts as saved that is not.
"""

import io
import os
import shutil
import zipfile

from e2etest import (EndToEndTest, long_example, main, setUpModule,  # noqa: F401 - unittest calls them
                     tearDownModule)
from rowset import rows
from wizard import SAVING, choose_file, go_back, go_forward, open_file, title

OLD = b"old contents, to be kept or replaced as a whole\n"
STEP = 4096
LONGEST_NAME = 250
QUESTION = "Sollen die Änderungen gespeichert werden?"


class SaveFaults:
    """What holds for every way; the classes below say how the save is done there."""

    def setUp(self):
        super().setUp()
        self.document = self.home / "kalibrierung.xml"
        self.document.write_bytes(long_example(500))
        self.before = self.document.read_bytes()
        self.folder = self.home / "ziel"
        self.folder.mkdir()
        self.target = self.folder / ("a" + self.suffix)
        self.target.write_bytes(OLD)
        self.program = self.start()
        open_file(self.program, self.document)
        go_back(self.program, 3)
        self.program.focus("Messwerte", "table")
        self.program.type("77,5\n")
        self.begin()

    def save(self, target=None, meanwhile=lambda: None):
        """Saves to target; what is done meanwhile, it does when the program has asked whether to replace a file."""
        target = target or self.target
        self.ask_for_a_name()
        exists = target.exists()
        choose_file(self.program, self.dialog, target)
        if exists:
            self.assertIn(target.name, self.program.message())
            meanwhile()
            self.program.answer("Ja")

    def expect_failure(self, description, number):
        """One box, which tells the reason; then everything is as it was before the save."""
        context, reason = self.program.message().splitlines()
        self.assertEqual(context, self.context)
        self.assertTrue(reason.startswith(description), reason)
        self.assertTrue(reason.endswith(f" ({number})"), reason)
        self.program.answer("OK")
        self.after_failure()

    def expect_saved(self, target=None):
        target = target or self.target
        self.program.wait_until(lambda: target.exists() and self.is_whole(target.read_bytes()),
                                f"{target.name} is the new file")
        self.after_success(target)

    def expect_unsaved_changes(self):
        self.program.keys("alt+F4")
        self.assertEqual(self.program.message(), QUESTION)
        self.program.answer("Abbrechen")
        self.program.window()

    def expect_folder(self, *names):
        self.assertEqual(sorted(os.listdir(self.folder)), sorted(names))

    def expect_old_file(self):
        self.assertTrue(self.target.read_bytes() == OLD, "the old file was touched")
        self.assertTrue(self.document.read_bytes() == self.before, "the document's file was touched")

    def test_a_full_disk_leaves_the_old_file_until_there_is_room(self):
        trial = self.home / ("probe" + self.suffix)
        self.save(trial)
        self.expect_saved(trial)
        size = trial.stat().st_size
        self.make_dirty()
        steps = range(0, size, STEP)
        self.assertGreater(len(steps), 2)
        for room in steps:
            self.program.limit_file_size(room)
            self.save()
            self.expect_failure("Datenträger voll", 61)
            self.assertTrue(self.target.read_bytes() == OLD, f"the old file was touched with room for {room} bytes")
            self.expect_folder(self.target.name)
        self.program.limit_file_size()
        self.save()
        self.expect_saved()
        self.expect_folder(self.target.name)

    def test_a_folder_without_write_permission(self):
        self.folder.chmod(0o555)
        self.addCleanup(self.folder.chmod, 0o755)
        self.save()
        self.expect_failure("Zugriff verweigert", 70)
        self.expect_old_file()

    def test_a_file_without_write_permission(self):
        self.target.chmod(0o444)
        self.save()
        self.expect_failure("Zugriff verweigert", 70)
        self.expect_old_file()
        self.expect_folder(self.target.name)

    def test_a_target_that_vanishes_is_made_anew(self):
        self.save(meanwhile=self.target.unlink)
        self.expect_saved()

    def test_a_folder_that_vanishes(self):
        self.save(meanwhile=lambda: shutil.rmtree(self.folder))
        self.expect_failure("Pfad nicht gefunden", 76)
        self.assertFalse(self.folder.exists())

    def test_a_target_that_becomes_a_folder(self):
        def exchange():
            self.target.unlink()
            self.target.mkdir()
        self.save(meanwhile=exchange)
        self.expect_failure("Fehler beim Zugriff auf Pfad/Datei", 75)
        self.expect_folder(self.target.name)

    def test_a_name_of_250_bytes(self):
        target = self.folder / ("n" * (LONGEST_NAME - len(self.suffix)) + self.suffix)
        self.save(target)
        self.expect_saved(target)
        self.expect_folder(self.target.name, target.name)

    def test_a_symbolic_link_is_followed_and_stays_one(self):
        link = self.folder / ("link" + self.suffix)
        link.symlink_to(self.target.name)
        self.save(link)
        self.expect_saved(link)
        self.assertTrue(link.is_symlink())
        self.assertTrue(self.is_whole(self.target.read_bytes()), "the file behind the link is not the new one")

    def test_another_name_of_the_file_keeps_the_old_contents(self):
        other = self.folder / ("anderer" + self.suffix)
        os.link(self.target, other)
        self.save()
        self.expect_saved()
        self.assertTrue(other.read_bytes() == OLD, "the other name lost the old contents")


class CalibrationFile(SaveFaults, EndToEndTest):
    dialog = SAVING
    suffix = ".xml"
    context = "Beim Speichern der Datei ist ein Fehler aufgetreten:"

    def begin(self):
        pass

    def ask_for_a_name(self):
        self.program.keys("ctrl+shift+s")

    def is_whole(self, content):
        found = dict(rows(io.BytesIO(content))) if content.rstrip().endswith(b"</xml>") else {}
        return found.get("Messwert direktes Prüfmerkmal 1.1", "").startswith("77,5") and "Weiterer Eintrag 499" in found

    def make_dirty(self):
        self.document = self.home / "probe.xml"
        self.program.type("77,51\n")
        self.program.wait_until(lambda: self.program.table("Messwerte")[0][3] == "77,51", "the value is taken over")

    def after_failure(self):
        self.program.window(title(self.document))
        self.expect_unsaved_changes()

    def after_success(self, target):
        self.program.window(title(target))

    def test_saving_under_the_old_name_after_the_file_was_removed_makes_it_anew(self):
        self.document.unlink()
        self.program.keys("ctrl+s")
        self.expect_saved(self.document)

    def test_saving_under_the_old_name_after_the_folder_was_removed(self):
        self.save()
        self.expect_saved()
        self.document = self.target
        self.program.type("77,52\n")
        shutil.rmtree(self.folder)
        self.program.keys("ctrl+s")
        self.expect_failure("Pfad nicht gefunden", 76)

    def test_what_could_not_be_saved_is_saved_on_closing(self):
        self.program.limit_file_size(0)
        self.program.keys("ctrl+s")
        self.expect_failure("Datenträger voll", 61)
        self.expect_old_file()
        self.program.keys("alt+F4")
        self.program.message()
        self.program.press("Ja")
        self.program.wait_until(lambda: self.program.message().startswith(self.context), "the failure is told")
        self.expect_failure("Datenträger voll", 61)  # and the program has not ended
        self.program.limit_file_size()
        self.program.keys("alt+F4")
        self.program.answer("Ja")
        self.assertEqual(self.program.wait_for_end(), 0)
        self.assertTrue(self.is_whole(self.document.read_bytes()))


class Output:
    """Of the document, which stays unsaved whatever becomes of it."""

    def make_dirty(self):
        pass

    def after_failure(self):
        self.program.window(self.window)

    def after_success(self, target):
        self.program.window(self.window)

    def test_the_document_stays_unsaved(self):
        self.save()
        self.expect_saved()
        self.program.keys("alt+F4")
        self.program.window(title(self.document))
        self.assertTrue(self.document.read_bytes() == self.before, "the document's file was touched")
        self.expect_unsaved_changes()


class Spreadsheet(Output, SaveFaults, EndToEndTest):
    dialog = "Export nach MS Excel"
    window = "Export in dritte Programme"
    suffix = ".xlsx"
    context = "Beim Exportieren der Daten ist ein Fehler aufgetreten:"

    def begin(self):
        go_forward(self.program, 4)
        go_forward(self.program, 5)
        self.program.press("Daten exportieren")
        self.program.window(self.window)
        self.program.focus("Aktionen", "list")
        self.program.keys("space")

    def ask_for_a_name(self):
        self.program.window(self.window)
        self.program.press("Ok")

    def is_whole(self, content):
        if not zipfile.is_zipfile(io.BytesIO(content)):
            return False
        with zipfile.ZipFile(io.BytesIO(content)) as book:
            return book.testzip() is None and "xl/workbook.xml" in book.namelist()


    def expect_no_complaint(self, complaints):
        # The library that writes spreadsheets says itself what the message says.
        super().expect_no_complaint("".join(line for line in complaints.splitlines(keepends=True)
                                            if not line.startswith("[ERROR]")))


class Pdf(Output, SaveFaults, EndToEndTest):
    dialog = "Als PDF speichern"
    window = "Protokoll"
    suffix = ".pdf"
    context = "Folgender Fehler ist aufgetreten:"

    def begin(self):
        go_forward(self.program, 4)
        go_forward(self.program, 5)
        self.program.press("Protokoll erzeugen")
        self.program.answer("OK")  # no printer is installed
        self.program.window(self.window)

    def ask_for_a_name(self):
        self.program.window(self.window)
        self.program.press("Als PDF speichern ...")

    def is_whole(self, content):
        return content.startswith(b"%PDF-") and content.rstrip().endswith(b"%%EOF")


if __name__ == "__main__":
    main()
