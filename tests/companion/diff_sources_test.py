"""ptick-diff follows lines through edited sources: each line that is in both texts is one row, as many of
them as can be, and all others are gone or new."""

import difflib
import json
import random
import unittest

from companion.random_profiles import seeds
from support.companions import CompanionTest

SOURCES = ["--old-source=before", "--new-source=after"]


def longest_common(a, b):
    row = [0] * (len(b) + 1)
    for line in a:
        diagonal = 0
        for n, other in enumerate(b):
            diagonal, row[n + 1] = row[n + 1], diagonal + 1 if line == other else max(row[n + 1], row[n])
    return row[-1]


class DiffSourcesTest(CompanionTest):
    companion = "ptick-diff"

    def source(self, folder, lines, program="A"):
        self.write(f"{folder}/{program}", "".join(line + "\n" for line in lines))

    def profile(self, name, lines, ticks, program="A"):
        self.write(name, "".join(f"PROFILE:trace\t{program}\t{line}\t{ticks}\n" for line in lines))

    def rows(self, *options):
        result = self.run_it("--json", *SOURCES, *options, "old", "new")
        self.assertEqual((b"", 0), (result.err, result.status))
        return json.loads(result.out)["rows"]

    def pairs(self):
        """By name: new lines, and old ones where there is no new one."""
        return [(row["old_line"], row["line"]) for row in self.rows("--sort=name")]

    def check_alignment(self, old, new):
        """Every line of both texts has ticks, other ones in the new text."""
        self.source("before", old)
        self.source("after", new)
        self.profile("old", range(1, len(old) + 1), 700)
        self.profile("new", range(1, len(new) + 1), 20)
        rows = self.rows()
        both = [(row["old_line"], row["line"]) for row in rows if row["line"] and row["old_line"]]
        both.sort()
        self.assertEqual(sorted(new_line for _, new_line in both), [new_line for _, new_line in both])
        for old_line, new_line in both:
            self.assertEqual(old[old_line - 1], new[new_line - 1])
        for side, other, lines in (("old_line", "line", old), ("line", "old_line", new)):
            self.assertEqual(list(range(1, len(lines) + 1)),
                             sorted(row[side] for row in rows if row[side] is not None))  # fmt: skip
            for row in rows:
                if row[side] is None:
                    name = {"old_line": "old", "line": "new"}
                    self.assertIsNone(row[name[side]])
                    self.assertIsNotNone(row[name[other]])
        return len(both)

    def test_as_many_lines_are_followed_as_can_be(self):
        for seed in seeds(30):
            chance = random.Random(seed)
            texts = ["", "END", "*", "X = 1", "caf\xe9"] + [f"line {n}" for n in range(20)]
            old = [chance.choice(texts) for _ in range(chance.randrange(60))]
            new = [line for line in old if chance.random() < 0.8]
            for _ in range(chance.randrange(20)):
                new.insert(chance.randrange(len(new) + 1), chance.choice(texts))
            with self.subTest(seed=seed):
                found = self.check_alignment(old, new)
                self.assertEqual(longest_common(old, new), found)
                matcher = difflib.SequenceMatcher(None, old, new, autojunk=False)
                self.assertGreaterEqual(found, sum(block.size for block in matcher.get_matching_blocks()))

    def test_large_sources_are_followed(self):
        old = [f"line {n}" if n % 3 else "END" for n in range(20000)]
        new = [line for n, line in enumerate(old) if n % 97]
        for n in range(0, len(new), 250):
            new.insert(n, "a new line")
        found = self.check_alignment(old, new)
        self.assertEqual(len([n for n in range(20000) if n % 97]), found)

    def test_lines_show_both_numbers_or_one(self):
        self.source("before", ["a", "b", "c", "d"])
        self.source("after", ["x", "a", "c", "D"])
        self.profile("old", [1, 2, 4], 500)
        self.profile("new", [1, 3, 4], 900)
        self.assertEqual([(None, 1), (2, None), (1, 2), (3, 3), (4, None), (None, 4)], self.pairs())
        out = self.run_it(*SOURCES, "old", "new").out.decode()
        for row in ("  -  900    +900       new      33.3  A        1     -\n",
                    "500    -    -500    -100.0         -  A        2     1\n",
                    "500    -    -500    -100.0         -  A        -     2\n"):  # fmt: skip
            self.assertIn(row, out)
        self.assertIn("Program  Line  Old line\n", out)

    def test_a_moved_block_is_gone_and_new(self):
        self.source("before", ["1", "2", "3", "4", "5"])
        self.source("after", ["3", "4", "5", "1", "2"])
        self.profile("old", range(1, 6), 500)
        self.profile("new", range(1, 6), 900)
        self.assertEqual([(3, 1), (4, 2), (5, 3)], [pair for pair in self.pairs() if None not in pair])

    def test_programs_without_a_source_are_compared_by_number(self):
        self.source("before", ["a", "b"])
        self.source("after", ["b"], program="B")
        self.profile("old", [1, 2], 500)
        self.profile("new", [1, 2], 900)
        self.assertEqual([(1, 1), (2, 2)], self.pairs())
        note = "Lines compared by number, for a source was not found: A\n"
        self.assertIn(note, self.run_it(*SOURCES, "old", "new").out.decode())
        self.source("after", ["b"])
        self.assertNotIn(note, self.run_it(*SOURCES, "old", "new").out.decode())
        # A name never leads out of the folder.
        self.source("before", ["a", "b"], program="../up")
        self.source("after", ["x", "a", "b"], program="../up")
        self.profile("old", [1], 500, program="../up")
        self.profile("new", [1], 900, program="../up")
        self.assertEqual([(1, 1)], self.pairs())

    def test_folders_are_asked_in_their_order(self):
        self.source("first", ["a"])
        self.source("after", ["x", "a"])
        self.source("before", ["a"])
        self.profile("old", [1], 500)
        self.profile("new", [1, 2], 900)
        self.assertEqual([(None, 1), (1, 2)], self.pairs())
        result = self.run_it("--json", "--sort=name", "--old-source=before", "--new-source=first",
                             "--new-source=after", "old", "new")  # fmt: skip
        rows = json.loads(result.out)["rows"]
        self.assertEqual([(1, 1), (2, 2)], [(row["old_line"], row["line"]) for row in rows])

    def test_lines_past_the_end_are_told(self):
        self.source("before", ["a", "b"])
        self.source("after", ["b", "c", "d"])
        self.write("old", "PROFILE:trace\tA\t3\t500\nPROFILE:trace\tA\t9\t500\nPROFILE:trace\tA\tx\t500\n")
        self.write("new", "PROFILE:trace\tA\t9\t900\nPROFILE:trace\tA\tx\t900\n")
        rows = {(row["old_line"], row["line"]) for row in self.rows()}
        self.assertEqual({(3, None), (9, 9), ("x", "x")}, rows)
        self.assertIn("2 lines past the end of their sources: sources of other versions?\n",
                      self.run_it(*SOURCES, "old", "new").out.decode())  # fmt: skip


if __name__ == "__main__":
    unittest.main()
