"""A program on a pseudo-terminal with a model of what is on its screen, cell by cell."""

import os
import select
import signal
import time
import unicodedata

import pyte
from wcwidth import wcwidth

from support.terminal import Terminal

PROMPTS = (
    "-- more: Return page, c continue, q quit --",
    "Return page, c continue, q quit",
    "-- Return, c, q --",
    "Return, c, q",
    ":",
    "",
)


def prompt_for(columns):
    return next((prompt for prompt in PROMPTS if len(prompt) < columns), "")


def cells_of(character):
    """None where the model of the screen has no place for it: a sign without a cell that does not
    combine into one character with what is before it."""
    cells = wcwidth(character)
    return None if cells == 0 and not unicodedata.combining(character) else cells


def rows_of(line, columns):
    """The rows that a line takes on a screen."""
    rows, width = [""], 0
    for character in line:
        cells = cells_of(character)
        if cells is None:
            continue
        if cells > 0 and width > 0 and width + cells > columns:
            rows.append("")
            width = 0
        rows[-1] += character
        width += cells
    return [unicodedata.normalize("NFC", row).rstrip() for row in rows]


class Cells(pyte.Screen):
    """pyte's screen, which lets a double-width character stick out of the last column, and forgets
    what follows a character that it has no place for."""

    def draw(self, data):
        for character in data:
            if wcwidth(character) == 2 and self.cursor.x == self.columns - 1:
                self.cursor.x = self.columns
            if cells_of(character) is not None:
                super().draw(character)


class Screen(Terminal):
    """A program whose standard streams are a terminal of the given size, with a screen. `shell` is
    on it before."""

    bare = False

    def __init__(self, arguments, folder, rows, columns, shell=b"", **settings):
        self._screen = Cells(columns, rows)
        self._stream = pyte.ByteStream(self._screen)
        self._stream.feed(shell)
        self._seen = 0
        super().__init__(arguments, folder, rows, columns, **settings)

    def received(self, data):
        super().received(data)
        self._stream.feed(data)

    def rows(self):
        """The rows of the screen, from the top."""
        return [unicodedata.normalize("NFC", row).rstrip() for row in self._screen.display]

    def size(self):
        return self._screen.lines, self._screen.columns

    def cursor(self):
        return self._screen.cursor.y, self._screen.cursor.x

    def resize(self, rows, columns):
        shift = max(0, self._screen.lines - rows)
        self._screen.resize(rows, columns)
        # The model drops rows from the top, and forgets to take the cursor along.
        self._screen.cursor.y -= shift
        self._screen.cursor.x = min(self._screen.cursor.x, columns - 1)
        self.set_size(rows, columns)

    def wait_for_prompt(self):
        """Waits until the program has printed a page and shows its prompt. False when it ends
        instead."""
        return self._wait_for_prompt(lambda output: b"\n" in output)

    def wait_for_prompt_again(self):
        """Waits until the program shows the prompt of the same page once more."""
        return self._wait_for_prompt(lambda output: output)

    def _wait_for_prompt(self, is_new):
        prompt = b"\r\x1b[K" + prompt_for(self._screen.columns).encode()
        deadline = time.monotonic() + 20
        while not is_new(self.output[self._seen :]) or not self.output.endswith(prompt):
            readable, _, _ = select.select([self.master, self.events], [], [], 0.001)
            if self.master in readable:
                self.received(os.read(self.master, 65536))
            elif self.events in readable:
                return False
            elif time.monotonic() > deadline:
                os.kill(self.pid, signal.SIGKILL)
                raise AssertionError("no prompt:\n" + "\n".join(self.rows()))
        self._seen = len(self.output)
        return True

    def read_waiting(self):
        """Reads what the program has written."""
        while select.select([self.master], [], [], 0)[0]:
            self.received(os.read(self.master, 65536))
        self._seen = len(self.output)
