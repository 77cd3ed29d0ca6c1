# SPDX-License-Identifier: MIT
"""Formant speech synthesis: arrays of frames in, arrays of samples out.

>>> import larynth
>>> vowel = larynth.frames(100, AV=900, AH=0, F1=700, BW1=130, F2=1220, BW2=70, F3=2600, BW3=160)
>>> larynth.render(vowel).write("vowel.wav")
"""

from .editor import Editor
from .errors import Error, InputError
from .utterances import Item, Utterance, frame_dtype, frames, frames_from_targets, items, read
from .pictures import plot
from .sound import Sound
from .speech import say, say_frames, speakers
from .synthesizer import Synthesizer, render, signals
from .tract import Response, response
from .voice import Shelf, Voice, read_voice, read_wave

__all__ = [
    "Editor",
    "Error",
    "InputError",
    "Item",
    "Response",
    "Shelf",
    "Sound",
    "Synthesizer",
    "Utterance",
    "Voice",
    "frame_dtype",
    "frames",
    "frames_from_targets",
    "items",
    "plot",
    "read",
    "read_voice",
    "read_wave",
    "render",
    "response",
    "say",
    "say_frames",
    "signals",
    "speakers",
]
