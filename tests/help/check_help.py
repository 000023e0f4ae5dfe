#!/usr/bin/env python3
"""Checks the manual against itself and against the program.

    check_help.py PROJECT            complains about every fault and fails if there is one
    check_help.py PROJECT --can-fail shows that each check finds the fault it is there for

- Every page is well formed, German, says its encoding and is listed once in the table of contents.
- Every link and picture leads to something that exists, and every picture is used and described.
- What is marked as a message (class "meldung") or as a caption (class "text") stands in the program's
  sources letter by letter; <var> stands for what the program fills in.
- Every sentence that the program says of itself, and every error's text, is explained: what is no
  message but stands on a page or dialog for good is told from it by how it begins.
- Limits, defaults, decimals and keys are those of the sources.
- No page names an address on the network, a mail address or a folder of somebody's machine.
"""
import pathlib
import re
import shutil
import sys
import tempfile
from html.parser import HTMLParser

sys.dont_write_bytecode = True  # nothing is left in the sources
import facts

VOID = {"meta", "link", "img", "br"}
ROOMS = ("app", "wizard", "grid", "protocol", "core", "export", "batch")
# What begins so tells what a page or dialog is for, warns of copying, or shows that work goes on.
NO_MESSAGE = re.compile(r"Geben Sie |Legen Sie |Lassen Sie |Exportieren Sie |Prüfen Sie |Welche Prüfmerkmale |"
                        r"Der Assistent |von den Prüfmerkmalen |wählen Sie |Diese Seite |Warnung: Dieses Programm |"
                        r"Die Tabelle wird |In dieser Fassung ")
FORBIDDEN = {
    "an address on the network": re.compile(r"\b(https?|ftp|mailto|file):|www\."),
    "a mail address": re.compile(r"[\w.]@\w"),
    "a folder of a machine": re.compile(r"(?<![\w.])/(home|root|tmp|work|usr/local)\b|\b[A-Z]:\\"),
    "an unfinished place": re.compile(r"\b(TODO|FIXME|XXX|lorem)\b"),
}


class Page(HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.faults, self.links, self.pictures, self.anchors = [], [], [], set()
        self.quotes = []  # (class, pieces between what the program fills in)
        self.contents = []
        self.language, self.encoding, self.headings = None, None, 0
        self._open = []  # (tag, class)
        text = path.read_text(encoding="utf-8")
        self.text = re.sub(r"<[^>]*>", "", text.replace("</td>", " "))
        if not text.startswith("<!DOCTYPE html>"):
            self.faults.append("no document type")
        self.feed(text)
        self.close()
        self.faults += ["<%s> is not closed" % tag for tag, _ in self._open]

    def _quote(self):
        return self.quotes[-1] if any(kind for _, kind in self._open) else None

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        if "id" in attrs:
            if attrs["id"] in self.anchors:
                self.faults.append("id %s twice" % attrs["id"])
            self.anchors.add(attrs["id"])
        if tag == "html":
            self.language = attrs.get("lang")
        elif tag == "meta" and "charset" in attrs:
            self.encoding = attrs["charset"]
        elif tag == "h1":
            self.headings += 1
        elif tag in ("a", "link"):
            self.links.append(attrs["href"])
            if any(outer == "ol" for outer, _ in self._open):
                self.contents.append(attrs["href"])
        elif tag == "img":
            self.pictures.append(attrs["src"])
            if not attrs.get("alt") or not attrs.get("width") or not attrs.get("height"):
                self.faults.append("%s lacks its description or size" % attrs["src"])
        if tag in VOID:
            return
        if self._quote() is not None and tag == "var":
            self._quote()[1].append("")
        kind = attrs.get("class") if attrs.get("class") in ("meldung", "text") else None
        if kind:
            self.quotes.append((kind, [""]))
        self._open.append((tag, kind))

    def handle_endtag(self, tag):
        if not self._open or self._open[-1][0] != tag:
            self.faults.append("</%s> closes nothing" % tag)
            return
        self._open.pop()

    def handle_data(self, data):
        quote = self._quote()
        if quote is not None and self._open[-1][0] != "var":
            quote[1][-1] += data


def normal(text):
    return " ".join(text.split())


def literals(project):
    """The string literals of the sources, adjacent ones joined, and the file of each."""
    one = r'u?"((?:[^"\\\n]|\\.)*)"(?:_qs)?'
    escapes = {"n": "\n", "r": "\r", "t": "\t"}
    found = []
    for room in ROOMS:
        for path in sorted((project / room).rglob("*")):
            if path.suffix not in (".cpp", ".h"):
                continue
            source = re.sub(r"^\s*(//|#).*$", "", path.read_text(encoding="utf-8"), flags=re.M)
            for match in re.finditer(r"%s(?:\s+%s)*" % (one, one), source):
                text = "".join(re.findall(one, match.group(0)))
                text = re.sub(r"\\(.)", lambda m: escapes.get(m.group(1), m.group(1)), text)
                found.append((path.relative_to(project).as_posix(), text))
    return found


def pieces(text):
    """What a user sees of a literal in one go: without accelerator marks, split where lines break and
    where the program fills something in."""
    return [normal(piece) for piece in re.split(r"%\d|\r\n|\n", re.sub(r"&(\w)", r"\1", text))]


def is_sentence(piece):
    words = len(piece.split())
    return re.search(r"[^.\s][.?]$", piece) and words > 2 or piece.endswith(":") and words > 3


def must_be_explained(found):
    for path, text in found:
        if path == "core/runtimeerror.cpp" and len(normal(text)) > 3:
            yield normal(text)
        elif path.startswith(("wizard/", "protocol/windows/", "app/")):
            yield from (piece for piece in pieces(text) if is_sentence(piece) and not NO_MESSAGE.match(piece))


def targets(project, folder, pages):
    faults = []
    used = {"stil.css", "CMakeLists.txt", "chm.py"} | set(pages)
    for name, page in pages.items():
        for link in page.links + page.pictures:
            file, _, anchor = link.partition("#")
            if file and not (folder / file).is_file():
                faults.append("%s: there is no %s" % (name, file))
            elif anchor and anchor not in pages[file or name].anchors:
                faults.append("%s: there is no place %s" % (name, link))
            used.add(file)
    for path in folder.rglob("*"):
        relative = path.relative_to(folder).as_posix()
        if path.is_file() and relative not in used:
            faults.append("%s is used by no page" % relative)
    listed = pages["index.html"].contents
    for name in pages:
        if name != "index.html" and listed.count(name) != 1:
            faults.append("%s stands %d times in the table of contents" % (name, listed.count(name)))
        if name != "index.html" and "index.html" not in pages[name].links:
            faults.append("%s does not lead back to the table of contents" % name)
    build = (folder / "CMakeLists.txt").read_text(encoding="utf-8")
    for name in used - {"CMakeLists.txt", "chm.py", ""}:
        if not re.search(r"\b%s\b" % re.escape(pathlib.Path(name).stem), build):
            faults.append("%s is not placed beside the program" % name)
    return faults


def check(project):
    folder = project / "help"
    pages = {path.name: Page(path) for path in sorted(folder.glob("*.html"))}
    found = literals(project)
    known = {piece for _, text in found for piece in pieces(text)}
    faults = targets(project, folder, pages)
    explained = set()
    for name, page in pages.items():
        faults += ["%s: %s" % (name, fault) for fault in page.faults]
        if page.language != "de" or page.encoding != "utf-8" or page.headings != 1:
            faults.append("%s: language, encoding or heading is missing" % name)
        for kind, quoted in page.quotes:
            shown = [normal(piece) for piece in quoted if normal(piece)]
            # A caption's arrows stand in the sources as they stand on the screen.
            faults += ["%s: the program does not say »%s«" % (name, piece)
                       for piece in shown if piece not in known]
            if kind == "meldung":
                explained |= set(shown)
        for what, pattern in FORBIDDEN.items():
            match = pattern.search(page.text)
            if match:
                faults.append("%s names %s: %s" % (name, what, match.group(0)))
    faults += ["no page explains »%s«" % text for text in sorted(set(must_be_explained(found)) - explained)]
    faults += facts.faults(project, {name: normal(page.text) for name, page in pages.items()})
    return faults


BREAKS = {
    "is not closed": ("optionen.html", "</main>", ""),
    "closes nothing": ("optionen.html", "</h1>", "</h2>"),
    "there is no urteile.html": ("seiten.html", "urteil.html", "urteile.html"),
    "there is no place werte.html#zelle": ("tastatur.html", "werte.html#zellen", "werte.html#zelle"),
    "there is no bilder/x.png": ("export.html", "bilder/export.png", "bilder/x.png"),
    "bilder/export.png is used by no page": ("export.html", "bilder/export.png", "bilder/optionen.png"),
    "stands 0 times in the table": ("index.html", 'href="werte.html"', 'href="datei.html"'),
    "does not lead back": ("werte.html", "index.html", "datei.html"),
    "is not placed beside the program": ("CMakeLists.txt", "vorschau", "vorschauen"),
    "does not say »Dateien speichern«": ("seiten.html", ">Datei speichern<", ">Dateien speichern<"),
    "does not say »Datenträger ist voll«": ("meldungen.html", ">Datenträger voll<", ">Datenträger ist voll<"),
    "explains »Überlauf«": ("meldungen.html", ">Überlauf<", ">Division durch Null<"),
    "explains »Der Name einer Messreihe": ("meldungen.html", "Der Name einer Messreihe darf nicht leer sein.", ""),
    "explains »Ihre gespeicherten Dateien": ("wiederherstellen.html", "Ihre gespeicherten Dateien sind", "Sie sind"),
    "explains »Möchten Sie damit": ("wiederherstellen.html", "Möchten Sie damit weiterarbeiten?", ""),
    "say »Anzahl der Prüffelder: 3 bis 9999«": ("seiten.html", "3 bis 9999, nur", "3 bis 999, nur"),
    "say »Strg+Q beenden«": ("tastatur.html", "<kbd>Q</kbd>", "<kbd>W</kbd>"),
    "an address on the network": ("datei.html", "<main>", "<main><p>http://beispiel</p>"),
    "a mail address": ("datei.html", "<main>", "<main><p>a@b</p>"),
    "a folder of a machine": ("datei.html", "<main>", "<main><p>/home/a</p>"),
    "an unfinished place": ("datei.html", "<main>", "<main><p>TODO</p>"),
    "lacks its description": ("export.html", 'alt="Die Liste der Exporte"', 'alt=""'),
    "encoding or heading is missing": ("export.html", 'lang="de"', ""),
}


def can_fail(project):
    """The checks that miss the fault they are there for."""
    missed = []
    for expected, (name, old, new) in BREAKS.items():
        with tempfile.TemporaryDirectory() as folder:
            copy = pathlib.Path(folder)
            for room in ROOMS:
                (copy / room).symlink_to(project / room)
            shutil.copytree(project / "help", copy / "help")
            page = copy / "help" / name
            text = page.read_text(encoding="utf-8")
            if old not in text:
                missed.append("%s does not hold %s any more" % (name, old))
                continue
            page.write_text(text.replace(old, new), encoding="utf-8")
            try:
                faults = check(copy)
            except KeyError as error:
                faults = ["crashed: %r" % error]
            # And few others, or the copy itself would be broken.
            if not any(expected in fault for fault in faults) or len(faults) > 8:
                missed.append("not found: %s in %s (found: %s)" % (expected, name, faults))
    return missed


def main():
    project = pathlib.Path(sys.argv[1]).resolve()
    faults = can_fail(project) if "--can-fail" in sys.argv else check(project)
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
