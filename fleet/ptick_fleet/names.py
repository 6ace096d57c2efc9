"""The names of the profiles, one after the other, however many there are."""

from __future__ import annotations

import errno
import os
import stat
import sys
from collections.abc import Iterator
from dataclasses import dataclass
from typing import BinaryIO

from .problems import Trouble

BLOCK = 1 << 20


@dataclass
class NameSource:
    """Operands, or a list; of a list, what ends a name."""

    operands: list[bytes]
    list_file: bytes | None = None
    end: bytes = b"\0"

    def length(self) -> int | None:
        """The bytes of all names with their ends, nothing where that is known at the end only."""
        if self.list_file is None:
            return sum(len(name) + 1 for name in self.operands)
        try:
            status = os.fstat(0) if self.list_file == b"-" else os.stat(self.list_file)
        except OSError:
            return None
        return status.st_size if stat.S_ISREG(status.st_mode) else None

    def names(self) -> Iterator[bytes]:
        """Walks over the names. Raises Trouble at one that cannot be a profile of a fleet, and
        where a list cannot be read or has none."""
        if self.list_file is None:
            yield from (_checked(name) for name in self.operands)
            return
        called = b"standard input" if self.list_file == b"-" else self.list_file
        try:
            if self.list_file == b"-":
                yield from self._listed(sys.stdin.buffer, called)
            else:
                with open(self.list_file, "rb") as file:
                    yield from self._listed(file, called)
        except OSError as error:
            raise Trouble.of(error, called) from None

    def _listed(self, file: BinaryIO, called: bytes) -> Iterator[bytes]:
        count = 0
        for name in _pieces(file, self.end):
            if not name and self.end == b"\n":
                continue
            count += 1
            if not name:
                raise Trouble(f"name {count} is empty", called)
            if b"\0" in name:
                raise Trouble(f"name {count} has a zero byte", called)
            yield _checked(name)
        if count == 0:
            raise Trouble("names no profile", called)


def _pieces(file: BinaryIO, end: bytes) -> Iterator[bytes]:
    rest = b""
    while block := file.read(BLOCK):
        *whole, rest = (rest + block).split(end)
        yield from whole
    if rest:
        yield rest


def _checked(name: bytes) -> bytes:
    """A profile has a path that means the same everywhere, and can be read again when a worker dies
    over it."""
    if not name:
        raise Trouble(os.strerror(errno.ENOENT), name)
    if name == b"-":
        raise Trouble("is nothing that workers can read; name files", b"standard input")
    if name.startswith((b"/dev/fd/", b"/dev/std", b"/proc/self/", b"/proc/thread-self/")):
        raise Trouble("is known to this process only; name files", name)
    return name
