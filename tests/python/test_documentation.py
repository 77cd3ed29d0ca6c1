# SPDX-License-Identifier: MIT
import os
import pathlib
import sys

import larynth
import pytest

pytest.importorskip("matplotlib")
DOCS = pathlib.Path(__file__).parent.parent.parent / "docs"
sys.path.insert(0, str(DOCS / "site"))
import examples
import parameters
import table


@pytest.mark.skipif(not hasattr(larynth._larynth, "speak"), reason="speech from text was left out")
def test_the_tutorial_runs(tmp_path, monkeypatch):
    monkeypatch.setenv("PATH", f"{pathlib.Path(os.environ['LARYNTH_COMMAND']).parent}:{os.environ['PATH']}")
    shown = examples.run(DOCS / "tutorial.md", tmp_path / "work", tmp_path / "media")
    assert shown.count("<audio") > 15 and shown.count("<img") == 4


def test_each_item_has_a_page():
    pages, rows = table.read(DOCS / "parameters.toml")
    assert len(pages) == 52 and sorted(sum(parameters.GROUPS.values(), [])) == sorted(pages)
    assert all("{n}" not in parameters.text_of(page, rows) for page in pages.values())
