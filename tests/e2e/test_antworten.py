"""Opening, New and closing with unsaved entries, with each answer to the question whether to save."""

import shutil

from e2etest import EXAMPLE, EndToEndTest, main, setUpModule, tearDownModule  # noqa: F401 - unittest calls them
from rowset import rows
from wizard import OPENING, SAVING, choose_file, go_back, go_forward, open_file, title

QUESTION = "Sollen die Änderungen gespeichert werden?"
KEY = "Messwert direktes Prüfmerkmal 1.1"


class Answers(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.file = self.home / "kalibrierung.xml"
        self.other = self.home / "andere.xml"
        shutil.copy(EXAMPLE, self.file)
        shutil.copy(EXAMPLE, self.other)
        self.before = self.file.read_bytes()

    def start_with_typed_value(self):
        """The file is open and a value is typed, the last digit still in the open editor."""
        program = self.start()
        open_file(program, self.file)
        go_back(program, 3)
        program.focus("Messwerte", "table")
        program.type("77,5")
        program.wait_until(lambda: program.text("Messwerte: Eingabe") == "77,5", "the editor holds what was typed")
        return program

    def ask(self, program, keys, answer):
        program.keys(keys)
        self.assertEqual(program.message(), QUESTION)
        program.answer(answer)

    def expect_saved(self):
        self.assertEqual(dict(rows(self.file))[KEY], "77,5")

    def expect_untouched(self):
        self.assertTrue(self.file.read_bytes() == self.before, "the file was written")

    def expect_as_it_was(self, program):
        """After a command that was given up: same file, same page, the value still there and still unsaved."""
        program.window(title(self.file))
        self.assertEqual(program.table("Messwerte")[0][2], "77,50")
        self.expect_untouched()
        self.ask(program, "ctrl+q", "Ja")
        self.assertEqual(program.wait_for_end(), 0)
        self.expect_saved()

    def expect_new_document(self, program):
        program.window(title())
        self.assertTrue(program.find("Diese Seite nicht mehr anzeigen.", "check box"))
        go_forward(program, 1)
        self.assertEqual(program.text("Direktes Prüfmerkmal: Name"), "")
        program.keys("ctrl+q")
        self.assertEqual(program.wait_for_end(), 0)  # nothing to ask about

    def expect_the_other_file(self, program):
        choose_file(program, OPENING, self.other)
        program.window(title(self.other))
        go_back(program, 3)
        self.assertEqual(program.table("Messwerte")[0][2], "94,80")
        program.keys("ctrl+q")
        self.assertEqual(program.wait_for_end(), 0)

    def test_new_after_yes_saves_and_clears(self):
        program = self.start_with_typed_value()
        self.ask(program, "ctrl+n", "Ja")
        self.expect_new_document(program)
        self.expect_saved()

    def test_new_after_no_clears(self):
        program = self.start_with_typed_value()
        self.ask(program, "ctrl+n", "Nein")
        self.expect_new_document(program)
        self.expect_untouched()

    def test_new_after_cancel_leaves_everything(self):
        program = self.start_with_typed_value()
        self.ask(program, "ctrl+n", "Abbrechen")
        self.expect_as_it_was(program)

    def test_open_after_yes_saves_and_opens(self):
        program = self.start_with_typed_value()
        self.ask(program, "ctrl+o", "Ja")
        self.expect_the_other_file(program)
        self.expect_saved()

    def test_open_after_no_opens(self):
        program = self.start_with_typed_value()
        self.ask(program, "ctrl+o", "Nein")
        self.expect_the_other_file(program)
        self.expect_untouched()

    def test_open_after_no_but_cancelled_leaves_everything(self):
        program = self.start_with_typed_value()
        self.ask(program, "ctrl+o", "Nein")
        program.window(OPENING)
        program.keys("Escape")
        self.expect_as_it_was(program)

    def test_open_after_cancel_leaves_everything(self):
        program = self.start_with_typed_value()
        self.ask(program, "ctrl+o", "Abbrechen")
        self.expect_as_it_was(program)

    def test_recent_file_after_no_opens(self):
        program = self.start_with_typed_value()
        program.keys("Return")  # the menu keys are for the window, not for the editor
        self.ask_from_menu(program, "Nein")
        program.window(title(self.file))
        go_back(program, 3)
        self.assertEqual(program.table("Messwerte")[0][2], "94,80")
        self.expect_untouched()

    def ask_from_menu(self, program, answer):
        program.keys("alt+d", *["Down"] * 4)
        self.ask(program, "Return", answer)

    def test_closing_after_yes_saves(self):
        program = self.start_with_typed_value()
        self.ask(program, "alt+F4", "Ja")
        self.assertEqual(program.wait_for_end(), 0)
        self.expect_saved()

    def test_closing_after_no_ends(self):
        program = self.start_with_typed_value()
        self.ask(program, "alt+F4", "Nein")
        self.assertEqual(program.wait_for_end(), 0)
        self.expect_untouched()

    def test_closing_after_cancel_leaves_everything(self):
        program = self.start_with_typed_value()
        self.ask(program, "alt+F4", "Abbrechen")
        self.expect_as_it_was(program)

    def test_closing_after_yes_without_a_file_name_asks_for_one(self):
        program = self.start()
        go_forward(program, 1)
        program.enter("Direktes Prüfmerkmal: Name", "Probe")
        self.ask(program, "ctrl+q", "Ja")
        program.window(SAVING)
        program.keys("Escape")  # then nothing is saved and nothing may end
        program.window(title())
        self.assertEqual(program.text("Direktes Prüfmerkmal: Name"), "Probe")
        target = self.home / "neu.xml"
        self.ask(program, "ctrl+q", "Ja")
        choose_file(program, SAVING, target)
        self.assertEqual(program.wait_for_end(), 0)
        self.assertEqual(dict(rows(target))["Direktes Prüfmerkmal Name"], "Probe")


if __name__ == "__main__":
    main()
