# SPDX-License-Identifier: MIT
"""What goes wrong, as exceptions."""

E_FAIL = -0x7FFFBFFB
E_NOTIMPL = -0x7FFFBFFF
E_INVALIDARG = -0x7FF8FFA9


class Error(RuntimeError):
    """Something failed.

    Attributes
    ----------
    status : int
        The component's status code, negative.
    """

    def __init__(self, message: str, status: int = E_FAIL) -> None:
        super().__init__(message)
        self.status = status


class InputError(Error, ValueError):
    """What was passed in, or stands in a file, cannot be used; the message says where and what was expected.

    Attributes
    ----------
    file : str
        The text file to blame; empty: none.
    line, column : int
        From 1; 0: none.
    """

    def __init__(self, message: str, file: str = "", line: int = 0, column: int = 0) -> None:
        super().__init__(message, E_INVALIDARG)
        self.file, self.line, self.column = file, line, column
