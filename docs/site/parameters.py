# SPDX-License-Identifier: MIT
"""A page for each of the items of a frame, from docs/parameters.toml: what it does, a picture and three sounds."""

from __future__ import annotations

import dataclasses
import pathlib
import textwrap
import tomllib
from typing import Any, Callable

import numpy as np
from matplotlib.axes import Axes
from matplotlib.figure import Figure

import larynth
from larynth.pictures import pulses

FloatArray = np.ndarray[Any, np.dtype[np.float64]]

SAMPLE_FREQ = 16000.0
FRAME_LENGTH = 160
FRAMES = 70
HIGHEST = 5000.0  # Hz, of a voice in pictures; noise is shown up to half the sample frequency
COLORS = ("#2a6fbb", "#e08214", "#5e3c99")
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
    values: list[float]
    scene: str
    picture: str
    beside: list[str]
    sources: list[str]
    frame: Values = dataclasses.field(default_factory=dict)
    here: str = ""
    family: str = ""
    try_: str = ""

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
    if list(items) != [name for name in items if name in table["items"]] or len(items) != len(table["items"]):
        raise ValueError(f"{path}: expected the items of larynth.items(), differing: {set(items) ^ set(table['items'])}")
    pages = {}
    for name, item in items.items():
        fields = {**table["families"].get(table["items"][name].get("family"), {}), **table["items"][name]}
        fields = {field + "_" * (field == "try"): filled(value, name[-1]) for field, value in fields.items()}
        pages[name] = Page(item=item, **fields)
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


def make_sounds(page: Page, frames: list[Values], folder: pathlib.Path) -> None:
    for number, frame in enumerate(frames, 1):
        sound = larynth.render(frames_of(page, frame), sample_freq=SAMPLE_FREQ)
        peak = int(np.abs(sound.samples.astype(int)).max())
        if not 100 <= peak <= 32000:
            raise ValueError(f"{page.item.name} = {page.values[number - 1]:g}: the loudest sample is {peak}: not heard or cut off")
        sound.write(folder / f"{page.item.name}-{number}.wav")


def link(name: str) -> str:
    return f"[{name}]({name}.md)"


def text_of(page: Page, table: dict[str, Any]) -> str:
    name, scene = page.item.name, table["scenes"][page.scene]
    players = "\n".join(
        f'<figure><figcaption>{name} = {page.with_unit(value)}</figcaption>'
        f'<audio controls preload="metadata" src="{name}-{number}.wav"></audio></figure>'
        for number, value in enumerate(page.values, 1)
    )
    others = ", ".join(f"{key}={value:g}" for key, value in {**scene["frame"], **page.frame}.items() if key != name)
    settings = textwrap.fill(others, 80, initial_indent="    ", subsequent_indent="    ")
    low, high = page.range
    sources = "\n".join(f"- {table['sources'][source]}." for source in page.sources)
    return f"""# {name}: {page.title[0].lower() + page.title[1:]}

{page.does}

{page.here}

| | |
| --- | --- |
| unit | {UNITS[page.item.unit].strip() or "factor"} |
| in a new frame | {page.with_unit(page.item.initial)} |
| useful range | {low:g} to {page.with_unit(high)} |

{page.why}

![{name} at three values]({name}.svg)

<div class="players">
{players}
</div>

{scene["about"]} To make it:

```python
frame = dict(
{settings},
)
frames = larynth.frames({FRAMES}, length={FRAME_LENGTH}, **frame, {name}={page.values[1]:g})
larynth.render(frames, sample_freq={SAMPLE_FREQ:g})
```

## Try

{page.try_}

See also {", ".join(map(link, page.beside))}.

## Sources

{sources}
"""


GROUPS = {
    "The voice": ["F0", "OQ", "FL", "FLT", "DI", "TL", "AV"],
    "Noise": ["AH", "AF", "AB"],
    "The nose": ["FNP", "BWNP", "GNP", "FNZ", "BWNZ", "GNZ"],
    "The formants": [f"{kind}{n}" for n in range(1, 6) for kind in ("F", "BW", "G")],
    "The parallel branch": [f"{kind}{n}" for n in range(7) for kind in ("PF", "PBW", "PG")],
}


def index_of(pages: dict[str, Page]) -> str:
    text = """# Parameters

A frame is 52 numbers that hold for some milliseconds. Voice and breath pass the *cascade*: the nose and five formants, one behind
the other. Friction passes the *parallel branch*: seven resonators and a bypass side by side. What both give is added up. Each page
says what a number does, and lets it be seen and heard at three values.
"""
    for title, names in GROUPS.items():
        rows = [f"| {link(name)} | {pages[name].title} | {pages[name].with_unit(pages[name].item.initial)} |" for name in names]
        text += f"\n## {title}\n\n| item | what it is | in a new frame |\n| --- | --- | --- |\n" + "\n".join(rows) + "\n"
    return text + "\n```{toctree}\n:hidden:\n\n" + "\n".join(name for names in GROUPS.values() for name in names) + "\n```\n"


def build(table_path: pathlib.Path, folder: pathlib.Path, media: pathlib.Path) -> None:
    """Writes pages and pictures to `folder`, sounds to `media`."""
    pages, table = read(table_path)
    for name, page in pages.items():
        frames = [frame_of(page, table, value) for value in page.values]
        make_sounds(page, frames, media)
        figure = Figure(figsize=(7, 3.6), layout="constrained")
        DRAW[page.picture](figure, page, frames)
        figure.savefig(folder / f"{name}.svg")
        (folder / f"{name}.md").write_text(text_of(page, table))
    (folder / "index.md").write_text(index_of(pages))
