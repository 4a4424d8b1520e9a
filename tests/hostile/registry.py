"""The hostile files by name: functions that make their bytes."""

CASES = {}


def case(make):
    """Adds the file that a function makes, under the function's name."""
    CASES[make.__name__] = make
    return make


def add(name, make):
    """Adds a file under a name of its own."""
    CASES[name] = make
