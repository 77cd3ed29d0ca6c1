# SPDX-License-Identifier: MIT
"""The README's own lines, as somebody would type them. Its program in C++ is built by the test of the installed tree."""
import os
import pathlib
import re
import subprocess

import larynth
import pytest

TREE = pathlib.Path(__file__).parent.parent.parent
pytest.importorskip("matplotlib")
pytestmark = pytest.mark.skipif(not hasattr(larynth._larynth, "speak"), reason="speech from text was left out")


def blocks(language):
    return re.findall(rf"```{language}\n(.*?)```", (TREE / "README.md").read_text(), re.DOTALL)


def files_named_in(text):
    return set(re.findall(r"[\w./]*\w\.(?:wav|png|flac|csv|txt)\b", text))


def test_lines_of_the_command(tmp_path):
    (tmp_path / "examples").symlink_to(TREE / "examples")
    (tmp_path / "aplay").write_text("#!/bin/sh\ntest $(wc -c) = 88960\n")
    (tmp_path / "aplay").chmod(0o755)
    lines = [line for block in blocks("sh") for line in block.splitlines() if line.startswith("larynth ")]
    assert len(lines) >= 8
    path = f"{tmp_path}:{pathlib.Path(os.environ['LARYNTH_COMMAND']).parent}:{os.environ['PATH']}"
    for line in lines:
        subprocess.run(["bash", "-euo", "pipefail", "-c", line], cwd=tmp_path, check=True, env={**os.environ, "PATH": path})
        made = line.split("#")[0]
        assert all((tmp_path / name).stat().st_size > 0 for name in files_named_in(made) if "*" not in name), line
    assert len(list(tmp_path.glob("sounds/*.wav"))) == 3


def test_the_program_in_python(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    (program,) = blocks("python")
    exec(program, {})
    assert files_named_in(program) == {path.name for path in tmp_path.iterdir()}
