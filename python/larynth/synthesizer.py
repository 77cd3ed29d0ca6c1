# SPDX-License-Identifier: MIT
"""From frames to sound."""

from __future__ import annotations

from typing import Any, Iterator, Sequence

import numpy as np

from . import _larynth, voice as voices
from .errors import Error
from .utterances import MOST_LENGTH, Frames, Utterance, as_frames
from .inputs import Markers, choice, frequency, number, numbers, ordered_markers, seed_or_none, whole_number
from .sound import Sound
from .voice import Voice

Samples = np.ndarray[Any, np.dtype[np.int16]]


def plain_settings(
    sample_freq: float,
    tract: str,
    volume: float,
    output_gain: float,
    voice: Voice | None,
    wave: Sequence[float] | None,
    seed: int | None,
) -> _larynth.PlainSettings:
    """What `Synthesizer` takes, looked at and as the extension module takes it."""
    return (
        frequency("sample_freq", sample_freq),
        choice("tract", tract, ["resonator", "filter"]) == "filter",
        number("volume", volume),
        number("output_gain", output_gain),
        voices.plain(voice),
        None if wave is None else list(numbers("wave", wave)),
        seed_or_none(seed),
    )


class Synthesizer:
    """A synthesizer, whose state runs on from one call to the next.

    Threads may share it: they take turns. While it renders other threads run.

    Parameters
    ----------
    sample_freq : float
        Hz.
    tract : {"resonator", "filter"}
        The form of the cascade: resonators one behind the other, or one rational filter. The same transfer
        function; low bits differ.
    volume : float
        Linear factor, applied last.
    output_gain : float
        Linear factor on the sum of cascade and parallel branch.
    voice : Voice, optional
        Else the standard one.
    wave : sequence of float, optional
        Open phase of one excitation period, of a wave-table source in place of any other, also a voice's.
    seed : int, optional
        State of the noise generator at the start, 0 to 2**32 - 1; None: as it stands. The process has one
        generator for all synthesizers: threads that render at one time share its noise.
    """

    def __init__(
        self,
        sample_freq: float = 11025.0,
        *,
        tract: str = "resonator",
        volume: float = 1.0,
        output_gain: float = 1.0,
        voice: Voice | None = None,
        wave: Sequence[float] | None = None,
        seed: int | None = None,
    ) -> None:
        plain = plain_settings(sample_freq, tract, volume, output_gain, voice, wave, seed)
        self._sample_freq = plain[0]
        self._inner = _larynth.Synthesizer(*plain)

    @property
    def sample_freq(self) -> float:
        """Hz."""
        return self._sample_freq

    def set_volume(self, factor: float) -> None:
        """Set the linear factor that is applied last, from the next sample on."""
        self._inner.set_volume(number("volume", factor))

    def set_output_gain(self, factor: float) -> None:
        """Set the linear factor on the sum of cascade and parallel branch, from the next sample on."""
        self._inner.set_output_gain(number("output_gain", factor))

    def set_voice(self, voice: Voice | None) -> None:
        """Set a voice with its source, from the next sample on; None brings back the standard source."""
        self._inner.set_voice(voices.plain(voice))

    def render(self, frames: Frames) -> Samples:
        """Render frames.

        Parameters
        ----------
        frames : array of `frame_dtype`, shape (n,), or mapping
            A contiguous array is read where it lies.

        Returns
        -------
        ndarray of int16, shape (total length of the frames,)

        Raises
        ------
        InputError
            With frame and item, for a number that is not finite.

        Notes
        -----
        Where this fails or is interrupted, the state is that in front of the call, which can be repeated.
        """
        return self._inner.render(as_frames(frames))

    def chunks(self, frames: Frames, size: int = 10) -> Iterator[Samples]:
        """Render frames piece by piece, to hear the first ones before the last ones are made.

        Parameters
        ----------
        frames : array of `frame_dtype`, shape (n,), or mapping
            A contiguous array is read where it lies.
        size : int
            Frames of a chunk, from 1.

        Yields
        ------
        ndarray of int16
            The same samples as `render` gives, one chunk after the other.
        """
        array = as_frames(frames)
        step = whole_number("size", size, MOST_LENGTH, lowest=1)
        for start in range(0, len(array), step):
            try:
                chunk = self._inner.render(array[start : start + step])
            except Error as error:
                error.args = (f"chunk that begins with frame {start}: {error}",)
                raise
            yield chunk

    def signals(self, frames: Frames) -> dict[str, np.ndarray[Any, np.dtype[np.float64]]]:
        """Render frames and give the signals inside.

        Parameters
        ----------
        frames : array of `frame_dtype`, shape (n,), or mapping
            A contiguous array is read where it lies.

        Returns
        -------
        dict of str to ndarray of float64, shape (total length of the frames,)
            Sources ("voicing", "tilted_voicing", "aspiration", "frication"), the cascade ("cascade_input",
            "cascade_nz", "cascade_np", "cascade_f1" ... "cascade_f5"; nan in filter form), what the parallel
            branch adds up ("parallel_bypass", "parallel_f0" ... "parallel_f6"), "cascade", "parallel", "sum",
            and the steps of the output ("gained", "low_shelf", "high_shelf", "pre_emphasis", "output"). Samples are
            the low 16 bits of "output" without its fraction: `output.astype(np.int64).astype(np.int16)` is what
            `render` gives, to the last bit.
        """
        return dict(zip(self._inner.signal_names(), self._inner.signals(as_frames(frames))))


def as_utterance(frames: Frames | Utterance, sample_freq: float | None, voice: Voice | None) -> Utterance:
    """What is to be rendered; sample frequency and voice displace those of an utterance."""
    utterance = frames if isinstance(frames, Utterance) else Utterance(as_frames(frames))
    return Utterance(
        as_frames(utterance.frames),
        utterance.sample_freq if sample_freq is None else sample_freq,
        utterance.markers,
        utterance.voice if voice is None else voice,
    )


def render(
    frames: Frames | Utterance,
    *,
    sample_freq: float | None = None,
    markers: Markers | None = None,
    tract: str = "resonator",
    volume: float = 1.0,
    output_gain: float = 1.0,
    voice: Voice | None = None,
    wave: Sequence[float] | None = None,
    seed: int | None = 1,
) -> Sound:
    """Render frames by a synthesizer of their own.

    Parameters
    ----------
    frames : Utterance, array of `frame_dtype`, shape (n,), or mapping from names to numbers or arrays
        An array is read where it lies.
    sample_freq : float, optional
        Hz; else that of the utterance, else 11025.
    markers : sequence of (int, str), optional
        The frames in front of which texts stand, in ascending order, and the texts; else those of the utterance.
    tract, volume, output_gain, wave
        As of `Synthesizer`.
    voice : Voice, optional
        Else that of the utterance.
    seed : int, optional
        State of the noise generator at the start: the same frames give the same bits again.

    Returns
    -------
    Sound

    Raises
    ------
    InputError
        With frame and item, for what cannot be rendered.

    Examples
    --------
    >>> larynth.render(larynth.read("table.csv")).write("sound.wav")
    >>> larynth.render({"AV": 900, "F0": np.linspace(90, 140, 100), "F1": 700, "BW1": 130, "AH": 0})
    """
    given = as_utterance(frames, sample_freq, voice)
    placed = ordered_markers(given.markers if markers is None else markers, len(given.frames))
    synthesizer = Synthesizer(
        given.sample_freq,
        tract=tract,
        volume=volume,
        output_gain=output_gain,
        voice=given.voice,
        wave=wave,
        seed=seed,
    )
    starts = np.concatenate([[0], np.cumsum(given.frames["length"], dtype=np.int64)])
    samples = synthesizer.render(given.frames)
    return Sound(samples, synthesizer.sample_freq, [(int(starts[frame]), text) for frame, text in placed])


def signals(
    frames: Frames | Utterance,
    *,
    sample_freq: float | None = None,
    tract: str = "resonator",
    volume: float = 1.0,
    output_gain: float = 1.0,
    voice: Voice | None = None,
    wave: Sequence[float] | None = None,
    seed: int | None = 1,
) -> dict[str, np.ndarray[Any, np.dtype[np.float64]]]:
    """The signals inside while frames are rendered: `Synthesizer.signals` by a synthesizer of their own.

    Parameters are those of `render`.
    """
    given = as_utterance(frames, sample_freq, voice)
    synthesizer = Synthesizer(
        given.sample_freq,
        tract=tract,
        volume=volume,
        output_gain=output_gain,
        voice=given.voice,
        wave=wave,
        seed=seed,
    )
    return synthesizer.signals(given.frames)
