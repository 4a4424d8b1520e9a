"""What the tests of the module share."""

import functools
import io
import json
import os
import pathlib
import subprocess

import openpyxl
import pytest
from openpyxl.formatting.rule import FormulaRule
from openpyxl.styles import Font

import conditional_formatters as cf

ROOT = pathlib.Path(__file__).parents[2]
DEMO = ROOT / "examples" / "demo.xlsx"
WORKBOOKS = [DEMO, *sorted((ROOT / "tests" / "workbooks").glob("*.xlsx"))]
NOW = "2026-11-21T12:00:00"
# It needs more values at once than the engine holds.
TOO_LARGE = FormulaRule(formula=["SUM(A1:XFD1048576*1)>0"], font=Font(bold=True))


def run_tool(command, *arguments):
    """The JSON that the tool prints."""
    common = ["--format", "json", "--time-zone", "UTC", "--locale", "en-US"]
    moment = [] if "--now" in arguments else ["--now", NOW]
    run = subprocess.run([os.environ["CNDFRMT"], command, *map(str, arguments), *common, *moment],
                         capture_output=True, text=True)
    return json.loads(run.stdout)


def save(workbook):
    """The bytes of a workbook of openpyxl."""
    file = io.BytesIO()
    workbook.save(file)
    return file.getvalue()


@functools.lru_cache(maxsize=None)
def open_workbook(path):
    """A workbook that tests share, since nothing changes it."""
    return cf.open(path, now=NOW)


def make_book(rows, rules=(), **options):
    """A workbook of one sheet, with its rules by their ranges."""
    workbook = openpyxl.Workbook()
    for row in rows:
        workbook.active.append(row)
    for ranges, rule in rules:
        workbook.active.conditional_formatting.add(ranges, rule)
    return cf.open(save(workbook), **{"now": NOW, **options})


@pytest.fixture(scope="session")
def demo():
    return open_workbook(DEMO)
