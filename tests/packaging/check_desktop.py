#!/usr/bin/env python3
"""Has what desktops, software centres and readers of manual pages are given judged by their programs.

    check_desktop.py INSTALLED

Exit code 77 (skipped) where one of the judging programs isn't installed.
"""
import pathlib
import shutil
import subprocess
import sys

JUDGES = ("desktop-file-validate", "appstreamcli", "man")


def judged(*command):
    run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    text = run.stdout.strip()
    return ["%s: %s" % (" ".join(command), text)] if run.returncode != 0 else []


def manuals(installed):
    for program in ("kalibrierung-wendral", "kalibrierung-auswertung"):
        page = installed / "share/man/de/man1" / (program + ".1.gz")
        run = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", str(page)],
                             stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        if run.returncode != 0 or run.stderr:
            yield "%s: %s" % (page, run.stderr)


def main():
    installed = pathlib.Path(sys.argv[1]).resolve()
    missing = [judge for judge in JUDGES if not shutil.which(judge)]
    if missing:
        print("skipped: not installed: " + ", ".join(missing))
        return 77
    share = installed / "share"
    faults = judged("desktop-file-validate", str(share / "applications/kalibrierung-wendral.desktop"))
    faults += judged("appstreamcli", "validate", "--no-net",
                     str(share / "metainfo/internal.kalibrierung.wendral.metainfo.xml"))
    faults += manuals(installed)
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
