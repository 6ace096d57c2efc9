"""ptick-merge: the merged lines are those of the rules, and what ptick reads; what is bad is told, or left
out whole."""

import os
import resource
import subprocess
import time
import unittest

from companion.literal_merge import merged
from companion.random_profiles import RandomProfile, seeds
from support.companions import CompanionTest, path_of

RUN1 = "PROFILE:program\tA x\nPROFILE:ticks\t5\nPROFILE:trace\tA\t1\t2\n"
RUN2 = "a remark\nPROFILE:trace\tA\t1\t3\nPROFILE:trace\tB\t1\t1"
BOTH = "PROFILE:ticks\t5\nPROFILE:trace\tA\t1\t5\nPROFILE:trace\tB\t1\t1\n"
BAD = "PROFILE:ticks\t7\nPROFILE:trcae\tA\t1\t2\n"
BAD_TOLD = "line 2: unknown record type: PROFILE:trcae ..."
TRY = "Try 'ptick-merge --help' for more information.\n"


class MergeTest(CompanionTest):
    companion = "ptick-merge"

    def setUp(self):
        super().setUp()
        self.write("run1", RUN1)
        self.write("run2", RUN2)
        self.write("bad", BAD)
        self.write("empty", "")

    def test_merges_in_order(self):
        for arguments, want in [
            (["run1", "run2"], BOTH),
            (["run1"], "PROFILE:ticks\t5\nPROFILE:trace\tA\t1\t2\n"),
            (["run2"], "PROFILE:trace\tA\t1\t3\nPROFILE:trace\tB\t1\t1\n"),
            (["empty"], ""),
            (["empty", "/dev/null"], ""),
            (["--program=A x", "run1"], "PROFILE:program\tA x\nPROFILE:ticks\t5\nPROFILE:trace\tA\t1\t2\n"),
            (["--program", "", "empty"], "PROFILE:program\t\n"),
            (["-k", "run1", "run2"], BOTH),
            (["-o", "-", "run1", "run2"], BOTH),
        ]:
            with self.subTest(arguments=arguments):
                self.check(self.run_it(*arguments), want)

    def test_reads_standard_input(self):
        self.check(self.run_piped(RUN2, "run1", "-"), BOTH)
        self.check(self.run_piped(RUN1 + RUN2), BOTH)
        self.check(self.run_piped(RUN1, "-", "run2", "-"), BOTH)
        self.check(self.run_piped(BAD, "-"), err=f"ptick-merge: standard input: {BAD_TOLD}\n", status=2)

    def test_reads_substituted_processes(self):
        command = f"{path_of('ptick-merge')} <(cat run1) <(cat run2)"
        self.check(self.run_program("bash", "-c", command), BOTH)

    def test_reads_lists(self):
        self.write("lines", "run1\n\n\nrun2")
        self.write("zeros", "run1\0run2\0")
        self.write("a\nb", RUN2)
        self.write("odd", "run1\0a\nb")
        for arguments in (["--files-from=lines"], ["--files0-from", "zeros"], ["--files0-from=odd"]):
            self.check(self.run_it(*arguments), BOTH)
        self.check(self.run_piped("run1\nrun2\n", "--files-from=-"), BOTH)
        self.check(self.run_piped("run1\0run2", "--files0-from=-"), BOTH)

    def test_refuses_lists_that_are_wrong(self):
        self.write("zeros", "run1\0\0run2\0")
        self.write("nothing", "\n\n")
        for arguments, message in [
            (["--files0-from=zeros"], "zeros: name 2 is empty"),
            (["--files-from=nothing"], "nothing: names no profile"),
            (["--files0-from=empty"], "empty: names no profile"),
            (["--files-from=none"], "none: No such file or directory"),
            (["--files-from=."], ".: Is a directory"),
        ]:
            with self.subTest(arguments=arguments):
                self.check(self.run_it(*arguments), err=f"ptick-merge: {message}\n", status=2)
        told = "ptick-merge: standard input: '-' cannot be a profile where the names come from there\n"
        self.check(self.run_piped("run1\n-\n", "--files-from=-"), err=told, status=2)

    def test_refuses_wrong_use(self):
        both = "profiles are named by a list or as operands, not both"
        lists = "there can be only one list of profiles"
        text = "the text of option '--program' has a line end or a byte 254 in it"
        for arguments, message in [
            (["--files-from=a", "run1"], both),
            (["run1", "--files0-from=a"], both),
            (["--files-from=a", "--files0-from=b"], lists),
            (["--files-from=a", "--files-from=b"], lists),
            (["--program=a\nb"], text),
            (["--program", b"a\xfeb"], text),
        ]:
            with self.subTest(arguments=arguments):
                self.check(self.run_it(*arguments), err=f"ptick-merge: {message}\n{TRY}", status=2)

    def test_trouble_leaves_no_result(self):
        for arguments, message in [
            (["run1", "bad", "run2"], f"bad: {BAD_TOLD}"),
            (["bad"], f"bad: {BAD_TOLD}"),
            (["run1", "none"], "none: No such file or directory"),
            (["run1", "."], ".: Is a directory"),
            (["run1", ""], "'': No such file or directory"),
            (["-k", "bad"], f"bad: {BAD_TOLD}\nptick-merge: no profile is left"),
        ]:
            with self.subTest(arguments=arguments):
                err = f"ptick-merge: {message}\n"
                self.check(self.run_it(*arguments), err=err, status=2)
                self.check(self.run_it(*arguments, "-o", "new"), err=err, status=2)
                self.assertFalse(os.path.exists(os.path.join(self.folder, "new")))
                self.write("old", "as it was")
                self.check(self.run_it(*arguments, "-oold"), err=err, status=2)
                self.assertEqual(b"as it was", self.read("old"))

    def test_keeps_going_without_what_is_bad(self):
        self.write("late", RUN2 + "\n" * 3 + "\tPROFILE:\n")
        err = (
            f"ptick-merge: bad: {BAD_TOLD}\n"
            "ptick-merge: none: No such file or directory\n"
            "ptick-merge: late: line 6: unknown record type: PROFILE:\n"
            "ptick-merge: 3 of 5 profiles left out\n"
        )
        result = self.run_it("--keep-going", "run1", "bad", "none", "late", "run2", "-o", "out")
        self.check(result, err=err, status=1)
        self.assertEqual(BOTH.encode(), self.read("out"))

    def test_the_result_may_be_one_of_the_profiles(self):
        self.check(self.run_it("run1", "run2", "-o", "run1"))
        self.assertEqual(BOTH.encode(), self.read("run1"))

    def test_the_lines_are_those_of_the_rules(self):
        for seed in seeds(150):
            texts = [RandomProfile(seed * 10 + n).text() for n in range(seed % 5 + 1)]
            names = [self.write(f"r{n}", text) for n, text in enumerate(texts)]
            with self.subTest(seed=seed):
                want = merged(texts)
                self.check(self.run_it(*names), want)
                self.assertEqual(want, self.run_it("-kq", "bad", *names, "bad").out)

    def test_ptick_prints_the_rows_that_it_prints_for_the_files(self):
        for seed in seeds(25):
            names = [self.write(f"r{n}", RandomProfile(seed * 10 + n).text(60)) for n in range(3)]
            self.check(self.run_it(*names, "-o", "merged"))
            for option in ("-v", "-n", "-nu", "-i", "-a", "-p", "-pv", "-s", "-o"):
                with self.subTest(seed=seed, option=option):
                    of_files = self.run_ptick(option, *names)
                    of_merged = self.run_ptick(option, "merged")
                    rows = [run.out.partition(b"\n")[2] for run in (of_files, of_merged)]
                    self.assertEqual(*rows)
                    self.assertEqual(of_files.status, of_merged.status)

    def test_merges_of_merges_are_the_same_bytes(self):
        for seed in seeds(40):
            texts = [RandomProfile(seed * 10 + n, is_tame=True).text() for n in range(6)]
            names = [self.write(f"r{n}", text) for n, text in enumerate(texts)]
            whole = self.run_it(*names).out
            for cut in range(1, 6):
                parts = []
                for number, part in enumerate((names[:cut], names[cut:])):
                    parts.append(os.path.join(self.folder, f"part{number}"))
                    self.check(self.run_it(*part, "-o", parts[-1]))
                with self.subTest(seed=seed, cut=cut):
                    self.check(self.run_it(*parts), whole)
            self.check(self.run_it(*(["-"] if not whole else [self.write("w", whole)])), whole)

    def test_many_files_are_open_one_at_a_time(self):
        folder = os.path.join(self.folder, "many")
        os.mkdir(folder)
        for number in range(2000):
            self.write(f"many/{number}", RUN1)
        self.write("names", "".join(f"many/{number}\n" for number in range(2000)))
        for options in ([], ["-k"]):
            limit = lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (12, 12))  # noqa: E731
            run = subprocess.run(
                [path_of("ptick-merge"), *options, "--files-from=names"], cwd=self.folder,
                stdout=subprocess.PIPE, preexec_fn=limit, check=True)  # fmt: skip
            self.assertEqual(b"PROFILE:ticks\t10000\nPROFILE:trace\tA\t1\t4000\n", run.stdout)

    def test_time_does_not_grow_with_the_files_left_out(self):
        # Each breaks off after more lines than wait for the end.
        text = "".join(f"PROFILE:trace\tPROGRAM\t{line}\t1\n" for line in range(1, 60001))
        bad = self.write("long", text + "PROFILE:bogus\n")
        begin = time.monotonic()
        self.assertEqual(2, self.run_it("-k", *[bad] * 5).status)
        few = time.monotonic() - begin
        begin = time.monotonic()
        result = self.run_it("-k", "run1", *[bad] * 40, "run2")
        many = time.monotonic() - begin
        self.assertEqual((BOTH.encode(), 1), (result.out, result.status))
        self.assertLess(many, 40 * max(few, 0.05))


if __name__ == "__main__":
    unittest.main()
