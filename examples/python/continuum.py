#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""usage: continuum.py [FOLDER]

A continuum from /ba/ to /da/ in nine equal steps, as tests of categorical perception use it: only the places from where F2 and
F3 come differ (Liberman, Harris, Hoffman and Griffith 1957). The sounds, and a picture of the first, the middle and the last."""

import pathlib
import sys

import larynth
import numpy as np

STEPS = 9
BURST, TRANSITION, VOWEL = 0.01, 0.05, 0.3  # s
BA, DA = (900, 2000), (1700, 2800)  # Hz, where F2 and F3 begin
A = {"F1": 750, "F2": 1250, "F3": 2500}


def syllable(step):
    place = step / (STEPS - 1)
    F2, F3 = (1 - place) * np.array(BA) + place * np.array(DA)
    onset, held, end = 0.05, 0.05 + TRANSITION, 0.05 + VOWEL
    targets = [(0, "AH", 0), (0, "AF", 0), (0, "F4", 3500), (0, "F5", 4500), (0, "BW1", 60), (0, "BW2", 90), (0, "BW3", 150),
               (0, "BW4", 200), (0, "BW5", 250)]
    targets += [(onset, "F1", 250), (onset, "F2", F2), (onset, "F3", F3)]
    targets += [(held, name, value, "cosine") for name, value in A.items()]
    # The burst, through the bypass: all frequencies alike, so that it does not tell the place.
    targets += [(onset - BURST, "AF", 0), (onset - BURST, "AF", 400), (onset, "AF", 0), (0, "AB", 1)]
    targets += [(onset, "AV", 0), (onset + 0.015, "AV", 900, "cosine"), (end - 0.08, "AV", 800), (end, "AV", 0, "cosine")]
    targets += [(onset, "F0", 125), (end, "F0", 95)]
    return larynth.frames_from_targets(targets)


folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
folder.mkdir(parents=True, exist_ok=True)
for step in range(STEPS):
    larynth.render(syllable(step)).write(folder / f"ba_da_{step + 1}.wav")
for step in (0, STEPS // 2, STEPS - 1):
    larynth.plot(syllable(step)).savefig(folder / f"ba_da_{step + 1}.png", dpi=120)
