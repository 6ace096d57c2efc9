"""Every form of a run with streams that take nothing, and with files that change under its hands."""

import os
import shutil
import subprocess
import unittest

from support.program import PTICK, ProgramTest, clean_environment

PROFILE = (
    "PROFILE:ticks\t8\nPROFILE:hertz\t100\nPROFILE:trace\tA\t1\t3\nPROFILE:trace\tB\t1\t1\n"
    "PROFILE:shared_object\tlib\t1\nPROFILE:subroutine_call\tA B\t2\nPROFILE:input\t13\t1\t1\t2\tx\n"
    "PROFILE:perform\tstartclock\t1\tendclock\t2\tcmd\tLIST\n"
)
REPORTS = [
    (*options.split(), "run1")
    for options in ("-i", "-n", "-n -fsrc", "-Flist", "-a", "-o", "-ov", "-p", "-pv", "-s", "-A", "-Av")
]
RESULTS = [("run1", "run2"), ("-kkeys", "run1"), ("5", "STOP"), ("5-7", "STOP"), ("-j", "OFF", "5")]
DIAGNOSTICS = [("-x",), ("missing",), ("missing", "run1"), ("-j",), ("bad",)]


class DisturbancesTest(ProgramTest):
    def setUp(self):
        super().setUp()
        for name in ("run1", "run2"):
            self.write(name, PROFILE)
        self.write("bad", "PROFILE:bad\t1\n")
        self.write("src/A", "text of A\n")
        self.write("list", "src\n")

    def start(self, *arguments, redirect="", **settings):
        """The program after a shell's redirections, which it takes the shell's place with."""
        return subprocess.Popen(
            ["bash", "-c", f'exec "$0" "$@" {redirect}', os.path.abspath(PTICK), *arguments],
            cwd=self.folder,
            env=clean_environment(MAVRO_RUNTIME_DIR=os.path.join(self.folder, "none")),
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            **settings,
        )

    def finish(self, process):
        out, err = process.communicate(timeout=60)
        return out, err, process.returncode

    def run_with(self, redirect, *arguments):
        return self.finish(self.start(*arguments, redirect=redirect))

    def test_output_that_is_not_taken_is_an_error(self):
        for redirect, reason in (
            (">/dev/full", b"No space left on device"),
            (">&-", b"Bad file descriptor"),
            (">/dev/full 2>&1", None),
        ):
            for arguments in REPORTS + RESULTS:
                _, err, status = self.run_with(redirect, *arguments)
                with self.subTest(redirect=redirect, arguments=arguments):
                    want = b"ptick: cannot write: " + reason + b"\n" if reason else b""
                    self.assertEqual((want, 1), (err, status))

    def test_a_closed_or_full_terminal_changes_nothing_else(self):
        for arguments in REPORTS + RESULTS + DIAGNOSTICS:
            out, _, status = self.run_with("", *arguments)
            for redirect in ("2>&-", "2>/dev/full", "<&- 2>&-"):
                with self.subTest(redirect=redirect, arguments=arguments):
                    self.assertEqual((out, b"", status), self.run_with(redirect, *arguments))

    def test_usage_that_is_not_taken_is_an_error(self):
        for redirect, want in (("2>&-", 1), ("2>/dev/full", 1), ("<&- 2>&-", 1), ("2>/dev/null", 0)):
            with self.subTest(redirect=redirect):
                self.assertEqual((b"", b"", want), self.run_with(redirect, "-h"))
        _, _, status = self.run_with('2>&1 | head -1; exit "${PIPESTATUS[0]}"', "-h")
        self.assertEqual(0, status)

    def test_a_reader_may_leave_after_the_first_line(self):
        self.write("run1", PROFILE * 5000)
        for arguments in REPORTS[:2] + REPORTS[4:6] + REPORTS[7:10]:
            out, err, status = self.run_with('| head -1; exit "${PIPESTATUS[0]}"', *arguments)
            with self.subTest(arguments=arguments):
                self.assertEqual((1, b"", 0), (out.count(b"\n"), err, status))

    def report_after(self, change, text=PROFILE):
        """The report of a merge whose first profile is a pipe. When the program has opened that, it
        has the source files open and has not looked at anything else: the change comes then."""
        os.mkfifo(os.path.join(self.folder, "pipe"))
        process = self.start("-n", "-fsrc", "pipe", "run1")
        with open(os.path.join(self.folder, "pipe"), "w", encoding="ascii") as pipe:
            change()
            pipe.write(text)
        os.remove(os.path.join(self.folder, "pipe"))
        return self.finish(process)

    def path(self, name):
        return os.path.join(self.folder, name)

    def test_a_profile_may_change_before_it_is_read(self):
        def becomes_a_folder():
            os.remove(self.path("run1"))
            os.mkdir(self.path("run1"))

        gone = b"ptick: [202] cannot read record 'run1' in '.': No such file or directory\n"
        is_folder = b"ptick: [202] cannot read record 'run1' in '.': Is a directory\n"
        for change, ticks, err in (
            (lambda: None, 6, b""),
            (lambda: self.write("run1", ""), 3, b""),
            (lambda: self.write("run1", PROFILE + "PROFILE:trace\tA\t1\t2\n"), 8, b""),
            (lambda: self.write("run1", PROFILE.split("\tB")[0]), 6, b""),
            (lambda: os.remove(self.path("run1")), 3, gone),
            (lambda: (self.write("run1", ""), becomes_a_folder()), 3, is_folder),
        ):
            out, said, status = self.report_after(change)
            with self.subTest(ticks=ticks, err=err):
                self.assertEqual((err, 0), (said, status))
                self.assertIn(b"\nA                    1      %d " % ticks, out)

    def test_a_profile_may_end_in_the_middle_of_a_line(self):
        cut = PROFILE[: PROFILE.index("\tB\t1\t1") + 4]
        out, err, status = self.report_after(lambda: os.truncate(self.path("run1"), 0), cut)
        self.assertEqual((b"", 0), (err, status))
        self.assertIn(b"\nA                    1      3 ", out)

    def test_a_source_text_may_change_before_it_is_read(self):
        def becomes_a_folder():
            os.remove(self.path("src/A"))
            os.mkdir(self.path("src/A"))

        for change, want in (
            (lambda: self.write("src/A", "new text\n"), b"new text\n"),
            (lambda: os.truncate(self.path("src/A"), 0), b"??\n"),
            (lambda: os.remove(self.path("src/A")), b"??\n"),
            (lambda: (self.write("src/A", ""), becomes_a_folder()), b"??\n"),
            (lambda: shutil.rmtree(self.path("src")), b"??\n"),
        ):
            out, err, status = self.report_after(change)
            self.assertEqual((b"", 0), (err, status))
            row = [line for line in out.splitlines(True) if line.startswith(b"A ")]
            self.assertTrue(row[0].endswith(b" " + want), row)


if __name__ == "__main__":
    unittest.main()
