"""What ends a run early."""

from __future__ import annotations

import os


class Trouble(Exception):
    """Ends a run with status 2: the reason, of the file where one is concerned."""

    def __init__(self, reason: str, file: bytes | str | None = None) -> None:
        super().__init__(reason)
        self.reason = reason
        self.file = None if file is None else os.fsencode(file)

    @classmethod
    def of(cls, error: OSError, file: bytes | str | None = None) -> Trouble:
        """What a system call reports."""
        return cls(error.strerror or str(error), error.filename if file is None else file)

    def message(self) -> bytes:
        """The text after the program's name, with the line end."""
        # An empty name would leave nothing to see between the colons.
        file = b"" if self.file is None else (self.file or b"''") + b": "
        return file + os.fsencode(self.reason) + b"\n"


class ToldTrouble(Trouble):
    """The same in the words of ptick-merge: all that it said, with its name before each."""

    def __init__(self, told: bytes) -> None:
        super().__init__("ptick-merge found a profile bad")
        self.told = told


class UsageError(Exception):
    """The command line is wrong."""


class LostInputs(Exception):
    """Results that a step needs are gone; their places among its inputs."""

    def __init__(self, places: list[int]) -> None:
        super().__init__(places)
        self.places = places
