"""What ptick-fleet can be told."""

from __future__ import annotations

import os
import re
from collections.abc import Sequence
from dataclasses import dataclass

from .arguments import Arguments, Option, alternatives, help_text, parse
from .names import NameSource
from .problems import UsageError

MERGE_OPTIONS = (
    Option("", "files-from", "LIST", "merge the profiles that the file LIST names, one a line"),
    Option(
        "",
        "files0-from",
        "LIST",
        "merge the profiles that the file LIST names, each name ended by a zero byte",
    ),
    Option(
        "k",
        "keep-going",
        "",
        "leave out what cannot be read or has a record of an unknown type, each such profile "
        "whole; the exit status is 1 then",
    ),
    Option("", "scheduler", "ADDRESS", "run the steps on the Dask cluster of this scheduler"),
    Option("", "workers", "N", "run N steps at a time on this machine (default: its cores)"),
    Option(
        "",
        "work-dir",
        "DIR",
        "the folder for results between steps that are large; with --scheduler one that all "
        "workers see",
    ),
    Option(
        "",
        "group-files",
        "N",
        "merge at most N profiles in a step (default: 1000, on a cluster 10000)",
    ),
    Option(
        "", "group-bytes", "SIZE", "and at most so many bytes (default: 64M, on a cluster 512M)"
    ),
    Option("", "fan-in", "N", "merge at most N results in a step (default: 16)"),
    Option(
        "",
        "patience",
        "SECONDS",
        "give a step that takes longer, and six times as long as any so far, to another worker, "
        "too (default: 60)",
    ),
    Option(
        "", "worker-wait", "SECONDS", "end when there has been no worker for so long (default: 120)"
    ),
    Option(
        "", "ptick-merge", "PROGRAM", "what workers run (default: ptick-merge, by their PATH)"
    ),
)
COMMON_OPTIONS = (
    Option(
        "o",
        "output",
        "FILE",
        "write the result to FILE, whole or not at all; '-' is standard output",
    ),
    Option("q", "quiet", "", "show neither progress nor a summary"),
    Option(
        "",
        "color",
        "WHEN",
        "use colour: auto (on a terminal), always or never",
        ("auto", "always", "never"),
    ),
)
END_OPTIONS = (
    Option("h", "help", "", "show this help and end"),
    Option("V", "version", "", "show the version and end"),
)
OPTIONS = MERGE_OPTIONS + COMMON_OPTIONS + END_OPTIONS

SUMMARY = (
    "Merges profiles, in their order, on many machines or on the cores of one, and writes one "
    "profile: what ptick-merge writes when it is given the same files."
)
USAGE = (
    "ptick-fleet merge [OPTION]... PROFILE...",
    "ptick-fleet merge [OPTION]... --files-from=LIST",
    "ptick-fleet merge [OPTION]... --files0-from=LIST",
)
UNITS = {"": 1, "k": 1000, "M": 1000**2, "G": 1000**3, "T": 1000**4}


@dataclass(frozen=True)
class MergeOptions:
    """A merge as it was asked for."""

    source: NameSource
    keeps_going: bool
    scheduler: str | None
    workers: int
    work_folder: str | None
    group_files: int
    group_bytes: int
    fan_in: int
    patience: int
    worker_wait: int
    program: str
    output: str | None
    is_quiet: bool
    color: str


def help_of_merge() -> str:
    return help_text(USAGE, SUMMARY, OPTIONS)


def parse_merge(words: Sequence[str]) -> MergeOptions | str:
    """The options of a command line whose first operand is "merge"; "help" or "version" where that
    is asked for. Raises UsageError."""
    given = parse(OPTIONS, words)
    for option in ("help", "version"):
        if given.has(option):
            return option
    if not given.operands:
        raise UsageError("missing command: merge")
    command = given.operands.pop(0)
    if command != "merge":
        raise UsageError(f"unknown command '{command}'")
    return _checked(given)


def _checked(given: Arguments) -> MergeOptions:
    for option, value in given.options:
        if option.choices and value not in option.choices:
            raise _wrong(option.long, value, alternatives(option.choices))
    scheduler = _last(given, "scheduler")
    if scheduler is not None and given.has("workers"):
        raise UsageError("--workers is for this machine; the cluster of a scheduler has its own")
    return MergeOptions(
        source=_source(given),
        keeps_going=given.has("keep-going"),
        scheduler=scheduler,
        workers=_number(given, "workers", len(os.sched_getaffinity(0)), 1),
        work_folder=_last(given, "work-dir"),
        group_files=_number(given, "group-files", 1000 if scheduler is None else 10000, 1),
        group_bytes=_size(given, "group-bytes", (64 if scheduler is None else 512) * 1000**2),
        fan_in=_number(given, "fan-in", 16, 2),
        patience=_number(given, "patience", 60, 1),
        worker_wait=_number(given, "worker-wait", 120, 1),
        program=_last(given, "ptick-merge") or "ptick-merge",
        output=_last(given, "output"),
        is_quiet=given.has("quiet"),
        color=_last(given, "color") or "auto",
    )


def _source(given: Arguments) -> NameSource:
    lists = [
        (os.fsencode(value), end)
        for long, end in (("files-from", b"\n"), ("files0-from", b"\0"))
        for value in given.values(long)
    ]
    if len(lists) > 1:
        raise UsageError("there can be only one list of profiles")
    if lists and given.operands:
        raise UsageError("profiles are named by a list or as operands, not both")
    if lists:
        return NameSource([], *lists[0])
    if not given.operands:
        raise UsageError("missing operand")
    return NameSource([os.fsencode(operand) for operand in given.operands])


def _last(given: Arguments, long: str) -> str | None:
    values = given.values(long)
    return values[-1] if values else None


def _number(given: Arguments, long: str, default: int, least: int) -> int:
    text = _last(given, long)
    if text is None:
        return default
    if not re.fullmatch("[0-9]{1,9}", text) or int(text) < least:
        raise _wrong(long, text, f"a whole number from {least} to 999999999")
    return int(text)


def _size(given: Arguments, long: str, default: int) -> int:
    text = _last(given, long)
    if text is None:
        return default
    match = re.fullmatch("([0-9]{1,9})([kMGT]?)", text)
    if not match or int(match[1]) < 1:
        raise _wrong(long, text, "a size such as 500k, 64M or 2G")
    return int(match[1]) * UNITS[match[2]]


def _wrong(long: str, value: str, what: str) -> UsageError:
    return UsageError(f"option '--{long}': '{value}' is not {what}")
