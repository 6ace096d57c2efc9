"""Standard error: messages, the summary, and the line of progress."""

from __future__ import annotations

import os
import re

from . import terminal
from .problems import ToldTrouble, Trouble

PROGRAM = b"ptick-fleet"
DESCRIPTOR = 2


class Messages:
    """Each message is written at once and whole."""

    def __init__(self) -> None:
        self._is_terminal = terminal.is_terminal(DESCRIPTOR)
        self._is_quiet = False
        self._is_shown = False

    def set_quiet(self) -> None:
        self._is_quiet = True

    def tell(self, text: bytes | str) -> None:
        """A message of one line, without its end."""
        self._write(PROGRAM + b": " + os.fsencode(text) + b"\n")

    def tell_trouble(self, trouble: Trouble) -> None:
        if isinstance(trouble, ToldTrouble):
            self.tell_told(trouble.told)
        else:
            self._write(PROGRAM + b": " + trouble.message())

    def tell_told(self, told: bytes) -> None:
        """What ptick-merge said of its inputs, as this program's own words. A message of a name
        with a line end has several lines."""
        for message in re.split(rb"(?m)^ptick-merge: ", told)[1:]:
            self._write(PROGRAM + b": " + message.removesuffix(b"\n") + b"\n")

    def tell_help(self) -> None:
        self._write(b"Try 'ptick-fleet --help' for more information.\n")

    def sees_progress(self) -> bool:
        return self._is_terminal and not self._is_quiet and terminal.obeys_sequences()

    def show(self, text: str) -> None:
        """Shows a text in place of what showed, cut to the width of the terminal."""
        if not self.sees_progress() or not terminal.is_in_foreground(DESCRIPTOR):
            return
        # The last column stays free: a terminal may go to the next line when it is used.
        line = terminal.cut_to_width(
            PROGRAM.decode() + ": " + text, terminal.columns_of(DESCRIPTOR) - 1
        )
        self._is_shown = True
        _put(terminal.ERASE_LINE + line.encode())

    def erase(self) -> None:
        if self._is_shown:
            self._is_shown = False
            _put(terminal.ERASE_LINE)

    def _write(self, line: bytes) -> None:
        if self._is_terminal:
            # A message stays on its line, whatever names hold.
            line = terminal.terminal_text(line[:-1], kept="\t") + b"\n"
        self.erase()
        _put(line)


def _put(text: bytes) -> None:
    try:
        while text:
            written = os.write(DESCRIPTOR, text)
            text = text[written:]
    except OSError:
        pass  # nobody is left to be told
