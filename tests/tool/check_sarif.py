#!/usr/bin/python3
"""Checks that the output of `cndfrmt check --format sarif` is valid SARIF 2.1.0.

  check_sarif.py CNDFRMT FILE...     from the root of the sources

The schema holds what the standard requires of the objects that the tool writes, and lists the
members that it may write there.
"""

import json
import os
import shutil
import subprocess
import sys
import tempfile

import jsonschema

MESSAGE = {
    "type": "object",
    "properties": {"text": {"type": "string", "minLength": 1}},
    "required": ["text"],
    "additionalProperties": False,
}
LEVEL = {"enum": ["none", "note", "warning", "error"]}
RULE = {
    "type": "object",
    "properties": {
        "id": {"type": "string", "minLength": 1},
        "shortDescription": MESSAGE,
        "help": MESSAGE,
        "defaultConfiguration": {
            "type": "object",
            "properties": {"level": LEVEL},
            "additionalProperties": False,
        },
    },
    "required": ["id"],
    "additionalProperties": False,
}
LOCATION = {
    "type": "object",
    "properties": {
        "physicalLocation": {
            "type": "object",
            "properties": {
                "artifactLocation": {
                    "type": "object",
                    # RFC 3986: the characters of a reference; others are escaped.
                    "properties": {"uri": {
                        "type": "string",
                        "pattern": r"^(file://)?([A-Za-z0-9._~/-]|%[0-9A-F]{2})+$"}},
                    "required": ["uri"],
                    "additionalProperties": False,
                },
                "region": {
                    "type": "object",
                    "properties": {"startLine": {"type": "integer", "minimum": 1}},
                    "required": ["startLine"],
                    "additionalProperties": False,
                },
            },
            "required": ["artifactLocation"],
            "additionalProperties": False,
        },
        "logicalLocations": {
            "type": "array",
            "items": {
                "type": "object",
                "properties": {"fullyQualifiedName": {"type": "string", "minLength": 1}},
                "additionalProperties": False,
            },
        },
    },
    "additionalProperties": False,
}
RESULT = {
    "type": "object",
    "properties": {
        "ruleId": {"type": "string"},
        "ruleIndex": {"type": "integer", "minimum": 0},
        "level": LEVEL,
        "message": MESSAGE,
        "locations": {"type": "array", "items": LOCATION},
    },
    "required": ["message", "ruleId", "ruleIndex", "level", "locations"],
    "additionalProperties": False,
}
RUN = {
    "type": "object",
    "properties": {
        "tool": {
            "type": "object",
            "properties": {
                "driver": {
                    "type": "object",
                    "properties": {
                        "name": {"type": "string", "minLength": 1},
                        "version": {"type": "string"},
                        "rules": {"type": "array", "items": RULE, "uniqueItems": True},
                    },
                    "required": ["name"],
                    "additionalProperties": False,
                },
            },
            "required": ["driver"],
            "additionalProperties": False,
        },
        "invocations": {
            "type": "array",
            "items": {
                "type": "object",
                "properties": {"executionSuccessful": {"type": "boolean"}},
                "required": ["executionSuccessful"],
                "additionalProperties": False,
            },
        },
        "results": {"type": "array", "items": RESULT},
    },
    "required": ["tool", "results"],
    "additionalProperties": False,
}
SARIF = {
    "type": "object",
    "properties": {
        "$schema": {"type": "string"},
        "version": {"const": "2.1.0"},
        "runs": {"type": "array", "items": RUN},
    },
    "required": ["version", "runs"],
    "additionalProperties": False,
}


def check(tool, files):
    """Descriptions of what is wrong, and the number of results."""
    process = subprocess.run([tool, "check", "--format", "sarif", *files], capture_output=True,
                             text=True)
    document = json.loads(process.stdout)
    faults = [f"{error.json_path}: {error.message[:300]}"
              for error in jsonschema.Draft202012Validator(SARIF).iter_errors(document)]
    if len(document["runs"]) != len(files):
        faults.append(f"{len(document['runs'])} runs for {len(files)} files")
    results = 0
    for run in document["runs"]:
        rules = run["tool"]["driver"]["rules"]
        for result in run["results"]:
            results += 1
            if rules[result["ruleIndex"]]["id"] != result["ruleId"]:
                faults.append(f"{result['ruleId']} is not rule {result['ruleIndex']}")
    return faults, results


def main():
    tool, files = sys.argv[1], sys.argv[2:]
    faults, results = check(tool, files)
    if results == 0:
        faults.append("nothing was found, so nothing was checked")
    with tempfile.TemporaryDirectory() as folder:
        hostile = os.path.join(folder, 'a b%"<\n\u202e.xlsx')
        shutil.copy(files[0], hostile)
        faults += check(tool, [hostile])[0]
    print("\n".join(faults[:20]), file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
