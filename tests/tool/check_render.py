#!/usr/bin/env python3
"""Checks the files that `cndfrmt render` writes, and those that it does not.

check_render.py CNDFRMT, from the root of the sources.
"""

import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile

sys.path.insert(0, "benchmarks")
sys.dont_write_bytecode = True
import make_workbook  # noqa: E402

BOOK = pathlib.Path("examples/demo.xlsx").resolve()
BEGINNINGS = {"html": b"<!DOCTYPE html>", "svg": b"<?xml", "png": b"\x89PNG\r\n\x1a\n", "pdf": b"%PDF-"}
SHEETS = {"html": 5, "svg": 1, "png": 1, "pdf": 5}

failed = 0


def expect(condition, what):
    global failed
    if not condition:
        failed = 1
        print(f"check_render: {what}", file=sys.stderr)


def render(book, target, *options, stdin=None):
    return subprocess.run(
        [cndfrmt, "render", book, "-o", target, "--now", "2026-11-21T12:00:00", *options],
        capture_output=True, text=True, stdin=stdin)


def size_of_png(file):
    return struct.unpack(">II", file.read_bytes()[16:24])


def check_formats(folder):
    for ending, beginning in BEGINNINGS.items():
        target = folder / f"Picture.{ending.upper()}"
        run = render(BOOK, target)
        expect(run.returncode == 0, f"{ending}: status {run.returncode}: {run.stderr}")
        if run.returncode != 0:
            continue
        bytes_written = target.read_bytes()
        expect(bytes_written.startswith(beginning), f"{ending}: the file begins with other bytes")
        told = re.search(r"wrote (.*): (\d+) sheets?, (\d+) bytes", run.stderr)
        expect(told and told.groups() == (str(target), str(SHEETS[ending]),
                                          str(len(bytes_written))),
               f"{ending}: tells another file, sheets or size: {run.stderr}")
        expect(render(BOOK, target).returncode == 0 and target.read_bytes() == bytes_written,
               f"{ending}: another run writes other bytes")
        expect([file.name for file in folder.iterdir()] == [target.name],
               f"{ending}: leaves other files behind")
        target.unlink()


def check_options(folder):
    usual, double, part = folder / "usual.png", folder / "double.png", folder / "part.png"
    render(BOOK, usual)
    render(BOOK, double, "--scale", "2")
    render(BOOK, part, "--range", "Sales!A1:B2")
    for side, (small, large) in enumerate(zip(size_of_png(usual), size_of_png(double))):
        expect(abs(large - 2 * small) <= 1, f"--scale 2 makes {large} of {small} pixels, side {side}")
    expect(size_of_png(part) < size_of_png(usual), "a range is as large as its sheet")
    page = folder / "page.html"
    expect(render(BOOK, page, "--sheet", "Stock").returncode == 0, "one sheet is no page")
    text = page.read_text()
    expect(BOOK.name in text and str(BOOK.parent) not in text, "the page names a folder")
    expect("Hex bolt" in text and "Ada Brandt" not in text, "the page has other sheets")
    with open(BOOK, "rb") as stdin:
        expect(render("-", page, stdin=stdin).returncode == 0, "standard input is not read")
    for file in folder.iterdir():
        file.unlink()


def check_refusals(folder):
    """What fails leaves everything as it was."""
    book, target = folder / "book.html", folder / "old.html"
    shutil.copy(BOOK, book)
    long = folder / "long.xlsx"
    make_workbook.write_workbook(long, 10_000)
    target.write_text("old")
    (folder / "link.html").symlink_to(book)
    cases = {
        "the workbook itself": (book, book),
        "a link to the workbook": (book, folder / "link.html"),
        "a sheet that is not there": (BOOK, target, "--sheet", "Nowhere"),
        "no time": (long, target, "--timeout", "1ms"),
        "a folder that is not there": (BOOK, folder / "nowhere" / "x.html"),
        "a folder": (BOOK, folder),
        "two sheets in a picture": (BOOK, folder / "two.png", "--sheet", "Sales", "--sheet", "Stock"),
        "two ranges in a picture": (BOOK, folder / "two.svg", "--range", "A1", "--range", "B2"),
    }
    before = {file.name: file.read_bytes() for file in folder.iterdir()}
    for what, arguments in cases.items():
        run = render(*arguments)
        expect(run.returncode != 0 and run.stderr, f"{what}: is not refused")
        expect({file.name: file.read_bytes() for file in folder.iterdir()} == before,
               f"{what}: something has changed")
    render(BOOK, target)
    expect(target.read_bytes() != b"old", "an older page is not replaced")


def main():
    for check in (check_formats, check_options, check_refusals):
        with tempfile.TemporaryDirectory() as folder:
            check(pathlib.Path(folder))
    sys.exit(failed)


cndfrmt = sys.argv[1]
main()
