#!/usr/bin/python3
"""Draws docs/picture.svg: a sheet of the demonstration workbook as its conditional formats make it
look, and the tool's explanation of one cell.

Everything that is conditional comes from the tool itself; the cells, their own styles and the widths
of the columns are read with python3-openpyxl, which is needed to regenerate the picture only.

make_picture.py [CNDFRMT]
"""

import html
import json
import pathlib
import re
import subprocess
import sys

import openpyxl
from openpyxl.utils import get_column_letter

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORKBOOK = "examples/demo.xlsx"
SHEET = "Invoices"
EXPLAINED = "E5"  # the cell that the terminal explains
NOW = ["--now", "2026-11-21T12:00:00"]

WIDTH = 920
MARGIN = 14
ROW_HEIGHT = 24
ROW_HEADER = 34
SANS = "Carlito, Calibri, 'Segoe UI', 'Helvetica Neue', Arial, sans-serif"
MONO = "'DejaVu Sans Mono', Menlo, Consolas, 'Liberation Mono', monospace"
MONO_SIZE = 11.5
MONO_ADVANCE = 0.602  # of the size
TERMINAL_COLOUR = "#D1D5DB"
# The colours that the tool asks a terminal for, by their codes.
SGR_COLOURS = {"1": "#FFFFFF", "1;32": "#4ADE80", "1;31": "#F87171", "2": "#9CA3AF"}


class Svg:
    """Collects the elements of a drawing."""

    def __init__(self):
        self.elements = []

    def rect(self, x, y, width, height, fill, **more):
        self.element("rect", x=x, y=y, width=width, height=height, fill=fill, **more)

    def line(self, x1, y1, x2, y2, stroke, **more):
        self.element("line", x1=x1, y1=y1, x2=x2, y2=y2, stroke=stroke, **more)

    def element(self, name, text=None, **attributes):
        written = " ".join(f'{key.replace("__", ":").replace("_", "-")}="{html.escape(format_number(value))}"'
                           for key, value in attributes.items() if value is not None)
        content = f">{html.escape(text, quote=False)}</{name}>" if text is not None else "/>"
        self.elements.append(f"<{name} {written}{content}")

    def text(self, x, y, text, **more):
        self.element("text", text, x=x, y=y, **more)

    def save(self, path, width, height):
        body = "\n".join(self.elements)
        path.write_text(f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" '
                        f'width="{width}" height="{height}">\n{body}\n</svg>\n', encoding="utf-8")


def format_number(value):
    return f"{value:g}" if isinstance(value, float) else str(value)


def run_tool(tool, command, *arguments):
    done = subprocess.run([tool, command, WORKBOOK, *arguments, *NOW], cwd=ROOT, check=True,
                          capture_output=True, text=True)
    return done.stdout


def conditional_styles(tool):
    document = json.loads(run_tool(tool, "resolve", "--sheet", SHEET, "--format", "json"))
    return {cell["cell"]: cell["style"] for cell in document["sheets"][0]["cells"]}


def shown_text(cell):
    """The cell's value in its number format, for the formats of the demonstration workbook."""
    value = cell.value
    if value is None:
        return ""
    if isinstance(value, str):
        return value
    if cell.number_format == "yyyy-mm-dd":
        return value.strftime("%Y-%m-%d")
    return f"{value:,.2f}" if cell.number_format == "#,##0.00" else f"{value:g}"


def own_style(cell):
    """The cell's own style in the terms of the tool's output."""
    style = {"bold": bool(cell.font.b), "fontSize": cell.font.sz}
    if cell.font.color is not None and cell.font.color.type == "rgb":
        style["colour"] = "#" + cell.font.color.rgb[2:]
    if cell.fill.fill_type == "solid":
        style["fillColour"] = "#" + cell.fill.fgColor.rgb[2:]
    is_number = not isinstance(cell.value, str)
    style["horizontalAlignment"] = cell.alignment.horizontal or ("right" if is_number else "left")
    return style


class SheetDrawing:
    """Draws a worksheet with its headers, from the left and the top that are given."""

    def __init__(self, svg, sheet, styles, left, top, width):
        self.svg, self.sheet, self.styles = svg, sheet, styles
        self.left, self.top = left, top
        widths = [sheet.column_dimensions[get_column_letter(column + 1)].width
                  for column in range(sheet.max_column)]
        scale = (width - ROW_HEADER) / sum(widths)
        self.edges = [left + ROW_HEADER]
        for each in widths:
            self.edges.append(self.edges[-1] + each * scale)
        self.height = ROW_HEIGHT * (sheet.max_row + 1)

    def row_top(self, row):
        return self.top + ROW_HEIGHT * row

    def draw(self):
        self.svg.rect(self.left, self.top, self.edges[-1] - self.left, self.height, "#FFFFFF")
        for row in range(1, self.sheet.max_row + 1):
            for column in range(1, self.sheet.max_column + 1):
                self.draw_fill(self.sheet.cell(row, column))
        self.draw_grid()
        for row in range(1, self.sheet.max_row + 1):
            for column in range(1, self.sheet.max_column + 1):
                self.draw_text(self.sheet.cell(row, column))

    def style_of(self, cell):
        return {**own_style(cell), **self.styles.get(cell.coordinate, {})}

    def draw_fill(self, cell):
        colour = self.style_of(cell).get("fillColour")
        if colour:
            left, right = self.edges[cell.column - 1], self.edges[cell.column]
            self.svg.rect(left, self.row_top(cell.row), right - left, ROW_HEIGHT, colour)

    def draw_grid(self):
        right, bottom = self.edges[-1], self.top + self.height
        self.svg.rect(self.left, self.top, right - self.left, ROW_HEIGHT, "#F3F4F6")
        self.svg.rect(self.left, self.top, ROW_HEADER, self.height, "#F3F4F6")
        for row in range(1, self.sheet.max_row + 1):
            self.svg.line(self.left, self.row_top(row), right, self.row_top(row), "#DADDE2")
            self.svg.text(self.left + ROW_HEADER / 2, self.row_top(row) + 16, str(row), fill="#6B7280",
                          font_family=SANS, font_size=11, text_anchor="middle")
        for index, edge in enumerate(self.edges):
            # The title reaches over the empty cells beside it.
            start = self.top if index in (0, len(self.edges) - 1) else self.row_top(2)
            self.svg.line(edge, start, edge, bottom, "#DADDE2")
            if start != self.top:
                self.svg.line(edge, self.top, edge, self.row_top(1), "#DADDE2")
        self.svg.rect(self.left, self.top, right - self.left, self.height, "none", stroke="#C9CDD4")
        for column in range(self.sheet.max_column):
            middle = (self.edges[column] + self.edges[column + 1]) / 2
            self.svg.text(middle, self.top + 16, get_column_letter(column + 1), fill="#6B7280",
                          font_family=SANS, font_size=11, text_anchor="middle")

    def draw_text(self, cell):
        style = self.style_of(cell)
        right_aligned = style["horizontalAlignment"] == "right"
        x = self.edges[cell.column] - 7 if right_aligned else self.edges[cell.column - 1] + 7
        self.svg.text(
            x, self.row_top(cell.row) + 12 + style["fontSize"] * 0.45, shown_text(cell), fill=style.get("colour", "#1F2937"),
            font_family=SANS, font_size=style["fontSize"] * 1.25,
            font_weight="bold" if style.get("bold") else None,
            font_style="italic" if style.get("italic") else None,
            text_decoration="underline" if style.get("underline", "none") != "none" else None,
            text_anchor="end" if right_aligned else None)

    def frame(self, cell):
        """Marks a cell, as a selection is marked."""
        left, right = self.edges[cell.column - 1], self.edges[cell.column]
        top, bottom = self.row_top(cell.row), self.row_top(cell.row + 1)
        self.svg.rect(left, top, right - left, bottom - top, "none", stroke="#217346",
                      stroke_width=2)


def pieces(line):
    """The pieces of a line with the code of a terminal in force for each."""
    code = ""
    for number, part in enumerate(re.split(r"\x1b\[([0-9;]*)m", line)):
        if number % 2:
            code = "" if part == "0" else part
        elif part:
            yield part, code


def draw_terminal_line(svg, line, left, baseline):
    advance = MONO_SIZE * MONO_ADVANCE
    column = 0
    for text, code in pieces(line):
        x = left + column * advance
        if code.startswith("48;2;"):
            colour = "#%02X%02X%02X" % tuple(int(part) for part in code.split(";")[2:])
            svg.rect(x, baseline - MONO_SIZE * 0.85, len(text) * advance, MONO_SIZE * 1.1, colour)
        else:
            svg.text(x, baseline, text, fill=SGR_COLOURS.get(code, TERMINAL_COLOUR), font_family=MONO,
                     font_size=MONO_SIZE, font_weight="bold" if code.startswith("1") else None,
                     xml__space="preserve", textLength=round(len(text) * advance, 1))
        column += len(text)


def draw_terminal(svg, lines, left, top, width):
    line_height = MONO_SIZE * 1.55
    height = line_height * len(lines) + 2 * MARGIN
    svg.rect(left, top, width, height, "#1B1F27", rx=8)
    for number, line in enumerate(lines):
        draw_terminal_line(svg, line, left + MARGIN, top + MARGIN + line_height * (number + 0.75))
    return height


def main():
    tool = str(pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else
                            ROOT / "build/release/bin/cndfrmt").resolve())
    sheet = openpyxl.load_workbook(ROOT / WORKBOOK, data_only=True)[SHEET]
    place = f"{SHEET}!{EXPLAINED}"
    output = run_tool(tool, "explain", place, "--colour", "always").rstrip("\n").split("\n")
    command = f"\x1b[1m$ cndfrmt explain demo.xlsx {place}\x1b[0m"

    svg = Svg()
    body = Svg()
    inner = WIDTH - 2 * MARGIN
    drawing = SheetDrawing(body, sheet, conditional_styles(tool), MARGIN, MARGIN, inner)
    drawing.draw()
    drawing.frame(sheet[EXPLAINED])
    top = MARGIN + drawing.height + MARGIN
    bottom = top + draw_terminal(body, [command, *output], MARGIN, top, inner) + MARGIN
    svg.rect(0, 0, WIDTH, bottom, "#FFFFFF")
    svg.rect(0.5, 0.5, WIDTH - 1, bottom - 1, "none", stroke="#E5E7EB", rx=10)
    svg.elements += body.elements
    svg.save(ROOT / "docs" / "picture.svg", WIDTH, format_number(bottom))


if __name__ == "__main__":
    main()
