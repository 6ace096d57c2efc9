"""A step of a merge as it is described, and what comes of it.

Both travel between machines, as plain dictionaries. Nothing here and in run_step.py refers
to other modules of this package: workers have Python's own library and Dask, no more.
"""

from __future__ import annotations

from typing import TypedDict


class Input(TypedDict):
    """The result of an earlier step: its bytes, or the file that holds them."""

    data: bytes | None
    file: str | None
    size: int


class Step(TypedDict):
    """What is to be merged, and how. Either names or inputs are there."""

    key: str
    names: bytes | None  # of the profiles, each ended by a zero byte, all of it deflated
    inputs: list[Input]
    program: str  # ptick-merge, as the machine that runs it finds it
    folder: str  # where the names lead from
    keeps_going: bool
    spill_folder: str | None  # where a result goes that is larger than spill_size
    spill_size: int


class Outcome(TypedDict):
    """What came of a step. Its kind says which of the fields mean something:

    done: data or file, size, left_out, messages; trouble: messages of ptick-merge, which found an
    input bad; failed: reason, and the step may do better elsewhere; lost: the inputs that are gone,
    by their places.
    """

    kind: str
    data: bytes | None
    file: str | None
    size: int
    left_out: int
    messages: bytes
    reason: str
    lost: list[int]
    seconds: float
    place: str


def outcome_of(kind: str) -> Outcome:
    return {
        "kind": kind,
        "data": None,
        "file": None,
        "size": 0,
        "left_out": 0,
        "messages": b"",
        "reason": "",
        "lost": [],
        "seconds": 0.0,
        "place": "",
    }


def failed_outcome(reason: str) -> Outcome:
    outcome = outcome_of("failed")
    outcome["reason"] = reason
    return outcome
