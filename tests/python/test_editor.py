# SPDX-License-Identifier: MIT
import larynth
import numpy as np
import pytest

FRAMES = larynth.frames(50, AV=900, AH=50, AF=20, FL=0.2, FLT=9, F1=np.linspace(300, 700, 50), BW1=90, PF2=1500, PG2=0.5)


def test_edits_sound_as_if_all_were_rendered():
    voice = larynth.Voice(pre_emphasis=0.5)
    editor = larynth.Editor(FRAMES, markers=[(20, "a"), (50, "end")], seed=3, voice=voice)
    editor.render()
    editor.change(slice(20, 40), F1=420, AV=lambda values: values * 0.5)
    editor[-1] = larynth.frames(1, length=7, AV=100)
    editor.insert(10, larynth.frames(3))
    editor.erase(slice(0, 5))
    assert len(editor) == 48 and editor[20:22]["F1"].tolist() == [420, 420] and editor[20]["AV"] == 450
    whole = larynth.render(editor[:], markers=[(18, "a"), (48, "end")], seed=3, voice=voice)
    edited = editor.render()
    assert np.array_equal(edited.samples, whole.samples) and edited.markers == whole.markers
    assert np.array_equal(editor.samples(47), whole.samples[-7:])


WRONG = larynth.frames(50)
WRONG["F3"][9] = np.nan


@pytest.mark.parametrize(
    "edit, message",
    [
        (lambda e: e.change(3, F11=1), "the nearest is F1"),
        (lambda e: e.change(slice(0, 3), F1=[1, 2]), "F1: expected 3 values, one a frame, found 2"),
        (lambda e: e.change(1.5, F1=1), "frame: expected one of 50 frames, found 1.5"),
        (lambda e: e.__setitem__(slice(0, 50), WRONG), "frame 9: F3: expected a finite number, found nan"),
        (lambda e: e.change(50, F1=1), "frame: expected one of 50 frames, found 50"),
        (lambda e: e.change(slice(0, 9, 2), F1=1), "expected a slice without a step"),
        (lambda e: e.__setitem__(slice(0, 2), FRAMES), "frames: expected 2, found 50"),
        (lambda e: e.insert(51, FRAMES), "index: expected a whole number from 0 to 50, found 51"),
    ],
)
def test_a_refused_edit_changes_nothing(edit, message):
    editor = larynth.Editor(FRAMES)
    with pytest.raises(larynth.InputError) as caught:
        edit(editor)
    assert message in str(caught.value)
    assert np.array_equal(editor.samples(), larynth.render(FRAMES).samples) and len(list(editor)) == 50
