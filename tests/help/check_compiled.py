#!/usr/bin/env python3
"""Unpacks the compiled help and compares it with its pages; then shows that a build with a fault fails.

    check_compiled.py HELP_FOLDER Wendral.chm

Exit code 77 (skipped) where the compiler and its companion aren't installed, or the build was told not to
use them; that the file is there when it should be is checked elsewhere.
"""
import html
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile


def unpacked(compiled, folder):
    subprocess.run(["chmls", "extractall", str(compiled), str(folder)], check=True, cwd=folder,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return pathlib.Path(folder)


def compare(source, compiled):
    with tempfile.TemporaryDirectory() as folder:
        inside = unpacked(compiled, folder)
        for path in [p for p in source.rglob("*") if p.suffix in (".html", ".css", ".png")]:
            packed = inside / path.relative_to(source)
            if not packed.is_file():
                yield "%s is missing" % packed.name
            elif path.suffix != ".html":
                if packed.read_bytes() != path.read_bytes():
                    yield "%s differs" % packed.name
            else:
                page = packed.read_bytes()
                if not page.isascii():
                    yield "%s is not ASCII" % packed.name
                body = lambda text: html.unescape(re.sub("<table[^>]*>", "<table>", text.split("<body>")[1]))
                if body(page.decode("ascii")) != body(path.read_text(encoding="utf-8")):
                    yield "%s differs" % packed.name
        contents = (inside / "help.hhc").read_bytes().decode("cp1252")
        index = (inside / "help.hhk").read_bytes().decode("cp1252")
        for what, place, text in (("contents", contents, "Das Verfahren"), ("contents", contents, "Kenngrößen"),
                                  ("index", index, "Achsenabschnitt"), ("index", index, "Prüffelder")):
            if 'value="%s"' % text not in place:
                yield "the %s lacks %s" % (what, text)
        for target in set(re.findall('name="Local" value="([^"#]*)', contents + index)):
            if not (inside / target).is_file():
                yield "an entry leads to %s, which is missing" % target


def build(source, output, chmcmd="chmcmd", without=(), also=()):
    files = [source / "index.html"]
    files += sorted(p for p in source.rglob("*") if p.suffix in (".html", ".css", ".png")
                    and p.name not in ("index.html", *without))
    files += [source / name for name in also]
    return subprocess.run([sys.executable, str(source / "chm.py"), "--chmcmd", chmcmd, "--output", str(output),
                           *map(str, files)], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode


def bad_builds(source):
    with tempfile.TemporaryDirectory() as folder:
        work = pathlib.Path(folder)
        shutil.copytree(source, work / "help")
        output = work / "out.chm"

        def fails(what, **how):
            if build(work / "help", output, **how) == 0 or output.exists():
                yield "%s did not fail the build, or left a file" % what
        yield from fails("a page that is left out", without=("werte.html",))
        yield from fails("a compiler that fails", chmcmd="false")
        yield from fails("a compiler that does nothing", chmcmd="true")
        noisy = work / "half"
        noisy.write_text("#!/bin/sh\nchmcmd \"$1\" >/dev/null 2>&1; : > help.chm\n")
        noisy.chmod(0o755)
        yield from fails("an empty result", chmcmd=str(noisy))
        yield from fails("a picture that is missing", also=("bilder/fehlt.png",))


def main():
    source, compiled = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    if not shutil.which("chmcmd") or not shutil.which("chmls"):
        print("skipped: chmcmd and chmls (fp-utils) are not installed")
        return 77
    if not compiled.is_file():
        print("skipped: this build compiles no help")
        return 77
    faults = [*compare(source, compiled), *bad_builds(source)]
    if faults:
        print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
