# SPDX-License-Identifier: MIT
"""What comes out."""

from __future__ import annotations

import base64
import io
import wave
from dataclasses import dataclass, field
from typing import Any, Sequence

import numpy as np

from . import _larynth
from .inputs import Path, frequency, ordered_markers, path_bytes, refuse


@dataclass(eq=False, repr=False)
class Sound:
    """A sound of one channel. A notebook shows it as something to be played.

    Attributes
    ----------
    samples : ndarray of int16, shape (n,)
        From a synthesizer in its own memory, without a copy.
    sample_freq : float
        Hz.
    markers : list of (int, str)
        Samples in front of a marker, and its text, in ascending order.
    """

    samples: np.ndarray[Any, np.dtype[np.int16]]
    sample_freq: float = 11025.0
    markers: Sequence[tuple[int, str]] = field(default_factory=list)

    def __post_init__(self) -> None:
        self.samples = np.asarray(self.samples)
        if self.samples.dtype != np.int16 or self.samples.ndim != 1:
            raise refuse("samples", "int16 in one dimension", f"{self.samples.dtype} of shape {self.samples.shape}")
        self.sample_freq = frequency("sample_freq", self.sample_freq)

    @property
    def duration(self) -> float:
        """Seconds."""
        return len(self.samples) / self.sample_freq

    def write(self, path: Path, labels: Path | None = None) -> None:
        """Write the sound to a file, and its markers to another one.

        Parameters
        ----------
        path : str or path
            .wav, .flac or .raw (little-endian samples without header).
        labels : str or path, optional
            Gets a line a marker: start, end (seconds), text, separated by tabs. Both files appear whole, or
            neither does.

        Raises
        ------
        InputError
            For another extension, and for a frequency that the format cannot have.
        Error
            For what cannot be written.
        """
        label_path = b"" if labels is None else path_bytes(labels)
        markers = ordered_markers(self.markers, len(self.samples))
        _larynth.write(path_bytes(path), label_path, self.sample_freq, self.samples, markers)

    def __repr__(self) -> str:
        return f"<Sound: {self.duration:.3f} s, {len(self.samples)} samples at {self.sample_freq:g} Hz>"

    def _repr_html_(self) -> str:
        file = io.BytesIO()
        with wave.open(file, "wb") as output:
            output.setnchannels(1)
            output.setsampwidth(2)
            output.setframerate(round(self.sample_freq))
            output.writeframes(self.samples.astype("<i2").tobytes())
        data = base64.b64encode(file.getvalue()).decode()
        return f'<audio controls src="data:audio/wav;base64,{data}"></audio>'
