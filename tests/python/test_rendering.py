# SPDX-License-Identifier: MIT
import json
import pathlib
import signal
import threading
import time

import larynth
import numpy as np
import pytest

GOLDEN = pathlib.Path(__file__).parent.parent / "golden/data"
TABLES = [case for case in json.loads((GOLDEN / "index.json").read_text())["cases"] if case["kind"] == "table"]
VOICED = dict(AV=900, AH=30, AF=10, FL=0.25, FLT=9, TL=5, F1=700, BW1=130, F2=1220, BW2=70, PF2=2500, PG2=0.5, AB=0.1)
NOT_A_NUMBER = larynth.frames(9, AV=1)
NOT_A_NUMBER["PF3"][8] = np.nan


def settings_of(options):
    named = dict(zip(options[::2], options[1::2]))
    settings = {"tract": named.get("--tract", "resonator"), "seed": int(named.get("--seed", 1))}
    for option, name in (("--volume", "volume"), ("--output-gain", "output_gain")):
        settings[name] = float(named.get(option, 1))
    if "--voice" in named:
        settings["voice"] = larynth.read_voice(GOLDEN / named["--voice"])
    if "--source" in named:
        settings["wave"] = larynth.read_wave(GOLDEN / named["--source"].removeprefix("wave:"))
    return settings


@pytest.mark.parametrize("case", TABLES, ids=lambda case: case["name"])
def test_golden_tables_give_the_same_samples_markers_and_signals(case):
    utterance, settings = larynth.read(GOLDEN / case["input"]), settings_of(case["options"])
    expected = np.fromfile(GOLDEN / case["expected"], "<i2")
    sound = larynth.render(utterance, **settings)
    assert np.array_equal(sound.samples, expected)
    assert [list(marker) for marker in sound.markers] == case["markers"]
    output = larynth.signals(utterance, **settings)["output"]
    assert np.array_equal(output.astype(np.int64).astype(np.int16), expected)


def test_arrays_are_read_and_given_where_they_lie():
    frames = larynth.frames(3, **VOICED)
    assert larynth.utterances.as_frames(frames) is frames
    assert larynth.render(frames).samples.base is not None and not larynth.render(frames).samples.flags.owndata
    every_other = larynth.frames(6, F0=np.repeat([90, 120, 150], 2), **VOICED)[::2]
    whole = larynth.frames(3, F0=[90, 120, 150], **VOICED)
    assert np.array_equal(larynth.render(every_other).samples, larynth.render(whole).samples)


def test_state_runs_on_from_chunk_to_chunk():
    frames = larynth.frames(25, **VOICED)
    chunks = list(larynth.Synthesizer(seed=1).chunks(frames, 10))
    assert [len(chunk) for chunk in chunks] == [1100, 1100, 550]
    assert np.array_equal(np.concatenate(chunks), larynth.render(frames).samples)


def test_other_threads_run_meanwhile():
    ticks, over = [], threading.Event()

    def tick():
        while not over.wait(0.001):
            ticks.append(time.monotonic())

    thread = threading.Thread(target=tick)
    thread.start()
    start = time.monotonic()
    larynth.render(larynth.frames(1000, length=11000, **VOICED))
    end = time.monotonic()
    over.set()
    thread.join()
    assert sum(start < when < end for when in ticks) >= 10


def raise_interrupt(*_):
    raise KeyboardInterrupt


@pytest.mark.parametrize("way", ["render", "signals"])
@pytest.mark.parametrize(
    "fault, frames",
    [
        (larynth.InputError, NOT_A_NUMBER),
        (KeyboardInterrupt, larynth.frames(300_000, length=1, **VOICED)),
    ],
    ids=["nan", "interrupt"],
)
def test_what_fails_or_is_interrupted_leaves_the_state(way, fault, frames):
    part = larynth.frames(20, **VOICED)
    expected = larynth.render(np.tile(part, 2)).samples
    synthesizer = larynth.Synthesizer(seed=1)
    first = synthesizer.render(part)
    before = signal.signal(signal.SIGALRM, raise_interrupt)
    if fault is KeyboardInterrupt:
        signal.setitimer(signal.ITIMER_REAL, 0.01)
    with pytest.raises(fault):
        getattr(synthesizer, way)(frames)
    signal.signal(signal.SIGALRM, before)
    assert np.array_equal(np.concatenate([first, synthesizer.render(part)]), expected)


def test_the_response_is_what_the_tract_does_to_a_signal():
    frames = larynth.frames(2, length=[4000, 16000], **{**VOICED, "FNZ": 900, "FNP": 600, "G2": 1.5, "PF5": 0})
    for item in ("AV", "AH", "AF"):
        frames[item][1] = 0
    signals = {name: np.fft.rfft(values) for name, values in larynth.signals(frames).items()}
    response = larynth.response(frames[:1], np.fft.rfftfreq(20000, 1 / 11025))
    for found, source, result in [
        (response.cascade, "cascade_input", "cascade"),
        (response.parallel, "frication", "parallel"),
    ]:
        assert np.allclose(found * signals[source], signals[result], rtol=0, atol=1e-9 * abs(signals[result]).max())
