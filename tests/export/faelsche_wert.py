"""Copies an .xlsx file with a false stored value in the first formula cell of its second sheet that holds a number."""

import re
import sys
import zipfile

source, target = sys.argv[1:]
sheet = "xl/worksheets/sheet2.xml"
with zipfile.ZipFile(source) as old, zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED) as new:
    for name in old.namelist():
        data = old.read(name)
        if name == sheet:
            data, count = re.subn(rb"(</f><v>)[0-9.E+-]+(</v>)", rb"\g<1>123456\g<2>", data, count=1)
            assert count == 1
        new.writestr(name, data)
