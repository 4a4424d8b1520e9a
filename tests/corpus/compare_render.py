#!/usr/bin/env python3
"""Compares how cells look with what LibreOffice exports for the same file.

  compare_render.py CNDFRMT WORKBOOK...

Run by hand; needs the package libreoffice-calc-nogui. Both programs write HTML; of each cell the
fill, the colour of the text and bold are compared, after conditional formats. Rows and columns are
laid over each other where most texts agree. Left out are cells with gradients, patterns, colour
scales, bars, rich text and links, and the ink of cells without text. Prints how many cells agree, and the first that do
not.
"""

import collections
import html.parser
import pathlib
import re
import subprocess
import sys
import tempfile

WHITE, BLACK = "#ffffff", "#000000"
MOST_SHOWN = 10

class Cell:
    """A cell of a table: its text and look, None for what cannot be compared."""

    def __init__(self, fill=WHITE):
        self.text, self.fill, self.ink, self.bold = "", fill, BLACK, False


def hex_of(colour):
    colour = colour.strip().lower()
    if re.fullmatch("#[0-9a-f]{3}", colour):
        return "#" + "".join(2 * digit for digit in colour[1:])
    return colour if re.fullmatch("#[0-9a-f]{6}", colour) else None


class Tables(html.parser.HTMLParser):
    """Base of readers: tables as dictionaries from row and column to cells."""

    def __init__(self):
        super().__init__()
        self.tables, self.row, self.column, self.cell, self.covered = [], -1, 0, None, set()

    def begin_cell(self, attributes, cell):
        while (self.row, self.column) in self.covered:
            self.column += 1
        rows, columns = (int(attributes.get(name, 1)) for name in ("rowspan", "colspan"))
        self.covered |= {(self.row + i, self.column + j)
                         for i in range(min(rows, 2_000)) for j in range(min(columns, 2_000))}
        self.tables[-1][self.row, self.column] = self.cell = cell
        self.column += columns

    def handle_data(self, data):
        if self.cell is not None:
            self.cell.text += data


class OtherPage(Tables):
    """A page of LibreOffice."""

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        if tag == "table":
            self.tables.append({})
            self.row, self.covered = -1, set()
        elif tag == "tr":
            self.row, self.column = self.row + 1, 0
        elif tag == "td":
            self.begin_cell(attributes, Cell(hex_of(attributes.get("bgcolor", WHITE))))
        elif self.cell is not None and tag == "font" and "color" in attributes:
            self.cell.ink = hex_of(attributes["color"])
        elif self.cell is not None and tag == "b":
            self.cell.bold = True
        elif self.cell is not None and tag == "a":
            self.cell.ink = None

    def handle_endtag(self, tag):
        if tag == "td":
            self.cell = None


class OwnPage(Tables):
    """A page of cndfrmt. Rows and columns count from the first one of the picture."""

    def __init__(self, text):
        super().__init__()
        self.names, self.rules = [], {}
        for order, (name, body) in enumerate(re.findall(
                r"\.([\w-]+)\{((?:[^{}]|\{[^{}]*\})*)\}", text.partition("</style>")[0])):
            self.rules.setdefault(name, (order, re.sub(r"&[^{]*\{[^}]*\}", "", body)))
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        if tag == "table":
            self.tables.append({})
            self.names.append(attributes["aria-label"])
            self.row, self.covered, self.is_head = -1, set(), True
        elif tag == "tbody":
            self.is_head = False
        elif tag == "tr" and self.tables and not self.is_head:
            self.row, self.column = self.row + 1, 0
        elif tag == "td" and self.tables and not self.is_head:
            if "aria-colindex" in attributes:
                self.column = int(attributes["aria-colindex"]) - 2
            self.begin_cell(attributes, self.make_cell(attributes.get("class", "").split()))
        elif self.cell is not None and tag in ("a", "svg", "i"):
            self.cell.ink = None

    def handle_endtag(self, tag):
        if tag == "td":
            self.cell = None
        elif tag == "table":
            self.is_head = True

    def make_cell(self, classes):
        cell, important = Cell(), set()
        bodies = sorted(self.rules[name] for name in classes if name in self.rules)
        for _, body in bodies:
            for declaration in filter(None, map(str.strip, body.split(";"))):
                name, _, value = declaration.partition(":")
                if name in important and "!important" not in value:
                    continue
                important |= {name} if "!important" in value else set()
                value = value.replace("!important", "").strip()
                if name in ("background", "background-color"):
                    # That of a colour scale, which LibreOffice does not export.
                    cell.fill = None if name in important else hex_of(value)
                elif name == "color":
                    cell.ink = hex_of(value)
                elif name in ("font", "font-weight"):
                    cell.bold = bool(re.search(r"\b(bold|[6-9]00)\b", value))
        return cell


def normal(text):
    return re.sub(r"\s+", "", text)


def find_shift(own, other):
    """How far the rows and columns of LibreOffice begin after ours."""
    texts = collections.defaultdict(list)
    for place, cell in other.items():
        if normal(cell.text):
            texts[normal(cell.text)].append(place)
    votes = collections.Counter()
    for (row, column), cell in own.items():
        for other_row, other_column in texts.get(normal(cell.text), ())[:20]:
            votes[row - other_row, column - other_column] += 1
    return votes.most_common(1)[0][0] if votes else (0, 0)


def compare_tables(own, other):
    """Triples: a property, whether it agrees, and what was seen."""
    shift = find_shift(own, other)
    for (row, column), cell in other.items():
        mine = own.get((row + shift[0], column + shift[1]))
        if mine is None or normal(mine.text) != normal(cell.text):
            continue
        names = ["fill"] + (["ink", "bold"] if normal(cell.text) else [])
        for name in names:
            a, b = getattr(mine, name), getattr(cell, name)
            if a is not None and b is not None and (name != "bold" or mine.ink and cell.ink):
                where = f"row {row + shift[0]}, column {column + shift[1]} {cell.text[:20]!r}"
                yield name, a == b, f"{where}: {name} {a}, there {b}"


def export_other(workbook, folder):
    subprocess.run(["soffice", "--headless", "--norestore",
                    f"-env:UserInstallation=file://{folder}/profile", "--convert-to",
                    "html:HTML (StarCalc)", "--outdir", folder, workbook],
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
    page = OtherPage()
    text = (pathlib.Path(folder) / pathlib.Path(workbook).with_suffix(".html").name).read_text(
        errors="replace")
    page.feed(text)
    names = re.findall(r'<A NAME="table\d+"><h1>.*?<em>(.*?)</em>', text, re.S)
    return dict(zip(names, page.tables)) if names else {None: page.tables[0]}


def compare(tool, workbook, folder):
    target = pathlib.Path(folder) / "own.html"
    subprocess.run([tool, "render", workbook, "-o", target, "--semantics", "widespread"],
                   stderr=subprocess.DEVNULL, check=True)
    own = OwnPage(target.read_text())
    other = export_other(workbook, folder)
    counts, agreed, faults = collections.Counter(), collections.Counter(), []
    for name, table in zip(own.names, own.tables):
        for prop, agrees, seen in compare_tables(table, other.get(name, other.get(None, {}))):
            counts[prop] += 1
            agreed[prop] += agrees
            if not agrees:
                faults.append(f"{name}: {seen}")
    print(f"{pathlib.Path(workbook).name}: " + ", ".join(
        f"{prop} {agreed[prop]} of {counts[prop]}" for prop in counts))
    for fault in faults[:MOST_SHOWN]:
        print(f"  {fault}")
    return counts, agreed


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    counts, agreed = collections.Counter(), collections.Counter()
    for workbook in sys.argv[2:]:
        with tempfile.TemporaryDirectory() as folder:
            for total, part in zip((counts, agreed), compare(sys.argv[1], workbook, folder)):
                total.update(part)
    for prop in counts:
        print(f"{prop}: {agreed[prop]} of {counts[prop]} cells agree")


if __name__ == "__main__":
    main()
