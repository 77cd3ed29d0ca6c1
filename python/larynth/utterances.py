# SPDX-License-Identifier: MIT
"""Frames as arrays, and utterances made of them."""

from __future__ import annotations

from collections.abc import Mapping
from dataclasses import dataclass, field
from typing import Any, Iterable, NamedTuple, Sequence

import numpy as np

from . import _larynth
from .errors import InputError
from .inputs import Path, choice, frequency, number, path_bytes, refuse, whole_number
from .voice import Voice

FrameArray = np.ndarray[Any, np.dtype[np.void]]
"""Frames: an array of `frame_dtype` in one dimension."""

Frames = FrameArray | np.void | Mapping[str, Any]
"""What functions take as frames: an array of them, or a mapping from names to numbers or arrays."""

frame_dtype: np.dtype[np.void] = _larynth.frame_dtype
"""Structured dtype of a frame: "length" (samples, int32) and the 52 items by name (float64), laid out as the
synthesizer reads them."""

FRAME_LENGTH = 110
MOST_LENGTH = 2**31 - 1
MOST_FILE_LENGTH = 1_000_000


class Item(NamedTuple):
    """What there is to know about an item of a frame."""

    name: str  #: as in tables, "F1"
    unit: str  #: "Hz", "dB", "10us" or "factor"
    meaning: str  #: a part of a sentence
    initial: float  #: in a new frame


_ITEMS = [Item(*row) for row in _larynth.items()]


def items() -> list[Item]:
    """The 52 items of a frame, with unit, meaning and initial value."""
    return list(_ITEMS)


def _new_frame() -> FrameArray:
    frame = np.zeros(1, frame_dtype)
    frame["length"] = FRAME_LENGTH
    for item in _ITEMS:
        frame[item.name] = item.initial
    return frame


_NEW_FRAME = _new_frame()


def _values(name: str, value: Any) -> np.ndarray[Any, Any]:
    """A scalar or a one-dimensional array that field `name` of frames can have."""
    if name != "length":
        if name.lower() in ("len", "length", "framelen", "frame_len"):
            raise InputError(f'expected the name of an item, found "{name}"; samples of a frame are "length"')
        _larynth.require_item(name)
    try:
        array = np.asarray(value)
    except ValueError:
        raise InputError(f"{name}: expected a number or an array in one dimension, found {value!r}") from None
    if array.dtype.kind not in "iuf":
        raise InputError(f"{name}: expected numbers, found {array.dtype} {value!r}")
    if array.ndim > 1:
        raise InputError(f"{name}: expected a number or an array in one dimension, found shape {array.shape}")
    fits = np.isfinite(array)
    expected = "a finite number"
    if name == "length":
        fits &= (array >= 0) & (array <= MOST_LENGTH) & (array == np.floor(array))
        expected = f"a whole number of samples from 0 to {MOST_LENGTH}"
    if not fits.all():
        frame = int(np.argmin(np.atleast_1d(fits)))
        raise InputError(f"frame {frame}: {name}: expected {expected}, found {np.atleast_1d(array)[frame]}")
    return array


def _fitting(name: str, array: np.ndarray[Any, Any], count: int) -> np.ndarray[Any, Any]:
    if array.ndim and array.size != count:
        raise InputError(f"{name}: expected {count} values, one a frame, found {array.size}")
    return array


def frames(n: int | None = None, **values: Any) -> FrameArray:
    """Make an array of frames.

    Parameters
    ----------
    n : int, optional
        Number of frames; else that of the arrays among the values, else 1.
    **values
        Items by name, and "length" in samples: numbers, which hold for all frames, or arrays of shape (n,).
        What is not named is as in a new frame (`items`); a frame has 110 samples, which are 10 ms of 11025 Hz.

    Returns
    -------
    ndarray, shape (n,), dtype `frame_dtype`
        Rendering reads it as it is, without a copy.

    Raises
    ------
    InputError
        For a name that no item has, with the nearest one; for what is no number or not finite, with frame and
        item; for arrays that are not n long.

    Examples
    --------
    >>> vowel = larynth.frames(100, AV=900, AH=0, F1=700, BW1=130, F2=np.linspace(900, 1500, 100), BW2=70)
    """
    arrays = {name: _values(name, value) for name, value in values.items()}
    count = next((array.size for array in arrays.values() if array.ndim), 1)
    count = count if n is None else whole_number("n", n, MOST_LENGTH)
    made = np.repeat(_NEW_FRAME, count)
    for name, array in arrays.items():
        made[name] = _fitting(name, array, count)
    return made


def values_of(name: str, value: Any, count: int) -> np.ndarray[Any, Any]:
    """A number or an array that field `name` of so many frames can have."""
    return _fitting(name, _values(name, value), count)


def as_frames(given: Frames) -> FrameArray:
    """Frames as rendering reads them: an array of them that is contiguous comes back as it is."""
    if isinstance(given, Mapping):
        return frames(**given)
    if isinstance(given, Utterance):
        raise InputError("frames: expected an array of larynth.frame_dtype or a mapping, found an Utterance: pass its .frames")
    array = np.asarray(given)
    if array.dtype != frame_dtype:
        raise InputError(f"frames: expected an array of larynth.frame_dtype or a mapping, found {array.dtype}")
    if array.ndim > 1:
        raise InputError(f"frames: expected an array in one dimension, found shape {array.shape}")
    return np.require(np.atleast_1d(array), frame_dtype, ["C", "A"])


@dataclass(eq=False, repr=False)
class Utterance:
    """Frames one after the other, with markers and, where it changes it, a voice.

    Attributes
    ----------
    frames : ndarray, shape (n,), dtype `frame_dtype`
        One after the other.
    sample_freq : float
        Hz.
    markers : list of (int, str)
        The frame in front of which a text stands, in ascending order; n is the end.
    voice : Voice, optional
        Else the standard one.
    """

    frames: FrameArray
    sample_freq: float = 11025.0
    markers: Sequence[tuple[int, str]] = field(default_factory=list)
    voice: Voice | None = None

    def __repr__(self) -> str:
        seconds = np.sum(self.frames["length"], dtype=np.int64) / self.sample_freq
        return f"<Utterance: {len(self.frames)} frames, {seconds:.3f} s at {self.sample_freq:g} Hz>"


def _defaults(frame_len: int | None, sample_freq: float | None) -> tuple[int | None, float | None]:
    return (
        None if frame_len is None else whole_number("frame_len", frame_len, MOST_FILE_LENGTH),
        None if sample_freq is None else frequency("sample_freq", sample_freq),
    )


def read(
    path: Path, form: str = "table", *, frame_len: int | None = None, sample_freq: float | None = None
) -> Utterance:
    """Read a file of frames.

    Parameters
    ----------
    path : str or path
        The file.
    form : {"table", "targets"}
        A line a frame, or targets between which the frames lie.
    frame_len : int, optional
        Samples of a frame, where the file does not say it.
    sample_freq : float, optional
        Hz, where the file does not say it; else 11025.

    Raises
    ------
    InputError
        With file, line and column, for the first thing that is wrong.
    """
    is_targets = choice("form", form, ["table", "targets"]) == "targets"
    return Utterance(*_larynth.read(path_bytes(path), is_targets, *_defaults(frame_len, sample_freq)))


def frames_from_targets(
    targets: Iterable[Sequence[Any]], *, frame_len: int | None = None, sample_freq: float | None = None
) -> Utterance:
    """Make the frames that lead through sparse targets.

    Parameters
    ----------
    targets : iterable of (time, item, value) or (time, item, value, approach)
        Time in seconds from the beginning; approach is "linear" or "cosine": straight from the item's target
        before, or along half a period of a cosine. Of two targets for one item at one time the later one holds
        from then on, which makes a jump. Before its first target and behind its last one an item stands still.
    frame_len : int, optional
        Samples, from 1; else 5 ms.
    sample_freq : float, optional
        Hz; else 11025.

    Returns
    -------
    Utterance
        It ends with the last target.

    Examples
    --------
    >>> larynth.frames_from_targets([(0, "F1", 300), (0.3, "F1", 700, "cosine"), (0, "AV", 900)])
    """
    rows = []
    for i, target in enumerate(targets, 1):
        if len(target) not in (3, 4):
            raise refuse(f"target {i}", "time, item, value and perhaps an approach", target)
        time, item, value = target[:3]
        approach = choice(f"target {i}", target[3] if len(target) == 4 else "linear", ["linear", "cosine"])
        place = f"target {i}"
        rows.append((number(place, time), str(item), number(place, value), approach == "cosine"))
    return Utterance(*_larynth.frames_from_targets(rows, *_defaults(frame_len, sample_freq)))
