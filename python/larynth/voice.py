# SPDX-License-Identifier: MIT
"""What a voice changes about the sound."""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Sequence

import numpy as np

from . import _larynth
from .inputs import Path, number, numbers, path_bytes, refuse


@dataclass
class Shelf:
    """An output filter that raises one end of the spectrum.

    Attributes
    ----------
    F : float
        Corner frequency, Hz.
    G : float
        Linear gain; 1 is off.
    P3, P4 : float
        Shape.
    """

    F: float = 0.0
    G: float = 1.0
    P3: float = 0.0
    P4: float = 0.0


@dataclass
class Voice:
    """What a voice changes about the sound.

    Attributes
    ----------
    pre_emphasis : float
        Coefficient a of y[n] - a y[n-1].
    open_quotient : float
        For the wave-table source, at most 0.95.
    low_shelf, high_shelf : Shelf
        Output filters.
    wave : sequence of float
        Open phase of one excitation period, equally spaced; empty: the voice has no source of its own.
    """

    pre_emphasis: float = 0.0
    open_quotient: float = 0.5
    low_shelf: Shelf = field(default_factory=Shelf)
    high_shelf: Shelf = field(default_factory=Shelf)
    wave: Sequence[float] = ()


def read_voice(path: Path) -> Voice:
    """Read a voice from a JSON file.

    Raises
    ------
    InputError
        With file, line and column, for the first thing that is wrong.
    """
    pre_emphasis, open_quotient, low, high, wave = _larynth.read_voice(path_bytes(path))
    return Voice(pre_emphasis, open_quotient, Shelf(*low), Shelf(*high), wave)


def read_wave(path: Path) -> list[float]:
    """Read the open phase of an excitation period: one number a line, blank lines ignored."""
    return _larynth.read_waveform(path_bytes(path))


def plain(voice: Voice | None) -> _larynth.PlainVoice | None:
    """The voice as the extension module takes it."""
    if voice is None:
        return None
    if not isinstance(voice, Voice):
        raise refuse("voice", "a larynth.Voice", voice)
    if not isinstance(voice.low_shelf, Shelf) or not isinstance(voice.high_shelf, Shelf):
        raise refuse("voice", "a larynth.Shelf as low_shelf and as high_shelf", voice)
    shelves = {
        name: [number(f"voice.{name}.{key}", value) for key, value in vars(shelf).items()]
        for name, shelf in (("low_shelf", voice.low_shelf), ("high_shelf", voice.high_shelf))
    }
    return (
        number("voice.pre_emphasis", voice.pre_emphasis),
        number("voice.open_quotient", voice.open_quotient),
        shelves["low_shelf"],
        shelves["high_shelf"],
        list(numbers("voice.wave", voice.wave)) if np.size(voice.wave) else [],
    )
