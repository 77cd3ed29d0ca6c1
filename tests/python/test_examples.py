# SPDX-License-Identifier: MIT
import csv
import filecmp
import pathlib
import subprocess
import sys
import wave

import numpy as np
import pytest

EXAMPLES = pathlib.Path(__file__).parent.parent.parent / "examples"


def run(program, *arguments):
    subprocess.run([sys.executable, "-B", EXAMPLES / program, *map(str, arguments)], check=True)


def samples_of(path):
    with wave.open(str(path)) as sound:
        return np.frombuffer(sound.readframes(sound.getnframes()), "<i2")


@pytest.mark.parametrize(
    "program, sounds, pictures", [("python/vowel_chart.py", 10, 1), ("python/continuum.py", 9, 3)], ids=["chart", "continuum"]
)
def test_examples_make_sounds_and_pictures(program, sounds, pictures, tmp_path):
    pytest.importorskip("matplotlib")
    run(program, tmp_path / "new")
    made = [samples_of(path) for path in sorted((tmp_path / "new").glob("*.wav"))]
    assert len(made) == sounds and len(list(tmp_path.glob("new/*.png"))) == pictures
    assert all(2000 < np.abs(sound.astype(int)).max() < 30000 for sound in made)
    assert all(not np.array_equal(one, other) for one, other in zip(made, made[1:]))


def test_a_corpus_made_in_parts_is_the_same(tmp_path):
    one, other = tmp_path / "one", tmp_path / "other"
    run("corpus/corpus.py", one, "--count", 7)
    for part in ("1/2", "0/2", "1/2"):
        run("corpus/corpus.py", other, "--count", 7, "--part", part)
    assert not (other / "contents.csv").exists()
    (other / "000/000003.flac").unlink()
    run("corpus/corpus.py", other, "--count", 7)
    names = [path.relative_to(one) for path in one.rglob("*.*")]
    assert len(names) == 8 and filecmp.cmpfiles(one, other, names, shallow=False)[0] == names
    rows = list(csv.DictReader((one / "contents.csv").open()))
    assert len({row["sha256"] for row in rows}) == 7
