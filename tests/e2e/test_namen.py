"""Every control of every window has an accessible name of its own, so that a screen reader can tell it."""

import collections
import shutil

from e2etest import EXAMPLE, EndToEndTest, main, setUpModule, tearDownModule  # noqa: F401 - unittest calls them
from wizard import OPENING, SAVING, STEPS, choose_file, go_back, go_forward, open_file, title

WORKED_WITH = ("push button", "toggle button", "check box", "radio button", "text", "password text", "spin button",
               "combo box", "slider", "table", "tree", "list", "scroll bar", "menu item")


class Names(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.file = self.home / "kalibrierung.xml"
        shutil.copy(EXAMPLE, self.file)
        self.program = self.start()

    def controls_to_name(self, window):
        """What can be worked with, without what lies inside of such a control."""
        for control in self.program.children(window):
            if not self.program.is_(control, "SHOWING"):
                continue
            role = control.get_role_name()
            if role in WORKED_WITH or self.program.is_(control, "FOCUSABLE"):
                yield control
                if role != "combo box":
                    continue
            yield from self.controls_to_name(control)

    @staticmethod
    def name_of(control):
        # A combo box is called by what is chosen in it; its own name is the description.
        return control.get_description() if control.get_role_name() == "combo box" else control.get_name()

    def check(self, expected, window=None):
        """The controls are those expected, by name, and each name is there once."""
        window = window or self.program.active_window()
        found = list(self.controls_to_name(window))
        nameless = [control.get_role_name() for control in found if not self.name_of(control).strip()]
        self.assertEqual(nameless, [], f"in „{window.get_name()}“ without a name")
        # A combo box that can be typed into is one control with its text box.
        names = collections.Counter(self.name_of(control) for control in found
                                    if control.get_role_name() != "combo box")
        boxes = collections.Counter(self.name_of(control) for control in found
                                    if control.get_role_name() == "combo box")
        twice = [name for counted in (names, boxes) for name, count in counted.items() if count > 1]
        self.assertEqual(twice, [], f"in „{window.get_name()}“ more than once")
        missing = set(expected) - set(names) - set(boxes)
        self.assertEqual(missing, set(), f"in „{window.get_name()}“ missing")

    FRAME = ("< zurück", "weiter >", "Schließen", "Datei", "Hilfe")

    def test_pages_of_the_wizard(self):
        self.check((*self.FRAME, "Info...", "Diese Seite nicht mehr anzeigen."))
        go_forward(self.program, 1)
        group = ("Name", "Formelzeichen", "Einheit", "Nachkommastellen")
        self.check((*self.FRAME, "Anzahl der Prüffelder",
                    *(f"{kind}: {what}" for kind in ("Direktes Prüfmerkmal", "Indirektes Prüfmerkmal", "Kovariable")
                      for what in group)))
        open_file(self.program, self.file)
        self.check((*self.FRAME, "Plausibilitätsprüfung", "Urteil", "Optionen..."))
        go_forward(self.program, 5)
        self.check((*self.FRAME, "Datei speichern", "Protokoll erzeugen", "Daten exportieren"))
        go_back(self.program, 4)
        go_back(self.program, 3)
        self.check((*self.FRAME, "Messwerte"))
        go_back(self.program, 2)
        self.check((*self.FRAME, "Werte der Prüffelder", "Namen der Prüfpunkte"))

    def test_open_cell_editors(self):
        open_file(self.program, self.file)
        go_back(self.program, 3)
        for page, tables in ((3, ("Messwerte",)), (2, ("Werte der Prüffelder", "Namen der Prüfpunkte"))):
            if page == 2:
                go_back(self.program, 2)
            for table in tables:
                self.program.focus(table, "table")
                self.program.keys("5")
                self.program.find(table + ": Eingabe", "text")
                self.check((*self.FRAME, table, table + ": Eingabe"))
                self.program.keys("Escape")

    def test_menus(self):
        open_file(self.program, self.file)
        for key, entries in (("alt+d", ("Neu", "Öffnen...", "Speichern", "Speichern unter...", str(self.file),
                                        "Beenden")), ("alt+h", ("Hilfethemen", "Info..."))):
            self.program.keys(key)
            menu = self.program.wait_until(lambda: self.open_menu(entries[0]), f"the menu of {key} is open")
            self.check(entries, menu)
            self.program.keys("Escape", "Escape")
            self.program.wait_until(lambda: not self.open_menu(entries[0]), "the menu is closed")

    def open_menu(self, first):
        return next((control for control in self.program.controls(self.program.windows()[0])
                     if control.get_role_name() == "popup menu"
                     and any(entry.get_name() == first for entry in self.program.children(control))), None)

    def test_windows(self):
        open_file(self.program, self.file)
        self.program.press("Optionen...")
        self.program.window("Berechnungsoptionen")
        kinds = ("Mittelwerte", "Varianzen", "Kovarianzen", "Bestimmtheitsmaße", "Anstieg Gerade", "Nullwert Gerade")
        self.check(("Ok", "Abbruch", "Minimales Bestimmtheitsmaß", *("Nachkommastellen " + kind for kind in kinds)))
        self.close(title(self.file))
        self.program.keys("alt+h", "i")
        self.program.window("Info")
        self.check(("Kontakt", "Schließen"))
        self.close(title(self.file))
        go_forward(self.program, 5)
        self.program.press("Daten exportieren")
        self.program.window("Export in dritte Programme")
        self.check(("Aktionen", "Ok", "Abbruch"))
        self.close(title(self.file))

    def test_protocol(self):
        open_file(self.program, self.file)
        go_forward(self.program, 5)
        self.program.press("Protokoll erzeugen")
        self.program.message()
        self.check(("OK",))
        self.program.answer("OK")
        self.program.window("Protokoll")
        self.check(("Dokument neu aufbauen", "Drucken ...", "Drucker einrichten ...", "Protokolldaten bearbeiten",
                    "Als PDF speichern ...", "Protokolltyp", "Zoom", "Seiten"))
        self.program.press("Protokolldaten bearbeiten")
        self.program.window("Protokolldaten")
        self.check(("Protokolldaten", "OK", "Abbrechen"))
        self.program.type("x")
        self.program.find("Unterlage Bodenart DIN 4022", "text")
        self.check(("Protokolldaten", "Unterlage Bodenart DIN 4022", "OK", "Abbrechen"))
        self.program.keys("Escape", "Escape")
        self.program.window("Protokoll")

    def check_file_dialog(self, title, button):
        window = self.program.window(title)
        self.check(("Dateiname:", "Suchen in", "Dateien des Typs", button, "Abbrechen"), window)

    def test_dialogs_for_the_calibration(self):
        self.program.keys("ctrl+o")
        self.check_file_dialog(OPENING, "Öffnen")
        self.close(title())
        self.program.keys("ctrl+shift+s")
        self.check_file_dialog(SAVING, "Speichern")
        choose_file(self.program, SAVING, self.file)
        self.program.message()
        self.check(("Ja", "Nein"))
        self.program.answer("Nein")
        self.check_file_dialog(SAVING, "Speichern")
        self.close(title())

    def test_dialogs_for_outputs(self):
        open_file(self.program, self.file)
        go_forward(self.program, 5)
        self.program.press("Daten exportieren")
        self.program.window("Export in dritte Programme")
        self.program.focus("Aktionen", "list")
        self.program.keys("space")
        self.program.press("Ok")
        self.check_file_dialog("Export nach MS Excel", "Speichern")
        self.close("Export in dritte Programme")
        self.close(title(self.file))
        self.program.press("Protokoll erzeugen")
        self.program.answer("OK")  # no printer is installed
        self.program.window("Protokoll")
        self.program.press("Als PDF speichern ...")
        self.check_file_dialog("Als PDF speichern", "Speichern")
        self.close("Protokoll")

    def test_conflict(self):
        open_file(self.program, self.file)
        go_back(self.program, 3)
        self.program.focus("Messwerte", "table")
        self.program.type("77,5\n")
        self.file.write_bytes(self.file.read_bytes().replace(b"Verdichtungsgrad", b"Anderer Name"))
        self.program.keys("ctrl+s")
        self.assertIn("wurde inzwischen geändert", self.program.message())
        self.check(("Meine Fassung behalten", "Unter anderem Namen...", "Abbrechen"))
        self.program.answer("Abbrechen")
        self.program.window(title(self.file))

    def test_questions(self):
        go_forward(self.program, 1)
        self.program.enter("Direktes Prüfmerkmal: Name", "Probe")
        self.program.keys("ctrl+n")
        self.program.message()
        self.check(("Ja", "Nein", "Abbrechen"))
        self.program.answer("Abbrechen")
        self.program.find(STEPS[1])

    def test_recovery(self):
        go_forward(self.program, 1)
        self.program.enter("Direktes Prüfmerkmal: Name", "Probe")
        self.program.wait_until(lambda: any(path.stat().st_size for path in
                                            self.user.folder.rglob("Wiederherstellung/*.xml")), "the work is kept")
        self.program.kill()
        self.program = self.start()
        self.program.message()
        self.check(("Wiederherstellen", "Verwerfen", "Später"))
        self.program.answer("Verwerfen")
        self.program.window(title())

    def test_failures(self):
        self.file.write_bytes(b"no calibration")
        self.program.keys("ctrl+o")
        choose_file(self.program, OPENING, self.file)
        self.assertIn("(321)", self.program.message())
        self.check(("OK",))
        self.program.answer("OK")
        self.program.window(title())

    def close(self, back_to):
        self.program.keys("Escape")
        self.program.window(back_to)


if __name__ == "__main__":
    main()
