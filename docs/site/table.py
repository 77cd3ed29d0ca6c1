# SPDX-License-Identifier: MIT
"""What docs/parameters.toml says about the items of a frame, and the frames that it asks for."""

from __future__ import annotations

import dataclasses
import pathlib
import tomllib
from typing import Any

import numpy as np

import larynth

SAMPLE_FREQ = 16000.0
FRAME_LENGTH = 160
FRAMES = 70
UNITS = {"Hz": " Hz", "dB": " dB", "10us": " × 10 µs", "factor": ""}
AMPLITUDES = ("AV", "AH", "AF")

Values = dict[str, float]


@dataclasses.dataclass
class Page:
    """What docs/parameters.toml says about an item, its family's fields filled in."""

    item: larynth.Item
    title: str
    does: str
    range: list[float]
    why: str
    tip: str
    values: list[float]
    scene: str
    picture: str
    beside: list[str]
    sources: list[str]
    frame: Values = dataclasses.field(default_factory=dict)
    here: str = ""
    family: str = ""

    def with_unit(self, value: float) -> str:
        return f"{value:g}{UNITS[self.item.unit]}"


def filled(value: Any, digit: str) -> Any:
    """A field of a family for one of its items."""
    if isinstance(value, str):
        return value.replace("{n}", digit)
    if isinstance(value, list):
        return [filled(each, digit) for each in value]
    if isinstance(value, dict):
        return {filled(name, digit): each for name, each in value.items()}
    return value


def read(path: pathlib.Path) -> tuple[dict[str, Page], dict[str, Any]]:
    """The pages by item, which are those of the library, and the whole table."""
    table = tomllib.loads(path.read_text())
    items = {item.name: item for item in larynth.items()}
    if differing := items.keys() ^ table["items"].keys():
        raise ValueError(f"{path}: expected the items of larynth.items(), but these differ: {', '.join(sorted(differing))}")
    pages = {}
    for name, item in items.items():
        fields = {**table["families"].get(table["items"][name].get("family"), {}), **table["items"][name]}
        pages[name] = Page(item=item, **{field: filled(value, name[-1]) for field, value in fields.items()})
        low, high = pages[name].range
        if not all(low <= value <= high for value in pages[name].values):
            raise ValueError(f"{path}: {name}: expected values within the range, found {pages[name].values}")
    return pages, table


def frame_of(page: Page, table: dict[str, Any], value: float) -> Values:
    return {**table["scenes"][page.scene]["frame"], **page.frame, page.item.name: value}


def frames_of(page: Page, values: Values) -> Any:
    """A sound that swells and fades; its pitch falls unless the picture shows the pulses."""
    swell = np.minimum(1, np.minimum(np.arange(FRAMES), np.arange(FRAMES)[::-1]) / 6)
    shaped: dict[str, Any] = {**values, **{name: values[name] * swell for name in AMPLITUDES}}
    if page.picture == "cascade" and values["F0"]:
        shaped["F0"] = values["F0"] * np.linspace(1.1, 0.85, FRAMES)
    return larynth.frames(FRAMES, length=FRAME_LENGTH, **shaped)
