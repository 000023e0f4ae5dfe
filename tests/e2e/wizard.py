"""What a user does with the program, in whole steps: enter a calibration, save it, open one."""

from program import PRODUCT

STEPS = ("Schritt 0 von 5: ", "Schritt 1 von 5: Eingangsparameter", "Schritt 2 von 5: Prüffelder",
         "Schritt 3 von 5: Messwerte", "Schritt 4 von 5: Plausibilität", "Schritt 5 von 5: Ausgabe")
OPENING = "Kalibrierung öffnen"
SAVING = "Kalibrierung speichern unter"


def go_forward(program, page):
    """Leaves the page before by its button and waits for page, a number from 1 to 5."""
    program.press("weiter >")
    program.find(STEPS[page])


def go_back(program, page):
    program.press("< zurück")
    program.find(STEPS[page])


def type_rows(program, table, rows):
    """Types rows of texts from the current cell on, each text committed by Enter."""
    program.focus(table, "table")
    for row in rows:
        program.type("".join(text + "\n" for text in row))


def choose_file(program, title, path):
    """Types a path into the file dialog of that title."""
    program.window(title)
    program.enter("Dateiname:", str(path))
    program.keys("Return")


def open_file(program, path):
    program.window()
    program.keys("ctrl+o")
    choose_file(program, OPENING, path)
    wait_for_title(program, path)


def title(path=None):
    """The title of the main window with that file."""
    return f"{PRODUCT} - {path.name}" if path else PRODUCT


def wait_for_title(program, path=None):
    program.window(title(path))
