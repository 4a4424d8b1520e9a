#!/usr/bin/python3
"""Writes a large workbook for measurements from end to end.

One sheet of ten columns: four of five cells hold a number, the others a text. Each of eight rules
covers every cell. The same input gives the same bytes.
"""

import argparse
import random
import zipfile
from xml.sax.saxutils import escape

COLUMNS = "ABCDEFGHIJ"
TEXT_COLUMNS = "EJ"
WORDS = ("alder", "brook", "cedar", "dune", "elm", "fern", "grove", "heath")

MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
DOCUMENT = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
PACKAGE = "http://schemas.openxmlformats.org/package/2006"
TYPES = "application/vnd.openxmlformats-officedocument.spreadsheetml"

RULES = (
    ('type="cellIs" operator="greaterThan"', "<formula>90000</formula>"),
    ('type="cellIs" operator="between"', "<formula>10000</formula><formula>20000</formula>"),
    ('type="containsText" operator="containsText" text="el"',
     '<formula>NOT(ISERROR(SEARCH("el",A1)))</formula>'),
    ('type="expression"', "<formula>$A1&gt;$B1</formula>"),
    ('type="top10" rank="100"', ""),
    ('type="duplicateValues"', ""),
    ('type="aboveAverage"', ""),
    ('type="expression"', "<formula>{}</formula>"),
)


def part(name, content):
    return f'<?xml version="1.0" encoding="UTF-8"?>\n<{name}>{content}</{name.split()[0]}>'


def fixed_parts():
    override = '<Override PartName="/xl/{}.xml" ContentType="{}.{}+xml"/>'.format
    yield "[Content_Types].xml", part(
        f'Types xmlns="{PACKAGE}/content-types"',
        '<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
        + override("workbook", TYPES, "sheet.main")
        + override("worksheets/sheet1", TYPES, "worksheet")
        + override("styles", TYPES, "styles")
        + override("sharedStrings", TYPES, "sharedStrings"))
    relationship = '<Relationship Id="{}" Type="' + DOCUMENT + '/{}" Target="{}.xml"/>'
    yield "_rels/.rels", part(
        f'Relationships xmlns="{PACKAGE}/relationships"',
        relationship.format("r1", "officeDocument", "xl/workbook"))
    yield "xl/_rels/workbook.xml.rels", part(
        f'Relationships xmlns="{PACKAGE}/relationships"',
        relationship.format("r1", "worksheet", "worksheets/sheet1")
        + relationship.format("r2", "styles", "styles")
        + relationship.format("r3", "sharedStrings", "sharedStrings"))
    yield "xl/workbook.xml", part(
        f'workbook xmlns="{MAIN}" xmlns:r="{DOCUMENT}"',
        '<sheets><sheet name="Data" sheetId="1" r:id="r1"/></sheets>')
    styles = "".join(
        f'<dxf><fill><patternFill><bgColor rgb="FF{40 + 20 * index:02X}C0A0"/></patternFill></fill></dxf>'
        for index in range(len(RULES)))
    yield "xl/styles.xml", part(f'styleSheet xmlns="{MAIN}"',
                                f'<dxfs count="{len(RULES)}">{styles}</dxfs>')
    yield "xl/sharedStrings.xml", part(f'sst xmlns="{MAIN}"',
                                       "".join(f"<si><t>{word}</t></si>" for word in WORDS))


def sheet_lines(rows, formula):
    numbers = random.Random(20261121)
    yield f'<?xml version="1.0" encoding="UTF-8"?>\n<worksheet xmlns="{MAIN}"><sheetData>\n'
    for row in range(1, rows + 1):
        cells = "".join(
            f'<c r="{column}{row}" t="s"><v>{numbers.randrange(len(WORDS))}</v></c>'
            if column in TEXT_COLUMNS else
            f'<c r="{column}{row}"><v>{numbers.randrange(10_000_000) / 100}</v></c>'
            for column in COLUMNS)
        yield f'<row r="{row}">{cells}</row>\n'
    yield "</sheetData>\n"
    for index, (attributes, formulas) in enumerate(RULES):
        yield (f'<conditionalFormatting sqref="A1:{COLUMNS[-1]}{rows}"><cfRule {attributes} '
               f'dxfId="{index}" priority="{index + 1}">{formulas.format(escape(formula))}</cfRule></conditionalFormatting>\n')
    yield "</worksheet>"


ROWS = 100_000
FORMULA = "MOD(ROW(),2)=0"


def write_workbook(path, rows=ROWS, formula=FORMULA):
    def entry(name):
        return zipfile.ZipInfo(name, (2026, 11, 21, 12, 0, 0))

    with zipfile.ZipFile(path, "w") as archive:
        for name, content in fixed_parts():
            archive.writestr(entry(name), content, zipfile.ZIP_DEFLATED)
        sheet = entry("xl/worksheets/sheet1.xml")
        sheet.compress_type = zipfile.ZIP_DEFLATED
        with archive.open(sheet, "w") as part_file:
            for line in sheet_lines(rows, formula):
                part_file.write(line.encode())


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("path", help="the workbook to write")
    parser.add_argument("rows", nargs="?", type=int, default=ROWS, help="%(default)s if left out")
    parser.add_argument("formula", nargs="?", default=FORMULA,
                        help="of the last rule, %(default)s if left out")
    arguments = parser.parse_args()
    write_workbook(arguments.path, arguments.rows, arguments.formula)
