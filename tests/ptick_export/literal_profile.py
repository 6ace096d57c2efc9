"""A profile as docs/record-format.md explains it, read in the simplest way."""

import collections
import re
from fractions import Fraction

Trace = collections.namedtuple("Trace", "program line ticks")
Command = collections.namedtuple("Command", "command type numbers")

COMMAND_NUMBERS = ["startclock", "endclock", "starttime", "endtime", "ticks", "usrcpu", "syscpu"]
SINGLE_VALUES = """memused hertz memfree pagesize starttime startclock endtime endclock ticks ticks_index
index_count ticks_trigger trigger_count usrcpu syscpu read_count write_count delete_count clearfile_count
open_count input_count portno pid ppid""".split()


def is_number(text):
    return re.fullmatch(rb"[+-]?\d+(\.\d+)?", text) is not None


def counted(text):
    """A text as a number: 0 when it is none."""
    return Fraction(text.decode()) if is_number(text) else Fraction(0)


def is_ordinary(text):
    return re.fullmatch(rb"0|[1-9]\d*", text) is not None and int(text) < 1 << 32


def as_text(name):
    """A name as UTF-8 text, else byte for byte as Latin-1."""
    try:
        return name.decode()
    except UnicodeDecodeError:
        return name.decode("latin-1")


class LiteralProfile:
    def __init__(self, data):
        self.traces, self.commands, self.calls = [], [], []
        self.objects, self.inputs, self.values = [], [], {}
        self.user_ticks, self.command = [Fraction(0)] * 10, b""
        for line in re.split(b"[\n\xfe]", data):
            line = re.sub(b"\t+", b"\t", line.strip(b"\t"))
            if line.startswith(b"PROFILE:"):
                kind, _, rest = line[8:].partition(b"\t")
                self.take(kind.lower().decode(), rest)

    def take(self, kind, rest):
        first, second, third, *_ = rest.split(b"\t") + [b""] * 3
        if kind == "trace":
            self.traces.append(Trace(first, second, third))
        elif kind == "perform":
            self.take_command(rest)
        elif kind == "subroutine_call":
            caller, called, *_ = first.split(b" ") + [b""]
            self.calls.append((caller, called, second))
        elif kind == "shared_object":
            if second and (not is_number(second) or counted(second)) and first != b"main()":
                self.objects.append(first)
        elif kind == "input":
            fields = rest.split(b"\t", 4) + [b""] * 5
            self.inputs.append(fields[:5])
        elif kind == "user_ticks":
            if first in [b"%d" % index for index in range(1, 11)]:
                self.user_ticks[int(first) - 1] += counted(second)
        elif kind == "program":
            self.command = rest
        elif kind in SINGLE_VALUES:
            self.values[kind] = first

    def take_command(self, rest):
        found = {}
        while rest:
            key, _, rest = rest.partition(b"\t")
            if key == b"cmd":
                # A mark for the shell goes with the byte after it; a value mark ends the command.
                found["cmd"] = (rest[2:] if rest.startswith(b"\xff") else rest).partition(b"\xfd")[0]
                break
            value, _, rest = rest.partition(b"\t")
            found[key.decode("latin-1")] = value
        if found.get("cmd"):
            numbers = {name: found.get(name, b"") for name in COMMAND_NUMBERS}
            self.commands.append(Command(found["cmd"], found.get("type", b""), numbers))

    def reported(self):
        """The entries in the order of the report: equal ticks in reverse order of arrival."""
        places = range(len(self.traces))
        order = sorted(places, key=lambda at: (-counted(self.traces[at].ticks), -at))
        return [self.traces[at] for at in order]

    def sums(self, numbered):
        """{(program, line): ticks}, whole numbers: fractions are cut, what is not above 0 is left out. A
        line is its bytes, or its number, 0 when it is none."""
        sums = collections.defaultdict(Fraction)
        for trace in self.traces:
            line = trace.line
            if numbered:
                number = counted(line) if is_number(line) else Fraction(0)
                is_line = number.denominator == 1 and 0 <= number < 1 << 32
                line = int(number) if is_line else 0
            sums[trace.program, line] += counted(trace.ticks)
        return {key: int(ticks) for key, ticks in sums.items() if ticks >= 1}
