"""The examples of the documentation."""

import doctest
import re

import pytest
from conftest import ROOT

BLOCK = re.compile(r"^```pycon\n(.*?)^```", re.MULTILINE | re.DOTALL)


@pytest.mark.parametrize("page", ["docs/python.md"])
def test_examples(page, monkeypatch):
    monkeypatch.chdir(ROOT)
    (ROOT / "build").mkdir(exist_ok=True)
    examples = "\n".join(BLOCK.findall((ROOT / page).read_text()))
    test = doctest.DocTestParser().get_doctest(examples, {}, page, page, 0)
    assert len(test.examples) > 20
    results = doctest.DocTestRunner(optionflags=doctest.REPORT_NDIFF).run(test)
    assert results.failed == 0
