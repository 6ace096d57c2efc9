"""Merges profiles the slow, literal way, by the rules of docs/record-format.md and nothing else."""

from fractions import Fraction

ADDED, SMALLEST, LARGEST, LAST, DROPPED = "added", "smallest", "largest", "last", "dropped"
KINDS = {
    b"program": DROPPED, b"input": DROPPED, b"resource": DROPPED, b"typerate": DROPPED,
    b"pid": DROPPED, b"ppid": DROPPED, b"hertz": LAST, b"pagesize": LAST,
    b"starttime": SMALLEST, b"startclock": SMALLEST, b"endtime": LARGEST, b"endclock": LARGEST,
    b"memused": LARGEST, b"memfree": LARGEST,
}  # fmt: skip


def number(text):
    """The number that a text is, None when it is none."""
    digits = text[1:] if text[:1] in (b"+", b"-") else text
    whole, point, rest = digits.partition(b".")
    parts = [whole, rest] if point else [whole]
    if not all(part and all(48 <= byte <= 57 for byte in part) for part in parts):
        return None
    return Fraction(text.decode())


def spelled(value):
    """A sum as it is written: at most four decimals, the rest cut."""
    sign = "-" if value < 0 else ""
    units = int(abs(value) * 10000)
    whole, rest = divmod(units, 10000)
    text = str(whole) + (f".{rest:04}".rstrip("0") if rest else "")
    return (("" if text == "0" else sign) + text).encode()


def combined(kind, before, value):
    if kind == LAST:
        return value
    if kind == ADDED:
        return spelled((number(before) or 0) + (number(value) or 0))
    left, right = number(before), number(value)
    if left is None or right is None:
        left, right = before, value
    is_taken = right < left if kind == SMALLEST else right > left
    return value if is_taken else before


def merged(texts):
    """The merged lines of profiles, which are bytes."""
    values = {}
    for text in texts:
        for line in text.replace(b"\xfe", b"\n").split(b"\n"):
            key, tab, value = line.rpartition(b"\t")
            if not tab or not line.startswith(b"PROFILE:") or not key.startswith(b"PROFILE:"):
                continue
            kind = KINDS.get(key[8:].partition(b"\t")[0].partition(b":")[0], ADDED)
            if kind != DROPPED:
                values[key] = combined(kind, values[key], value) if key in values else value
    return b"".join(key + b"\t" + value + b"\n" for key, value in values.items())
