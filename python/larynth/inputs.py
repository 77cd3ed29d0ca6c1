# SPDX-License-Identifier: MIT
"""What is asked of arguments, in one place: functions give what was asked for, or raise InputError."""

from __future__ import annotations

import math
import operator
import os
from typing import Any, Sequence

import numpy as np

from .errors import InputError

Path = str | os.PathLike[str]
Markers = Sequence[tuple[int, str]]


def refuse(name: str, expected: str, found: object) -> InputError:
    return InputError(f"{name}: expected {expected}, found {found!r}")


def number(name: str, value: Any) -> float:
    if not isinstance(value, str):
        try:
            if math.isfinite(value):
                return float(value)
        except (TypeError, OverflowError):
            pass
    raise refuse(name, "a finite number", value)


def number_from(name: str, value: Any, lowest: float, highest: float) -> float:
    if lowest <= number(name, value) <= highest:
        return float(value)
    raise refuse(name, f"a number from {lowest:g} to {highest:g}", value)


def frequency(name: str, value: Any) -> float:
    if number(name, value) > 0:
        return float(value)
    raise refuse(name, "a number above 0", value)


def whole_number(name: str, value: Any, highest: int, lowest: int = 0) -> int:
    try:
        if lowest <= operator.index(value) <= highest:
            return operator.index(value)
    except TypeError:
        pass
    raise refuse(name, f"a whole number from {lowest} to {highest}", value)


def numbers(name: str, values: Any) -> np.ndarray[Any, np.dtype[np.float64]]:
    """At least one finite number, in one dimension."""
    array = np.asarray(values)
    if array.ndim != 1 or array.size == 0 or array.dtype.kind not in "iuf" or not np.isfinite(array).all():
        raise refuse(name, "finite numbers in one dimension", values)
    return array.astype(np.float64)


def choice(name: str, value: str, choices: Sequence[str]) -> str:
    if value in choices:
        return value
    raise refuse(name, ", ".join(choices[:-1]) + " or " + choices[-1], value)


def seed_or_none(seed: int | None) -> int | None:
    return None if seed is None else whole_number("seed", seed, 2**32 - 1)


def path_bytes(path: Path) -> bytes:
    """As the system has it: names of files need not be UTF-8."""
    return os.fsencode(path)


def text_of(name: str, value: Any) -> str:
    if isinstance(value, str) and not any("\ud800" <= c <= "\udfff" for c in value):
        return value
    raise refuse(name, "a text", value)


def ordered_markers(markers: Markers, count: int) -> list[tuple[int, str]]:
    """Markers in ascending order, up to the end."""
    try:
        pairs = [(place, text) for place, text in markers]
    except (TypeError, ValueError):
        raise refuse("markers", "pairs of a place and a text", markers) from None
    checked = [(whole_number("marker", place, count), text_of("marker", text)) for place, text in pairs]
    if any(before > after for (before, _), (after, _) in zip(checked, checked[1:])):
        raise InputError("markers: expected places in ascending order")
    return checked
