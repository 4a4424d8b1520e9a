"""What a worker does with one workbook. Sent to the workers, which need conditional_formatters."""

import dataclasses
import os
import threading
import time
from typing import Optional

import conditional_formatters as cf


@dataclasses.dataclass(frozen=True)
class Options:
    """What the inspection of one file may cost, and the moment for which it is made."""

    seconds: float = 60
    memory: int = 2 << 30
    grace: float = 30  # seconds beyond the others after which the worker gives itself up
    now: Optional[str] = None
    limits: Optional[dict[str, int]] = None


class Clock:
    """The time that is left of a file's seconds."""

    def __init__(self, options):
        self._options = options
        self._end = time.monotonic() + options.seconds

    def budget(self):
        left = max(self._end - time.monotonic(), 0.001)
        return cf.Budget(memory=self._options.memory, seconds=left)


def inspect_workbook(path, options):
    """A row about a workbook, and a row for each thing that an auditor should look at.

    Replace it for a question of your own: what it returns is what is written.
    """
    clock = Clock(options)
    book = cf.open(path, now=options.now, limits=options.limits, budget=clock.budget())
    findings = [{"sheet": found.sheet, "code": found.code, "severity": found.severity,
                 "ranges": found.ranges, "rules": " ".join(map(str, found.rules)),
                 "message": found.message}
                for found in book.within(clock.budget()).check()]
    ruled = failed = 0
    for index in range(len(book)):
        for cell in book.within(clock.budget())[index].resolve():
            ruled += not cell.failure
            failed += bool(cell.failure)
    severities = [found["severity"] for found in findings]
    row = {"sheets": len(book), "rules": len(book.rules),
           "rules_not_resolved": sum(not rule.resolved for rule in book.rules),
           "cells_by_rules": ruled, "cells_failed": failed,
           **{f"{name}s": severities.count(name) for name in ("error", "warning", "note")}}
    return row, findings


def work(path, options, inspect=inspect_workbook):
    """The result for one file, whatever becomes of it: a status, an error, a row and findings.

    Ends the worker's process if the file takes much longer than its time: then something hangs that
    looks at no clock. The process is started again, and the file is told as lost.
    """
    begin = time.monotonic()
    guard = threading.Timer(options.seconds + options.grace, os._exit, (70,))
    guard.daemon = True
    guard.start()
    row, findings, status, error = {}, [], "ok", ""
    try:
        row, findings = inspect(path, options)
    except cf.BudgetExceeded as problem:
        status, error = "over budget", str(problem)
    except cf.LoadError as problem:
        status, error = "unreadable", str(problem)
    except MemoryError:
        status, error = "over budget", "needs more memory than the worker has"
    except Exception as problem:  # one file must not cost the others
        status, error = "failed", f"{type(problem).__name__}: {problem}"
    finally:
        guard.cancel()
    return {"status": status, "error": error, "seconds": round(time.monotonic() - begin, 3),
            "row": row, "findings": findings}
