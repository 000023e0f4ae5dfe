"""Prints an .xlsx file as JSON: sheet -> cell -> [formula or null, stored value, kind, number format].

With "--kurz" only what sheets hold in numbers of rows and columns, and their first and last row, read row by
row. Kinds are those of openpyxl: n number, s text, f formula, b truth value, e error.
"""

import json
import sys

import openpyxl


def long_form(path):
    formulas = openpyxl.load_workbook(path)
    values = openpyxl.load_workbook(path, data_only=True)
    result = {}
    for sheet in formulas.worksheets:
        cells = {}
        for row in sheet.iter_rows():
            for cell in row:
                stored = values[sheet.title][cell.coordinate]
                if cell.value is None and stored.value is None:
                    continue
                formula = cell.value if cell.data_type == "f" else None
                cells[cell.coordinate] = [formula, stored.value, stored.data_type, cell.number_format]
        result[sheet.title] = cells
    return result


def short_form(path):
    book = openpyxl.load_workbook(path, read_only=True, data_only=True)
    result = {}
    for sheet in book.worksheets:
        count = 0
        first = last = None
        for row in sheet.iter_rows(values_only=True):
            count += 1
            first = first or list(row)
            last = list(row)
        result[sheet.title] = {"rows": count, "first": first, "last": last}
    return result


form = short_form if "--kurz" in sys.argv else long_form
json.dump(form(sys.argv[1]), sys.stdout)
