#!/usr/bin/python3
"""Compares colour scales, data bars and icons with those that LibreOffice draws.

  compare_visuals.py CNDFRMT WORKBOOK...

Run by hand; needs the packages libreoffice-calc-nogui, python3-uno, poppler-utils and python3-pil.
LibreOffice exports each sheet with visuals as one page without texts, which is turned into pixels;
the positions of the cells come from LibreOffice, too. Prints how many cells agree, and the first
that do not. Cells that are hidden, merged or smaller than a few pixels are left out.
"""

import collections
import json
import pathlib
import subprocess
import sys
import tempfile
import time

import uno
from com.sun.star.beans import PropertyValue
from PIL import Image

DOTS_PER_INCH = 200
COLOUR_TOLERANCE = 3  # of 255: the colours of a PDF file are rounded
LENGTH_TOLERANCE = 0.03  # of the cell's width
PIXELS = DOTS_PER_INCH / 2540  # for each hundredth of a millimetre


def connect(work):
    """A LibreOffice process and its desktop."""
    pipe = f"compare-visuals-{pathlib.Path(work).name}"
    process = subprocess.Popen(
        ["soffice", "--headless", "--norestore", f"-env:UserInstallation=file://{work}/profile",
         f"--accept=pipe,name={pipe};urp;"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    local = uno.getComponentContext()
    resolver = local.ServiceManager.createInstanceWithContext(
        "com.sun.star.bridge.UnoUrlResolver", local)
    for _ in range(120):
        time.sleep(0.5)
        try:
            context = resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
            return process, context.ServiceManager.createInstanceWithContext(
                "com.sun.star.frame.Desktop", context)
        except Exception:  # not ready yet
            continue
    sys.exit("compare_visuals: LibreOffice does not start")


def prop(name, value):
    return PropertyValue(Name=name, Value=value)


def show_alone(document, sheet):
    """Makes the document print one sheet on one page from A1 on, without texts."""
    cursor = sheet.createCursor()
    cursor.gotoEndOfUsedArea(False)
    area = sheet.getCellRangeByPosition(0, 0, cursor.RangeAddress.EndColumn,
                                        cursor.RangeAddress.EndRow)
    formats, locale = document.NumberFormats, uno.createUnoStruct("com.sun.star.lang.Locale")
    key = formats.queryKey(";;;", locale, False)
    area.NumberFormat = key if key >= 0 else formats.addNew(";;;", locale)
    for other in document.Sheets:
        other.setPrintAreas(())
    sheet.setPrintAreas((area.RangeAddress,))
    style = document.StyleFamilies.getByName("PageStyles").getByName(sheet.PageStyle)
    style.HeaderIsOn = style.FooterIsOn = style.PrintGrid = style.PrintHeaders = False
    style.LeftMargin = style.RightMargin = style.TopMargin = style.BottomMargin = 0
    style.CenterHorizontally = style.CenterVertically = False
    style.Width, style.Height = area.Size.Width + 100, area.Size.Height + 100
    style.PageScale = 100


def draw(document, sheet, work):
    show_alone(document, sheet)
    document.storeToURL(f"file://{work}/page.pdf", (prop("FilterName", "calc_pdf_Export"),))
    subprocess.run(["pdftoppm", "-r", str(DOTS_PER_INCH), "-png", "-singlefile",
                    f"{work}/page.pdf", f"{work}/page"], check=True)
    return Image.open(f"{work}/page.png").convert("RGB")


def box_of(cell):
    """The cell's pixels: left, top, right, bottom."""
    left, top = cell.Position.X * PIXELS, cell.Position.Y * PIXELS
    return left, top, left + cell.Size.Width * PIXELS, top + cell.Size.Height * PIXELS


def colour_of(text):
    return tuple(int(text[i:i + 2], 16) for i in (1, 3, 5))


def differ(a, b):
    return max(abs(x - y) for x, y in zip(a, b))


def check_scale(image, box, scale):
    left, top, right, bottom = box
    seen = image.getpixel((int(right - (right - left) * 0.15), int(top + (bottom - top) * 0.3)))
    expected = colour_of(scale["colour"])
    return differ(seen, expected) <= COLOUR_TOLERANCE, f"drawn #{'%02X%02X%02X' % seen}"


def measure_bar(image, box):
    """From where to where pixels of the middle row are not white, as parts of the cell's width."""
    left, top, right, bottom = box
    y, width = int((top + bottom) / 2), right - left
    edge = 3  # the cell's own borders
    row = [image.getpixel((x, y)) for x in range(int(left) + edge, int(right) - edge)]
    inked = [x for x, pixel in enumerate(row) if differ(pixel, (255, 255, 255)) > 4]
    if not inked:
        return None
    return (inked[0] + edge) / width, (inked[-1] + edge + 1) / width


def check_bar(image, box, bar):
    measured = measure_bar(image, box)
    length = bar["to"] - bar["from"]
    if measured is None:
        return length <= LENGTH_TOLERANCE, "drawn nothing"
    start, end = bar["from"], bar["to"]
    if bar["direction"] == "rightToLeft":
        start, end = 1 - end, 1 - start
    if bar["axis"] is not None and length <= LENGTH_TOLERANCE:
        return True, ""
    fits = max(abs(start - measured[0]), abs(end - measured[1])) <= LENGTH_TOLERANCE
    return fits, f"drawn from {measured[0]:.3f} to {measured[1]:.3f}"


def picture_of_icon(image, box):
    """The left of the cell, where icons are, as few colours."""
    left, top, right, bottom = box
    size = min(right - left, bottom - top)
    part = image.crop((int(left), int(bottom - size), int(left + size), int(bottom)))
    return [v for pixel in part.resize((6, 6), Image.BOX).getdata() for v in pixel]


def check_icons(icons):
    """Whether each picture looks most like the others of its icon. Pairs of a cell and a fault."""
    by_icon = collections.defaultdict(list)
    for cell, name, picture in icons:
        by_icon[name].append(picture)
    means = {name: [sum(v) / len(v) for v in zip(*pictures)] for name, pictures in by_icon.items()}
    for cell, name, picture in icons:
        of_set = [other for other in means if other.split("/")[0] == name.split("/")[0]]
        nearest = min(of_set, key=lambda other: sum((a - b) ** 2
                                                   for a, b in zip(means[other], picture)))
        yield cell, name == nearest, f"looks like {nearest}"


def compare(tool, workbook, desktop, work):
    output = subprocess.run([tool, "resolve", workbook, "--format", "jsonl"], capture_output=True,
                            text=True).stdout
    by_sheet = collections.defaultdict(list)
    for line in map(json.loads, output.splitlines()):
        if "visuals" in line:
            by_sheet[line["sheet"]].append(line)
    document = desktop.loadComponentFromURL(
        pathlib.Path(workbook).resolve().as_uri(), "_blank", 0, (prop("Hidden", True),))
    results = collections.defaultdict(lambda: [0, 0, []])

    def count(kind, cell, fits, fault):
        results[kind][0] += 1
        results[kind][1] += fits
        if not fits:
            results[kind][2].append(f"{cell}: {fault}")

    for name, lines in by_sheet.items():
        sheet = document.Sheets.getByName(name)
        if not sheet.IsVisible:
            continue
        image = draw(document, sheet, work)
        icons = []
        for line in lines:
            cell = sheet.getCellRangeByName(line["cell"])
            box, visuals = box_of(cell), line["visuals"]
            if cell.IsMerged or box[2] - box[0] < 8 or box[3] - box[1] < 8:
                continue
            where = f"{name}!{line['cell']} = {line['value']}"
            if "scale" in visuals and not {"bar", "icon"} & set(visuals) and \
                    not visuals["scale"]["behindFill"]:
                count("scale", f"{where} {visuals['scale']['colour']}",
                      *check_scale(image, box, visuals["scale"]))
            if "bar" in visuals and cell.CellBackColor == -1 and not line["style"]:
                bar = visuals["bar"]
                count("bar", f"{where} {bar['from']:.3f} to {bar['to']:.3f}",
                      *check_bar(image, box, bar))
            if "icon" in visuals and visuals["icon"]["count"] > 0 and "bar" not in visuals:
                # An icon instead of the value stands elsewhere.
                icons.append((where, f"{visuals['icon']['set']}{visuals['showValue']}/"
                                     f"{visuals['icon']['index']}",
                              picture_of_icon(image, box)))
        for where, fits, fault in check_icons(icons):
            count("icon", where, fits, fault)
    document.close(True)
    for kind, (cells, agreed, faults) in results.items():
        print(f"{pathlib.Path(workbook).name}: {kind}: {agreed} of {cells} cells agree")
        for fault in faults[:12]:
            print(f"  {fault}")


def main():
    tool, workbooks = sys.argv[1], sys.argv[2:]
    with tempfile.TemporaryDirectory() as work:
        process, desktop = connect(work)
        try:
            for workbook in workbooks:
                compare(tool, workbook, desktop, work)
        finally:
            process.terminate()
            process.wait()


if __name__ == "__main__":
    main()
