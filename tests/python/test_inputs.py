# SPDX-License-Identifier: MIT
import larynth
import numpy as np
import pytest

NAN = float("nan")
FRAMES = larynth.frames(9, AV=1)
NAN_LATER = FRAMES.copy()
NAN_LATER["F2"][7] = NAN


@pytest.mark.parametrize(
    "wrong, message",
    [
        (lambda: larynth.frames(3, f11=1), 'expected the name of an item, found "f11"; the nearest is F1'),
        (lambda: larynth.frames(3, F1=[1, 2]), "F1: expected 3 values, one a frame, found 2"),
        (lambda: larynth.render({"F1": [1, 2], "F2": [1, 2, 3]}), "F2: expected 2 values, one a frame, found 3"),
        (lambda: larynth.frames(F1=[1, NAN]), "frame 1: F1: expected a finite number, found nan"),
        (lambda: larynth.frames(F1=[[1]]), "F1: expected a number or an array in one dimension, found shape (1, 1)"),
        (lambda: larynth.frames(F1="700"), "F1: expected numbers, found <U3 '700'"),
        (lambda: larynth.frames(length=[110, 1.5]), "frame 1: length: expected a whole number of samples"),
        (lambda: larynth.frames(-1), "n: expected a whole number from 0"),
        (lambda: larynth.render(np.zeros(3)), "frames: expected an array of larynth.frame_dtype or a mapping"),
        (lambda: larynth.render(FRAMES.reshape(3, 3)), "found shape (3, 3)"),
        (lambda: larynth.render(FRAMES, markers=[(4, "b"), (2, "a")]), "markers: expected places in ascending order"),
        (lambda: larynth.render(FRAMES, markers=[(10, "a")]), "marker: expected a whole number from 0 to 9, found 10"),
        (lambda: larynth.render(FRAMES, sample_freq=0), "sample_freq: expected a number above 0"),
        (lambda: larynth.render(FRAMES, volume=NAN), "volume: expected a finite number, found nan"),
        (lambda: larynth.render(FRAMES, seed=-1), "seed: expected a whole number from 0 to 4294967295, found -1"),
        (lambda: larynth.render(FRAMES, tract="ring"), "tract: expected resonator or filter, found 'ring'"),
        (lambda: larynth.render(FRAMES, wave=[]), "wave: expected finite numbers in one dimension"),
        (lambda: larynth.render(FRAMES, voice=larynth.Voice(low_shelf=larynth.Shelf(G=NAN))), "voice.low_shelf.G"),
        (lambda: larynth.frames(FrameLen=3), 'found "FrameLen"; samples of a frame are "length"'),
        (lambda: larynth.frames(F1=[[1], [1, 2]]), "F1: expected a number or an array in one dimension"),
        (lambda: larynth.render(FRAMES, volume=10**400), "volume: expected a finite number"),
        (lambda: larynth.render(FRAMES, voice="woman"), "voice: expected a larynth.Voice, found 'woman'"),
        (lambda: larynth.render(FRAMES, voice=larynth.Voice(low_shelf=None)), "voice: expected a larynth.Shelf"),
        (lambda: larynth.render(FRAMES, markers=[(5,)]), "markers: expected pairs of a place and a text"),
        (lambda: larynth.render(FRAMES, markers=[(5, "\ud800")]), "marker: expected a text"),
        (lambda: larynth.Synthesizer().render(larynth.Utterance(FRAMES)), "found an Utterance: pass its .frames"),
        (lambda: list(larynth.Synthesizer().chunks(NAN_LATER, 2)), "chunk that begins with frame 6: frame 1: F2"),
        (lambda: larynth.Sound(np.zeros(3, "i2"), 0), "sample_freq: expected a number above 0, found 0"),
        (lambda: larynth.Sound(np.zeros(3, "i2"), markers=[(-1, "a")]).write("x.wav"), "marker: expected a whole number"),
        (lambda: larynth.Sound(np.zeros(3, "i2")).write("x.wav", "./x.wav"), "expected another file for the labels"),
        (lambda: larynth.read(b"none\xff".decode(errors="surrogateescape")), "cannot be opened"),
        (lambda: larynth.response(FRAMES), "frame: expected one frame, found 9"),
        (lambda: larynth.frames_from_targets([(0, "F1")]), "target 1: expected time, item, value"),
        (lambda: larynth.frames_from_targets([(0, "F1", 3, "step")]), "target 1: expected linear or cosine"),
        (lambda: larynth.Sound(np.zeros(3)).write("x.wav"), "samples: expected int16 in one dimension"),
        (lambda: larynth.Sound(np.zeros(3, "i2")).write("x.mp3"), "x.mp3"),
    ],
)
def test_wrong_use_says_what_was_expected(wrong, message):
    with pytest.raises(larynth.InputError) as caught:
        wrong()
    assert message in str(caught.value)
    assert isinstance(caught.value, ValueError) and caught.value.status < 0


def test_files_are_blamed_with_their_place(tmp_path):
    (tmp_path / "table.csv").write_text("FrameLen,F1\n110,500\n,x\n")
    with pytest.raises(larynth.InputError) as caught:
        larynth.read(tmp_path / "table.csv")
    assert (caught.value.file, caught.value.line, caught.value.column) == (str(tmp_path / "table.csv"), 3, 2)
    with pytest.raises(larynth.Error) as caught:
        larynth.Sound(np.zeros(3, "i2")).write(tmp_path / "no folder/x.wav")
    assert not isinstance(caught.value, ValueError)


def test_targets_and_sounds_keep_times_and_markers(tmp_path):
    utterance = larynth.frames_from_targets([(0, "F1", 300), (0.1, "F1", 700, "cosine")], frame_len=100, sample_freq=8000)
    assert np.allclose(utterance.frames["F1"][:5:2], [300, 500 - 200 / np.sqrt(2), 500])
    sound = larynth.render(utterance, markers=[(0, "a"), (4, "b")])
    sound.write(tmp_path / "x.wav", labels=tmp_path / "x.txt")
    assert (tmp_path / "x.txt").read_text() == "0.000000\t0.050000\ta\n0.050000\t0.100000\tb\n"
    assert (tmp_path / "x.wav").stat().st_size == 44 + 2 * 800
    assert sound.duration == 0.1 and "data:audio/wav;base64,UklGR" in sound._repr_html_()
