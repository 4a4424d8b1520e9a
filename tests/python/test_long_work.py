"""Long work: it can be stopped, it lets others run, and several threads may ask at once."""

import concurrent.futures
import signal
import subprocess
import sys
import time

import pytest
from conftest import DEMO, NOW, make_book
from openpyxl.formatting.rule import FormulaRule
from openpyxl.styles import Font

import conditional_formatters as cf

# Work of minutes: each of some thousand cells compares itself with all others.
SLOW_RULE = ("A1:A3000", FormulaRule(formula=["SUMPRODUCT(--(A$1:A$3000*A1>ROW(A$1:A$3000)))>0"],
                                     font=Font(bold=True)))


def make_slow(**options):
    rules = [SLOW_RULE] + [
        (f"A1:A{3000 - offset}", FormulaRule(
            formula=[f"SUMPRODUCT(--(A$1:A$3000*A1>ROW(A$1:A$3000)+{offset}))<0"],
            font=Font(bold=True))) for offset in range(1, 60)]
    return make_book([[number] for number in range(3000)], rules, **options)[0]


@pytest.fixture(scope="module")
def slow():
    return make_slow()


def test_the_time_of_a_call_is_bounded(slow):
    sheet = slow.workbook.within(cf.Budget(seconds=0.3))[0]
    begin = time.monotonic()
    with pytest.raises(cf.BudgetExceeded, match="0.3 seconds"):
        sheet.rule_array()
    assert time.monotonic() - begin < 2
    # The workbook answers on, and the next call has its own time.
    assert sheet.value("A2") == 1


def test_the_time_of_opening_is_bounded(tmp_path):
    sys.path.insert(0, str(DEMO.parents[1] / "benchmarks"))
    from make_workbook import write_workbook

    write_workbook(tmp_path / "large.xlsx", 20_000)
    begin = time.monotonic()
    with pytest.raises(cf.BudgetExceeded, match="0.02 seconds"):
        cf.open(tmp_path / "large.xlsx", budget=cf.Budget(seconds=0.02))
    assert time.monotonic() - begin < 0.5
    with pytest.raises(cf.BudgetExceeded, match="steps"):
        cf.open(tmp_path / "large.xlsx", budget=cf.Budget(steps=1000))


def test_other_threads_run_meanwhile(slow):
    sheet = slow.workbook.within(cf.Budget(seconds=0.5))[0]
    turns = []
    with concurrent.futures.ThreadPoolExecutor(1) as pool:
        work = pool.submit(lambda: pytest.raises(cf.BudgetExceeded, sheet.rule_array))
        while not work.done():
            turns.append(time.monotonic())
            time.sleep(0.01)
        work.result()
    assert len(turns) > 10


INTERRUPTED = ["rule_array()", "rule_array(threads=2)", "runs()", "cells()", "check()", "render()"]
# In a process of its own: a signal that comes too late must not end the tests.
INTERRUPT = """
import os, signal, sys, threading, time
sys.path.insert(0, {tests!r})
from test_long_work import INTERRUPTED, make_slow
sheet = make_slow()
for call in INTERRUPTED:
    threading.Timer(0.3, os.kill, (os.getpid(), signal.SIGINT)).start()
    begin = time.monotonic()
    try:
        eval("sheet." + call)
    except KeyboardInterrupt:
        print(call, "interrupted", time.monotonic() - begin < 1.5, sheet.value("A2"), flush=True)
"""


@pytest.fixture(scope="module")
def interruptions():
    script = INTERRUPT.format(tests=str(DEMO.parents[1] / "tests" / "python"))
    run = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True, timeout=60)
    return run.stdout.splitlines() + run.stderr.splitlines()


@pytest.mark.parametrize("call", INTERRUPTED)
def test_ctrl_c_ends_a_call_at_once(call, interruptions):
    assert f"{call} interrupted True 1.0" in interruptions


def test_ctrl_c_of_a_handler_of_ones_own_reaches_the_caller(slow):
    class Alarm(Exception):
        pass

    def ring(*_):
        raise Alarm

    before = signal.signal(signal.SIGALRM, ring)
    try:
        signal.setitimer(signal.ITIMER_REAL, 0.2)
        with pytest.raises(Alarm):
            slow.rule_array()
    finally:
        signal.signal(signal.SIGALRM, before)


def test_several_threads_ask_one_workbook():
    book = cf.open(DEMO, now=NOW)
    alone = cf.open(DEMO, now=NOW)

    def ask(number):
        sheet = book[number % len(book)]
        return (list(sheet.resolve()), sheet.runs(), sheet.explain("B5"), sheet.check(),
                sheet.rule_array().tolist())

    with concurrent.futures.ThreadPoolExecutor(4) as pool:
        answers = list(pool.map(ask, range(20)))
    for number, (cells, runs, account, findings, array) in enumerate(answers):
        sheet = alone[number % len(alone)]
        assert cells == list(sheet.resolve()) and runs == sheet.runs()
        assert account == sheet.explain("B5") and findings == sheet.check()
        assert array == sheet.rule_array().tolist()


def test_moments_of_several_threads_do_not_mix():
    days = [f"2026-{month:02}-15" for month in range(1, 13)] * 2

    def count(day):
        return len(list(cf.open(DEMO, now=day)["Invoices"].resolve()))

    expected = [count(day) for day in days]
    with concurrent.futures.ThreadPoolExecutor(4) as pool:
        assert list(pool.map(count, days)) == expected
    assert len(set(expected)) > 1
