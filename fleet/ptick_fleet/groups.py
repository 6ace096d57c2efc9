"""Profiles that follow each other, cut into groups of one step each."""

from __future__ import annotations

import itertools
import os
import stat
import zlib
from collections.abc import Iterable, Iterator
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass

from .problems import Trouble

LOOKERS = 16  # threads
LOOKS = 64  # of a thread, one after the other


@dataclass(frozen=True)
class Group:
    """Profiles that one step merges."""

    names: bytes  # each ended by a zero byte, all of it deflated
    first: bytes
    last: bytes
    are_absolute: bool
    files: int
    size: int  # in bytes, of those files that can be seen from here
    list_size: int  # of the names with their ends


def cut_into_groups(names: Iterable[bytes], most_files: int, most_bytes: int) -> Iterator[Group]:
    """Groups of at most so many files and bytes; a file that is larger is a group of its own.
    Raises Trouble at what is no file that can be read twice."""
    gathered: list[bytes] = []
    size = 0
    for name, own in _with_sizes(names):
        if gathered and (len(gathered) >= most_files or size + own > most_bytes):
            yield _group(gathered, size)
            gathered, size = [], 0
        gathered.append(name)
        size += own
    if gathered:
        yield _group(gathered, size)


def size_of(name: bytes) -> int:
    """The size of a file. One that cannot be seen from here counts as empty: workers may see it,
    and say what is wrong where they do not."""
    try:
        status = os.stat(name)
    except OSError:
        return 0
    if stat.S_ISFIFO(status.st_mode) or stat.S_ISSOCK(status.st_mode):
        raise Trouble("is a pipe, which a step that is done again cannot read twice", name)
    return status.st_size if stat.S_ISREG(status.st_mode) else 0


def _with_sizes(names: Iterable[bytes]) -> Iterator[tuple[bytes, int]]:
    """On a file system of a network each look takes its time, which passes for many at once."""
    rest = iter(names)
    with ThreadPoolExecutor(LOOKERS) as threads:
        while batch := list(itertools.islice(rest, LOOKERS * LOOKS)):
            begins = range(0, len(batch), LOOKS)
            parts = [batch[slice(begin, begin + LOOKS)] for begin in begins]
            # A thread costs more than a look that is quick.
            all_sizes = threads.map(_sizes_of, parts) if parts[1:] else map(_sizes_of, parts)
            for part, sizes in zip(parts, all_sizes):
                yield from zip(part, sizes)


def _sizes_of(names: list[bytes]) -> list[int]:
    return [size_of(name) for name in names]


def _group(names: list[bytes], size: int) -> Group:
    text = b"\0".join(names) + b"\0"
    # Names that follow each other are much alike; all of them are kept to the end of the run.
    return Group(
        names=zlib.compress(text, 1),
        first=names[0],
        last=names[-1],
        are_absolute=all(name.startswith(b"/") for name in names),
        files=len(names),
        size=size,
        list_size=len(text),
    )
