#!/usr/bin/python3
"""Compares pictures of sheets with the pages that LibreOffice exports.

  compare_pictures.py PRINT_PICTURE WORKBOOK...

Run by hand; needs the package libreoffice-calc-nogui. PRINT_PICTURE is the program of that name
among the tests. Prints for each workbook how many column widths, row heights, shown texts, sides
of alignment, fills and text colours agree, and the first that do not. Left out is what LibreOffice
exports otherwise: numbers too wide for their column, which it exports whole; colours of scales,
fills with patterns and texts in several fonts; formulas that it does not know (Err:509). Widths are
compared after the digits of the default fonts, which may be others.
"""

import collections
import html.parser
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile

SIZE_TOLERANCE = 2  # pixels: LibreOffice counts in twentieths of a point
KINDS = ("width", "height", "text", "side", "fill", "colour", "bold")
SIDES = {1: "left", 2: "center", 3: "right"}


class Page(html.parser.HTMLParser):
    """The tables of an exported page: widths, heights and cells by row and column."""

    def __init__(self):
        super().__init__()
        self.tables = []
        self.cell = None
        self.width = 0

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        if tag == "table":
            self.tables.append({"widths": [], "heights": {}, "cells": {}})
            self.row, self.taken = -1, set()
        elif tag == "colgroup":
            self.tables[-1]["widths"] += [int(given.get("width", 0))] * int(given.get("span", 1))
        elif tag == "tr":
            self.row += 1
        elif tag == "td":
            self.begin_cell(given)
        elif self.cell is not None:
            if tag == "b":
                self.cell["bold"] = True
            elif tag == "font" and "color" in given:
                self.cell["colours"].add(given["color"].upper())
            elif tag == "br":
                self.cell["text"] += " "

    def begin_cell(self, given):
        column = 0
        while (self.row, column) in self.taken:
            column += 1
        rows, columns = int(given.get("rowspan", 1)), int(given.get("colspan", 1))
        self.taken |= {(self.row + r, column + c) for r in range(rows) for c in range(columns)}
        if "height" in given and rows == 1:
            self.tables[-1]["heights"][self.row] = int(given["height"])
        self.cell = {"text": "", "bold": False, "colours": set(), "side": given.get("align"),
                     "fill": given.get("bgcolor", "").upper()}
        self.tables[-1]["cells"][self.row, column] = self.cell

    def handle_endtag(self, tag):
        if tag == "td":
            self.cell = None

    def handle_data(self, data):
        if self.cell is not None:
            self.cell["text"] += data


def export(workbook, work):
    subprocess.run(["soffice", "--headless", "--norestore",
                    f"-env:UserInstallation=file://{work}/profile", "--convert-to", "html",
                    "--outdir", work, workbook], check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
    page = Page()
    page.feed(pathlib.Path(work, pathlib.Path(workbook).stem + ".html").read_text("utf-8"))
    return page.tables


def read_pictures(program, workbook):
    lines = subprocess.run([program, workbook], capture_output=True, text=True, check=True).stdout
    sheets = []
    for fields in (line.split("\t") for line in lines.split("\n") if line):
        kind = fields[0]
        if kind == "sheet":
            sheets.append({"name": fields[1], "columns": [], "rows": [], "cells": []})
        elif kind in ("column", "row"):
            sheets[-1][kind + "s"].append((int(fields[1]), float(fields[2])))
        else:
            row, column, text, side, fill, colour, bold, scaled = fields[1:]
            sheets[-1]["cells"].append(
                {"row": int(row), "column": int(column), "text": text, "side": int(side),
                 "fill": fill, "colour": colour, "bold": bold == "1", "scaled": scaled == "1"})
    return sheets


def plain(text):
    return re.sub(r"\s+", " ", text).strip()


def name_of(row, column):
    letters = ""
    column += 1
    while column:
        column, rest = divmod(column - 1, 26)
        letters = chr(65 + rest) + letters
    return f"{letters}{row + 1}"


def find_offset(sheet, table):
    """The first row and column of the table: those at which most texts agree."""
    def score(offset):
        row, column = offset
        places = {(r + row, c + column): plain(cell["text"])
                  for (r, c), cell in table["cells"].items()}
        return sum(1 for cell in sheet["cells"]
                   if cell["text"] and places.get(place(sheet, cell)) == plain(cell["text"]))
    rows = range(min(len(sheet["rows"]), 20) or 1)
    columns = range(min(len(sheet["columns"]), 20) or 1)
    return max(((r, c) for r in rows for c in columns), key=lambda o: (score(o), -o[0] - o[1]))


def place(sheet, cell):
    """Where a cell stands among the lines that are seen."""
    if "row_places" not in sheet:
        sheet["row_places"] = {index: i for i, (index, _) in enumerate(sheet["rows"])}
        sheet["column_places"] = {index: i for i, (index, _) in enumerate(sheet["columns"])}
    return sheet["row_places"][cell["row"]], sheet["column_places"][cell["column"]]


def compare_sheet(sheet, table, count):
    first_row, first_column = find_offset(sheet, table)
    widths = [(index, own, width) for (index, own), width in
              zip(sheet["columns"][first_column:], table["widths"])]
    factor = statistics.median([width / own for _, own, width in widths] or [1])
    for index, own, width in widths:
        count("width", name_of(0, index), abs(own * factor - width) <= SIZE_TOLERANCE, own, width)
    for i, height in table["heights"].items():
        if first_row + i < len(sheet["rows"]):
            index, own = sheet["rows"][first_row + i]
            count("height", name_of(index, 0), abs(own - height) <= SIZE_TOLERANCE, own, height)
    cells = {(r + first_row, c + first_column): cell for (r, c), cell in table["cells"].items()}
    for own in sheet["cells"]:
        other = cells.get(place(sheet, own))
        if other is None:
            continue
        where = name_of(own["row"], own["column"])
        if own["text"] and not own["text"].startswith("#") and "Err:" not in other["text"]:
            count("text", where, plain(own["text"]) == plain(other["text"]), own["text"],
                  plain(other["text"]))
        if own["text"] and own["side"] in SIDES:
            count("side", where, other["side"] == SIDES[own["side"]], SIDES[own["side"]],
                  other["side"])
        if not own["scaled"]:
            count("fill", where, own["fill"] == other["fill"] or
                  (own["fill"] == "" and other["fill"] == "#FFFFFF"), own["fill"], other["fill"])
        if own["text"] and len(other["colours"]) <= 1:
            seen = next(iter(other["colours"]), "#000000")
            count("colour", where, own["colour"] == seen, own["colour"], seen)
            count("bold", where, own["bold"] == other["bold"], own["bold"], other["bold"])


def main():
    program, workbooks = sys.argv[1], sys.argv[2:]
    total = collections.Counter()
    with tempfile.TemporaryDirectory() as work:
        for workbook in workbooks:
            results = collections.defaultdict(lambda: [0, 0, []])
            sheets, tables = read_pictures(program, workbook), export(workbook, work)

            for sheet, table in zip(sheets, tables):
                def count(kind, where, agrees, own, other):
                    results[kind][0] += agrees
                    results[kind][1] += 1
                    if not agrees:
                        results[kind][2].append(f"{sheet['name']}!{where}: {own} | {other}")
                compare_sheet(sheet, table, count)
            print(pathlib.Path(workbook).name)
            for kind in KINDS:
                agreed, cells, faults = results[kind]
                total[kind, "agreed"] += agreed
                total[kind, "all"] += cells
                print(f"  {kind}: {agreed} of {cells} agree")
                for fault in faults[:6]:
                    print(f"    {fault}")
    print("together")
    for kind in KINDS:
        print(f"  {kind}: {total[kind, 'agreed']} of {total[kind, 'all']} agree")


if __name__ == "__main__":
    main()
