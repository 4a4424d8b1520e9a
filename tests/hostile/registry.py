"""The hostile files by name: functions that make their bytes."""

CASES = {}
ALSO = {}  # commands that a file goes through besides the usual ones, by name


def case(make):
    """Adds the file that a function makes, under the function's name."""
    CASES[make.__name__] = make
    return make


def case_for(*commands):
    """The same, for a file that goes through some commands besides the usual ones."""
    def add_case(make):
        ALSO[make.__name__] = commands
        return case(make)
    return add_case


def add(name, make):
    """Adds a file under a name of its own."""
    CASES[name] = make
