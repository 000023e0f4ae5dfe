"""Limits, defaults, decimals and keys that the manual names, each read from the source that decides it."""
import re

# (source, what captures the numbers or keys there, page, the manual's words around them)
FACTS = (
    ("wizard/zahlen.h", r"minimumCount = (\d+);.*?maximumCount = (\d+);", "seiten.html",
     "Anzahl der Prüffelder: {0} bis {1}"),
    ("wizard/zahlen.h", r"minimumCount = (\d+);.*?maximumCount = (\d+);", "seiten.html",
     "Anzahl von Prüfpunkten ({0} bis {1}"),
    ("wizard/zahlen.h", r"minimumCount = (\d+);.*?maximumCount = (\d+);", "meldungen.html",
     "{0} bis {1} Prüffelder sind möglich"),
    ("wizard/zahlen.h", r"minimumCount = (\d+);.*?maximumCount = (\d+);", "meldungen.html",
     "{0} bis {1} Prüfpunkte je Prüffeld sind möglich"),
    ("wizard/zahlen.h", r"minimumCount = (\d+);", "werte.html", "weil es kleiner als {0} ist"),
    ("core/kalibrierung.cpp", r"defaultPoints = (\d+);", "seiten.html", "Vorgabe: {0})"),
    ("core/kalibrierung.cpp", r"setMinBestimmtheitsmaßIndirektDirekt\(([\d.]+)\)", "optionen.html", "Vorgabe ist {0}."),
    ("core/kalibrierung.cpp", r"setNachkommastellenStandardabweichung\((\d)\)", "optionen.html",
     "Standardabweichungen haben in der Vorgabe {words[0]} Nachkommastellen"),
    ("wizard/frmcalcoptions.cpp", r"minimumDecimals = (\d);", "optionen.html",
     "den Wert auf {words[0]} Nachkommastellen gerundet"),
    ("wizard/frmcalcoptions.cpp",
     r"smallestMinimum = ([\d.]+);.*?largestMinimum = ([\d.]+);.*?minimumStep = ([\d.]+);", "optionen.html",
     "in Schritten von {2} zwischen {0} und {1}"),
    ("core/values.h", r"maximumDecimals = (\d+);", "optionen.html", "Mehr als {0} Nachkommastellen werden nicht gezeigt"),
    ("core/auswertung.h", r"maximumPoints = ([\d']+);", "datei.html", "mehr als {0} Prüfpunkten nicht ausgewertet"),
    ("core/auswertung.h", r"maximumPoints = ([\d']+);", "meldungen.html", "mehr als {0} Prüfpunkte"),
    ("core/kalibrierungsdatei.h", r"maximumSize = qint64\{(\d+)\}", "datei.html", "über {0} MiB"),
    ("core/kalibrierungsdatei.h", r"maximumSize = qint64\{(\d+)\}", "meldungen.html", "größer als {0} MiB"),
    ("wizard/einstellungen.h", r"recentFileCount = (\d);", "datei.html", "bis zu {words[0]} zuletzt geöffneten Dateien"),
    ("protocol/windows/zoom.h", r"largest = (\d+)\.0;", "protokoll.html", "über 0 bis {0}00 %"),
    ("protocol/windows/zoom.h", r"largest = (\d+)\.0;", "meldungen.html", "höchstens {0}00 %"),
    ("batch/optionen.cpp", r"most = (\d+);", "kommandozeile.html", "1 bis {0} (Vorgabe: alle Prozessoren)"),
    ("wizard/frmassistentbefehle.cpp", r'"mf_new".*?QKeySequence::(\w+),', "tastatur.html",
     "Strg+{keys[0]} neue Kalibrierung"),
    ("wizard/frmassistentbefehle.cpp", r'"mf_open".*?QKeySequence::(\w+),', "tastatur.html",
     "Strg+{keys[0]} Datei öffnen"),
    ("wizard/frmassistentbefehle.cpp", r'"mf_save".*?QKeySequence::(\w+),', "tastatur.html", "Strg+{keys[0]} speichern"),
    ("wizard/frmassistentbefehle.cpp", r'"mf_saveas".*?Qt::CTRL \| Qt::SHIFT \| Qt::Key_(\w)', "tastatur.html",
     "Strg+Umschalt+{0} speichern unter"),
    ("wizard/frmassistentbefehle.cpp", r'"mf_exit".*?Qt::CTRL \| Qt::Key_(\w)', "tastatur.html", "Strg+{0} beenden"),
    ("wizard/frmassistentbefehle.cpp", r'"mh_Helpthemes".*?Qt::Key_(\w+)', "tastatur.html", "{0} diese Hilfe"),
    ("wizard/ctlassistent.cpp", r'"< &(\w)urück".*?"&(\w)eiter >"', "tastatur.html",
     "Alt+{upper[1]}, Alt+{upper[0]} weiter, zurück"),
)
STANDARD_KEYS = {"New": "N", "Open": "O", "Save": "S"}
WORDS = {"2": "zwei", "3": "drei", "9": "neun"}


def german(number):
    """"1'000'000" as 1.000.000 and "0.65" as 0,65; one decimal becomes two, as the program shows them."""
    if "'" in number:
        return number.replace("'", ".")
    if re.fullmatch(r"\d+\.\d", number):
        number += "0"
    return number.replace(".", ",")


def stated(source, pattern, words):
    """The sentence that the source asks for, or nothing where the source has changed its looks."""
    found = re.search(pattern, source, flags=re.S)
    if not found:
        return None
    raw = found.groups()
    return words.format(*map(german, raw), words=[WORDS.get(text, text) for text in raw],
                        keys=[STANDARD_KEYS.get(text, text) for text in raw], upper=[text.upper() for text in raw])


def faults(project, texts):
    """What is wrong in texts, the words of every page by its name."""
    for path, pattern, page, words in FACTS:
        sentence = stated((project / path).read_text(encoding="utf-8"), pattern, words)
        if sentence is None:
            yield "%s does not hold %s any more" % (path, pattern)
        elif sentence not in texts[page]:
            yield "%s does not say »%s«, as %s has it" % (page, sentence, path)
