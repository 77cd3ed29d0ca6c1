# SPDX-License-Identifier: MIT
"""The transfer function of the tract."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, NamedTuple, Sequence

import numpy as np

from . import _larynth
from .errors import InputError
from .utterances import Frames, as_frames
from .inputs import frequency, numbers

if TYPE_CHECKING:
    from matplotlib.figure import Figure

FloatArray = np.ndarray[Any, np.dtype[np.float64]]
ComplexArray = np.ndarray[Any, np.dtype[np.complex128]]


class Response(NamedTuple):
    """Transfer functions of the tract's two branches, whose outputs are added up."""

    frequencies: FloatArray  #: Hz, shape (n,)
    cascade: ComplexArray  #: for voicing and aspiration, shape (n,)
    parallel: ComplexArray  #: for frication, shape (n,)

    def plot(self) -> Figure:
        """Draw the gains (dB) over the frequency (Hz).

        Returns
        -------
        matplotlib.figure.Figure
        """
        from .pictures import plot_response

        return plot_response(self.frequencies, {"cascade": self.cascade, "parallel": self.parallel})


def response(
    frame: Frames, frequencies: Sequence[float] | None = None, *, sample_freq: float = 11025.0
) -> Response:
    """The transfer function of the tract, exact: from the coefficients that the synthesizer uses.

    Parameters
    ----------
    frame : one frame of `frame_dtype`, or mapping from names to numbers
        What is not named in a mapping is as in a new frame.
    frequencies : sequence of float, shape (n,), optional
        Hz; else 513 from 0 to half the sample frequency.
    sample_freq : float
        Hz.

    Returns
    -------
    Response
        The cascade's, from its input (voicing behind its tilt, and aspiration) to its output: the product of
        the nasal zero, the nasal pole and formants 1 to 5. The parallel branch's, from frication to its output:
        the sum of the bypass and resonators 0 to 6.

    Examples
    --------
    >>> r = larynth.response({"F1": 700, "BW1": 130, "F2": 1220, "BW2": 70})
    >>> decibels = 20 * np.log10(abs(r.cascade))
    """
    array = as_frames(frame)
    if len(array) != 1:
        raise InputError(f"frame: expected one frame, found {len(array)}")
    rate = frequency("sample_freq", sample_freq)
    places = np.linspace(0.0, rate / 2, 513) if frequencies is None else numbers("frequencies", frequencies)
    zero, cascade, parallel, bypass = _larynth.sections(array, rate)
    # A unit delay at each frequency. A resonator is y[n] = A x[n] + B y[n-1] + C y[n-2], the zero has x in place of y.
    delay = np.exp(-2j * np.pi * places / rate)
    poles = [a / (1 - (b + c * delay) * delay) for a, b, c in [*cascade, *parallel]]
    zeros = zero[0] + (zero[1] + zero[2] * delay) * delay
    return Response(places, zeros * np.prod(poles[: len(cascade)], axis=0), bypass + sum(poles[len(cascade) :]))
