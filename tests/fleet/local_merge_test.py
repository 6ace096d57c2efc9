"""ptick-fleet on this machine: the bytes of ptick-merge, without a cluster and without a port."""

import os
import random
import signal
import stat
import subprocess
import time
import unittest

from support.cluster import children_of, processes_with, wait_until
from support.fleet import FLEET, PATH, FleetTest, seconds_since
from support.program import clean_environment
from support.terminal import Terminal


class LocalMergeTest(FleetTest):
    def test_random_fleets_give_the_bytes_of_ptick_merge(self):
        for seed in range(8):
            source = random.Random(seed)
            count = source.choice((1, 2, 9, 60))
            names = self.make_fleet(count, seed)
            want = self.merged(*names)
            arguments = [
                f"--workers={source.randrange(1, 9)}",
                f"--group-files={source.randrange(1, 12)}",
                f"--group-bytes={source.choice((1, 900, 10**6))}",
                f"--fan-in={source.choice((2, 3, 16))}",
            ]
            with self.subTest(seed=seed, count=count, arguments=arguments):
                self.check_merged(self.fleet(*arguments, *names), want)
                self.check_clean()

    def test_lists_name_the_profiles(self):
        names = self.make_fleet(20, 1)
        want = self.merged(*names)
        self.write("lines", "".join(name + "\n" for name in names))
        self.write("zeros", "".join(name + "\0" for name in names))
        self.check_merged(self.fleet("--files-from=lines"), want)
        self.check_merged(self.fleet("--files0-from=zeros"), want)
        with open(os.path.join(self.folder, "zeros"), "rb") as zeros:
            self.check_merged(self.fleet("--files0-from=-", stdin=zeros), want)
        read, write = os.pipe()
        os.write(write, self.read("lines"))
        os.close(write)
        self.check_merged(self.fleet("--files-from=-", stdin=read), want)
        os.close(read)

    def test_names_may_be_any_bytes(self):
        names = [b"a\nb", b"\xff\xfe", b"-k", b" ", b"\xe2\x80\xae", b"x: line 3: y"]
        for name in names:
            with open(os.path.join(os.fsencode(self.folder), name), "wb") as file:
                file.write(b"PROFILE:ticks\t5\n")
        result = self.fleet("-q", "--group-files=2", "--", *names)
        self.assertEqual((b"PROFILE:ticks\t30\n", b"", 0), (result.out, result.err, result.status))
        for name in names:
            with open(os.path.join(os.fsencode(self.folder), name), "wb") as file:
                file.write(b"PROFILE:tciks\t5\n")
            result = self.fleet("--", name)
            told = b"ptick-fleet: %s: line 1: unknown record type: PROFILE:tciks ...\n" % name
            self.assertEqual((b"", told, 2), (result.out, result.err, result.status))

    def test_messages_are_those_of_ptick_merge(self):
        self.write("good", "PROFILE:ticks\t1\n")
        self.write("bad", "PROFILE:ticks\t1\nPROFILE:tciks\t1\n")
        for arguments in (
            ["good", "bad", "gone"], ["good", "gone", "bad"], ["-k", "bad", "gone"], [""],
            ["-k", "good", "bad", "gone"], ["-k", "good"], ["good", "/"], ["-k", "good", "/", "bad"],
            ["--files-from=gone"], ["--files0-from=/dev/null"], ["-o", "gone/x", "good"],
            ["-o", "/", "good"], ["-o", "", "good"], ["-o", "good/x", "good"],
        ):  # fmt: skip
            want = self.merged(*arguments)
            told = want.err.replace(b"ptick-merge: ", b"ptick-fleet: ")
            for group in ("--group-files=1", "--group-files=9"):
                with self.subTest(arguments=arguments, group=group):
                    result = self.fleet("-q", group, *arguments)
                    self.assertEqual(
                        (told, want.out, want.status), (result.err, result.out, result.status)
                    )
                    self.check_clean()

    def test_nothing_that_workers_could_not_read_again_is_taken(self):
        os.mkfifo(os.path.join(self.folder, "pipe"))
        for name in ("-", "/dev/stdin", "/dev/fd/0", "/proc/self/fd/0", "pipe"):
            result = self.fleet(name)
            self.assertEqual((b"", 2), (result.out, result.status), name)
            self.assertEqual(1, result.err.count(b"\n"))

    def test_no_profiles_are_wrong_use(self):
        result = self.fleet()
        self.assertEqual(
            (b"ptick-fleet: missing operand\n"
             b"Try 'ptick-fleet --help' for more information.\n", 2),
            (result.err, result.status),
        )  # fmt: skip

    def test_a_result_is_whole_or_as_it_was(self):
        [name] = self.make_fleet(1, 3)
        self.write("result", "old")
        os.chmod(os.path.join(self.folder, "result"), 0o640)
        os.symlink("result", os.path.join(self.folder, "link"))
        self.assertEqual(2, self.fleet("-o", "link", name, "gone").status)
        self.assertEqual(b"old", self.read("result"))
        self.assertEqual(0, self.fleet("-o", "link", name).status)
        self.assertEqual(self.merged(name).out, self.read("result"))
        self.assertTrue(os.path.islink(os.path.join(self.folder, "link")))
        mode = os.stat(os.path.join(self.folder, "result")).st_mode
        self.assertEqual(0o640, stat.S_IMODE(mode))
        self.check_clean()

    def test_a_new_result_has_the_mode_of_the_umask(self):
        [name] = self.make_fleet(1, 3)
        result = subprocess.run(
            [FLEET, "merge", "-q", "-o", "new", name],
            cwd=self.folder, env=clean_environment(PATH=PATH), umask=0o027, check=True,
        )  # fmt: skip
        self.assertEqual(0, result.returncode)
        self.assertEqual(0o640, os.stat(os.path.join(self.folder, "new")).st_mode & 0o777)

    def test_what_is_no_file_is_written(self):
        self.write("good", "PROFILE:ticks\t1\n")
        result = self.fleet("-q", "-o", "/dev/stdout", "good")
        self.assertEqual((b"PROFILE:ticks\t1\n", b"", 0), (result.out, result.err, result.status))
        result = self.fleet("-q", "-o", "/dev/full", "good")
        told = b"ptick-fleet: /dev/full: No space left on device\n"
        self.assertEqual((told, 2), (result.err, result.status))

    def test_a_closed_pipe_is_silent_and_a_closed_output_is_not(self):
        self.write("big", "".join(f"PROFILE:trace\tA\t{row}\t1\n" for row in range(50_000)))
        command = f'"{FLEET}" merge -q big'
        result = self.run_program("bash", "-c", f"{command} | head -n 1", PATH=PATH)
        self.assertEqual((b"PROFILE:trace\tA\t0\t1\n", b""), (result.out, result.err))
        result = self.run_program("bash", "-c", f"{command} >&-", PATH=PATH)
        told = b"ptick-fleet: standard output: Bad file descriptor\n"
        self.assertEqual((b"", told, 2), (result.out, result.err, result.status))

    def test_large_results_go_through_files(self):
        for at in range(3):
            self.write(f"big{at}", "".join(f"PROFILE:trace\tP{at}\t{row}\t1\n" for row in range(60_000)))
        names = ["big0", "big1", "big2"]
        want = self.merged(*names)
        process = self.start_fleet("--group-files=1", "--fan-in=2", "--work-dir=work folder", *names)
        out, err = process.communicate(timeout=60)
        self.assertEqual(0, process.returncode, err)
        self.assertTrue(out == want.out)
        self.check_clean()

    def test_signals_end_it_and_what_it_runs(self):
        names = self.make_fleet(4, 5)
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with self.subTest(number=number):
                process = self.start_fleet(
                    self.slow_merge(100), "--workers=2", "--group-files=1", "-o", "result", *names
                )
                wait_until(lambda pid=process.pid: len(children_of(pid)) == 2, "two steps")
                begin = time.monotonic()
                process.send_signal(number)
                out, err = process.communicate(timeout=60)
                self.assertEqual((b"", b"", -number), (out, err, process.returncode))
                self.assertLess(seconds_since(begin), 5)
                self.assertFalse(os.path.exists(os.path.join(self.folder, "result")))
                self.assertEqual([], processes_with(self.folder))
                self.check_clean()

    def test_signals_that_are_ignored_stay_so(self):
        names = self.make_fleet(2, 5)
        process = subprocess.Popen(
            ["bash", "-c", 'trap "" INT; exec "$@"', "bash", FLEET, "merge", "-q",
             self.slow_merge(1), *names],
            cwd=self.folder, env=clean_environment(PATH=PATH, TMPDIR=self.work),
            stdout=subprocess.PIPE, stderr=subprocess.PIPE,
        )  # fmt: skip
        self.addCleanup(process.kill)
        wait_until(lambda: len(children_of(process.pid)) == 1, "a step")
        process.send_signal(signal.SIGINT)
        out, err = process.communicate(timeout=60)
        self.assertEqual((self.merged(*names).out, b"", 0), (out, err, process.returncode))

    def test_a_killed_run_leaves_no_process(self):
        process = self.start_fleet(self.slow_merge(100), *self.make_fleet(1, 6))
        wait_until(lambda: len(children_of(process.pid)) == 1, "a step")
        process.kill()
        wait_until(lambda: not processes_with(self.folder), "the step to end")

    def test_no_port_is_opened(self):
        process = self.start_fleet(self.slow_merge(100), *self.make_fleet(1, 6))
        wait_until(lambda: len(children_of(process.pid)) == 1, "a step")
        folder = f"/proc/{process.pid}/fd"
        open_files = [os.readlink(os.path.join(folder, name)) for name in os.listdir(folder)]
        # The one pair is how signals wake the event loop.
        sockets = [name.partition("[")[2].rstrip("]") for name in open_files if "socket:" in name]
        for kind in ("tcp", "tcp6", "udp", "udp6"):
            with open(f"/proc/net/{kind}", encoding="ascii") as file:
                inodes = {line.split()[9] for line in file}
            self.assertEqual(set(), inodes & set(sockets))

    def test_a_program_that_is_killed_is_run_again(self):
        names = self.make_fleet(3, 7)
        program = self.write(
            "dies-once",
            f'#!/bin/sh\nmkdir "{self.folder}/died" 2>/dev/null && kill -9 $$\nexec ptick-merge "$@"\n',
        )
        os.chmod(program, 0o755)
        result = self.fleet("--group-files=1", "--ptick-merge=" + program, *names)
        self.check_merged(result, self.merged(*names))
        self.assertIn("1 step done again", result.err.decode())

    def test_progress_is_for_terminals_and_goes(self):
        names = self.make_fleet(4, 8)
        slow = self.slow_merge(0.7)
        for options, is_shown in (([], True), (["-q"], False)):
            terminal = Terminal(
                [FLEET, "merge", slow, "--workers=1", "--group-files=1", "-o", "x", *options, *names],
                self.folder, rows=24, columns=60, PATH=PATH, TERM="xterm", TMPDIR=self.work,
            )  # fmt: skip
            self.assertEqual(0, terminal.end())
            with self.subTest(options=options):
                lines = terminal.output.split(b"\r\x1b[K")
                self.assertEqual(is_shown, len(lines) > 3)
                if is_shown:
                    self.assertRegex(lines[1].decode(), r"^ptick-fleet: \d profiles?, .* read, .*/s, ")
                    self.assertLess(max(map(len, lines[1:-1])), 60)
                    self.assertTrue(lines[-1].startswith(b"ptick-fleet: 4 profiles, "))
                else:
                    self.assertEqual(b"", terminal.output)


if __name__ == "__main__":
    unittest.main()
