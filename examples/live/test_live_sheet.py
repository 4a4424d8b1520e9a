#!/usr/bin/env python3
"""Types into the live sheet through a pseudo-terminal, and looks at its screen.

test_live_sheet.py PROGRAM
"""

import fcntl
import os
import pty
import re
import select
import struct
import sys
import termios
import time

ROWS, COLUMNS = 24, 80
LATE_ROW, LATE_AMOUNT = "80;0;80", "130;0;130"
LESS, TOP, DUPLICATE = "150;0;0", "0;130;0", "150;110;0"


class Screen:
    """The program under a pseudo-terminal of a fixed size."""

    def __init__(self, program, *arguments):
        self.pid, self.terminal = pty.fork()
        if self.pid == 0:
            os.execv(program, [program, *arguments])
        fcntl.ioctl(self.terminal, termios.TIOCSWINSZ, struct.pack("HHHH", ROWS, COLUMNS, 0, 0))
        self.output = ""

    def type(self, keys):
        os.write(self.terminal, keys.encode())

    def wait_for(self, what, condition, seconds=60):
        """Reads until the last whole frame fulfils a condition."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if select.select([self.terminal], [], [], 0.1)[0]:
                try:
                    self.output += os.read(self.terminal, 65536).decode(errors="replace")
                except OSError:
                    break
            lines = self.lines()
            if lines and condition(lines):
                return lines
        sys.exit(f"test_live_sheet: no screen with {what}; the last was:\n" + "\n".join(self.lines()))

    def lines(self):
        frames = self.output.split("\x1b[H")
        return frames[-1].split("\r\n") if len(frames) > 1 else []

    def end(self):
        self.type("\x11")
        while True:
            try:
                if not os.read(self.terminal, 65536):
                    break
            except OSError:
                break
        return os.waitstatus_to_exitcode(os.waitpid(self.pid, 0)[1])


def cell(lines, row, column=0):
    """The text of a visible cell, and its fill as `red;green;blue`."""
    for line in lines:
        if re.match(rf"(\x1b\[[0-9;]*m)*{row} ", line):
            cells = line[8:].split("\x1b[0m ")
            fill = re.search(r"48;2;([0-9;]+)m", cells[column])
            return re.sub(r"\x1b\[[0-9;]*m", "", cells[column]).strip(), fill and fill.group(1)
    return None, None


def main():
    screen = Screen(sys.argv[1], *sys.argv[2:])
    down, page_down, home, last = "\x1b[B", "\x1b[6~", "\x1b[H", "\x1b[F"
    insert, delete = "\x1b[2~", "\x1b[3~"

    screen.wait_for("a first frame", lambda at: cell(at, 1) == ("0", LESS))
    screen.wait_for("operands prepared", lambda at: "prepared" in at[-1])

    # A row that is late has its colour as a whole; the text has one of its own.
    lines = screen.wait_for("a late row", lambda at: cell(at, 4, 1) == ("late", LATE_AMOUNT))
    assert cell(lines, 4)[1] == LATE_ROW, cell(lines, 4)

    # The largest number is among the top ten at once, and repeated when it is typed again.
    screen.type("99999999\r")
    screen.wait_for("a top value", lambda at: cell(at, 1) == ("99999999", TOP))
    screen.type(down + "7919\r")
    screen.wait_for("a value", lambda at: cell(at, 2)[0] == "7919")
    screen.type(down + "7919\r")
    lines = screen.wait_for("repeated values", lambda at: cell(at, 3) == ("7919", DUPLICATE))
    assert cell(lines, 2) == ("7919", DUPLICATE), cell(lines, 2)

    # A row is inserted and deleted again: everything below goes down and up.
    screen.type(home + insert)
    screen.wait_for("an inserted row", lambda at: cell(at, 2)[0] == "99999999")
    screen.type(delete)
    screen.wait_for("the row deleted", lambda at: cell(at, 1)[0] == "99999999")

    screen.type(page_down * 3)
    screen.wait_for("later pages", lambda at: cell(at, 67)[0] is not None)
    screen.type(last)
    lines = screen.wait_for("the last row", lambda at: cell(at, 1)[0] is None)
    assert re.search(r"edit \d+\.\d+ ms, view \d+\.\d+ ms \(\d+ told\), frame \d+\.\d+ ms",
                     screen.wait_for("times", lambda at: "edit" in at[-1])[-1])

    status = screen.end()
    assert status == 0, status


main()
