# SPDX-License-Identifier: MIT
"""Pictures from a command line: python3 -m larynth plot TABLE -o picture.png"""

from __future__ import annotations

import argparse
import io
import os
import pathlib
import sys
from typing import NoReturn, Sequence

from .errors import Error, InputError
from .pictures import plot
from .utterances import read
from .voice import read_voice

FAILED, BAD_INPUT, INTERRUPTED = 1, 2, 130


class Parser(argparse.ArgumentParser):
    def error(self, message: str) -> NoReturn:
        raise InputError(message)


def parse(arguments: Sequence[str]) -> argparse.Namespace:
    parser = Parser(prog="larynth", description=__doc__)
    commands = parser.add_subparsers(required=True, metavar="COMMAND")
    command = commands.add_parser("plot", help="draw what a file of frames sounds like")
    command.add_argument("input", metavar="INPUT", help="frame table or targets")
    command.add_argument("-o", "--output", required=True, metavar="FILE", help="picture: .png, .svg or .pdf")
    command.add_argument("--input", dest="form", default="table", choices=["table", "targets"], help="what INPUT is")
    command.add_argument("--frame-len", type=int, metavar="N", help="samples of a frame, where INPUT does not say it")
    command.add_argument("--sample-freq", type=float, metavar="HZ", help="where INPUT does not say it")
    command.add_argument("--seed", type=int, default=1, metavar="N", help="state of the noise generator at the start")
    command.add_argument("--voice", metavar="FILE", help="voice (JSON)")
    return parser.parse_args(arguments)


def require_other_file(output: pathlib.Path, *inputs: str | None) -> None:
    for name in inputs:
        if name is not None and output.exists() and pathlib.Path(name).exists() and output.samefile(name):
            raise InputError(f"--output: expected another file than {name}")


def write_whole(path: pathlib.Path, content: bytes) -> None:
    """What was there stays where this fails."""
    partial = path.with_name(f".{path.name}.{os.getpid()}")
    try:
        partial.write_bytes(content)
        partial.replace(path)
    finally:
        partial.unlink(missing_ok=True)


def draw(options: argparse.Namespace) -> None:
    output = pathlib.Path(options.output)
    form = output.suffix.lower()
    if form not in (".png", ".svg", ".pdf"):
        raise InputError(f"--output: expected a name in .png, .svg or .pdf, found {output}")
    require_other_file(output, options.input, options.voice)
    utterance = read(options.input, options.form, frame_len=options.frame_len, sample_freq=options.sample_freq)
    voice = None if options.voice is None else read_voice(options.voice)
    picture = io.BytesIO()
    plot(utterance, seed=options.seed, voice=voice).savefig(picture, format=form[1:], dpi=120)
    try:
        write_whole(output, picture.getvalue())
    except OSError as error:
        raise Error(f"{output}: cannot be written: {error.strerror}") from error


def main(arguments: Sequence[str]) -> int:
    try:
        draw(parse(arguments))
        return 0
    except MemoryError:
        print("larynth: out of memory", file=sys.stderr)
        return FAILED
    except KeyboardInterrupt:
        return INTERRUPTED
    except Error as error:
        print(f"larynth: {str(error).encode(errors='backslashreplace').decode()}", file=sys.stderr)
        return BAD_INPUT if isinstance(error, InputError) else FAILED


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
