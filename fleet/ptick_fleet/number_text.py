"""Numbers for people."""

from __future__ import annotations

import math

UNITS = ("kB", "MB", "GB", "TB", "PB", "EB")


def byte_count(count: int) -> str:
    """Three digits, the rest cut: "3.71 GB"."""
    if count < 1000:
        return f"{count} bytes"
    unit = 0
    while count >= 1_000_000:
        count //= 1000
        unit += 1
    whole, rest = divmod(count, 1000)
    if whole >= 100:
        return f"{whole} {UNITS[unit]}"
    if whole >= 10:
        return f"{whole}.{rest // 100} {UNITS[unit]}"
    return f"{whole}.{rest // 10:02} {UNITS[unit]}"


def duration(seconds: float) -> str:
    """A begun second counts as one: "2 min 5 s"."""
    whole = math.ceil(seconds)
    if whole < 60:
        return f"{whole} s"
    if whole < 3600:
        return f"{whole // 60} min {whole % 60} s"
    return f"{whole // 3600:,} h {whole % 3600 // 60} min"


def seconds_text(seconds: float) -> str:
    """For what took as long: "0.31 s", "12.4 s"."""
    if seconds < 10:
        return f"{seconds:.2f} s"
    return f"{seconds:.1f} s" if seconds < 60 else duration(seconds)


def counted(count: int, one: str) -> str:
    """ "1 step", "1,200 steps" """
    return f"{count:,} {one}" + ("" if count == 1 else "s")
