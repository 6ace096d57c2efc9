"""Text for terminals, and the line on which progress shows."""

from __future__ import annotations

import os
import re
import unicodedata

ERASE_LINE = b"\r\x1b[K"

# What drives a terminal (C0, DEL, C1), and what reorders or hides text.
DRIVES = (
    "\x00-\x1f\x7f-\x9f\u200b-\u200f\u2028-\u202e\u2060-\u2069\ufeff"
    "\U000e0000-\U000e007f"
)
# Bytes that are no UTF-8 are these characters once they are decoded; as C1 they drive one, too.
STRAY_C1 = "\udc80-\udc9f"


def terminal_text(text: bytes, kept: str = "") -> bytes:
    """A text with a '?' for each character that would drive a terminal, but those that are kept."""
    decoded = text.decode("utf-8", "surrogateescape")
    harmless = re.sub(
        f"[{DRIVES}{STRAY_C1}]", lambda found: found[0] if found[0] in kept else "?", decoded
    )
    return harmless.encode("utf-8", "surrogateescape")


def width_of(character: str) -> int:
    if unicodedata.combining(character):
        return 0
    return 2 if unicodedata.east_asian_width(character) in "WF" else 1


def cut_to_width(text: str, columns: int) -> str:
    used = 0
    for at, character in enumerate(text):
        used += width_of(character)
        if used > columns:
            return text[:at]
    return text


def is_terminal(descriptor: int) -> bool:
    try:
        return os.isatty(descriptor)
    except OSError:
        return False


def columns_of(descriptor: int) -> int:
    """By COLUMNS or by the terminal itself; 80 when nobody says."""
    text = os.environ.get("COLUMNS", "")
    if re.fullmatch("[1-9][0-9]{0,5}", text):
        return int(text)
    try:
        return os.get_terminal_size(descriptor).columns or 80
    except OSError:
        return 80


def is_in_foreground(descriptor: int) -> bool:
    """Whether this process may write to a terminal unasked. One that does not control this process
    has no foreground for it."""
    try:
        return os.tcgetpgrp(descriptor) in (os.getpgrp(), -1)
    except OSError:
        return True


def obeys_sequences() -> bool:
    return os.environ.get("TERM", "") not in ("", "dumb")


def uses_color(when: str, descriptor: int) -> bool:
    """What was said wins over NO_COLOR, and that over the terminal."""
    if when != "auto":
        return when == "always"
    if os.environ.get("NO_COLOR"):
        return False
    return is_terminal(descriptor) and obeys_sequences()
