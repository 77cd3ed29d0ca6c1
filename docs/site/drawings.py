# SPDX-License-Identifier: MIT
"""The pictures of the parameters' pages."""

from __future__ import annotations

import pathlib
from typing import Any, Callable

import numpy as np
from matplotlib.axes import Axes
from matplotlib.figure import Figure

import larynth
from larynth.pictures import pulses
from table import FRAME_LENGTH, SAMPLE_FREQ, Page, Values, frames_of

FloatArray = np.ndarray[Any, np.dtype[np.float64]]

HIGHEST = 5000.0  # Hz, of a voice in pictures; noise is shown up to half the sample frequency
COLORS = ("#2a6fbb", "#e08214", "#5e3c99")


def decibels(values: Any) -> FloatArray:
    return np.asarray(20 * np.log10(np.maximum(np.abs(values), 1e-6)))


def spectrum(signal: FloatArray) -> tuple[FloatArray, FloatArray]:
    """Frequencies (Hz) and levels (dB), the mean of overlapping windows."""
    length = 1024
    starts = range(len(signal) // 4, len(signal) * 3 // 4 - length, length // 4)
    windows = np.array([signal[start : start + length] for start in starts]) * np.hanning(length)
    power = np.mean(np.abs(np.fft.rfft(windows, axis=1)) ** 2, axis=0)
    return np.fft.rfftfreq(length, 1 / SAMPLE_FREQ), decibels(np.sqrt(power) / (length / 4))


def harmonics(signal: FloatArray, F0: float) -> tuple[FloatArray, FloatArray]:
    """Frequencies (Hz) and levels (dB) of the multiples of F0 (Hz) in a steady voice."""
    middle = signal[len(signal) // 4 : len(signal) * 3 // 4]
    levels = decibels(np.fft.rfft(middle * np.hanning(len(middle)))) - 20 * np.log10(len(middle) / 4)
    places = np.fft.rfftfreq(len(middle), 1 / SAMPLE_FREQ)
    bands = [np.flatnonzero(np.abs(places - n * F0) < F0 / 4) for n in range(1, int(HIGHEST / F0))]
    peaks = [band[levels[band].argmax()] for band in bands]
    return places[peaks], levels[peaks]


def finish(axes: Axes, x: str, y: str) -> None:
    axes.set_xlabel(x)
    axes.set_ylabel(y)
    axes.margins(x=0)
    axes.grid(alpha=0.3)


def draw_response(figure: Figure, page: Page, frames: list[Values]) -> None:
    axes = figure.subplots()
    frequencies = np.linspace(0, HIGHEST if page.picture == "cascade" else SAMPLE_FREQ / 2, 1001)
    branch = {"cascade": "cascade", "parallel": "parallel branch"}[page.picture]
    for frame, value, color in zip(frames, page.values, COLORS):
        response = larynth.response(frame, frequencies, sample_freq=SAMPLE_FREQ)
        axes.plot(frequencies, decibels(getattr(response, page.picture)), color=color, label=page.with_unit(value))
    finish(axes, "frequency (Hz)", f"gain of the {branch} (dB)")
    axes.legend(title=page.item.name)


def draw_signal(figure: Figure, page: Page, frames: list[Values]) -> None:
    """The wave in the middle of each sound, one below the other, and the spectra."""
    figure.get_layout_engine().set(wspace=0.1)  # of the width: the label between the panels belongs to the right one
    name, title = ("tilted_voicing", "source") if page.picture == "source" else ("sum", "sound")
    grid = figure.add_gridspec(3, 2)
    beside = figure.add_subplot(grid[:, 1])
    waves: list[Axes] = []
    for row, (frame, value, color) in enumerate(zip(frames, page.values, COLORS)):
        signal = larynth.signals(frames_of(page, frame), sample_freq=SAMPLE_FREQ)[name]
        shown = signal[len(signal) // 2 :][: round(0.03 * SAMPLE_FREQ)]
        waves.append(figure.add_subplot(grid[row, 0], **({"sharex": waves[0], "sharey": waves[0]} if waves else {})))
        waves[-1].plot(np.arange(len(shown)) / SAMPLE_FREQ * 1000, shown, color=color, linewidth=1)
        waves[-1].tick_params(labelbottom=row == 2)
        finish(waves[-1], "time (ms)" if row == 2 else "", title if row == 1 else "")
        lines, style = (harmonics(signal, frame["F0"]), "o-") if frame["F0"] else (spectrum(signal), "-")
        beside.plot(*lines, style, color=color, linewidth=0.9, markersize=3, label=page.with_unit(value))
    finish(beside, "frequency (Hz)", "level of the harmonics (dB)" if style == "o-" else "level (dB)")
    beside.set_xlim(0, SAMPLE_FREQ / 2 if frame["AF"] else HIGHEST)
    beside.legend(title=page.item.name, loc="upper left" if frame["AF"] else "upper right")


def draw_flutter(figure: Figure, page: Page, frames: list[Values]) -> None:
    panels = figure.subplots(3, 1, sharex=True, sharey=True)
    for axes, frame, value, color in zip(panels, frames, page.values, COLORS):
        steady = larynth.frames(150, length=FRAME_LENGTH, **frame)
        closures = pulses(larynth.signals(steady, sample_freq=SAMPLE_FREQ)["voicing"], SAMPLE_FREQ)[:-1]
        label = f"{page.item.name} = {page.with_unit(value)}"
        axes.step(closures[1:] / SAMPLE_FREQ, SAMPLE_FREQ / np.diff(closures), where="pre", color=color, label=label)
        finish(axes, "time (s)" if axes is panels[-1] else "", "F0 of each period (Hz)" if axes is panels[1] else "")
        axes.legend(loc="upper right")


DRAW: dict[str, Callable[[Figure, Page, list[Values]], None]] = {
    "cascade": draw_response,
    "parallel": draw_response,
    "source": draw_signal,  # the voice behind its tilt
    "output": draw_signal,
    "flutter": draw_flutter,
}


def draw(page: Page, frames: list[Values], path: pathlib.Path) -> None:
    figure = Figure(figsize=(7, 3.6), layout="constrained")
    DRAW[page.picture](figure, page, frames)
    figure.savefig(path)
