"""What readers of each format find in it: all of a profile that the format holds, whatever its names and
values are. The readers share nothing with the writers."""

import collections
import json
import os
import unittest

import jsonschema

from companion.random_profiles import NAMES, RandomProfile, seeds
from ptick_export import readers
from ptick_export.literal_profile import (
    COMMAND_NUMBERS,
    SINGLE_VALUES,
    LiteralProfile,
    as_text,
    counted,
    is_number,
    is_ordinary,
)
from support.companions import CompanionTest
from support.program import SOURCE_DIR

MORE_NAMES = [b"(empty)", b"(2) B", b" A", b"A ", b"A", b"\\x3b", b";", b"#", b"\xe9", b"\xc3\xa9",
              b"\xc3\xa9 (Latin-1)", b"\xe9 (Latin-1)", b'a,"b"', b"\xc2\xa0", b"x\xc2\x9bm"]  # fmt: skip
MARK = " (Latin-1)"
INPUT_FIELDS = ["code", "characters", "startclock", "endclock", "text"]


def unmarked(text):
    """A text without what tells it from others of the same letters."""
    while isinstance(text, str) and text.endswith(MARK):
        text = text[: -len(MARK)]
    return text


def bare(name):
    """A name as text, without what may look like a mark."""
    return unmarked(as_text(name))


def number_or_none(text):
    return float(counted(text)) if text else None


class HostileProfile(RandomProfile):
    def __init__(self, seed):
        super().__init__(seed)
        self.names = NAMES + MORE_NAMES

    def name(self):
        return self.random.choice(self.names)

    def line(self):
        kind = self.random.randrange(20)
        if kind == 0:
            return b"\t".join([b"PROFILE:input", self.number(), self.number(), self.number(),
                               self.number(), self.name()])  # fmt: skip
        if kind == 1:
            begin = self.random.randrange(1000)
            end = begin + self.random.randrange(300)
            return b"PROFILE:perform\tstartclock\t%d\tendclock\t%d\ttype\tqry\tusrcpu\t%s\tcmd\t%s" % (
                begin, end, self.number(), self.name() or b"X")  # fmt: skip
        if kind == 2:
            return b"PROFILE:hertz\t" + self.random.choice([b"3", b"100", b"2.5"])
        if kind == 3 and self.random.random() < 0.3:
            return b"PROFILE:program\t" + (self.name() or b"X") + b" " + self.name()
        return super().line()


def counters_of(rows):
    """A table of counters; what is empty is nothing."""
    return {name: float(value) if value else None for name, value in rows}


class ReadersTest(CompanionTest):
    companion = "ptick-export"

    def setUp(self):
        super().setUp()
        with open(os.path.join(SOURCE_DIR, "docs", "ptick-profile.schema.json"), encoding="utf-8") as file:
            schema = json.load(file)
        validator = jsonschema.validators.validator_for(schema)
        validator.check_schema(schema)
        self.schema = validator(schema)

    def export(self, kind, *options):
        result = self.run_it(f"--to={kind}", *options, "run")
        self.assertEqual(0, result.status, result)
        return result.out

    def cases(self, count):
        for seed in seeds(count):
            data = HostileProfile(seed).text(lines=60)
            self.write("run", data)
            with self.subTest(seed=seed):
                yield LiteralProfile(data)

    def check_sums(self, want, got):
        """Sums by (program, line): `want` by bytes, `got` by texts, which may be marked."""
        texts = collections.Counter(
            (unmarked(as_text(program)), line if isinstance(line, int) else unmarked(as_text(line)), ticks)
            for (program, line), ticks in want.items()
        )
        found = collections.Counter(
            (unmarked(program), unmarked(line), ticks) for (program, line), ticks in got.items()
        )
        self.assertEqual(texts, found)
        self.assertEqual(sorted(want.values()), sorted(got.values()))
        self.assertEqual(len({program for program, _ in want}), len({program for program, _ in got}))

    def test_json(self):
        for profile in self.cases(60):
            got = readers.read_json(self.export("json"))
            self.schema.validate(got)
            want = [
                (as_text(trace.program),
                 int(trace.line) if is_ordinary(trace.line) else as_text(trace.line),
                 float(counted(trace.ticks)))
                for trace in profile.reported()
            ]  # fmt: skip
            lines = [(line["program"], line["line"], float(line["ticks"])) for line in got["lines"]]
            self.assertEqual([row[1:] for row in want], [row[1:] for row in lines])
            for (text, *_), (name, *_) in zip(want, lines):
                self.assertEqual(unmarked(text), unmarked(name))
            programs = {trace.program for trace in profile.traces}
            self.assertEqual(len(programs), len({line["program"] for line in got["lines"]}))
            for command, found in zip(profile.commands, got["commands"], strict=True):
                self.assertEqual(bare(command.command), unmarked(found["command"]))
                for name in COMMAND_NUMBERS:
                    self.assertEqual(number_or_none(command.numbers[name]), found[name])
                self.assertEqual(as_text(command.type) or None, found["type"])
            self.assertEqual(
                [[*map(number_or_none, each[:4]), as_text(each[4])] for each in profile.inputs],
                [[found[name] for name in INPUT_FIELDS] for found in got["inputs"]],
            )
            self.assertEqual(list(map(bare, sorted(profile.objects))), list(map(unmarked, got["objects"])))
            self.assertEqual(len(set(profile.objects)), len(set(got["objects"])))
            calls = [(bare(caller), bare(called), float(counted(times)))
                     for caller, called, times in profile.calls]  # fmt: skip
            found = [(unmarked(call["caller"]), unmarked(call["subroutine"]), float(call["times"]))
                     for call in got["subroutines"]]  # fmt: skip
            self.assertEqual(sorted(calls), sorted(found))
            self.assertEqual(list(map(float, profile.user_ticks)), got["user_ticks"])
            self.assertEqual(as_text(profile.command), got["command"] or "")
            for name in SINGLE_VALUES:
                value = profile.values.get(name)
                found = got[name] if name in ("ticks", "hertz") else got["counters"].get(name, "none")
                if value is None:
                    self.assertIn(found, (None, "none"))
                elif name != "input_count":  # inputs after it are counted, too
                    self.assertEqual(float(counted(value)) if value else None, found)

    def test_csv_is_the_tables_of_json(self):
        def cell(value):
            return "" if value is None else str(value) if not isinstance(value, float) else value

        for _ in self.cases(25):
            whole = readers.read_json(self.export("json"))
            for table in ("lines", "commands", "subroutines", "inputs"):
                head, rows = readers.read_csv(self.export("csv", f"--table={table}"))
                want = [[row[name] for name in head] for row in whole[table]]
                self.assertEqual([list(map(cell, row)) for row in want],
                                 [[float(text) if isinstance(value, float) else text
                                   for text, value in zip(row, values)]
                                  for row, values in zip(rows, want, strict=True)])  # fmt: skip
            head, rows = readers.read_csv(self.export("csv", "--table=objects"))
            self.assertEqual([[name] for name in whole["objects"]], rows)
            head, rows = readers.read_csv(self.export("csv", "--table=counters"))
            self.assertLessEqual(whole["counters"].items(), counters_of(rows).items())
            head, rows = readers.read_csv(self.export("csv", "--table=programs"))
            sums = collections.Counter()
            for line in whole["lines"]:
                sums[line["program"]] += line["ticks"]
            self.assertEqual(len(sums), len(rows))
            for program, ticks in rows:
                self.assertAlmostEqual(sums[program], float(ticks), places=6)

    def test_folded(self):
        for profile in self.cases(60):
            got = {tuple(map(readers.plain_name, frames)): ticks
                   for frames, ticks in readers.read_folded(self.export("folded")).items()}  # fmt: skip
            self.check_sums(profile.sums(numbered=False), got)

    def test_callgrind(self):
        for profile in self.cases(60):
            got = readers.Callgrind(self.export("callgrind"))
            costs = {(readers.plain_name(name), line): ticks for (name, line), ticks in got.costs.items()}
            self.check_sums(profile.sums(numbered=True), costs)
            calls = collections.Counter()
            for caller, called, times in profile.calls:
                if counted(times) >= 1:
                    calls[caller, called] += int(counted(times))
            self.assertEqual(sorted(calls.values()), sorted(got.calls.values()))
            self.assertEqual(
                collections.Counter((bare(a), bare(b), times) for (a, b), times in calls.items()),
                collections.Counter(
                    (*(unmarked(readers.plain_name(name)) for name in pair), times)
                    for pair, times in got.calls.items()
                ),
            )
            self.assertEqual(as_text(profile.command), readers.plain_name("".join(got.head["cmd"])))
            self.assertEqual(got.files, {name: name for name in got.files})

    def test_pprof(self):
        for profile in self.cases(60):
            got = readers.Pprof(self.export("pprof"))
            self.check_sums(profile.sums(numbered=True), got.samples)
            self.assertEqual([as_text(profile.command)] if profile.command else [],
                             [text for text in got.comments if " of a tick, which " not in text])  # fmt: skip

    def test_speedscope(self):
        for profile in self.cases(60):
            weights, spans = readers.read_speedscope(self.export("speedscope"))
            want = collections.Counter()
            for trace in profile.traces:
                line = as_text(trace.line) if not is_ordinary(trace.line) else str(int(trace.line))
                want[trace.program, line] += counted(trace.ticks)
            want = {key: float(ticks) for key, ticks in want.items() if ticks >= 0}
            self.assertEqual(sorted(want.values()), sorted(map(float, weights.values())))
            self.assertEqual(
                collections.Counter((bare(name), unmarked(line), ticks) for (name, line), ticks in want.items()),
                collections.Counter(
                    (unmarked(name), unmarked(line), float(ticks)) for (name, line), ticks in weights.items()
                ),
            )
            self.check_spans(profile, [(begin, end) for _, _, begin, end in spans], [])

    def test_trace_events(self):
        for profile in self.cases(60):
            events = readers.read_trace(self.export("trace"))
            commands = [event for track, event in events if track.startswith("Commands")]
            self.check_spans(profile, [(event["ts"] / 1e6, (event["ts"] + event["dur"]) / 1e6)
                                       for event in commands], profile.inputs)  # fmt: skip
            for event in commands:
                self.assertEqual({"type", "ticks", "usrcpu", "syscpu"}, set(event["args"]))
            names = collections.Counter(unmarked(event["name"]) for event in commands)
            self.assertLessEqual(names, collections.Counter(bare(each.command) for each in profile.commands))
            typed = collections.Counter(
                (event["name"], *(event["args"][name] for name in ("code", "characters")))
                for track, event in events if track.startswith("Inputs"))  # fmt: skip
            self.assertLessEqual(typed, collections.Counter(
                (as_text(each[4]), *map(number_or_none, each[:2])) for each in profile.inputs))  # fmt: skip

    def check_spans(self, profile, spans, inputs):
        """The commands in seconds from the start clock, or the earliest clock of them and the inputs."""
        hertz = counted(profile.values.get("hertz", b""))
        clocks = [(command.numbers["startclock"], command.numbers["endclock"])
                  for command in profile.commands]  # fmt: skip
        clocks = [tuple(map(counted, pair)) for pair in clocks if all(map(is_number, pair))]
        if hertz <= 0:
            self.assertEqual([], spans)
            return
        start = profile.values.get("startclock", b"")
        typed = [tuple(map(counted, each[2:4])) for each in inputs if all(map(is_number, each[2:4]))]
        start = counted(start) if is_number(start) else min([a for a, _ in clocks + typed], default=0)
        want = sorted((float((a - start) / hertz), float((b - start) / hertz))
                      for a, b in clocks if a <= b)  # fmt: skip
        self.assertEqual(len(want), len(spans))
        for pair, found in zip(want, sorted(spans)):
            for a, b in zip(pair, found):
                self.assertAlmostEqual(a, b, delta=max(1e-7, abs(a) * 1e-12))


class ExamplesTest(CompanionTest):
    """The profiles of the examples: every format holds the ticks and the ten hottest lines that ptick
    reports."""

    companion = "ptick-export"

    def test_totals_and_hottest_lines(self):
        for name in ("run1", "run2"):
            run = os.path.join(SOURCE_DIR, "examples", "orders", name)
            report = self.run_ptick(run).out.decode().split("\n")[2:-1]
            rows = []
            for line in report:  # a name is shown where it is another than before
                program = line[:20].rstrip() or rows[-1][0]
                rows.append((program, int(line[21:27]), int(line[28:36])))
            total = sum(ticks for *_, ticks in rows)
            shown = {(program, line): ticks for program, line, ticks in rows}

            def export(kind):
                result = self.run_it(f"--to={kind}", run)
                self.assertEqual(0, result.status)
                return result.out

            found = {
                "json": {(row["program"], row["line"]): row["ticks"]
                         for row in readers.read_json(export("json"))["lines"]},
                "csv": {(program, int(line)): int(ticks)
                        for program, line, ticks in readers.read_csv(export("csv"))[1]},
                "callgrind": readers.Callgrind(export("callgrind")).costs,
                "pprof": readers.Pprof(export("pprof")).samples,
                "speedscope": {(program, int(line)): ticks for (program, line), ticks
                               in readers.read_speedscope(export("speedscope"))[0].items()},
                "folded": {(program, int(line)): ticks for (program, line), ticks
                           in readers.read_folded(export("folded")).items()},
            }  # fmt: skip
            for kind, sums in found.items():
                with self.subTest(run=name, kind=kind):
                    self.assertEqual(total, sum(sums.values()))
                    self.assertEqual({key: ticks for key, ticks in shown.items() if ticks}, dict(sums))
                    hottest = sorted(sums.items(), key=lambda item: -item[1])[:10]
                    self.assertEqual([ticks for *_, ticks in rows[:10]], [ticks for _, ticks in hottest])


if __name__ == "__main__":
    unittest.main()
