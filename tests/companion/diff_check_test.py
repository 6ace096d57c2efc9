"""ptick-diff against the literal way: random profiles with hostile names, all kinds of rows, several runs a
side; its JSON and its CSV, read by readers of their own, say what that says."""

import csv
import io
import json
import math
import re
import unittest

from companion import literal_diff
from companion.random_profiles import RandomProfile, seeds
from support.companions import CompanionTest

KINDS = {"line": "lines", "program": "programs", "command": "commands", "subroutine": "calls",
         "counter": "counters"}  # fmt: skip


class TickProfile(RandomProfile):
    """Mostly counts that an exact sum can go over."""

    def number(self):
        if self.is_tame or self.random.random() < 0.9:
            return str(self.random.choice([1, 2, 3, 10, 40, 80, 150, 700])).encode()
        return super().number()


def text(name):
    """A name as text."""
    try:
        return name.decode()
    except UnicodeDecodeError:
        return name.decode("latin-1")


def line(name):
    ordinary = re.fullmatch(rb"0|[1-9][0-9]*", name) and int(name) < 2**32
    return int(name) if ordinary else text(name)


def line_order(name):
    return (literal_diff.number(name), name)


def order(kind):
    """The default order: the largest change first, then names."""

    def key(row):
        names = row.key if isinstance(row.key, tuple) else (row.key,)
        if kind == "lines":
            names = (names[0], line_order(names[1]))
        return (-abs(float(row.change)), names)

    return key


class DiffCheckTest(CompanionTest):
    companion = "ptick-diff"

    def sides(self, seed):
        """Two lists of profiles."""
        profiles = [TickProfile(1000 * seed + n, is_tame=seed % 3 == 0).text() for n in range(8)]
        old, new = profiles[: 1 + seed % 4], profiles[4 : 5 + seed // 4 % 4]
        for n, profile in enumerate(old):
            self.write(f"old{n}", profile)
        for n, profile in enumerate(new):
            self.write(f"new{n}", profile)
        return old, new

    def diff(self, old, new, *options):
        names = [f"old{n}" for n in range(len(old))] + ["--vs"] + [f"new{n}" for n in range(len(new))]
        result = self.run_it(*options, *names)
        self.assertEqual((b"", 0), (result.err, result.status))
        return result.out.decode()

    def near(self, want, got, message):
        if want is None or got is None:
            self.assertEqual(want, got, message)
        elif not math.isnan(want):
            self.assertTrue(math.isclose(want, got, rel_tol=1e-8, abs_tol=1e-12), f"{message}: {want} {got}")

    def check_names(self, kind, want, got):
        if kind == "lines":
            self.assertEqual(text(want.key[0]), got["program"])
            self.assertEqual((line(want.key[1]),) * 2, (got["line"], got["old_line"]))
        elif kind == "calls":
            self.assertEqual(tuple(map(text, want.key)), (got["caller"], got["subroutine"]))
        else:
            self.assertEqual(text(want.key), got[{"programs": "program", "commands": "command",
                                                 "counters": "counter"}[kind]])  # fmt: skip

    def check_row(self, kind, want, got, has_deviations):
        self.check_names(kind, want, got)
        self.near(want.old, got["old"], "old")
        self.near(want.new, got["new"], "new")
        self.near(want.change, got["change"], "change")
        if kind == "commands":
            for name in ("times", "elapsed", "cpu"):
                self.near(want.figures[name].old, got[f"old_{name}"], name)
                self.near(want.figures[name].new, got[f"new_{name}"], name)
        if has_deviations:
            for is_old, name in ((True, "old"), (False, "new")):
                spread = literal_diff.deviation(want.numbers(is_old))
                if getattr(want, name) is None:
                    spread = None
                elif spread is not None and not is_old:
                    spread *= float(want.scale)
                self.near(spread, got[f"{name}_sd"], f"{name}_sd")
        if kind in ("lines", "programs"):
            self.near(want.p, got["p"], "p")
            self.near(want.q, got["q"], "q")
            is_near_bar = want.q is not None and not abs(want.q - 0.05) > 1e-6
            if not is_near_bar:
                self.assertEqual(want.significant, got["significant"])

    def check_json(self, seed, option, kind, normalize):
        old, new = self.sides(seed)
        old_runs, new_runs = [literal_diff.Run(run) for run in old], [literal_diff.Run(run) for run in new]
        options = ["--json", f"--by={option}"]
        if normalize:
            if min(sum(run.total for run in runs) for runs in (old_runs, new_runs)) <= 0:
                return 0
            options.append("--normalize")
        got = json.loads(self.diff(old, new, *options))
        self.assertEqual(("ptick-diff", 1, option), (got["format"], got["version"], got["by"]))
        for side, runs in (("old", old_runs), ("new", new_runs)):
            self.assertEqual(len(runs), got[side]["runs"])
            self.near(sum(run.total for run in runs), got[side]["ticks"], "ticks")
        want = sorted(literal_diff.compare(old_runs, new_runs, kind, normalize), key=order(kind))
        self.assertEqual(len(want), len(got["rows"]))
        for want_row, got_row in zip(want, got["rows"]):
            with self.subTest(seed=seed, kind=kind, normalize=normalize, key=want_row.key):
                self.check_row(kind, want_row, got_row, len(old) + len(new) > 2)
        return len(want)

    def test_json_says_what_the_literal_way_says(self):
        rows = 0
        for seed in seeds(40):
            for option, kind in KINDS.items():
                rows += self.check_json(seed, option, kind, normalize=False)
        self.assertGreater(rows, 500 if len(seeds(40)) > 1 else 0)

    def test_normalized_rows_are_those_of_the_literal_way(self):
        rows = 0
        for seed in seeds(40):
            for option in ("line", "program", "subroutine"):
                rows += self.check_json(seed, option, KINDS[option], normalize=True)
        self.assertGreater(rows, 100 if len(seeds(40)) > 1 else 0)

    def test_csv_says_what_json_says(self):
        for seed in seeds(12):
            old, new = self.sides(seed)
            for option in KINDS:
                rows = json.loads(self.diff(old, new, "--json", f"--by={option}"))["rows"]
                table = self.diff(old, new, "--csv", f"--by={option}")
                self.assertEqual(table.count("\r\n"), len(list(csv.reader(io.StringIO(table, newline="")))))
                read = list(csv.DictReader(io.StringIO(table, newline="")))
                self.assertEqual(len(rows), len(read))
                for row, fields in zip(rows, read):
                    want = {name: "" if value is None else str(value).lower() if value in (True, False)
                            and isinstance(value, bool) else value for name, value in row.items()}  # fmt: skip
                    self.assertEqual(list(want), list(fields))
                    for name, value in want.items():
                        if isinstance(value, (int, float)):
                            self.near(value, float(fields[name]), name)
                        else:
                            self.assertEqual(value, fields[name])

    def test_a_side_does_not_differ_from_itself(self):
        for seed in seeds(12):
            old, _ = self.sides(seed)
            names = [f"old{n}" for n in range(len(old))]
            for option in KINDS:
                result = self.run_it("--json", f"--by={option}", *names, "--vs", *reversed(names))
                self.assertEqual([], json.loads(result.out)["rows"])

    def test_swapped_sides_swap_signs(self):
        for seed in seeds(12):
            old, new = self.sides(seed)
            names = [f"old{n}" for n in range(len(old))], [f"new{n}" for n in range(len(new))]
            for option in KINDS:
                there, back = (
                    json.loads(self.run_it("--json", f"--by={option}", *a, "--vs", *b).out)["rows"]
                    for a, b in (names, names[::-1])
                )
                self.assertEqual(len(there), len(back))
                for row, other in zip(there, back):
                    for name, value in other.items():
                        if name == "change":
                            self.near(-value, row[name], name)
                        elif name.startswith(("old", "new")):
                            prefix = {"old": "new", "new": "old"}[name[:3]]
                            twin = "line" if name == "old_line" else prefix + name[3:]
                            self.assertEqual(value, row[twin])
                        elif isinstance(value, float):
                            self.near(value, row[name], name)
                        else:
                            self.assertEqual(value, row[name])


if __name__ == "__main__":
    unittest.main()
