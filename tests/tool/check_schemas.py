#!/usr/bin/python3
"""Checks that the tool's JSON is as the schemas in docs/schema/ say.

  check_schemas.py CNDFRMT FILE...     from the root of the sources
"""

import json
import pathlib
import subprocess
import sys

import jsonschema


def load_validator(name):
    schema = json.loads(pathlib.Path(f"docs/schema/{name}.schema.json").read_text())
    jsonschema.Draft202012Validator.check_schema(schema)
    return jsonschema.Draft202012Validator(schema)


# The schema, the command's arguments before the files, whether it prints a line a thing, and
# whether it takes any number of files.
OUTPUTS = [
    ("resolve", ["resolve", "--format", "json"], False, True),
    ("rules", ["rules", "--format", "json"], False, True),
    ("resolve-line", ["resolve", "--format", "jsonl"], True, True),
    ("rules-line", ["rules", "--format", "jsonl"], True, True),
    ("verdicts-line", ["verdicts", "--format", "jsonl"], True, True),
    ("check", ["check", "--format", "json"], False, True),
    ("check-line", ["check", "--format", "jsonl"], True, True),
    ("tidy", ["tidy", "--dry-run", "--format", "json"], False, False),
    ("diff", ["diff", "--now", "2026-11-21", "--now", "2026-12-01", "--format", "json"], False,
     False),
    ("diff", ["diff", "--format", "json", "tests/workbooks/WithConditionalFormatting.xlsx"], False,
     False),
    ("explain", ["explain", "--format", "json"], False, False),
    ("explain-line", ["explain", "--format", "jsonl"], True, False),
]
# What stands behind the files of a command: cells with rules of all kinds, and without.
BEHIND = {"explain": ["A1:I16"]}


def find_faults(tool, schema, command, is_lines, files):
    """Descriptions of what is not as the schema says, and the number of things that were checked."""
    validator = load_validator(schema)
    output = subprocess.run([tool, *command, *files, *BEHIND.get(command[0], [])],
                            capture_output=True, text=True).stdout
    things = [json.loads(line) for line in output.splitlines()] if is_lines else [json.loads(output)]
    faults = [f"{schema}: {files[0]}: {error.json_path}: {error.message[:300]}"
              for thing in things for error in validator.iter_errors(thing)]
    return faults, len(things)


def main():
    tool, files = sys.argv[1], sys.argv[2:]
    faults = []
    for schema, command, is_lines, takes_several in OUTPUTS:
        count = 0
        several = [files] if takes_several and not is_lines else []
        for chosen in [[file] for file in files] + several:
            found, things = find_faults(tool, schema, command, is_lines, chosen)
            faults += found
            count += things
        if count == 0:
            faults.append(f"{schema}: nothing was checked")
    print("\n".join(faults[:20]), file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
