# SPDX-License-Identifier: MIT
import os
import subprocess

import larynth
import numpy as np
import pytest

pytest.importorskip("matplotlib")
from larynth import pictures

VOWEL = dict(AV=900, AH=0, AF=0, BW1=60, BW2=90, BW3=150, BW4=200, BW5=250, F4=3500, F5=4500)
CARDINAL = {"i": (240, 2400, 3000), "e": (390, 2300, 2850), "a": (850, 1610, 2500), "o": (360, 640, 2500)}


def lines_of(figure):
    return {line.get_label(): line for axes in figure.get_axes() for line in axes.get_lines()}


@pytest.mark.parametrize("formants", CARDINAL.values(), ids=CARDINAL)
def test_formants_of_the_sound_lie_where_the_frames_put_them(formants):
    # Noise through the cascade, whose spectrum an all-pole model of its order fits (autocorrelation method).
    vowel = {**VOWEL, **dict(zip(("F1", "F2", "F3"), formants)), "AV": 0, "AH": 2000, "length": 110}
    x = larynth.render(larynth.frames(6000, **vowel)).samples.astype(float)
    x -= x.mean()
    correlation = np.array([x[: len(x) - lag] @ x[lag:] for lag in range(13)])
    matrix = correlation[np.abs(np.subtract.outer(np.arange(12), np.arange(12)))]
    poles = np.roots(np.append(1, -np.linalg.solve(matrix, correlation[1:])))
    narrow = poles[(poles.imag > 0) & (np.abs(poles) > np.exp(-np.pi * 600 / 11025))]
    found = np.sort(np.angle(narrow)) * 11025 / (2 * np.pi)
    for formant in formants:
        assert np.min(np.abs(found - formant)) < 0.02 * formant, found


def test_tracks_pulses_and_markers_stand_where_the_frames_have_them():
    frames = larynth.frames(60, **VOWEL, F0=np.linspace(100, 150, 60), F1=np.linspace(300, 700, 60), F2=1500)
    frames["AV"][40:] = 0
    utterance = larynth.Utterance(frames, 11025.0, [(10, "here")])
    figure = larynth.plot(utterance)
    lines = lines_of(figure)
    track, pitch = lines["F1 to F5"], lines["F0"]
    assert np.allclose(track.get_xdata(), (np.arange(60) + 0.5) * 110 / 11025)
    assert np.array_equal(track.get_ydata()[:40], frames["F1"][:40]) and np.isnan(track.get_ydata()[40:]).all()
    assert np.array_equal(pitch.get_ydata()[:40], frames["F0"][:40]) and np.isnan(pitch.get_ydata()[40:]).all()
    closures = lines["glottis closes"].get_xdata()
    assert np.allclose(1 / np.diff(closures), np.interp(closures[:-1], track.get_xdata(), frames["F0"]), rtol=0.03)
    assert [(text.get_text(), text.get_position()[0]) for text in figure.get_axes()[0].texts] == [("here", 1100 / 11025)]
    assert [axes.get_ylabel() for axes in figure.get_axes()] == ["sample", "voicing source", "frequency (Hz)", "F0 (Hz)"]


def test_a_pulse_has_one_closure_where_flutter_moves_it():
    voicing = larynth.signals(larynth.frames(150, **VOWEL, F0=110, FL=0.06, FLT=6.25))["voicing"]
    periods = np.diff(pictures.pulses(voicing, 11025)) / 11025
    assert len(periods) > 150 and np.allclose(1 / periods, 110, rtol=0.08)


def test_spectrograms_show_a_tone_where_it_is():
    tone = np.sin(2 * np.pi * 1000 * np.arange(8000) / 8000) * 10000
    times, frequencies, levels = pictures.spectrogram(tone.astype(np.int16), 8000.0)
    assert abs(frequencies[levels[:, len(times) // 2].argmax()] - 1000) < 20
    assert times[-1] < 1 and levels.max() == 0 and levels.min() == -60


def test_sounds_and_responses_are_drawn(tmp_path):
    larynth.plot(larynth.render(larynth.frames(3, **VOWEL))).savefig(tmp_path / "sound.png")
    larynth.plot(larynth.frames(0)).savefig(tmp_path / "nothing.svg")
    response = larynth.response({**VOWEL, "F1": 500})
    drawn = lines_of(response.plot())["cascade"]
    assert np.allclose(drawn.get_ydata(), 20 * np.log10(abs(response.cascade)))


@pytest.mark.parametrize(
    "arguments, status, message",
    [
        ("table.csv -o p.png --seed 3 --voice v.json", 0, ""),
        ("targets.csv --input targets -o p.svg --sample-freq 16000 --frame-len 50", 0, ""),
        ("table.csv -o p.jpg", 2, "larynth: --output: expected a name in .png, .svg or .pdf, found p.jpg\n"),
        ("bad.csv -o p.png", 2, 'larynth: bad.csv:1:1: expected the name of an item, SampleFreq, FrameLen or Marker, found "Fx"\n'),
        ("table.csv -o none/p.png", 1, "larynth: none/p.png: cannot be written: No such file or directory\n"),
        ("old.png -o old.png", 2, "larynth: --output: expected another file than old.png\n"),
        ("table.csv -o p.png --seed x", 2, "larynth: argument --seed: invalid int value: 'x'\n"),
    ],
)
def test_the_command_draws(arguments, status, message, tmp_path):
    (tmp_path / "table.csv").write_text("F1,BW1,AV,FrameLen\n500,60,700,200\n,,,\n")
    (tmp_path / "targets.csv").write_text("0,AV,700\n0.1,AV,700\n")
    (tmp_path / "bad.csv").write_text("Fx\n")
    (tmp_path / "old.png").write_text("F1\n500\n")
    (tmp_path / "v.json").write_text("{}")
    command = [os.environ["LARYNTH_COMMAND"], "plot", *arguments.split()]
    result = subprocess.run(command, cwd=tmp_path, capture_output=True, text=True)
    assert (result.returncode, result.stderr) == (status, message)
    assert len(list(tmp_path.iterdir())) == 5 + (status == 0)
    assert (tmp_path / "old.png").read_text() == "F1\n500\n"
