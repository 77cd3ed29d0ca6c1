# SPDX-License-Identifier: MIT
"""A page for each of the items of a frame, from docs/parameters.toml: what it does, a picture and three sounds."""

from __future__ import annotations

import pathlib
import textwrap
from typing import Any

import numpy as np

import drawings
import larynth
from table import FRAME_LENGTH, FRAMES, SAMPLE_FREQ, UNITS, Page, Values, frame_of, frames_of, read


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

{page.tip}

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
        drawings.draw(page, frames, folder / f"{name}.svg")
        (folder / f"{name}.md").write_text(text_of(page, table))
    (folder / "index.md").write_text(index_of(pages))
