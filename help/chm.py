#!/usr/bin/env python3
"""Compiles the pages of the manual into one .chm file.

    chm.py --chmcmd CHMCMD --output Wendral.chm FILE...

FILE... are the pages, index.html first, and what they need (style sheet, pictures), all below one
folder. Viewers of compiled help guess at the encoding of what they show, so pages go in as ASCII with
numeric character references and contents and index in cp1252. The compiler leaves an empty file
behind when it fails, so the result takes its place only when it holds every file.
"""
import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unicodedata
from html import escape
from html.parser import HTMLParser

TITLE = "Kalibrierung nach Wendral"
GERMAN = "0x407 Deutsch (Deutschland)"
CHARSET = '<meta http-equiv="Content-Type" content="text/html; charset=us-ascii">'
TABLE = '<table border="1" cellspacing="0" cellpadding="4">'  # for viewers that know no style sheets


class Outline(HTMLParser):
    """Collects a page's headings, its terms, and the links of its list of contents."""

    def __init__(self, page):
        super().__init__()
        self.page = page
        self.headings = []  # (level, text, target)
        self.terms = []  # (text, target)
        self.contents = []  # files in order, for the page that lists them
        self._anchor = ""
        self._open = None
        self._text = ""
        self._in_contents = False

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        if tag in ("h1", "h2", "dfn"):
            if tag == "h2":
                self._anchor = "#" + attrs["id"]
            self._open, self._text = tag, ""
        elif tag == "ol":
            self._in_contents = attrs.get("class") == "inhalt"
        elif tag == "a" and self._in_contents:
            self.contents.append(attrs["href"])

    def handle_data(self, data):
        self._text += data

    def handle_endtag(self, tag):
        if tag == "ol":
            self._in_contents = False
        if tag != self._open:
            return
        self._open = None
        text = " ".join(self._text.split())
        if tag == "dfn":
            self.terms.append((text, self.page + self._anchor))
        else:
            self.headings.append((tag, text, self.page + self._anchor))


def outline(path, page):
    result = Outline(page)
    result.feed(path.read_text(encoding="utf-8"))
    result.close()
    return result


def entry(text, target):
    return ('<LI><OBJECT type="text/sitemap"><param name="Name" value="%s">'
            '<param name="Local" value="%s"></OBJECT>' % (escape(text), escape(target)))


def sitemap(lines):
    return "\r\n".join(["<HTML><BODY><UL>", *lines, "</UL></BODY></HTML>", ""])


def contents_of(pages):
    lines = []
    for page in pages:
        _, title, target = page.headings[0]
        lines.append(entry(title, target))
        sections = [entry(text, place) for level, text, place in page.headings[1:]]
        # The first page's section is the list of contents, which the tree itself is.
        if sections and not page.contents:
            lines += ["<UL>", *sections, "</UL>"]
    return sitemap(lines)


def alphabetical(item):
    folded = unicodedata.normalize("NFKD", item[0]).casefold().replace("ß", "ss")
    return "".join(c for c in folded if c.isalnum() or c == " "), item


def index_of(pages):
    entries = {}
    for page in pages:
        for text, target in [(text, place) for _, text, place in page.headings] + page.terms:
            entries.setdefault(text, target)
    return sitemap(entry(text, target) for text, target in sorted(entries.items(), key=alphabetical))


def project(files):
    options = {"Compatibility": "1.1 or later", "Compiled file": "help.chm", "Contents file": "help.hhc",
               "Index file": "help.hhk", "Default topic": "index.html", "Language": GERMAN, "Title": TITLE,
               "Full-text search": "Yes"}
    lines = ["[OPTIONS]", *("%s=%s" % option for option in options.items()), "", "[FILES]", *files, ""]
    return "\r\n".join(lines)


def place_page(source, target):
    text, count = re.subn(r'<meta charset="utf-8">', CHARSET, source.read_text(encoding="utf-8"))
    if count != 1:
        sys.exit("%s does not say that it is UTF-8" % source)
    text = text.replace("<table>", TABLE)
    target.write_bytes(text.encode("ascii", "xmlcharrefreplace"))


def compile_help(chmcmd, files, output):
    root = files[0].parent
    names = [file.relative_to(root).as_posix() for file in files]
    outlines = {name: outline(file, name) for name, file in zip(names, files) if file.suffix == ".html"}
    order = [names[0], *outlines[names[0]].contents]
    if sorted(order) != sorted(outlines):
        sys.exit("the list of contents and the pages differ: %s" % sorted(set(order) ^ set(outlines)))
    pages = [outlines[name] for name in order]
    with tempfile.TemporaryDirectory() as folder:
        work = pathlib.Path(folder)
        for name, file in zip(names, files):
            (work / name).parent.mkdir(parents=True, exist_ok=True)
            if file.suffix == ".html":
                place_page(file, work / name)
            else:
                shutil.copyfile(file, work / name)
        (work / "help.hhp").write_bytes(project(names).encode("cp1252"))
        (work / "help.hhc").write_bytes(contents_of(pages).encode("cp1252"))
        (work / "help.hhk").write_bytes(index_of(pages).encode("cp1252"))
        run = subprocess.run([chmcmd, "help.hhp"], cwd=work, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        compiled = work / "help.chm"
        if run.returncode != 0 or not compiled.is_file() or not holds_all(compiled, names):
            sys.exit("%s failed:\n%s" % (chmcmd, run.stdout.decode(errors="replace")))
        # Beside its place first: a build that is interrupted leaves no half of it.
        part = output.with_name(output.name + ".part")
        shutil.copyfile(compiled, part)
        os.replace(part, output)


def holds_all(compiled, names):
    """The file's directory lists names uncompressed, each after its length and a slash."""
    content = compiled.read_bytes()
    return all(b"/" + name.encode("ascii") in content for name in names)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--chmcmd", required=True)
    parser.add_argument("--output", type=pathlib.Path, required=True)
    parser.add_argument("files", type=pathlib.Path, nargs="+")
    arguments = parser.parse_args()
    missing = [str(file) for file in arguments.files if not file.is_file()]
    if missing:
        sys.exit("missing: " + ", ".join(missing))
    compile_help(arguments.chmcmd, arguments.files, arguments.output)


if __name__ == "__main__":
    main()
