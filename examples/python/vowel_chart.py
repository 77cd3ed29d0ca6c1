#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""usage: vowel_chart.py [FOLDER]

Vowels where they lie on the chart of the first two formants: a sound of each, and the chart. The formants are the means of 33
men (Peterson and Barney 1952)."""

import pathlib
import sys

import larynth
import numpy as np
from matplotlib.figure import Figure

VOWELS = {  # F1, F2, F3 in Hz
    "i": (270, 2290, 3010), "ɪ": (390, 1990, 2550), "ɛ": (530, 1840, 2480), "æ": (660, 1720, 2410), "ɑ": (730, 1090, 2440),
    "ɔ": (570, 840, 2410), "ʊ": (440, 1020, 2240), "u": (300, 870, 2240), "ʌ": (640, 1190, 2390), "ɝ": (490, 1350, 1690),
}
NAMES = dict(zip(VOWELS, ["beet", "bit", "bet", "bat", "cot", "bought", "book", "boot", "but", "bird"]))


def vowel(F1, F2, F3):
    """Half a second, which swells and fades while the pitch falls."""
    n = 50
    swell = np.minimum(1, np.minimum(np.arange(n), np.arange(n)[::-1]) / 5)
    return larynth.frames(n, AV=900 * swell, AH=0, AF=0, F0=np.linspace(130, 95, n), F1=F1, F2=F2, F3=F3, F4=3500, F5=4500,
                          BW1=60, BW2=90, BW3=150, BW4=200, BW5=250)


def chart():
    figure = Figure(figsize=(6, 5), layout="constrained")
    axes = figure.subplots()
    for symbol, (F1, F2, _) in VOWELS.items():
        axes.text(F2, F1, symbol, fontsize=18, ha="center", va="center")
    axes.set(xlim=(2500, 700), ylim=(800, 200), xscale="log", yscale="log", xlabel="F2 (Hz)", ylabel="F1 (Hz)",
             title="Vowels of American English, men")
    axes.set_xticks([700, 1000, 1500, 2000, 2500], labels=["700", "1000", "1500", "2000", "2500"])
    axes.set_yticks([200, 300, 400, 500, 600, 800], labels=["200", "300", "400", "500", "600", "800"])
    axes.minorticks_off()
    axes.grid(alpha=0.3)
    return figure


folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
folder.mkdir(parents=True, exist_ok=True)
for symbol, formants in VOWELS.items():
    larynth.render(vowel(*formants)).write(folder / f"{NAMES[symbol]}.wav")
chart().savefig(folder / "vowel_chart.png", dpi=120)
