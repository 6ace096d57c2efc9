"""What all companions do alike, asked of each of them: where results go, what is said of trouble, progress."""

import os
import stat
import subprocess
import time
import unittest

from support.companions import path_of
from support.program import ProgramTest, clean_environment
from support.terminal import Terminal

# Runs that read the profiles whose names follow; one of a result that is no text.
FORMS = {
    "ptick-merge": ["ptick-merge"],
    "ptick-merge --keep-going": ["ptick-merge", "--keep-going"],
    "ptick-diff": ["ptick-diff", "run"],
    "ptick-annotate": ["ptick-annotate", "-f", "src"],
    "ptick-export": ["ptick-export", "--to=json"],
    "ptick-export, bytes": ["ptick-export", "--to=pprof"],
    "ptick-view": ["ptick-view"],
}
PROFILE = "PROFILE:program\tA\nPROFILE:trace\tA\t1\t900\nPROFILE:trace\tB\t2\t5\n"


class AllProgramsTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("run", PROFILE)
        self.write("other", PROFILE.replace("900", "500"))
        self.write("src/A", "PRINT 1\n")

    def each(self):
        for name, (program, *options) in FORMS.items():
            with self.subTest(name=name):
                yield program, [path_of(program), *options]

    def run_to(self, output, words, **settings):
        return subprocess.run(words, cwd=self.folder, env=clean_environment(), stdin=subprocess.DEVNULL,
                              stdout=output, stderr=subprocess.PIPE, check=False, **settings)  # fmt: skip

    def told(self, program, reason):
        return f"{program}: {reason}\n".encode()

    def result(self, words):
        return self.run_program(*words, "other", "-o", "-").out

    def test_a_result_that_cannot_be_written_is_trouble(self):
        for program, words in self.each():
            with open("/dev/full", "wb") as full:
                run = self.run_to(full, [*words, "other", "-o", "-"])
            self.assertTrue(run.stderr.endswith(self.told(program, "standard output: No space left on device")))
            self.assertEqual(2, run.returncode)
            run = self.run_program(*words, "other", "-o", "/dev/full")
            self.assertTrue(run.err.endswith(self.told(program, "/dev/full: No space left on device")), run.err)
            self.assertEqual((b"", 2), (run.out, run.status))
            run = self.run_program("sh", "-c", 'exec "$@" >&-', "sh", *words, "other", "-o", "-")
            self.assertTrue(run.err.endswith(self.told(program, "standard output: Bad file descriptor")), run.err)
            self.assertEqual(2, run.status)

    def test_nothing_is_said_where_nobody_reads(self):
        for _, words in self.each():
            whole = self.run_program(*words, "other", "-o", "-")
            read, write = os.pipe()
            os.close(read)
            run = self.run_to(write, [*words, "other", "-o", "-"])
            os.close(write)
            self.assertEqual((whole.err, whole.status), (run.stderr, run.returncode))

    def test_results_are_whole_files_of_the_usual_mode(self):
        for _, words in self.each():
            want = self.result(words)
            self.run_to(None, [*words, "other", "-o", "result"], umask=0o026)
            path = os.path.join(self.folder, "result")
            self.assertEqual(0o640, stat.S_IMODE(os.stat(path).st_mode))
            self.assertEqual(want, self.read("result"))
            os.chmod(path, 0o604)
            self.write("result", "as it was")
            os.symlink("result", os.path.join(self.folder, "link"))
            self.run_to(None, [*words, "other", "--output=link"])
            self.assertEqual(want, self.read("result"))
            self.assertTrue(os.path.islink(os.path.join(self.folder, "link")))
            self.assertEqual(0o604, stat.S_IMODE(os.stat(path).st_mode))
            self.assertEqual(["link", "other", "result", "run", "src"], sorted(os.listdir(self.folder)))
            os.remove(path)
            os.remove(os.path.join(self.folder, "link"))

    def test_pipes_are_written_and_stay(self):
        fifo = os.path.join(self.folder, "fifo")
        os.mkfifo(fifo)
        for _, words in self.each():
            want = self.result(words)
            with open(os.path.join(self.folder, "read"), "wb") as file:
                with subprocess.Popen(["cat", fifo], stdout=file):
                    self.run_to(None, [*words, "other", "-o", "fifo"], timeout=20)
            self.assertEqual(want, self.read("read"))
            self.assertTrue(stat.S_ISFIFO(os.stat(fifo).st_mode))

    def test_trouble_with_a_profile_names_it_and_leaves_the_old_result(self):
        self.write("bad", PROFILE + "PROFILE:trcae\tA\t1\t1\n")
        self.write("result", "as it was")
        for program, words in self.each():
            for name, reason in (("missing", "No such file or directory"), ("src", "Is a directory"),
                                 ("bad", "line 4: unknown record type: PROFILE:trcae ...")):  # fmt: skip
                run = self.run_program(*words, name, "-o", "result")
                self.assertEqual((b"", 2), (run.out, run.status))
                self.assertTrue(run.err.startswith(self.told(program, f"{name}: {reason}")), run.err)
                self.assertEqual(b"as it was", self.read("result"))
            self.assertEqual(["bad", "other", "result", "run", "src"], sorted(os.listdir(self.folder)))

    def test_empty_profiles_and_closed_input_do_no_harm(self):
        for _, words in self.each():
            self.assertEqual((b"", 0), self.run_program(*words, "/dev/null", "-o", "empty").out_and_status())
            self.assertTrue(os.path.exists(os.path.join(self.folder, "empty")))
            run = self.run_program("sh", "-c", 'exec "$@" <&-', "sh", *words, "other", "-o", "-")
            self.assertEqual((self.result(words), 0), run.out_and_status())

    def test_a_wrong_option_is_told_in_two_lines(self):
        for program, words in self.each():
            for option, reason in (("--nonsense", "unknown option '--nonsense'"),
                                   ("--color=x", "option '--color': 'x' is not auto, always or never"),
                                   ("--quiet=1", "option '--quiet' takes no value"),
                                   ("--output", "option '--output' needs a value")):  # fmt: skip
                run = self.run_program(*words, "other", option)
                want = self.told(program, f"{reason}\nTry '{program} --help' for more information.")
                self.assertEqual((b"", want, 2), (run.out, run.err, run.status))

    def test_progress_is_shown_unless_quiet(self):
        """All at once, for each of them waits for a second."""
        runs = []
        for name, (program, *options) in FORMS.items():
            for quiet in ([], ["-q"]):
                fifo = os.path.join(self.folder, f"fifo{len(runs)}")
                os.mkfifo(fifo)
                words = [path_of(program), *options, *quiet, fifo, "-o", "/dev/null"]
                runs.append((name, program, quiet, fifo, Terminal(words, self.folder, 24, 80, TERM="xterm")))
        # Now that no terminal is to come: what it keeps open would never end.
        pipes = [os.open(fifo, os.O_WRONLY) for *_, fifo, _ in runs]
        for pipe in pipes:
            os.write(pipe, PROFILE.encode())
        time.sleep(1.1)  # what takes less shows none
        for pipe, (_, program, quiet, _, terminal) in zip(pipes, runs):
            os.write(pipe, PROFILE.encode())
            if not quiet:
                terminal.wait_for(b"\x1b[K%s: " % program.encode())
                terminal.wait_for(b" bytes read")
        for pipe, (name, _, quiet, _, terminal) in zip(pipes, runs):
            os.close(pipe)
            with self.subTest(name=name, quiet=quiet):
                self.assertEqual(0, terminal.end())
                self.assertEqual(not quiet, b"bytes read" in terminal.output)
                if not quiet:
                    self.assertIn(b"\r\x1b[K", terminal.output[terminal.output.rindex(b"bytes read") :])


if __name__ == "__main__":
    unittest.main()
