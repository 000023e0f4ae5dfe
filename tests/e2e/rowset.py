"""Reads the rows of a calibration file, as a program of its own would."""

import xml.etree.ElementTree

_ROW = "{#RowsetSchema}row"


def rows(path):
    """The pairs of key and text in the file's order."""
    tree = xml.etree.ElementTree.parse(path)
    return [(row.get("Variable"), row.get("Wert", "")) for row in tree.iter(_ROW)]
