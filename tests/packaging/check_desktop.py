#!/usr/bin/env python3
"""Checks what desktops, software centres and readers of manual pages are given.

    check_desktop.py PROJECT INSTALLED

Exit code 77 (skipped) where one of the judging programs isn't installed.
"""
import gzip
import pathlib
import re
import shutil
import struct
import subprocess
import sys

JUDGES = ("desktop-file-validate", "appstreamcli", "man")


def judged(*command):
    run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    text = run.stdout.strip()
    return ["%s: %s" % (" ".join(command), text)] if run.returncode != 0 else []


def icons(installed):
    for path in (installed / "share/icons/hicolor").glob("*x*/apps/*.png"):
        side = int(path.parts[-3].split("x")[0])
        head = path.read_bytes()[:24]
        if head[:8] != b"\x89PNG\r\n\x1a\n" or struct.unpack(">II", head[16:24]) != (side, side):
            yield "%s is no picture of %d by %d" % (path, side, side)


def options_in(text):
    return set(re.findall(r"--[a-z]+", text.replace("\\-", "-")))


def manuals(installed):
    for program in ("kalibrierung-wendral", "kalibrierung-auswertung"):
        page = installed / "share/man/de/man1" / (program + ".1.gz")
        run = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", str(page)],
                             stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        if run.returncode != 0 or run.stderr:
            yield "%s: %s" % (page, run.stderr)
    told = subprocess.run([str(installed / "bin/kalibrierung-auswertung"), "--help"], check=True,
                          stdout=subprocess.PIPE, text=True).stdout
    written = gzip.decompress((installed / "share/man/de/man1/kalibrierung-auswertung.1.gz").read_bytes()).decode()
    # --hilfe is another word for --help, which the program does not tell.
    if options_in(told) != options_in(written) - {"--hilfe"}:
        yield "the manual page and --help differ: %s" % (options_in(told) ^ options_in(written))


def manual_of_the_command_line(project, installed):
    told = subprocess.run([str(installed / "bin/kalibrierung-auswertung"), "--help"], check=True,
                          stdout=subprocess.PIPE, text=True).stdout
    page = (project / "help/kommandozeile.html").read_text(encoding="utf-8")
    if options_in(told) != options_in(re.sub(r"<[^>]*>", " ", page)):
        yield "the manual and --help differ: %s" % (options_in(told) ^ options_in(page))


def main():
    project, installed = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    missing = [judge for judge in JUDGES if not shutil.which(judge)]
    if missing:
        print("skipped: not installed: " + ", ".join(missing))
        return 77
    share = installed / "share"
    faults = judged("desktop-file-validate", str(share / "applications/kalibrierung-wendral.desktop"))
    faults += judged("appstreamcli", "validate", "--no-net",
                     str(share / "metainfo/internal.kalibrierung.wendral.metainfo.xml"))
    faults += [*icons(installed), *manuals(installed), *manual_of_the_command_line(project, installed)]
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
