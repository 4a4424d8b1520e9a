#!/usr/bin/env python3
"""Breaks the library's sources one line at a time and says which breaks no test notices.

  mutate.py [--sample N] [--seed S] [--jobs N] [--build DIR] [--list] PATH...

Each PATH is a source or a folder below ConditionalFormatters/. A mutant is one change of one line:
a comparison flipped, a condition negated, a constant or two arguments swapped, a statement dropped.
For each one the objects that have the line are rebuilt, and the test programs run one after the
other until one fails. Works in build/mutate, or in another configured tree without unity builds,
and changes no source; nothing else should meanwhile.
"""

import argparse
import concurrent.futures
import dataclasses
import json
import os
import pathlib
import queue
import random
import re
import resource
import shutil
import signal
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# The cheapest first: most mutants die in the first one.
SUITES = ["library_test", "library_services_test", "library_allocation_test",
          "library_range_walk_test", "library_concurrency_test", "whole_table_test"]
LIBRARY = "libConditionalFormatters"

# Most of the time goes into linking, of which this linker needs a fifth.
LINKER = " -fuse-ld=lld" if shutil.which("ld.lld") else ""

COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "+=": "-=", "-=": "+=",
              "<<": ">>", ">>": "<<"}

# Statements whose loss shows in no result: they only make things faster.
HINTS = re.compile(r"\b(reserve|prefetch|shrink_to_fit)\w*\(", re.IGNORECASE)
LOCKS = re.compile(r"std::(lock_guard|scoped_lock|unique_lock)\b")
DECLARATION = re.compile(r"^\s*(return|using|case|default|throw|template|namespace|friend|public|"
                         r"private|protected|std::function<|#|\[\[|~)|= default;$")


@dataclasses.dataclass(frozen=True)
class Mutant:
    path: pathlib.Path  # relative to the tree
    line: int           # from 1
    kind: str
    begin: int          # offsets in the file
    end: int
    text: str           # takes the place of what stands there

    def apply(self, source):
        return source[:self.begin] + self.text + source[self.end:]

    def describe(self, source):
        old = " ".join(source[self.begin:self.end].split())
        new = " ".join(self.text.split())
        return f"{self.path}:{self.line}: {self.kind}: `{shorten(old)}` -> `{shorten(new)}`"


def shorten(text):
    return text if len(text) <= 70 else text[:67] + "..."


def mask(source):
    """The source with blanks for comments, texts, attributes and preprocessor lines."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|'
                         r"(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])*'|\[\[\w+\]\]|^#(?:[^\n]*\\\n)*[^\n]*|"
                         r"\bstatic_assert\((?:.|\n)*?\);", re.MULTILINE | re.DOTALL)
    return pattern.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), source)


def closing(masked, opening):
    """The offset of the parenthesis that closes the one at `opening`, or -1."""
    depth = 0
    for offset in range(opening, len(masked)):
        depth += {"(": 1, ")": -1}.get(masked[offset], 0)
        if depth == 0:
            return offset
    return -1


def split_arguments(masked, begin, end):
    """The offsets of the arguments between two parentheses."""
    arguments, depth, start = [], 0, begin
    for offset in range(begin, end):
        if masked[offset] in "([{<":
            depth += 1
        elif masked[offset] in ")]}>" and masked[offset - 1] != "-":
            depth -= 1
        elif masked[offset] == "," and depth == 0:
            arguments.append((start, offset))
            start = offset + 1
    return arguments + [(start, end)]


def find_replacements(masked, begin, end):
    """Yields (kind, begin, end, text) for the line between two offsets."""
    line = masked[begin:end]
    for match in re.finditer(r" (<=|>=|==|!=|<|>) ", line):
        yield "comparison", begin + match.start(1), begin + match.end(1), COMPARISONS[match[1]]
    for match in re.finditer(r" (&&|\|\|) ", line):
        text = "||" if match[1] == "&&" else "&&"
        yield "logic", begin + match.start(1), begin + match.end(1), text
    for match in re.finditer(r"(?<=[ (,;{\[])!(?=[\w(*:])", line):
        yield "condition", begin + match.start(), begin + match.end(), ""
    for match in re.finditer(r"\b(if|while) \(", line):
        opening = begin + match.end() - 1
        close = closing(masked, opening)
        condition = masked[opening + 1:close] if close > 0 else ";"
        # A declaration cannot be negated, and a single == was flipped above.
        if not re.search(r"[;\n]| = |^[^&|]* [!=]= [^&|]*$", condition):
            yield "condition", opening + 1, close, f"!({condition})"
    for match in re.finditer(r" (\+=|-=|<<|>>|[+\-*/%]) ", line):
        yield "arithmetic", begin + match.start(1), begin + match.end(1), ARITHMETIC[match[1]]
    for match in re.finditer(r"\+\+|--", line):
        text = "--" if match[0] == "++" else "++"
        yield "arithmetic", begin + match.start(), begin + match.end(), text
    if not re.search(r"\b(virtual|override)\b.*= 0;|^\s*template", line):
        for match in re.finditer(r"\btrue\b|\bfalse\b|(?<![\w.'])\d+(?![\w.'])", line):
            text = {"true": "false", "false": "true"}.get(match[0]) or str(int(match[0]) + 1)
            text = "0" if match[0] == "1" else text
            yield "constant", begin + match.start(), begin + match.end(), text
    # The order of two operands of these changes nothing.
    for match in re.finditer(r"(?<=[\w>])(?<!std::min)(?<!std::max)(?<!intersect)\(", line):
        opening = begin + match.end() - 1
        close = closing(masked, opening)
        if close < 0 or close >= end:
            continue
        arguments = split_arguments(masked, opening + 1, close)
        texts = [masked[first:last].strip() for first, last in arguments]
        # "Type name" is a parameter and no argument.
        if len(texts) < 2 or texts[0] == texts[1] or re.search(r"[\w&*>] \w", ",".join(texts[:2])):
            continue
        yield "arguments", arguments[0][0], arguments[1][1], f"{texts[1]}, {texts[0]}"


def find_dropped_statement(masked, begin):
    """(begin, end) of the statement that begins on the line at this offset, or None."""
    before = masked[:begin].rstrip()
    line = masked[begin:masked.find("\n", begin)]
    if not line.strip() or before[-1:] not in "{};:" or DECLARATION.match(line):
        return None
    words = line.split()
    is_jump = words[0] in ("break;", "continue;", "return;")
    is_constructor = re.match(r"\s*[A-Z]\w*\(.*(const&|\w \w+[,)])", line)
    is_call = "(" in words[0] and words[0][0] not in "(}" and not is_constructor
    is_assignment = len(words) > 1 and words[1] in ("=", "+=", "-=", "|=", "&=", "*=", "/=")
    is_step = words[0].startswith(("++", "--"))
    if HINTS.search(line) or not (is_jump or is_call or is_assignment or is_step or
                                  LOCKS.search(line)):
        return None
    depth = 0
    for offset in range(begin, len(masked)):
        depth += {"(": 1, "{": 1, ")": -1, "}": -1}.get(masked[offset], 0)
        if masked[offset] == ";" and depth == 0:
            return begin + len(line) - len(line.lstrip()), offset + 1
        if depth < 0:
            return None
    return None


def find_mutants(path):
    """At most one mutant for each line and kind of change."""
    source = (ROOT / path).read_text()
    masked = mask(source)
    mutants, begin = [], 0
    for number, text in enumerate(source.splitlines(keepends=True), 1):
        end = begin + len(text)
        kinds = set()
        for kind, first, last, replacement in find_replacements(masked, begin, end):
            if kind not in kinds:
                kinds.add(kind)
                # What is masked, such as a text among the arguments, must not be lost.
                if masked[first:last] == source[first:last]:
                    mutants.append(Mutant(path, number, kind, first, last, replacement))
        dropped = find_dropped_statement(masked, begin)
        if dropped:
            mutants.append(Mutant(path, number, "statement", *dropped, ";"))
        begin = end
    return mutants


def choose(mutants, count, seed):
    """At most `count` of a file's mutants, in their order: the same ones whatever else is asked."""
    if count is None or count >= len(mutants):
        return mutants
    chosen = random.Random(f"{seed} {mutants[0].path}").sample(range(len(mutants)), count)
    return [mutants[index] for index in sorted(chosen)]


def find_sources(paths):
    for path in paths:
        path = (ROOT / path).resolve() if not path.is_absolute() else path
        found = sorted(path.rglob("*")) if path.is_dir() else [path]
        yield from (p.relative_to(ROOT) for p in found if p.suffix in (".cpp", ".h"))


# A suite that waits for ever takes no processor time.
LONGEST_WAIT = 20


def limit_resources(limit):
    # A mutant may allocate without end. Death tests are to leave no core files behind.
    resource.setrlimit(resource.RLIMIT_AS, (8 << 30, 8 << 30))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_CPU, (limit, limit))


def run(command, folder, limit, **options):
    """The exit status and the output of a command; the status is None if it took longer than the
    limit, in seconds of processor time, or waited for many times as long."""
    process = subprocess.Popen(command, start_new_session=True,
                               preexec_fn=lambda: limit_resources(limit),
                               cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                               text=True, errors="replace", **options)
    try:
        output = process.communicate(timeout=LONGEST_WAIT * limit)[0]
        return None if process.returncode == -signal.SIGKILL else process.returncode, output
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.communicate()
        return None, ""


def processor_time():
    """Of the processes that ended, in seconds."""
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


class Build:
    """The suites as they are without a mutant, and the commands that make them."""

    def __init__(self, folder):
        self.folder = folder
        entries = json.loads((folder / "compile_commands.json").read_text())
        # Without the options that write down the dependencies.
        self.compile_commands = {
            re.search(r" -o (\S+)", entry["command"])[1]:
            re.sub(r" -MD -MT \S+ -MF \S+", "", entry["command"]) for entry in entries}
        self.link_commands = {}
        for suite in SUITES:
            for command in self._ask_ninja("-t", "commands", suite).splitlines():
                output = re.search(rf" -o (bin/{suite}|lib/{LIBRARY}\.so)\S*", command)
                if output:
                    self.link_commands[output[1]] = command
        self.objects_of = self._find_dependencies()
        self.limits = {suite: self._time(suite) for suite in SUITES}

    def _ask_ninja(self, *arguments):
        return subprocess.run(["ninja", "-C", self.folder, *arguments], check=True,
                              capture_output=True, text=True).stdout

    def _find_dependencies(self):
        """The objects that each file below ConditionalFormatters/ is compiled into."""
        objects_of, current = {}, None
        for line in self._ask_ninja("-t", "deps").splitlines():
            if line and not line.startswith(" "):
                current = line.split(":")[0]
            path = pathlib.Path(os.path.normpath(self.folder / line.strip()))
            if path.is_relative_to(ROOT) and current in self.compile_commands:
                objects_of.setdefault(path.relative_to(ROOT), []).append(current)
        return objects_of

    def plan_runs(self, path):
        """(suite, filter of tests) for a source: those first that are the likeliest to notice."""
        tests = ROOT / "tests" / path.parent / f"{path.stem}_test.cpp"
        if not tests.exists():
            # Written for callers of the library, who see what the parts do together.
            likeliest = "library_test" if path.parts[1] == "Formats" else "whole_table_test"
            return [(suite, "*") for suite in sorted(SUITES, key=lambda suite: suite != likeliest)]
        names = set(re.findall(r"^\w*TEST\w*\((\w+),", tests.read_text(), re.MULTILINE))
        own_tests = ":".join(f"{name}.*:*/{name}.*" for name in sorted(names))
        own_suites = [suite for suite in SUITES
                      if f"/{suite}.dir/{tests.relative_to(ROOT / 'tests/ConditionalFormatters')}.o"
                      in self.link_commands[f"bin/{suite}"]]
        return [(suite, own_tests) for suite in own_suites] + [(suite, "*") for suite in SUITES]

    def _time(self, suite):
        """The limit of a suite, in seconds of processor time."""
        start = processor_time()
        status, output = run([f"bin/{suite}"], self.folder, limit=600)
        if status != 0:
            sys.exit(f"mutate: {suite} fails without a mutant\n{output[-2000:]}")
        return 5 + int(5 * (processor_time() - start))


class Bench:
    """A folder in which one mutant at a time is built and run."""

    def __init__(self, build, number):
        self.build = build
        self.folder = build.folder / f"mutants/{number}"

    def judge(self, mutant, source):
        """What becomes of a mutant."""
        shutil.rmtree(self.folder, ignore_errors=True)
        mutated = self.folder / mutant.path
        mutated.parent.mkdir(parents=True)
        mutated.write_text(mutant.apply(source))
        for suite, tests in self.build.plan_runs(mutant.path):
            if not self._make(mutant, suite):
                return "did not compile"
            status = self._run(suite, tests)
            if status != 0:
                return f"killed by {suite}" + (" (time limit)" if status is None else "")
        return "SURVIVED"

    def _make(self, mutant, suite):
        library, program = f"lib/{LIBRARY}.so", f"bin/{suite}"
        is_shared = library in self.build.link_commands[program]
        objects = self.build.objects_of.get(mutant.path, [])
        return ((not is_shared or self._link(mutant, library, objects)) and
                self._link(mutant, program, objects))

    def _link(self, mutant, output, objects):
        """Makes a suite or the library if it has mutated objects; false if that fails."""
        command = self.build.link_commands[output]
        changed = [name for name in objects if f" {name} " in command]
        if not changed or (self.folder / output).exists():
            return True
        for name in changed:
            if not self._compile(mutant, name):
                return False
            command = command.replace(f" {name} ", f" {self.folder / name} ")
        # The library is found by the name that programs ask for.
        name = re.search(r"-soname,(\S+)", command)
        target = self.folder / (f"lib/{name[1]}" if name else output)
        target.parent.mkdir(exist_ok=True)
        command = re.sub(rf" -o {output}\S*", f" -o {target}{LINKER}", command)
        return run(command, self.build.folder, limit=300, shell=True)[0] == 0

    def _compile(self, mutant, name):
        target = self.folder / name
        if target.exists():
            return True
        target.parent.mkdir(parents=True, exist_ok=True)
        command = self.build.compile_commands[name].replace(f" -o {name} ", f" -o {target} ")
        command = command.replace(f" -c {ROOT / mutant.path}", f" -c {self.folder / mutant.path}")
        # A mutated header is found here before the original. It may leave a variable unused, so
        # that no warning is an error.
        command = command.replace(" -I", f" -I{self.folder} -I", 1) + " -w"
        return run(command, self.build.folder, limit=300, shell=True)[0] == 0

    def _run(self, suite, tests):
        program = self.folder / "bin" / suite
        if not program.exists():
            program = self.build.folder / "bin" / suite
        environment = {**os.environ, "LD_LIBRARY_PATH": str(self.folder / "lib")}
        return run([program, "--gtest_brief=1", "--gtest_fail_fast", f"--gtest_filter={tests}"],
                   self.build.folder, self.build.limits[suite], env=environment)[0]


def prepare(folder):
    """Configures the build tree once and builds the suites."""
    if not (folder / "build.ninja").exists():
        subprocess.run(["cmake", "--preset", "release", "-B", folder, "-DCNDFRMT_BUILD_TESTS=ON",
                        "-DCMAKE_UNITY_BUILD=OFF",
                        # Most of the time goes into compiling.
                        "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG"],
                       cwd=ROOT, check=True, stdout=subprocess.DEVNULL)
    status, output = run(["ninja", *SUITES], folder, limit=3600)
    if status != 0:
        sys.exit(f"mutate: the tree itself does not build\n{output[-2000:]}")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("paths", nargs="+", type=pathlib.Path, metavar="PATH")
    parser.add_argument("--sample", type=int, metavar="N",
                        help="judge at most N mutants of each file, chosen at random")
    parser.add_argument("--seed", type=int, default=1, help="of the choice (default: 1)")
    parser.add_argument("--jobs", type=int, default=1, help="judge N at a time (default: 1)")
    parser.add_argument("--build", type=pathlib.Path, default="build/mutate", metavar="DIR",
                        help="the build tree; configured if it is new (default: build/mutate)")
    parser.add_argument("--list", action="store_true", help="print the mutants and judge none")
    arguments = parser.parse_args()

    mutants = [mutant for path in find_sources(arguments.paths)
               for mutant in choose(find_mutants(path), arguments.sample, arguments.seed)]
    if arguments.list:
        for mutant in mutants:
            print(mutant.describe((ROOT / mutant.path).read_text()))
        return

    folder = ROOT / arguments.build
    prepare(folder)
    build = Build(folder)
    benches = queue.SimpleQueue()
    for number in range(arguments.jobs):
        benches.put(Bench(build, number))

    def judge(mutant):
        bench = benches.get()
        source = (ROOT / mutant.path).read_text()
        verdict = bench.judge(mutant, source)
        print(f"{verdict:32} {mutant.describe(source)}", flush=True)
        benches.put(bench)
        return verdict.split()[0]

    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as executor:
        verdicts = list(executor.map(judge, mutants))
    killed, survived = verdicts.count("killed"), verdicts.count("SURVIVED")
    print(f"{killed} of {killed + survived} killed, {survived} survived; "
          f"{verdicts.count('did')} more did not compile")


if __name__ == "__main__":
    main()
