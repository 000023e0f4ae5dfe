"""Evaluates formulas of an .xlsx file in plain doubles, each sum from left to right without any compensation.

BOOK DATA.json, where DATA is a list of {"zellen": {"Messwerte!E2": number, ...}, "ergebnisse": {"Auswertung!B3":
number, text or null, ...}}: puts the cells of each entry into the book, evaluates its results and prints the number
of results compared and those that differ from the expected ones by a single bit, as JSON.
"""

import json
import math
import re
import sys

import openpyxl

TOKEN = re.compile(
    r'\s*(?:(?P<text>"(?:[^"]|"")*")|(?P<ref>\w+!\$[A-Z]+\$\d+(?::\$[A-Z]+\$\d+)?)|(?P<number>\d+(?:\.\d+)?(?:E[+-]?\d+)?)'
    r'|(?P<name>[A-Z][A-Z.]*)|(?P<op><>|>=|<=|[-+*/^&=<>(),]))'
)


class Fault(Exception):
    """An error value of a cell."""


def number(value):
    if value is None:
        return 0.0
    if isinstance(value, str):
        raise Fault(value)
    return float(value)


def finite(value):
    if not math.isfinite(value):
        raise Fault("overflow")
    return value


def each(work, *operands):
    """Applies work to scalars, or to lists element by element."""
    lengths = {len(operand) for operand in operands if isinstance(operand, list)}
    if not lengths:
        return work(*operands)
    (length,) = lengths
    columns = [operand if isinstance(operand, list) else [operand] * length for operand in operands]
    return [work(*row) for row in zip(*columns)]


def numbers(values):
    flat = []
    for value in values:
        flat += value if isinstance(value, list) else [value]
    return [float(v) for v in flat if isinstance(v, (int, float)) and not isinstance(v, bool)]


def plain_sum(values):
    total = 0.0
    for value in values:
        total = finite(total + value)
    return total


def divide(a, b):
    if number(b) == 0:
        raise Fault("division")
    return finite(number(a) / number(b))


def power(a, b):
    try:
        return finite(math.pow(number(a), number(b)))
    except (OverflowError, ValueError) as error:
        raise Fault(str(error)) from error


def logarithm(x, base=None):
    if number(x) <= 0:
        raise Fault("logarithm")
    return math.log2(x) if base == 2 else math.log(x)


def compare(op, a, b):
    if isinstance(a, str) != isinstance(b, str):
        return op == "<>"
    left, right = (a, b) if isinstance(a, str) else (number(a), number(b))
    return {"=": left == right, "<>": left != right, "<": left < right, "<=": left <= right, ">": left > right,
            ">=": left >= right}[op]


BINARY = {
    "+": lambda a, b: finite(number(a) + number(b)),
    "-": lambda a, b: finite(number(a) - number(b)),
    "*": lambda a, b: finite(number(a) * number(b)),
    "/": divide,
    "^": power,
}
FUNCTIONS = {
    "COUNT": lambda *args: float(len(numbers(args))),
    "SUM": lambda *args: plain_sum(numbers(args)),
    "SUMPRODUCT": lambda array: plain_sum(numbers([array])),
    "MAX": lambda *args: max(numbers(args), default=0.0),
    "MIN": lambda *args: min(numbers(args), default=0.0),
    "TRUNC": lambda x: each(lambda v: float(math.trunc(number(v))), x),
    "INT": lambda x: float(math.floor(number(x))),
    "SQRT": lambda x: math.sqrt(number(x)),
    "LN": logarithm,
    "LOG": logarithm,
    "SIGN": lambda x: float((number(x) > 0) - (number(x) < 0)),
    "ISODD": lambda x: int(number(x)) % 2 != 0,
    "ISNUMBER": lambda x: each(lambda v: isinstance(v, (int, float)), x),
    "AND": lambda *args: all(args),
}
LEVELS = [("=", "<>", "<", "<=", ">", ">="), ("&",), ("+", "-"), ("*", "/"), ("^",)]


class Formula:
    """A formula as a tree of functions of the book."""

    def __init__(self, text):
        self.tokens = [(m.lastgroup, m.group(m.lastgroup)) for m in TOKEN.finditer(text)]
        assert "".join(t for _, t in self.tokens) == re.sub(r'\s(?=(?:[^"]*"[^"]*")*[^"]*$)', "", text), text
        self.at = 0
        self.value = self.binary(0)
        assert self.at == len(self.tokens), text

    def peek(self):
        return self.tokens[self.at][1] if self.at < len(self.tokens) else None

    def take(self):
        self.at += 1
        return self.tokens[self.at - 1]

    def binary(self, level):
        if level == len(LEVELS):
            return self.unary()
        left = self.binary(level + 1)
        while self.peek() in LEVELS[level]:
            op = self.take()[1]
            left = self.combined(op, left, self.binary(level + 1))
        return left

    @staticmethod
    def combined(op, left, right):
        if op == "&":
            return lambda book: f"{left(book)}{right(book)}"
        if op in BINARY:
            return lambda book: each(BINARY[op], left(book), right(book))
        return lambda book: compare(op, left(book), right(book))

    def unary(self):
        if self.peek() == "-":
            self.take()
            operand = self.unary()
            return lambda book: -number(operand(book))
        return self.primary()

    def primary(self):
        kind, text = self.take()
        if kind == "text":
            return lambda book: text[1:-1].replace('""', '"')
        if kind == "number":
            return lambda book: float(text)
        if kind == "ref":
            cells = addresses(text)
            return (lambda book: [book[c] for c in cells]) if ":" in text else (lambda book: book[cells[0]])
        if text == "(":
            inner = self.binary(0)
            assert self.take()[1] == ")"
            return inner
        if self.peek() != "(":
            return lambda book: {"TRUE": True, "FALSE": False}[text]
        return call(text, self.arguments())

    def arguments(self):
        assert self.take()[1] == "("
        found = []
        while self.peek() != ")":
            found.append(self.binary(0))
            if self.peek() == ",":
                self.take()
        self.take()
        return found


def call(name, args):
    if name == "IF":
        return lambda book: args[1](book) if args[0](book) else args[2](book)
    if name == "CHOOSE":
        return lambda book: args[int(args[0](book))](book)
    if name == "IFERROR":

        def guarded(book):
            try:
                return args[0](book)
            except Fault:
                return args[1](book)

        return guarded
    return lambda book: FUNCTIONS[name](*(arg(book) for arg in args))


def addresses(ref):
    sheet, cells = ref.replace("$", "").split("!")
    first, _, last = cells.partition(":")
    column = first.rstrip("0123456789")
    rows = range(int(first[len(column):]), int((last or first)[len(column):]) + 1)
    return [f"{sheet}!{column}{row}" for row in rows]


class Book:
    """Cells by address; formulas are evaluated when they are asked for."""

    def __init__(self, path):
        self.formulas = {}
        self.constants = {}
        for sheet in openpyxl.load_workbook(path).worksheets:
            for row in sheet.iter_rows():
                for cell in row:
                    where = f"{sheet.title}!{cell.coordinate}"
                    if cell.data_type == "f":
                        self.formulas[where] = cell.value[1:]
                    else:
                        self.constants[where] = cell.value
        self.trees = {}
        self.values = {}

    def fill(self, cells):
        self.values = {**self.constants, **cells}

    def __getitem__(self, where):
        if where not in self.values and where in self.formulas:
            if where not in self.trees:
                self.trees[where] = Formula(self.formulas[where]).value
            self.values[where] = self.trees[where](self)
        return self.values.get(where)


def main():
    book = Book(sys.argv[1])
    compared = 0
    wrong = []
    with open(sys.argv[2], encoding="utf-8") as file:
        for entry in json.load(file):
            book.fill(entry["zellen"])
            for where, expected in entry["ergebnisse"].items():
                found = book[where]
                compared += 1
                if ("" if found is None else found) != ("" if expected is None else expected):
                    wrong.append([where, found, expected])
    json.dump({"verglichen": compared, "falsch": wrong}, sys.stdout)


main()
