# SPDX-License-Identifier: MIT
"""Changing an utterance and hearing it at once."""

from __future__ import annotations

from typing import Any, Iterator, NoReturn, Sequence

from . import _larynth
from .errors import InputError
from .inputs import Markers, ordered_markers, whole_number
from .sound import Sound
from .synthesizer import Samples, as_utterance, plain_settings
from .utterances import FrameArray, Frames, Utterance, as_frames, values_of
from .voice import Voice


class Editor:
    """An utterance and its sound. What is changed is rendered again from there on; what lies in front of it stays.
    The samples are always those of rendering everything.

    The state of the synthesizer is kept before every eighth frame: 230 bytes a frame, with a wave table 1.1 kB.

    Parameters
    ----------
    what : Utterance, array of `frame_dtype`, shape (n,), or mapping from names to numbers or arrays
        The frames are copied.
    sample_freq, markers, tract, volume, output_gain, voice, wave, seed
        As of `render`.

    Examples
    --------
    >>> editor = larynth.Editor(larynth.read("table.csv"))
    >>> editor.change(slice(40, 60), F1=420, AV=lambda values: values * 0.5)
    >>> editor.render().write("changed.wav")
    """

    def __init__(
        self,
        what: Frames | Utterance,
        *,
        sample_freq: float | None = None,
        markers: Markers | None = None,
        tract: str = "resonator",
        volume: float = 1.0,
        output_gain: float = 1.0,
        voice: Voice | None = None,
        wave: Sequence[float] | None = None,
        seed: int | None = 1,
    ) -> None:
        utterance = as_utterance(what, sample_freq, voice)
        placed = ordered_markers(utterance.markers if markers is None else markers, len(utterance.frames))
        plain = plain_settings(utterance.sample_freq, tract, volume, output_gain, utterance.voice, wave, seed)
        self._sample_freq = plain[0]
        self._inner = _larynth.Editor(utterance.frames, placed, *plain)

    def __len__(self) -> int:
        return len(self._inner)

    def __iter__(self) -> Iterator[FrameArray]:
        return (self[index] for index in range(len(self)))

    def __copy__(self) -> NoReturn:
        raise TypeError("an Editor is not copied: make another one of its frames")

    def _place(self, where: int | slice) -> tuple[int, int]:
        if isinstance(where, slice):
            start, stop, step = where.indices(len(self))
            if step != 1:
                raise InputError(f"frames: expected a slice without a step, found {where}")
            return start, max(start, stop)
        try:
            index = range(len(self))[where]
        except (IndexError, TypeError):
            raise InputError(f"frame: expected one of {len(self)} frames, found {where!r}") from None
        return index, index + 1

    def __getitem__(self, where: int | slice) -> FrameArray:
        """A copy of frames, as an array of `frame_dtype`; of one frame it has the shape (1,)."""
        return self._inner.frames(*self._place(where))

    def __setitem__(self, where: int | slice, frames: Frames) -> None:
        """Put others in the place of as many frames."""
        start, stop = self._place(where)
        array = as_frames(frames)
        if len(array) != stop - start:
            raise InputError(f"frames: expected {stop - start}, found {len(array)}")
        self._inner.set_frames(start, array)

    def change(self, where: int | slice, **values: Any) -> None:
        """Change items of frames and keep the others.

        Parameters
        ----------
        where : int or slice
            Which frames; negative numbers count from the end.
        **values
            Items by name, and "length": a number, an array with a value for each of the frames, or a function that
            is given the array of what they have and returns such a value.
        """
        frames = self[where]
        for name, value in values.items():
            frames[name] = values_of(name, value(frames[name]) if callable(value) else value, len(frames))
        self[where] = frames

    def insert(self, index: int, frames: Frames) -> None:
        """Put frames in front of frame `index`; the number of frames stands for the end. Markers in front of that
        frame stay in front of it."""
        self._inner.insert(whole_number("index", index, len(self)), as_frames(frames))

    def erase(self, where: int | slice) -> None:
        """Take frames out; their markers move to the frame behind them."""
        start, stop = self._place(where)
        self._inner.erase(start, stop - start)

    def samples(self, first: int = 0) -> Samples:
        """The samples from frame `first` on, those that have changed rendered again.

        Returns
        -------
        ndarray of int16
            A copy.
        """
        return self._inner.samples(whole_number("first", first, len(self)))

    def render(self) -> Sound:
        """The sound with its markers."""
        return Sound(self.samples(), self._sample_freq, self._inner.markers())
