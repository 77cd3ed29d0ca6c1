# SPDX-License-Identifier: MIT
"""Runs the examples of a page in order, and puts what they make behind them.

A block of Python runs as in a notebook: all blocks of a page share their names, and the value of a last line that is an expression
is shown. A block of sh runs with -e; the sounds and pictures that it writes are shown. Other blocks are left alone."""

from __future__ import annotations

import ast
import contextlib
import io
import pathlib
import re
import shutil
import subprocess
from typing import Any

from matplotlib.figure import Figure

import larynth

BLOCK = re.compile(r"^```(python|sh)\n(.*?)^```\n", re.MULTILINE | re.DOTALL)
SHOWN = (".wav", ".png")


class Runner:
    """The examples of one page, which run in a folder of their own."""

    def __init__(self, page: pathlib.Path, work: pathlib.Path, media: pathlib.Path) -> None:
        self.page, self.work, self.media = page, work, media
        self.names: dict[str, Any] = {}
        self.count = 0
        self.line = 0

    def run(self, block: re.Match[str]) -> str:
        """The block, and behind it what it has made."""
        self.line = block.string.count("\n", 0, block.start()) + 2
        shown = self.python(block[2]) if block[1] == "python" else self.sh(block[2])
        return block[0] + shown

    def python(self, code: str) -> str:
        tree = ast.parse("\n" * (self.line - 1) + code, str(self.page))
        last = tree.body.pop() if isinstance(tree.body[-1], ast.Expr) else None
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed), contextlib.chdir(self.work):
            exec(compile(tree, str(self.page), "exec"), self.names)
            value = eval(compile(ast.Expression(last.value), str(self.page), "eval"), self.names) if last else None
        return self.text(printed.getvalue()) + self.value(value)

    def sh(self, code: str) -> str:
        before = self.files()
        done = subprocess.run(["bash", "-e"], input=code, cwd=self.work, capture_output=True, text=True)
        if done.returncode:
            raise RuntimeError(f"{self.page}:{self.line}: {done.stderr.strip()}")
        made = sorted(path for path, time in self.files().items() if before.get(path) != time)
        return self.text(done.stdout) + "".join(self.file(path) for path in made)

    def files(self) -> dict[pathlib.Path, int]:
        return {path: path.stat().st_mtime_ns for path in self.work.rglob("*") if path.suffix in SHOWN}

    def value(self, value: Any) -> str:
        if isinstance(value, larynth.Sound):
            value.write(self.work / "shown.wav")
            return self.file(self.work / "shown.wav")
        if isinstance(value, Figure):
            value.savefig(self.work / "shown.png", dpi=144)
            return self.file(self.work / "shown.png")
        return "" if value is None else self.text(repr(value))

    def file(self, path: pathlib.Path) -> str:
        self.count += 1
        name = f"{self.page.stem}-{self.count}{path.suffix}"
        shutil.copy(path, self.media / name)
        if path.suffix == ".wav":
            return f'\n<audio controls preload="metadata" src="{self.media.name}/{name}"></audio>\n'
        return f'\n<img class="made" src="{self.media.name}/{name}" alt="{self.page.stem}: what the lines above draw">\n'

    def text(self, printed: str) -> str:
        return f"\n```text\n{printed.rstrip()}\n```\n" if printed.strip() else ""


def run(page: pathlib.Path, work: pathlib.Path, media: pathlib.Path) -> str:
    """The page's text with what its examples have made; sounds and pictures go to the folder `media`."""
    shutil.rmtree(work, ignore_errors=True)
    for folder in (work, media):
        folder.mkdir(parents=True, exist_ok=True)
    return BLOCK.sub(Runner(page, work, media).run, page.read_text())
