"""Random profiles with hostile names and odd values, for laws that hold for all of them."""

import os
import random

NAMES = [
    b"MAIN", b"ORDER.DESK", b"", b" ", b"a b", b"A;B", b'"q"', b"\\", b"x\\x41", b"<b>&amp;", b"../up",
    b".", b"PROFILE:trace", b"fn=(1)", b"-n", b"\x1b[31m", b"\x00", b"\r", b"\x7f", b"\xc3\xa4\xc3\xb6",
    b"\xe4\xf6", b"\xc3\x83\xc2\xa4", b"\xff", b"\xfd", b"\xe2\x80\xae", b"\xc2\x85", b"\xe2\x80\xa8",
    b"\xf0\x9f\x98\x80", b"\xed\xa0\x80", b"%s", b"=1+1", b"n" * 80,
]  # fmt: skip
NUMBERS = [b"0", b"1", b"7", b"007", b"-3", b"+4", b"0.25", b"12.5", b"99999999", b"4294967296", b"x",
           b"", b" 5", b"5.", b"1e5", b"\xc3\xa4", b"5\r"]  # fmt: skip
COUNTS = [b"ticks", b"usrcpu", b"syscpu", b"read_count", b"index_count", b"portno", b"memused", b"memfree",
          b"starttime", b"endtime", b"startclock", b"endclock", b"hertz", b"pagesize", b"pid",
          b"input_count"]  # fmt: skip


def seeds(count):
    """Seeds of so many cases, or the one that PTICK_RANDOM_SEED asks for."""
    chosen = os.environ.get("PTICK_RANDOM_SEED")
    return [int(chosen)] if chosen else range(count)


class RandomProfile:
    """Lines of all types; `is_tame` leaves out values that are no ordinary numbers."""

    def __init__(self, seed, is_tame=False):
        self.random = random.Random(seed)
        self.is_tame = is_tame

    def name(self):
        return self.random.choice(NAMES)

    def number(self):
        if self.is_tame or self.random.random() < 0.8:
            return str(self.random.choice([1, 2, 3, 10, 500, 123456])).encode()
        return self.random.choice(NUMBERS)

    def line(self):
        kind = self.random.randrange(12)
        if kind < 6:
            fields = [b"trace", self.name(), str(self.random.randrange(1, 40)).encode(), self.number()]
            if not self.is_tame and self.random.random() < 0.1:
                fields[2] = self.random.choice(NUMBERS)
        elif kind == 6:
            fields = [b"subroutine_call", self.name() + b" " + self.name(), self.number()]
        elif kind == 7:
            fields = [b"perform", b"startclock", self.number(), b"endclock", self.number(), b"ticks",
                      self.number(), b"cmd", self.name()]  # fmt: skip
        elif kind == 8:
            fields = [b"shared_object", self.name(), b"1"]
        elif kind == 9:
            fields = [b"user_ticks", str(self.random.randrange(0, 12)).encode(), self.number()]
        else:
            fields = [self.random.choice(COUNTS), self.number()]
        if not self.is_tame and self.random.random() < 0.05:
            return self.random.choice([b"", b"a remark", b"PROFILE", b"\tPROFILE:ticks\t5", b"PROFILE:ticks"])
        return b"PROFILE:" + b"\t".join(fields)

    def text(self, lines=None):
        count = self.random.randrange(40) if lines is None else lines
        ends = [b"\n"] if self.is_tame else [b"\n", b"\n", b"\n", b"\xfe", b"\n\n"]
        text = b"".join(self.line() + self.random.choice(ends) for _ in range(count))
        return text[:-1] if text and self.random.random() < 0.3 else text
