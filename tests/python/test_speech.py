# SPDX-License-Identifier: MIT
import os
import pathlib
import re
import subprocess

import larynth
import numpy as np
import pytest

needs_speech = pytest.mark.skipif(not hasattr(larynth._larynth, "speak"), reason="speech from text was left out")


@needs_speech
@pytest.mark.parametrize(
    "text, options",
    [
        ("Dr. Smith paid $5, was it? Yes.", {}),
        ("Good morning.", {"voice": "woman", "rate": 240, "pitch": 1.2, "range": 0.5, "volume": 0.8}),
        ("<speak>One <mark name='here'/> <prosody rate='slow'>two</prosody></speak>", {"form": "ssml"}),
        ("həˈloʊ ˈwɜːld.", {"form": "ipa", "voice": "whisper"}),
        ("A gif.", {"lexicon": "gif\tJH IH1 F\n"}),
    ],
)
def test_say_gives_what_the_command_gives(tmp_path, text, options):
    if "lexicon" in options:
        (tmp_path / "words").write_text(options["lexicon"])
        options["lexicon"] = str(tmp_path / "words")
    named = {"input" if name == "form" else name: value for name, value in options.items()}
    arguments = [word for name, value in named.items() for word in ("--" + name, str(value))]
    command = [os.environ["LARYNTH_COMMAND"], "say", text, *arguments, "-o", "command.raw", "--labels", "command.txt"]
    subprocess.run(command, cwd=tmp_path, check=True)
    larynth.say(text, **options).write(tmp_path / "python.raw", labels=tmp_path / "python.txt")
    for kind in ("raw", "txt"):
        assert (tmp_path / f"python.{kind}").read_bytes() == (tmp_path / f"command.{kind}").read_bytes()


@needs_speech
@pytest.mark.parametrize(
    "wrong, message",
    [
        (dict(text=""), "expected something to say, found nothing"),
        (dict(text="HH QQ", form="arpabet"), 'text:1:4: expected a phone instead of "QQ"'),
        (dict(text="a", form="latin"), "form: expected text, arpabet, ipa or ssml"),
        (dict(text="a", voice="bob"), 'voice: expected man, woman, whisper or a file, found "bob"'),
        (dict(text="a", rate=9), "rate: expected a number from 80 to 600, found 9"),
    ],
)
def test_what_cannot_be_said_is_refused(wrong, message):
    with pytest.raises(larynth.InputError) as caught:
        larynth.say(**wrong)
    assert message in str(caught.value)


def test_without_the_front_end_it_says_what_to_install(monkeypatch):
    monkeypatch.delattr(larynth._larynth, "speak", raising=False)
    with pytest.raises(larynth.Error, match="flite1-dev and libexpat1-dev"):
        larynth.say("a")


@needs_speech
def test_the_program_in_the_documentation_runs(tmp_path, monkeypatch):
    page = pathlib.Path(__file__).parent.parent.parent / "docs/python.md"
    monkeypatch.chdir(tmp_path)
    exec(re.search(r"```python\n(.*?)```", page.read_text(), re.DOTALL)[1], {})
    assert sorted(os.listdir()) == ["ia.txt", "ia.wav", "morning.wav"]
