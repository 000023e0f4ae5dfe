#!/usr/bin/env python3
"""Checks the icons, and that manual page, manual and --help name the same options. Needs no other program.

    check_texts.py PROJECT INSTALLED
"""
import gzip
import pathlib
import re
import struct
import subprocess
import sys


def icons(installed):
    paths = list((installed / "share/icons/hicolor").glob("*x*/apps/*.png"))
    if not paths:
        yield "there are no icons"
    for path in paths:
        side = int(path.parts[-3].split("x")[0])
        head = path.read_bytes()[:24]
        if head[:8] != b"\x89PNG\r\n\x1a\n" or struct.unpack(">II", head[16:24]) != (side, side):
            yield "%s is no picture of %d by %d" % (path, side, side)


def options_in(text):
    return set(re.findall(r"--[a-z]+", text.replace("\\-", "-")))


def options(project, installed):
    told = options_in(subprocess.run([str(installed / "bin/kalibrierung-auswertung"), "--help"], check=True,
                                     stdout=subprocess.PIPE, text=True).stdout)
    if not told:
        yield "--help names no options"
    page = gzip.decompress((installed / "share/man/de/man1/kalibrierung-auswertung.1.gz").read_bytes()).decode()
    manual = (project / "help/kommandozeile.html").read_text(encoding="utf-8")
    # --hilfe is another word for --help, which the program does not tell.
    for what, written in (("manual page", options_in(page) - {"--hilfe"}),
                          ("manual", options_in(re.sub(r"<[^>]*>", " ", manual)))):
        if told != written:
            yield "the %s and --help differ: %s" % (what, told ^ written)


def main():
    project, installed = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    faults = [*icons(installed), *options(project, installed)]
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
