#!/usr/bin/python3
"""Writes an archive of workbooks to try fleet.py with.

make_archive.py FOLDER COUNT [ROWS]

Each workbook has a table of ROWS rows, 1,000 unless said otherwise, with six rules over it. The same
input gives the same tables.
"""

import pathlib
import random
import sys

import openpyxl
from openpyxl.formatting.rule import CellIsRule, ColorScaleRule, FormulaRule, Rule
from openpyxl.styles import Font, PatternFill
from openpyxl.styles.differential import DifferentialStyle

RED = PatternFill(bgColor="FFFFC7CE")
BOLD = Font(bold=True)


def rules(rows):
    """Rules of a sheet by their ranges; the last one never holds."""
    numbers = f"B2:F{rows + 1}"
    yield numbers, CellIsRule(operator="greaterThan", formula=["900"], fill=RED)
    yield numbers, FormulaRule(formula=["AND($B2<100,COUNTIF(B$2:B$%d,B2)>1)" % (rows + 1)], font=BOLD)
    yield numbers, Rule(type="top10", rank=10, dxf=DifferentialStyle(font=BOLD))
    yield f"A2:A{rows + 1}", Rule(type="duplicateValues", dxf=DifferentialStyle(fill=RED))
    yield f"F2:F{rows + 1}", ColorScaleRule(start_type="min", start_color="FFFFFF", end_type="max",
                                           end_color="63BE7B")
    yield f"G2:G{rows + 1}", CellIsRule(operator="between", formula=["9", "1"], fill=RED)


def write_book(path, seed, rows=1_000):
    """Writes one workbook."""
    numbers = random.Random(seed)
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.append(["name", "a", "b", "c", "d", "e", "f"])
    for row in range(rows):
        sheet.append([f"item {numbers.randrange(rows)}"]
                     + [numbers.randrange(1_000) for _ in range(6)])
    for ranges, rule in rules(rows):
        sheet.conditional_formatting.add(ranges, rule)
    book.save(path)


def write_archive(folder, count, rows=1_000):
    """Writes workbooks into folders of a hundred each."""
    for number in range(count):
        inner = pathlib.Path(folder) / f"{number // 100:03}"
        inner.mkdir(parents=True, exist_ok=True)
        write_book(inner / f"book{number:05}.xlsx", number, rows)


if __name__ == "__main__":
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    write_archive(sys.argv[1], int(sys.argv[2]), *map(int, sys.argv[3:]))
