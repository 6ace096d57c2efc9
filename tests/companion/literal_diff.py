"""What ptick-diff has to say, worked out the literal way: lists and dictionaries, fractions of whole
numbers, sums one outcome after the other."""

import math
import re
from fractions import Fraction

COUNTERS = ["ticks", "ticks_index", "index_count", "ticks_trigger", "trigger_count", "usrcpu", "syscpu",
            "read_count", "write_count", "delete_count", "clearfile_count", "open_count",
            "input_count"]  # fmt: skip
ZERO_AT_FIRST = {"read_count", "write_count", "delete_count", "clearfile_count", "open_count", "input_count"}


def number(text):
    """What a text counts as."""
    return Fraction(text.decode()) if re.fullmatch(rb"[+-]?[0-9]+(\.[0-9]+)?", text) else Fraction(0)


def records(profile):
    """The (type, fields) of all records."""
    for line in re.split(rb"[\n\xfe]", profile):
        fields = re.sub(rb"\t+", b"\t", line.strip(b"\t")).split(b"\t")
        if fields[0].startswith(b"PROFILE:"):
            yield fields[0][8:].decode("latin-1").lower(), fields[1:]


def field(fields, n):
    return fields[n] if n < len(fields) else b""


class Run:
    """One profile: numbers by key, for each kind of rows."""

    def __init__(self, profile):
        self.lines, self.programs, self.calls, self.commands = {}, {}, {}, {}
        self.headers = {name: b"0" for name in ZERO_AT_FIRST}
        self.user_ticks = [Fraction(0)] * 10
        self.performs = []
        for kind, fields in records(profile):
            self.add(kind, fields)
        self.add_commands()
        self.rows = sum(self.programs.values(), Fraction(0))
        header = self.headers.get("ticks", b"")
        self.total = number(header) if header else self.rows
        self.counters = self.count()

    def add(self, kind, fields):
        if kind == "trace":
            program, line, ticks = field(fields, 0), field(fields, 1), number(field(fields, 2))
            self.lines[program, line] = self.lines.get((program, line), 0) + ticks
            self.programs[program] = self.programs.get(program, 0) + ticks
        elif kind == "subroutine_call":
            caller, _, called = field(fields, 0).partition(b" ")
            key = (caller, called.partition(b" ")[0])
            self.calls[key] = self.calls.get(key, 0) + number(field(fields, 1))
        elif kind == "perform":
            self.add_perform(fields)
        elif kind == "user_ticks":
            index = number(field(fields, 0))
            if 1 <= index <= 10:
                self.user_ticks[int(index) - 1] += number(field(fields, 1))
        else:
            self.headers[kind] = field(fields, 0)

    def add_perform(self, fields):
        values = {}
        while fields and fields[0]:
            if fields[0] == b"cmd":
                command = b"\t".join(fields[1:])
                command = command[2:] if command.startswith(b"\xff") else command
                values["cmd"] = command.partition(b"\xfd")[0]
                break
            values[fields[0].decode("latin-1")] = number(field(fields, 1))
            fields = fields[2:]
        if values.get("cmd"):
            self.performs.append(values)

    def add_commands(self):
        hertz = number(self.headers.get("hertz", b""))
        for perform in self.performs:
            figures = self.commands.setdefault(perform["cmd"], {"ticks": Fraction(0), "times": Fraction(0)})
            figures["ticks"] += perform.get("ticks", 0)
            figures["times"] += 1
            if hertz:
                elapsed = (perform.get("endclock", 0) - perform.get("startclock", 0)) / hertz
                cpu = (perform.get("usrcpu", 0) + perform.get("syscpu", 0)) / hertz
                figures["elapsed"] = figures.get("elapsed", 0) + elapsed
                figures["cpu"] = figures.get("cpu", 0) + cpu

    def count(self):
        counters = {}
        for name in COUNTERS:
            if self.headers.get(name, b""):
                counters[name.encode()] = number(self.headers[name])
        for n, ticks in enumerate(self.user_ticks):
            counters[b"user_ticks_%d" % (n + 1)] = ticks
        clocks = [self.headers.get(name, b"") for name in ("startclock", "endclock")]
        hertz = number(self.headers.get("hertz", b""))
        if hertz and all(clocks):
            counters[b"elapsed"] = (number(clocks[1]) - number(clocks[0])) / hertz
        return counters


def binomial(old, new, share):
    """The sum of all outcomes that are no more likely than this one."""
    count = int(old + new)
    if count <= 300:
        likely = [math.comb(count, k) * share**k * (1 - share) ** (count - k) for k in range(count + 1)]
        bar = likely[int(new)] * (1 + Fraction(1, 10**7))
    else:
        share = float(share)
        likely = [
            math.exp(math.lgamma(count + 1) - math.lgamma(k + 1) - math.lgamma(count - k + 1)
                     + k * math.log(share) + (count - k) * math.log1p(-share))
            for k in range(count + 1)
        ]  # fmt: skip
        bar = likely[int(new)] * (1 + 1e-7)
    return float(min(1, sum(value for value in likely if value <= bar)))


def incomplete_beta(a, b, x):
    """Regularised, by its continued fraction."""
    if x in (0, 1):
        return float(x)
    if x > (a + 1) / (a + b + 2):
        return 1 - incomplete_beta(b, a, 1 - x)
    front = math.exp(math.lgamma(a + b) - math.lgamma(a) - math.lgamma(b) + a * math.log(x) + b * math.log1p(-x))
    value = 0.0
    for n in range(400, 0, -1):  # from the inside out
        m = n // 2
        if n % 2:
            part = -(a + m) * (a + b + m) * x / ((a + 2 * m) * (a + 2 * m + 1))
        else:
            part = m * (b - m) * x / ((a + 2 * m - 1) * (a + 2 * m))
        value = part / (1 + value)
    return front / a / (1 + value)


def deviation(values):
    """Of the sample; None for one value."""
    if len(values) < 2:
        return None
    mean = sum(values) / len(values)
    return math.sqrt(sum((value - mean) ** 2 for value in values) / (len(values) - 1))


def welch(old, new):
    old_part, new_part = (deviation(values) ** 2 / len(values) for values in (old, new))
    if old_part + new_part == 0:
        return 0.0
    t = float(sum(new) / len(new) - sum(old) / len(old)) / math.sqrt(old_part + new_part)
    degrees = (old_part + new_part) ** 2 / (
        old_part**2 / (len(old) - 1) + new_part**2 / (len(new) - 1)
    )
    return incomplete_beta(degrees / 2, 0.5, degrees / (degrees + t * t))


def rates(p_values):
    """By Benjamini and Hochberg."""
    order = sorted(range(len(p_values)), key=lambda n: p_values[n])
    result = [0.0] * len(order)
    for rank, n in enumerate(order):
        result[n] = min(p_values[m] * len(order) / (k + 1) for k, m in enumerate(order) if k >= rank)
    return result


class Row:
    """A key whose mean changed; figures of all runs by their names."""

    def __init__(self, key, old, new, scale):
        self.key = key
        self.old_runs, self.new_runs, self.scale = old, new, scale
        self.old = self.mean(old, 1)
        self.new = self.mean(new, scale)
        self.change = (self.new or 0) - (self.old or 0)
        self.p = self.q = None
        self.significant = True

    @staticmethod
    def mean(runs, scale):
        there = [value for value in runs if value is not None]
        return sum(there) * scale / len(runs) if there else None

    def numbers(self, is_old):
        return [value or Fraction(0) for value in (self.old_runs if is_old else self.new_runs)]

    def test(self, old_weight, new_weight):
        old, new = self.numbers(True), self.numbers(False)
        if all(value >= 0 and value.denominator == 1 for value in old + new):
            if len(old) >= 3 and len(new) >= 3:
                self.p = welch(old, [value * self.scale for value in new])
            elif sum(old + new) <= 20000:
                self.p = binomial(sum(old), sum(new), Fraction(new_weight, old_weight + new_weight))
            else:
                self.p = math.nan  # too large for this way


def compare(old, new, kind, normalize=False):
    """The rows by which two lists of runs differ, in no order."""
    old_total, new_total = sum(run.total for run in old), sum(run.total for run in new)
    scale = Fraction(1)
    weights = (Fraction(len(old)), Fraction(len(new)))
    if normalize:
        scale = (old_total / len(old)) / (new_total / len(new))
        weights = (old_total, new_total)
    tables = [getattr(run, kind) for run in old], [getattr(run, kind) for run in new]
    keys = {key for table in tables[0] + tables[1] for key in table}
    rows = []
    for key in keys:
        sides = [[table.get(key) for table in side] for side in tables]
        if kind == "commands":
            row = command_row(key, sides, scale)
        else:
            row = Row(key, *sides, scale)
        if row.change or getattr(row, "is_changed", False):
            rows.append(row)
    if kind in ("lines", "programs"):
        for row in rows:
            row.test(*weights)
        tested = [row for row in rows if row.p is not None]
        p_values = [row.p for row in tested]
        # A rate depends on all p-values.
        unknown = any(math.isnan(p_value) for p_value in p_values)
        for row, rate in zip(tested, p_values if unknown else rates(p_values)):
            rate = math.nan if unknown else rate
            row.q = rate
            row.significant = rate <= 0.05
    return rows


def command_row(key, sides, scale):
    figures = {}
    for name in ("ticks", "times", "elapsed", "cpu"):
        figures[name] = Row(
            key, *([(run or {}).get(name) for run in side] for side in sides), scale
        )
    row = figures["ticks"]
    row.figures = figures
    row.is_changed = any(figure.change for figure in figures.values())
    return row
