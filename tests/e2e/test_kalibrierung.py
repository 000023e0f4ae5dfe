"""A typical calibration from the welcome page to the saved file, with German and with English numbers."""

import pathlib
import re

from e2etest import EndToEndTest, main, setUpModule, tearDownModule  # noqa: F401 - unittest calls them
from evaluation import Evaluation
from rowset import rows
from wizard import SAVING, choose_file, go_forward, title, type_rows

EXPECTED = pathlib.Path(__file__).parent / "erwartet" / "kalibrierung.xml"
# Example data: four fields of three to five points, the covariable and then pairs of direct and indirect value.
FIELDS = (
    ("2", (("94,8", "28,4"), ("95,6", "31,2"), ("95,1", "30,1"), ("94,3", "26,9"))),
    ("4", (("96,7", "37,8"), ("97,4", "40,6"), ("96,2", "36,1"), ("97", "38,9"), ("97,2", "40"))),
    ("6", (("98,1", "44,7"), ("98,9", "47,2"), ("97,8", "43"))),
    ("8", (("99,2", "49,8"), ("100,1", "53,5"), ("98,8", "48,6"), ("99,6", "51,125"))),
)
# What is typed with more decimals than the characteristic has is rounded to them when the cell is left.
SHOWN = [(value, [[Evaluation.display(text, 2) for text in pair] for pair in pairs]) for value, pairs in FIELDS]
GERMAN_NUMBER = re.compile(r"\d+,\d+")
PROTOCOL_DATA = ("Kies, sandig", "GW", "8", "5,2%")  # its first lines
VERDICT = ("Das Bestimmtheitsmaß zwischen dem direkten und indirekten Prüfmerkmal liegt über dem minimal "
           "erforderlichen Wert von {}.\nSomit kann die ermittelte Kalibriergerade für die Umrechnung zwischen den "
           "Prüfmerkmalen genutzt werden.")


class TypicalCalibration(EndToEndTest):
    def local(self, german):
        """A number that is written in German here, as this test's user writes it."""
        return german

    def test_from_the_welcome_page_to_the_saved_file(self):
        program = self.start()
        go_forward(program, 1)
        self.enter_characteristics(program)
        go_forward(program, 2)
        self.enter_fields(program)
        go_forward(program, 3)
        self.enter_values(program)
        go_forward(program, 4)
        self.read_results(program)
        go_forward(program, 5)
        self.make_protocol(program)
        target = self.home / "kalibrierung.xml"
        program.press("Datei speichern")
        choose_file(program, SAVING, target)
        program.window(title(target))
        self.compare(target)
        program.keys("ctrl+q")
        self.assertEqual(program.wait_for_end(), 0)

    def enter_characteristics(self, program):
        program.focus("Direktes Prüfmerkmal: Name", "text")
        program.keys("Down", "Tab")  # the first preset; the other two boxes follow it
        program.wait_until(lambda: program.text("Direktes Prüfmerkmal: Einheit") == "%", "the preset is complete")
        self.assertEqual(program.text("Direktes Prüfmerkmal: Name"), "Verdichtungsgrad")
        self.assertEqual(program.text("Direktes Prüfmerkmal: Formelzeichen"), "DPr")
        program.focus("Indirektes Prüfmerkmal: Formelzeichen", "text")
        program.type("F\t")
        program.wait_until(lambda: program.text("Indirektes Prüfmerkmal: Einheit") == "-", "the preset is complete")
        self.assertEqual(program.text("Indirektes Prüfmerkmal: Name"),
                         "Messwert Flächendeckende Dynamische Verdichtungskontrolle")
        program.enter("Anzahl der Prüffelder", str(len(FIELDS)))

    def enter_fields(self, program):
        names = [(f"Prüffeld {number}", str(len(pairs)), value) for number, (value, pairs) in enumerate(FIELDS, 1)]
        type_rows(program, "Werte der Prüffelder", names)
        program.wait_until(lambda: program.table("Werte der Prüffelder") == [list(row) for row in names],
                           "the table holds what was typed")

    def enter_values(self, program):
        table = [pair for _, pairs in FIELDS for pair in pairs]
        type_rows(program, "Messwerte", [[self.local(text) for text in pair] for pair in table])
        shown = [[self.local(text) for text in pair] for _, pairs in SHOWN for pair in pairs]
        program.wait_until(lambda: [row[2:] for row in program.table("Messwerte")] == shown,
                           "the table holds what was typed")
        self.assertEqual(program.table("Messwerte")[4][:2], ["2 (Anzahl der Übergänge Z = 4)", "Prüfpunkt 1"])

    def read_results(self, program):
        shown = [row for row in program.table("Plausibilitätsprüfung", "tree")]
        values = [row[1] for row in shown if row[1]]
        self.assertEqual(values, [self.local(text) for text in Evaluation(SHOWN).results()])
        self.assertEqual([row[2] for row in shown if row[2]], ["gut"])
        self.assertEqual(program.text("Urteil"), VERDICT.format(self.local("0,65")))

    def make_protocol(self, program):
        program.press("Protokoll erzeugen")
        program.answer("OK")  # no printer is installed
        program.window("Protokoll")
        program.press("Protokolldaten bearbeiten")
        self.enter_protocol_data(program)
        program.window("Protokoll")
        program.press("Als PDF speichern ...")
        target = self.home / "protokoll.pdf"
        choose_file(program, "Als PDF speichern", target)
        program.wait_until(lambda: target.exists() and target.read_bytes().rstrip().endswith(b"%%EOF"),
                           "the protocol is there as PDF")
        program.window("Protokoll")
        program.keys("alt+F4")
        program.window(title())

    def enter_protocol_data(self, program):
        program.window("Protokolldaten")
        for text in PROTOCOL_DATA:
            program.type(text + "\n")
        program.wait_until(lambda: [row[1] for row in program.table("Protokolldaten")][:len(PROTOCOL_DATA)]
                           == list(PROTOCOL_DATA), "the table holds what was typed")
        program.press("OK")

    def compare(self, target):
        expected = [(key, self.in_file(text)) for key, text in rows(EXPECTED)]
        self.assertEqual(rows(target), expected)

    def in_file(self, text):
        return text


class WithEnglishNumbers(TypicalCalibration):
    numbers = "en_US"

    def local(self, german):
        return german.translate(str.maketrans(",.", ".,"))

    def in_file(self, text):
        words = {"Wahr": "True", "Falsch": "False"}
        return self.local(text) if GERMAN_NUMBER.fullmatch(text) else words.get(text, text)


if __name__ == "__main__":
    main()
