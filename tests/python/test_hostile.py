"""Hostile files end in answers or errors of the module, within their budget."""

import json
import subprocess
import sys

from conftest import ROOT

# In a process of its own, so that a crash is told as one.
ASK = """
import contextlib, html, json, sys, time, warnings
sys.path[:0] = [{hostile!r}]
sys.dont_write_bytecode = True
import cases, picture_cases
from registry import CASES
import conditional_formatters as cf

warnings.simplefilter("ignore")

def ask(contents):
    book = cf.open(contents, budget=cf.Budget(seconds=0.5, memory=256 << 20))
    json.dumps([cf.to_json(finding) for finding in (*book.findings, *book.check())]).encode()
    for sheet in book[:2]:
        for cell in sheet.resolve():
            cell.to_css(), cell.shown.encode()
        sheet.rule_array("A1:F20"), sheet.runs("A1:F20"), sheet.explain("B2")
        assert sheet._repr_html_().count("<") == 2
        sheet.to_pandas_style("A1:C4").to_html().encode()

ends = {{}}
for name, make in list(CASES.items())[{first}::{step}]:
    contents = make()
    begin = time.process_time()
    try:
        ask(contents)
        end = "answered"
    except (cf.Error, MemoryError) as error:
        str(error).encode()
        end = type(error).__name__
    ends[name] = [end, time.process_time() - begin]
print(json.dumps(ends))
"""


def run(first, step):
    script = ASK.format(hostile=str(ROOT / "tests" / "hostile"), first=first, step=step)
    done = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True)
    assert done.returncode == 0, done.stderr[-2000:]
    return json.loads(done.stdout)


def test_every_sixth_hostile_file():
    ends = run(0, 6)
    slow = {name: end for name, end in ends.items() if end[1] > 10}
    assert not slow
    words = [end for end, _ in ends.values()]
    assert words.count("answered") > 5 and words.count("LoadError") > 3
    assert set(words) <= {"answered", "LoadError", "BudgetExceeded", "MemoryError", "RenderError"}
