# SPDX-License-Identifier: MIT
"""Pictures of sounds, of what they were made from, and of the tract. They need matplotlib."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Sequence

import numpy as np

from .errors import E_NOTIMPL, Error
from .sound import Sound
from .synthesizer import Synthesizer, as_utterance, render
from .utterances import FrameArray, Frames, Utterance
from .voice import Voice

if TYPE_CHECKING:
    from matplotlib.axes import Axes
    from matplotlib.figure import Figure

FloatArray = np.ndarray[Any, np.dtype[np.float64]]

WINDOW = 0.005  # s; short enough to tell one glottal pulse from the next, as wide-band spectrograms do
DYNAMIC_RANGE = 60.0  # dB
MOST_COLUMNS = 2000
F0_AXIS = 500.0  # Hz
MARKER_ROWS = 2


def new_figure(width: float, height: float) -> Figure:
    try:
        from matplotlib.figure import Figure
    except ImportError as missing:
        raise Error("pictures need matplotlib: install python3-matplotlib", E_NOTIMPL) from missing
    return Figure(figsize=(width, height), layout="constrained")


def spectrogram(samples: np.ndarray[Any, Any], sample_freq: float) -> tuple[FloatArray, FloatArray, FloatArray]:
    """Times (s) of the columns, frequencies (Hz) of the rows, and levels (dB below the loudest one)."""
    length = max(8, round(2 * WINDOW * sample_freq))
    padded = np.pad(np.diff(samples.astype(float), prepend=0.0), length // 2)  # 6 dB an octave, as speech falls
    hop = max(1, round(0.001 * sample_freq), len(samples) // MOST_COLUMNS)
    starts = np.arange(0, max(1, len(samples)), hop)
    windows = padded[np.minimum(starts[:, None] + np.arange(length), len(padded) - 1)] * np.hanning(length)
    fft_length = 1 << (4 * length - 1).bit_length()
    power = np.abs(np.fft.rfft(windows, fft_length, axis=1).T) ** 2
    floor = power.max() * 10 ** (-DYNAMIC_RANGE / 10) or 1.0
    levels = 10 * np.log10(np.maximum(power, floor) / max(power.max(), floor))
    return starts / sample_freq, np.fft.rfftfreq(fft_length, 1 / sample_freq), levels


def pulses(voicing: FloatArray, sample_freq: float) -> np.ndarray[Any, np.dtype[np.int64]]:
    """Samples at which the glottis closes: the flow's slope is steepest there, in each run of samples that is deep."""
    if not len(voicing):
        return np.zeros(0, np.int64)
    block = max(1, round(0.02 * sample_freq))
    deepest = np.minimum.reduceat(voicing, np.arange(0, len(voicing), block))
    around = np.minimum(deepest, np.minimum(np.append(deepest[1:], 0), np.insert(deepest[:-1], 0, 0)))
    is_deep = voicing < 0.3 * np.repeat(around, block)[: len(voicing)]
    starts, ends = np.flatnonzero(np.diff(is_deep, prepend=False, append=False)).reshape(-1, 2).T
    is_apart = starts[1:] - ends[:-1] > 0.0005 * sample_freq  # flutter pauses at a frame's first sample, which may split a run
    runs = zip(starts[np.append(True, is_apart)[: len(starts)]], ends[np.append(is_apart, True)[: len(ends)]])
    return np.array([start + voicing[start:end].argmin() for start, end in runs], np.int64)


def draw_wave(axes: Axes, sound: Sound) -> None:
    axes.plot(np.arange(len(sound.samples)) / sound.sample_freq, sound.samples, linewidth=0.5, color="black")
    axes.set_ylabel("sample")
    axes.margins(x=0)


def draw_spectrogram(axes: Axes, sound: Sound) -> None:
    times, frequencies, levels = spectrogram(sound.samples, sound.sample_freq)
    axes.pcolormesh(times, frequencies, levels, cmap="gray_r", shading="nearest", rasterized=True)
    axes.set_ylabel("frequency (Hz)")
    axes.set_xlabel("time (s)")
    axes.set_xlim(0, max(sound.duration, 1 / sound.sample_freq))
    axes.set_ylim(0, sound.sample_freq / 2)


def draw_markers(panels: list[Axes], sound: Sound) -> None:
    for number, (sample, text) in enumerate(sound.markers):
        time = sample / sound.sample_freq
        for axes in panels:
            axes.axvline(time, color="tab:green", linewidth=0.8, linestyle=":")
        height = 1.03 + 0.12 * (number % MARKER_ROWS)
        panels[0].text(time, height, text, transform=panels[0].get_xaxis_transform(), color="tab:green", fontsize=8)


def draw_source(axes: Axes, voicing: FloatArray, sample_freq: float) -> None:
    axes.plot(np.arange(len(voicing)) / sample_freq, voicing, linewidth=0.5, color="tab:purple")
    closures = pulses(voicing, sample_freq)
    axes.plot(closures / sample_freq, voicing[closures], "|", color="tab:red", markersize=5, label="glottis closes")
    axes.set_ylabel("voicing source")
    axes.legend(loc="upper right", fontsize=7, framealpha=0.6)


def draw_tracks(axes: Axes, frames: FrameArray, sample_freq: float) -> None:
    """Formants where the cascade is excited, and F0 where there is voicing."""
    ends = np.cumsum(frames["length"])
    times = (ends - frames["length"] / 2) / sample_freq
    sounds = (frames["AV"] > 0) & (frames["F0"] > 0) | (frames["AH"] > 0)
    for number in range(1, 6):
        values = frames[f"F{number}"]
        shown = np.where(sounds & (values > 0) & (values < sample_freq / 2), values, np.nan)
        axes.plot(times, shown, color="tab:red", linewidth=1, label="F1 to F5" if number == 1 else None)
    pitch = axes.twinx()
    voiced = np.where((frames["AV"] > 0) & (frames["F0"] > 0), frames["F0"], np.nan)
    pitch.plot(times, voiced, color="tab:blue", linewidth=1.5, label="F0")
    pitch.set_ylim(0, max(F0_AXIS, 1.1 * float(np.nanmax(np.append(voiced, 0.0)))))
    pitch.set_ylabel("F0 (Hz)", color="tab:blue")
    pitch.tick_params(axis="y", colors="tab:blue")
    lines = [line for side in (axes, pitch) for line in side.get_lines() if not line.get_label().startswith("_")]
    pitch.legend(handles=lines, loc="upper right", fontsize=7)


def voicing_of(utterance: Utterance, **settings: Any) -> FloatArray:
    """The source's signal, piece by piece: all signals of an hour do not fit into memory."""
    synthesizer = Synthesizer(utterance.sample_freq, **settings)
    starts = range(0, len(utterance.frames), 100)
    pieces = [synthesizer.signals(utterance.frames[start : start + 100])["voicing"].copy() for start in starts]
    return np.concatenate([np.zeros(0), *pieces])


def plot(
    what: Sound | Utterance | Frames,
    *,
    sample_freq: float | None = None,
    tract: str = "resonator",
    volume: float = 1.0,
    output_gain: float = 1.0,
    voice: Voice | None = None,
    wave: Sequence[float] | None = None,
    seed: int | None = 1,
) -> Figure:
    """Draw a sound: waveform, wide-band spectrogram and markers; of frames also the voicing source with the instants at
    which the glottis closes, and F0 and formants over the spectrogram.

    Parameters
    ----------
    what : Sound, Utterance, array of `frame_dtype`, shape (n,), or mapping from names to numbers or arrays
        What is no sound is rendered.
    sample_freq, tract, volume, output_gain, voice, wave, seed
        As of `render`, for frames.

    Returns
    -------
    matplotlib.figure.Figure

    Raises
    ------
    InputError
        As `render` does.
    Error
        Where matplotlib is missing.

    Examples
    --------
    >>> larynth.plot(larynth.read("table.csv")).savefig("table.png")
    >>> larynth.plot(larynth.say_frames("Hello, world."))
    """
    if isinstance(what, Sound):
        figure = new_figure(10, 5)
        wave_axes, spectrum = figure.subplots(2, 1, sharex=True, height_ratios=[1, 2.5])
        panels, sound = [wave_axes, spectrum], what
    else:
        utterance = as_utterance(what, sample_freq, voice)
        settings: dict[str, Any] = {
            "tract": tract,
            "volume": volume,
            "output_gain": output_gain,
            "voice": utterance.voice,
            "wave": wave,
            "seed": seed,
        }
        sound = render(utterance, **settings)
        voicing = voicing_of(utterance, **settings)
        figure = new_figure(10, 6.5)
        wave_axes, source, spectrum = figure.subplots(3, 1, sharex=True, height_ratios=[1, 0.8, 2.7])
        panels = [wave_axes, source, spectrum]
        draw_source(source, voicing, sound.sample_freq)
        draw_tracks(spectrum, utterance.frames, sound.sample_freq)
    draw_wave(wave_axes, sound)
    draw_spectrogram(spectrum, sound)
    draw_markers(panels, sound)
    return figure


def plot_response(frequencies: FloatArray, branches: dict[str, np.ndarray[Any, Any]]) -> Figure:
    """The levels of transfer functions over the frequency."""
    figure = new_figure(8, 4)
    axes = figure.subplots()
    for name, values in branches.items():
        if np.any(values):
            axes.plot(frequencies, 20 * np.log10(np.maximum(np.abs(values), 1e-10)), label=name)
    axes.set_xlabel("frequency (Hz)")
    axes.set_ylabel("gain (dB)")
    axes.margins(x=0)
    axes.grid(alpha=0.3)
    axes.legend()
    return figure
