# SPDX-License-Identifier: MIT
"""Speech from text and from phones."""

from __future__ import annotations


from . import _larynth
from .errors import E_NOTIMPL, Error
from .inputs import Path, number_from, path_bytes, text_of
from .sound import Sound
from .synthesizer import render
from .utterances import Utterance


def _require_speech() -> None:
    if not hasattr(_larynth, "speak"):
        raise Error(
            "speech from text was left out of this build: install flite1-dev and libexpat1-dev, and build larynth again",
            E_NOTIMPL,
        )


def speakers() -> list[str]:
    """The names that `say` knows as voices, the usual one first."""
    _require_speech()
    return _larynth.speakers()


def say_frames(
    text: str,
    *,
    form: str = "text",
    voice: Path = "man",
    rate: float = 175,
    pitch: float = 1,
    range: float = 1,
    volume: float = 1,
    lexicon: Path | None = None,
    phone_table: Path | None = None,
) -> Utterance:
    """Make the frames that say a text.

    Parameters
    ----------
    text : str
        What is said.
    form : {"text", "arpabet", "ipa", "ssml"}
        What the text is: English, phones as "HH AH0 L OW1 | W ER1 L D ." or "həˈloʊ ˈwɜːld.", or English in
        Speech Synthesis Markup Language.
    voice : str or path
        Who speaks: one of `speakers`, or a file of your own.
    rate : float
        Words a minute, 80 to 600.
    pitch : float
        Factor on the height of the voice, 0.25 to 4.
    range : float
        Factor on how far the voice rises and falls, 0 to 4; 0 is monotone.
    volume : float
        Factor on the amplitude, 0 to 10.
    lexicon : str or path, optional
        File of your own pronunciations.
    phone_table : str or path, optional
        File of the sounds of another language.

    Returns
    -------
    Utterance
        Frames of 5 ms at 16000 Hz; words and named marks are markers.

    Raises
    ------
    InputError
        With the place, for a text that cannot be said.
    Error
        Where speech from text was left out when the package was built.
    """
    _require_speech()
    return Utterance(
        *_larynth.speak(
            text_of("text", text),
            form,
            b"" if lexicon is None else path_bytes(lexicon),
            b"" if phone_table is None else path_bytes(phone_table),
            path_bytes(voice),
            number_from("rate", rate, 80, 600),
            number_from("pitch", pitch, 0.25, 4),
            number_from("range", range, 0, 4),
            number_from("volume", volume, 0, 10),
        )
    )


def say(
    text: str,
    *,
    form: str = "text",
    voice: Path = "man",
    rate: float = 175,
    pitch: float = 1,
    range: float = 1,
    volume: float = 1,
    lexicon: Path | None = None,
    phone_table: Path | None = None,
    seed: int | None = 1,
) -> Sound:
    """Turn a text into speech.

    Parameters
    ----------
    text, form, voice, rate, pitch, range, volume, lexicon, phone_table
        As of `say_frames`.
    seed : int, optional
        State of the noise generator at the start: the same text gives the same bits again.

    Returns
    -------
    Sound
        At 16000 Hz; its markers are words and named marks.

    Examples
    --------
    >>> larynth.say("Hello, world.", voice="woman", rate=200).write("hello.wav")
    """
    utterance = say_frames(
        text,
        form=form,
        voice=voice,
        rate=rate,
        pitch=pitch,
        range=range,
        volume=volume,
        lexicon=lexicon,
        phone_table=phone_table,
    )
    return render(utterance, seed=seed)
