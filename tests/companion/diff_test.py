"""ptick-diff: what it shows, refuses, says and exits with."""

import csv
import io
import json
import os
import unittest

from support.companions import CompanionTest, path_of
from support.terminal import Terminal

TRY = "Try 'ptick-diff --help' for more information.\n"
OLD = "PROFILE:ticks\t10000\nPROFILE:trace\tA\t1\t6000\nPROFILE:trace\tA\t2\t3990\nPROFILE:trace\tB\t7\t10\n"
NEW = "PROFILE:ticks\t12000\nPROFILE:trace\tA\t1\t8000\nPROFILE:trace\tA\t2\t3988\nPROFILE:trace\tB\t7\t12\n"
HEAD = """\
     Runs  Ticks  Change  Change %  Profiles
Old     1  10000                    old
New     1  12000   +2000     +20.0  new

"""
ROW = """\
 Old   New  Change  Change %  % of new  Program  Line
6000  8000   +2000     +33.3      66.6  A        1

"""
NOISE = "Noise: exact binomial test of the ticks, false discovery rate 5 % over 3 lines\n"


def traces(*entries, header=""):
    return header + "".join("PROFILE:trace\t" + entry.replace(" ", "\t") + "\n" for entry in entries)


class DiffTest(CompanionTest):
    companion = "ptick-diff"

    def setUp(self):
        super().setUp()
        self.write("old", OLD)
        self.write("new", NEW)
        self.write("empty", "")

    def rows(self, *arguments):
        result = self.run_it("--json", *arguments)
        self.assertEqual((b"", 0), (result.err, result.status))
        return json.loads(result.out)["rows"]

    def test_shows_what_changed_beyond_noise(self):
        want = HEAD + ROW + "2 more lines changed within noise (--all shows them)\n" + NOISE
        self.check(self.run_it("old", "new"), want)
        self.check(self.run_it("old", "--vs", "new"), want)
        self.check(self.run_it("--vs", "old", "--by=line", "new"), err="ptick-diff: profiles are needed "
                   f"on both sides of '--vs'\n{TRY}", status=2)  # fmt: skip

    def test_shows_noise_where_asked_for(self):
        rows = """\
 Old   New  Change     Change %  % of new  Program  Line
6000  8000   +2000        +33.3      66.6  A        1
3990  3988      -2  ~       0.0      33.2  A        2
  10    12      +2  ~     +20.0       0.1  B        7

"""
        self.check(self.run_it("--all", "old", "new"), HEAD + rows + NOISE)

    def test_says_that_nothing_changed(self):
        head = HEAD.replace("12000   +2000     +20.0  new", "10000       0       0.0  old")
        self.check(self.run_it("old", "old"), head + "No line changed.\n")
        result = self.run_it("--by=command", "--normalize", "old", "old")
        self.check(result, head + "No command changed.\n"
                   "New figures below the head are taken times 1: the totals are equal\n")  # fmt: skip
        self.check(self.run_it("--csv", "old", "old"), "program,line,old_line,old,new,change,p,q,significant\r\n")
        self.assertEqual([], self.rows("old", "old"))
        self.write("near", NEW.replace("8000", "6001").replace("12000", "10001"))
        self.assertIn(
            b"No line changed beyond noise.\n3 lines changed within noise (--all shows them)\n",
            self.run_it("old", "near").out,
        )
        self.write("nearer", OLD.replace("\t10\n", "\t11\n"))
        self.assertIn(b"1 line changed within noise (--all shows it)\n", self.run_it("old", "nearer").out)

    def test_empty_profiles_are_profiles(self):
        for kind in ("line", "program", "command", "subroutine", "counter"):
            with self.subTest(kind=kind):
                self.assertEqual([], self.rows(f"--by={kind}", "empty", "empty"))
                result = self.run_it(f"--by={kind}", "empty", "empty")
                self.assertIn(f"No {kind} changed.\n", result.out.decode())
        [row] = [row for row in self.rows("empty", "old") if row["program"] == "B"]
        self.assertEqual((None, 10, 10), (row["old"], row["new"], row["change"]))

    def test_json_is_as_described(self):
        self.write("a", traces("A 1 6", "A 2 2"))
        self.write("b", traces("A 2 2", "A 3 6", "A 4 1"))
        self.check(
            self.run_it("--json", "a", "b", "--top=1"),
            '{"format":"ptick-diff","version":1,"by":"line","old":{"profiles":["a"],"runs":1,"ticks":8},'
            '"new":{"profiles":["b"],"runs":1,"ticks":9},"rows":[\n'
            '{"program":"A","line":1,"old_line":1,"old":6,"new":null,"change":-6,'
            '"p":0.03125,"q":0.046875,"significant":true}\n'
            '],"rows_left_out":2}\n',
        )  # fmt: skip
        self.assertEqual(3, len(self.rows("old", "new")))
        self.assertEqual(3, len(self.rows("--top=all", "old", "new")))
        document = json.loads(self.run_it("--json", "--normalize", "old", "new").out)
        self.assertAlmostEqual(10000 / 12000, document["new"]["scale"])

    def test_lines_are_numbers_where_they_are_written_so(self):
        self.write("odd", traces("A 007 5", "A x 5", "A 4294967295 5", "A 4294967296 5", "A 0 5", "A -1 5"))
        lines = [row["line"] for row in self.rows("--sort=name", "empty", "odd")]
        self.assertEqual(["-1", 0, "x", "007", 4294967295, "4294967296"], lines)

    def test_several_runs_have_means_and_deviations(self):
        for n, ticks in enumerate([10, 12, 17, 90, 95, 100]):
            self.write(f"run{n}", traces(f"A 1 {ticks}"))
        runs = ["run0", "run1", "run2", "--vs", "run3", "run4", "run5"]
        [row] = self.rows(*runs)
        self.assertEqual((13, 95, 82), (row["old"], row["new"], row["change"]))
        self.assertAlmostEqual(13**0.5, row["old_sd"])
        self.assertAlmostEqual(5, row["new_sd"])
        self.check(self.run_it(*runs), """\
     Runs  Ticks per run   SD  Change  Change %  Profiles
Old     3             13  3.6                    run0 and 2 more
New     3             95    5     +82    +630.7  run3 and 2 more

Old   SD  New  SD  Change  Change %  % of new  Program  Line
 13  3.6   95   5     +82    +630.7     100.0  A        1

Noise: Welch's t-test of the runs, false discovery rate 5 % over 1 line
""")  # fmt: skip
        [row] = self.rows("run0", "run1", "--vs", "run3")
        self.assertEqual((11, 90, None), (row["old"], row["new"], row["new_sd"]))
        self.assertNotIn("old_sd", self.rows("run0", "run3")[0])

    def test_other_kinds_show_all_that_changed(self):
        self.write("a", "PROFILE:hertz\t100\nPROFILE:ticks\t100\nPROFILE:read_count\t5\n"
                   "PROFILE:subroutine_call\tA SUB\t3\n"
                   "PROFILE:perform\tstartclock\t0\tendclock\t150\tusrcpu\t20\tticks\t7\tcmd\tGO, GO\n")
        self.write("b", "PROFILE:hertz\t100\nPROFILE:ticks\t100\nPROFILE:read_count\t8\n"
                   "PROFILE:subroutine_call\tA SUB\t4\n"
                   "PROFILE:perform\tstartclock\t0\tendclock\t175\tusrcpu\t20\tticks\t7\tcmd\tGO, GO\n")
        for kind, want in (
            ("command", "Old times  New times  Old s  New s  Old CPU s  New CPU s  Old ticks  New ticks  Change  "
             "Change %  % of new  Command\n        1          1    1.5   1.75        0.2        0.2          7"
             "          7       0       0.0       7.0  GO, GO\n"),
            ("subroutine", "Old  New  Change  Change %  % of new  Caller  Subroutine\n"
             "  3    4      +1     +33.3     100.0  A       SUB\n"),
            ("counter", "Old  New  Change  Change %  Counter     Unit\n"
             "  5    8      +3     +60.0  read_count  events\n"),
        ):  # fmt: skip
            with self.subTest(kind=kind):
                out = self.run_it(f"--by={kind}", "a", "b").out.decode()
                self.assertEqual(want, out.split("\n\n")[1] + "\n")
        [row] = self.rows("--by=command", "a", "b")
        self.assertEqual(["command", "old_times", "new_times", "old_elapsed", "new_elapsed", "old_cpu", "new_cpu",
                          "old", "new", "change"], list(row))  # fmt: skip
        self.assertEqual(["counter", "old", "new", "change"], list(self.rows("--by=counter", "a", "b")[0]))
        table = self.run_it("--by=command", "--csv", "a", "b").out.decode()
        self.assertEqual("GO, GO", list(csv.DictReader(io.StringIO(table)))[0]["command"])

    def test_sorts_and_cuts(self):
        self.write("a", traces("A 1 1000", "B 1 100", "C 1 9000"))
        self.write("b", traces("A 1 1500", "B 1 400", "C 1 8000", "D 1 50"))
        for order, want in (("change", "CABD"), ("relative", "DBAC"), ("old", "CABD"), ("new", "CABD"),
                            ("name", "ABCD")):  # fmt: skip
            with self.subTest(order=order):
                rows = self.rows(f"--sort={order}", "a", "b")
                self.assertEqual(want, "".join(row["program"] for row in rows))
        out = self.run_it("--top=2", "a", "b").out.decode()
        self.assertIn("\ntop 2 of 4 lines that changed, 81.0 % of all they changed\n", out)
        result = self.run_it("--top=2", "--csv", "a", "b")
        self.assertEqual((3, b"ptick-diff: 2 of 4 rows left out\n", 0),
                         (result.out.count(b"\r\n"), result.err, result.status))  # fmt: skip

    def test_says_what_is_not_tested(self):
        self.write("odd", traces("A 1 1.5", "A 2 -4"))
        result = self.run_it("empty", "odd")
        self.assertIn("2 lines not tested: ticks that are negative or not whole\n", result.out.decode())
        self.assertEqual([(None, None, True)] * 2,
                         [(row["p"], row["q"], row["significant"]) for row in self.rows("empty", "odd")])

    def test_gates(self):
        total = "the total grew by 20.0 %, from 10000 to 12000 ticks per run: more than {} %\n"
        row = "A line 1 grew by 20.0 % of the old total, from 6000 to 8000 ticks per run: more than {} %\n"
        for arguments, want in (
            (["--fail-slower=20"], []),
            (["--fail-slower=19.9"], [total.format("19.9")]),
            (["--fail-slower=0"], [total.format("0")]),
            (["--fail-slower-row=20"], []),
            (["--fail-slower-row=5"], [row.format("5")]),
            (["--fail-slower-row=5", "--top=1", "--sort=name"], [row.format("5")]),
            (["--fail-slower=5", "--fail-slower-row=0"], [total.format("5"), row.format("0")]),
            (["--fail-slower=5", "--by=counter"], [total.format("5")]),
            (["--fail-slower-row=5", "--by=program"], [row.format("5").replace("A line 1", "A")
                                                       .replace("6000", "9990").replace("8000", "11988")
                                                       .replace("20.0", "19.9")]),
        ):  # fmt: skip
            for form in ([], ["--json"], ["--csv"]):
                with self.subTest(arguments=arguments, form=form):
                    result = self.run_it(*arguments, *form, "old", "new")
                    result.err = result.err.replace(b"ptick-diff: 2 of 3 rows left out\n", b"")
                    self.assertEqual("".join("ptick-diff: " + line for line in want), result.err.decode())
                    self.assertEqual(1 if want else 0, result.status)
        # Twice the ticks, but so few that chance does it.
        self.write("few", traces("A 1 4"))
        self.write("more", traces("A 1 8"))
        self.check_status(0, "--fail-slower=5", "--fail-slower-row=5", "few", "more")
        self.check_status(1, "--fail-slower=5", "empty", "new")
        self.check_status(0, "--fail-slower=5", "new", "old")

    def check_status(self, status, *arguments):
        self.assertEqual(status, self.run_it(*arguments).status)

    def test_names_ten_rows_that_fail(self):
        self.write("rows", traces(*(f"A {line} 1000" for line in range(1, 14))))
        result = self.run_it("--fail-slower-row=1", "old", "rows")
        lines = result.err.decode().splitlines()
        self.assertEqual(11, len(lines))
        self.assertEqual("ptick-diff: 1 more row grew by more than 1 % of the old total", lines[-1])
        self.write("rows", traces(*(f"A {line} 1000" for line in range(1, 19))))
        self.assertIn("6 more rows grew", self.run_it("--fail-slower-row=1", "old", "rows").err.decode())

    def test_refuses_what_makes_no_sense(self):
        for arguments, want in (
            ([], "two profiles are needed, OLD and NEW"),
            (["old"], "two profiles are needed, OLD and NEW"),
            (["old", "new", "new"], "'--vs' is needed between the old and the new profiles"),
            (["old", "--vs"], "profiles are needed on both sides of '--vs'"),
            (["-", "-"], "standard input, '-', can be read only once"),
            (["--json", "--csv", "old", "new"], "there can be only one of '--json' and '--csv'"),
            (["--old-source=.", "old", "new"], "'--old-source' and '--new-source' need each other"),
            (["--old-source=.", "--new-source=.", "--by=program", "old", "new"], "sources are for '--by=line'"),
            (["--fail-slower-row=5", "--by=command", "old", "new"],
             "'--fail-slower-row' is for '--by=line' and '--by=program'"),
            (["--fail-slower=5", "--normalize", "old", "new"],
             "'--fail-slower' would never fail with '--normalize', which makes totals equal"),
        ):  # fmt: skip
            with self.subTest(arguments=arguments):
                self.check(self.run_it(*arguments), err=f"ptick-diff: {want}\n{TRY}", status=2)
        for option in ("--top=0", "--top=x", "--fail-slower=-1", "--fail-slower=5%", "--fail-slower=",
                       "--fail-slower-row=1e3", "--by=lines", "--sort=up"):  # fmt: skip
            with self.subTest(option=option):
                result = self.run_it(option, "old", "new")
                self.assertEqual((b"", 2), (result.out, result.status))
                self.assertIn(option.split("=")[0], result.err.decode())

    def test_totals_that_cannot_be_made_equal_are_trouble(self):
        self.check(self.run_it("--normalize", "old", "empty"), status=2,
                   err="ptick-diff: totals cannot be made equal: one of them is not above 0\n")  # fmt: skip

    def test_names_the_file_that_is_wrong(self):
        self.write("bad", "PROFILE:ticks\t7\nPROFILE:trcae\tA\t1\t2\n")
        for arguments, want in (
            (["old", "nowhere"], "nowhere: No such file or directory"),
            (["old", "bad"], "bad: line 2: unknown record type: PROFILE:trcae ..."),
            (["old", "old", "--vs", "new", "bad", "new"],
             "bad: line 2: unknown record type: PROFILE:trcae ..."),
        ):  # fmt: skip
            with self.subTest(arguments=arguments):
                self.check(self.run_it(*arguments, "-o", "result"), err=f"ptick-diff: {want}\n", status=2)
                self.assertFalse(os.path.exists(os.path.join(self.folder, "result")))
        result = self.run_it("--old-source=nowhere", "--new-source=.", "old", "new")
        self.assertEqual((b"", 2), (result.out, result.status))
        self.assertIn(b"nowhere", result.err)

    def test_reads_pipes(self):
        want = self.run_it("--csv", "old", "new").out
        self.check(self.run_piped(OLD, "--csv", "-", "new"), want)
        command = f"{path_of('ptick-diff')} --csv <(cat old) <(cat new)"
        self.check(self.run_program("bash", "-c", command), want)

    def test_writes_a_file(self):
        self.check(self.run_it("-o", "result", "old", "new"))
        self.assertEqual(self.run_it("old", "new").out, self.read("result"))

    def test_names_on_results(self):
        """Control bytes go into a pipe as they are; names alike as text are two rows."""
        self.write("a", traces("\x1b[31mX 1 500"))
        self.assertIn(b"\x1b[31mX", self.run_it("a", "empty").out)
        self.assertNotIn(b"\x1b", self.run_it("--json", "a", "empty").out)
        self.write("b", b"PROFILE:trace\t\xc4\t1\t500\nPROFILE:trace\t\xc3\x84\t1\t700\n")
        self.assertEqual([("\xc4", 700), ("\xc4", 500)],
                         [(row["program"], row["new"]) for row in self.rows("empty", "b")])  # fmt: skip
        self.assertEqual([], self.rows("b", "b"))

    def test_shows_thirty_rows_on_a_terminal(self):
        self.write("many", traces(*(f"A {line} {1000 + line}" for line in range(1, 41))))
        for options, rows in (([], 30), (["--top=5"], 5), (["--top=all"], 40)):
            with self.subTest(options=options):
                terminal = Terminal([path_of("ptick-diff"), *options, "empty", "many"], self.folder, 24, 60)
                self.assertEqual(0, terminal.end())
                self.assertEqual(rows, terminal.output.count(b"  A  "))
        self.assertEqual(40, self.run_it("empty", "many").out.count(b"  A  "))

    def test_colours_where_told(self):
        self.assertIn(b"\x1b[1;31m+2000", self.run_it("--color=always", "old", "new").out)
        self.assertNotIn(b"\x1b", self.run_it("old", "new").out)


if __name__ == "__main__":
    unittest.main()
