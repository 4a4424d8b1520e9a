#!/usr/bin/env python3
"""Compares the time of pictures with that of LibreOffice for the same workbook.

  compare_render.py CNDFRMT [ROUNDS [ROWS]]

Writes a workbook of ten columns and ROWS rows (10,000 unless said otherwise: 100,000 cells) with
eight rules over all of it, and has both programs turn it into HTML, PDF and PNG, by turns, ROUNDS
times (3). The quickest run of each counts, since other load only adds; a run of LibreOffice ends
after ten minutes. Needs the packages libreoffice-calc-nogui and poppler-utils. Run it on a machine
with nothing else to do.

LibreOffice is measured as it is started from a command line, and less the time that it takes for a
workbook of one row. Its own PNG shows the first page alone, so cndfrmt is asked for the same cells
(`png, first page`). To have all cells as PNG, its PDF is rasterised by pdftoppm with 96 dots an inch,
as large as cndfrmt draws them in one picture (`png, all cells`).
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import threading
import time

from make_workbook import write_workbook

LONGEST = 600
FIRST_PAGE = "A1:J45"  # of Letter with the usual margins, in usual rows and columns


class Unfinished(Exception):
    """A program that fails, writes nothing, or takes too long; its text says which."""


def measure(command):
    """Seconds from start to end."""
    start = time.monotonic()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               start_new_session=True)
    # LibreOffice has a child that does the work.
    limit = threading.Timer(LONGEST, os.killpg, (process.pid, 9))
    limit.start()
    status = process.wait()
    limit.cancel()
    seconds = time.monotonic() - start
    if seconds >= LONGEST:
        raise Unfinished(f"over {LONGEST}")
    if status != 0:
        raise Unfinished(f"status {status}")
    return seconds


class Programs:
    """Both programs, and a folder for what they write."""

    def __init__(self, tool, folder):
        self.tool, self.folder = tool, pathlib.Path(folder)

    def draw(self, book, ending, options=()):
        return measure([self.tool, "render", book, "-o", self.folder / f"own.{ending}", *options])

    def convert(self, book, ending, kind):
        """LibreOffice, which exits with 0 also when it writes nothing."""
        out = self.folder / "out"
        shutil.rmtree(out, ignore_errors=True)
        out.mkdir()
        seconds = measure(["soffice", "--headless", "--norestore",
                           f"-env:UserInstallation=file://{self.folder}/profile",
                           "--convert-to", f"{ending}:{kind}", "--outdir", out, book])
        if not (out / f"{book.stem}.{ending}").exists():
            raise Unfinished("writes nothing")
        return seconds

    def rasterise(self, book):
        seconds = self.convert(book, "pdf", "calc_pdf_Export")
        out = self.folder / "out"
        return seconds + measure(["pdftoppm", "-r", "96", "-png", out / f"{book.stem}.pdf",
                                  out / "page"])


ROWS = {
    "html": (lambda p, b: p.draw(b, "html"), lambda p, b: p.convert(b, "html", "HTML (StarCalc)")),
    "pdf": (lambda p, b: p.draw(b, "pdf"), lambda p, b: p.convert(b, "pdf", "calc_pdf_Export")),
    "png, first page": (lambda p, b: p.draw(b, "png", ["--range", FIRST_PAGE]),
                        lambda p, b: p.convert(b, "png", "calc_png_Export")),
    "png, all cells": (lambda p, b: p.draw(b, "png"), lambda p, b: p.rasterise(b)),
}


def compare(programs, book, small, row, rounds):
    """The quickest run of each: own, LibreOffice, LibreOffice for a workbook of one row."""
    own, other = row
    times = [(own(programs, book), other(programs, book), other(programs, small))
             for _ in range(rounds)]
    return [min(column) for column in zip(*times)]


def describe(programs, book, small, name, rounds):
    try:
        own, other, start = compare(programs, book, small, ROWS[name], rounds)
    except Unfinished as problem:
        own = min(ROWS[name][0](programs, book) for _ in range(rounds))
        return f"| {name} | {own:.2f} | {problem} | | | |"
    return (f"| {name} | {own:.2f} | {other:.2f} | {other / own:.1f} | {other - start:.2f} | "
            f"{(other - start) / own:.1f} |")


def main():
    if len(sys.argv) not in (2, 3, 4):
        sys.exit(__doc__)
    rounds, rows = (list(map(int, sys.argv[2:])) + [3, 10_000][len(sys.argv) - 2:])[:2]
    with tempfile.TemporaryDirectory() as folder:
        book, small = pathlib.Path(folder) / "book.xlsx", pathlib.Path(folder) / "small.xlsx"
        write_workbook(book, rows)
        write_workbook(small, 1)
        programs = Programs(sys.argv[1], folder)
        programs.convert(small, "pdf", "calc_pdf_Export")  # makes the profile of a user
        print(f"{rows * 10:,} cells: seconds from start to end, the quickest of {rounds}\n")
        print("| | cndfrmt | LibreOffice | ratio | LibreOffice less its start | ratio |")
        print("|---|---|---|---|---|---|")
        for name in ROWS:
            print(describe(programs, book, small, name, rounds), flush=True)


if __name__ == "__main__":
    main()
