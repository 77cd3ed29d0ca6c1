#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes a corpus of vowels for a listening test or a recogniser: one FLAC file each, and contents.csv, which tells for each file
what was asked for and a hash of its samples.

Every stimulus is drawn from a generator of its own, seeded with its number, and rendered with a noise seed of its own: so it
does not matter who makes it, in which order, or how often. What is there is not written again; files appear whole."""

import argparse
import csv
import hashlib
import pathlib

import larynth
import numpy as np

CORPUS_SEED = 20260101
SAMPLE_FREQ = 16000.0
COLUMNS = ["number", "file", "F0", "F1", "F2", "F3", "breath", "seconds", "noise_seed", "sha256"]


def plan(number):
    """What stimulus `number` is: formants all over the vowel space, a man's or a woman's pitch, more breath or less."""
    random = np.random.default_rng([CORPUS_SEED, number])
    F1 = random.uniform(250, 850)
    F2 = random.uniform(max(600, F1 + 200), 2400)
    return {
        "number": number,
        "file": f"{number // 1000:03}/{number:06}.flac",
        "F0": round(random.choice([110, 200]) * 2 ** random.uniform(-0.25, 0.25), 1),
        "F1": round(F1),
        "F2": round(F2),
        "F3": round(max(F2 + 300, random.uniform(2200, 3000))),
        "breath": round(random.uniform(0, 120)),
        "seconds": round(random.uniform(0.2, 0.5), 2),
        "noise_seed": int(random.integers(2**31)),
    }


def frames(stimulus):
    count = round(100 * stimulus["seconds"])
    swell = np.minimum(1, np.minimum(np.arange(count), np.arange(count)[::-1]) / 4)
    formants = {name: stimulus[name] for name in ("F1", "F2", "F3")}
    return larynth.frames(count, length=160, F0=stimulus["F0"] * np.linspace(1.05, 0.9, count), AV=700 * swell,
                          AH=stimulus["breath"] * swell, AF=0, F4=3700, F5=4600, BW1=70, BW2=90, BW3=150, BW4=200, BW5=250,
                          FL=0.02, FLT=6.25, **formants)


def make(number, folder):
    """Renders a stimulus, and writes it unless it is there; its row of contents.csv."""
    stimulus = plan(number)
    sound = larynth.render(frames(stimulus), sample_freq=SAMPLE_FREQ, seed=stimulus["noise_seed"])
    path = pathlib.Path(folder) / stimulus["file"]
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists():
        sound.write(path)
    return {**stimulus, "sha256": hashlib.sha256(sound.samples.tobytes()).hexdigest()}


def write_contents(rows, folder):
    partial = pathlib.Path(folder) / "contents.csv.partial"
    with open(partial, "w", newline="") as output:
        table = csv.DictWriter(output, COLUMNS, lineterminator="\n")
        table.writeheader()
        table.writerows(sorted(rows, key=lambda row: row["number"]))
    partial.replace(pathlib.Path(folder) / "contents.csv")


def part(text):
    index, count = map(int, text.split("/"))
    if not 0 <= index < count:
        raise ValueError
    return index, count


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder")
    parser.add_argument("--count", type=int, default=10000, help="how many stimuli (default 10000)")
    parser.add_argument("--part", type=part, metavar="K/N", help="make part K of N, from 0, and no contents.csv")
    arguments = parser.parse_args()
    if arguments.count < 1:
        parser.error("--count: expected a number from 1")
    index, parts = arguments.part or (0, 1)
    rows = [make(number, arguments.folder) for number in range(index, arguments.count, parts)]
    if arguments.part is None:
        write_contents(rows, arguments.folder)
