"""The commands that a run starts (size, dcopy, the shell): what counts of what they write, what a run
says when it has not enough to start them, and that none outlives it."""

import ctypes
import os
import resource
import signal
import subprocess
import time
import unittest

from support.program import PTICK, ProgramTest, clean_environment

PR_SET_CHILD_SUBREAPER = 36
PATIENCE = 60  # seconds after which a test gives up; none waits for it when all is well
NAME_WIDTH = 60
PROFILE = "PROFILE:hertz\t100\nPROFILE:input\t13\t1\t1\t2\tx\n"
MUCH_INPUT = "PROFILE:input\t13\t1\t1\t2\t" + "x" * 1_000_000 + "\n"


def objects(*names):
    return "".join(f"PROFILE:shared_object\t{name}\t1\n" for name in names)


class CommandTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("run1", PROFILE + objects("lib"))
        self.path = os.path.join(self.folder, "bin") + ":" + os.environ["PATH"]

    def command(self, name, body):
        os.chmod(self.write(f"bin/{name}", f"#!/bin/sh\n{body}\n"), 0o755)

    def ptick(self, *arguments, limits=":"):
        """A run by a shell that has set `limits`."""
        command = f'{limits}; exec "$0" "$@"'
        return self.run_program(
            "bash", "-c", command, os.path.abspath(PTICK), *arguments, PATH=self.path
        )

    def sizes(self, result):
        """What follows the names in a report."""
        return [line[NAME_WIDTH + 1 :].decode() for line in result.out.splitlines()[2:]]


class SizesTest(CommandTest):
    def test_the_first_field_counts_as_soon_as_it_is_complete(self):
        for body, want in (
            ("echo first; exec sleep 30", "first"),
            ("echo error >&2; sleep 30", "error"),
            (r"printf 'one\376two\n'", "one"),
            (r"printf 'one\376'; sleep 30", "one"),
            ("printf unended", "unended"),
        ):
            self.command("size", body)
            start = time.monotonic()
            with self.subTest(body=body):
                result = self.ptick("-ov", "run1")
                self.assertEqual((0, b"", [want]), (result.status, result.err, self.sizes(result)))
                self.assertLess(time.monotonic() - start, 20)

    def test_each_name_is_asked_for_once_and_as_a_name(self):
        self.command("size", 'echo asked >> asked; echo "$# $*"')
        self.write("run1", objects("lib b", "@run1", "-A -x", "lib b", "@run1"))
        result = self.ptick("-ov", "run1")
        self.assertEqual(
            ["2 ./-A ./-x", "1 ./@run1", "1 ./@run1", "2 lib b", "2 lib b"], self.sizes(result)
        )
        self.assertEqual(b"asked\n" * 3, self.read("asked"))

    def test_without_size_its_column_stays_empty(self):
        self.path = self.folder
        result = self.run_program(os.path.abspath(PTICK), "-ov", "run1", PATH=self.path)
        self.assertEqual((0, b""), (result.status, result.err))
        self.assertTrue(result.out.endswith(b"\nlib\n"), result.out)


class FewDescriptorsTest(CommandTest):
    """With any number of descriptors a run does its work or says what it lacks."""

    LIMITS = range(5, 24)

    def test_sizes(self):
        os.makedirs(os.path.join(self.folder, "bin"))
        os.symlink("/bin/echo", os.path.join(self.folder, "bin", "size"))
        names = [f"lib{n:02}" for n in range(40)]
        self.write("run1", objects(*names))
        lacking = set()
        for limit in self.LIMITS:
            result = self.ptick("-ov", "run1", limits=f"ulimit -n {limit}")
            with self.subTest(limit=limit):
                if result.status == 0:
                    self.assertEqual(b"", result.err)
                    self.assertEqual(names, self.sizes(result))
                else:
                    lacking.add(limit)
                    self.assertEqual(1, result.status)
                    self.assertEqual(b"ptick: cannot run size: Too many open files\n", result.err)
                    self.assertEqual([""] * len(names), self.sizes(result))
        self.assertIn(5, lacking)
        self.assertNotIn(23, lacking)

    def test_keyboard_script(self):
        self.command("dcopy", "echo installed; cat")
        lacking = set()
        for limit in self.LIMITS:
            result = self.ptick("-kkeys", "run1", limits=f"ulimit -n {limit}")
            with self.subTest(limit=limit):
                if result.status == 0:
                    self.assertEqual(
                        (b"Keyboard profile written to 'keys'\n", b""), (result.out, result.err)
                    )
                    self.assertTrue(self.read("keys").startswith(b"installed\n*\n"))
                else:
                    lacking.add(limit)
                    self.assertEqual((1, b""), (result.status, result.out))
                    self.assertEqual(
                        b"ptick: cannot run the shell: Too many open files\n", result.err
                    )
        self.assertIn(5, lacking)
        self.assertNotIn(23, lacking)


class NothingLeftTest(CommandTest):
    SIGNALS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGQUIT, signal.SIGKILL)
    # Ends by no signal but SIGKILL, nor does what it has started.
    STUBBORN = "trap '' INT TERM HUP QUIT; { read x < never; } & echo > started; read x < never"

    def setUp(self):
        super().setUp()
        ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        resource.setrlimit(resource.RLIMIT_CORE, (0, resource.getrlimit(resource.RLIMIT_CORE)[1]))
        for name in ("never", "started", "keys"):
            os.mkfifo(os.path.join(self.folder, name))

    def start(self, *arguments):
        return subprocess.Popen(
            [os.path.abspath(PTICK), *arguments],
            cwd=self.folder,
            env=clean_environment(PATH=self.path),
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
            start_new_session=True,
        )

    def check_ends(self, process, number):
        process.send_signal(number)
        self.assertEqual(-number, process.wait(timeout=PATIENCE))
        deadline = time.monotonic() + PATIENCE
        stayed = []
        while orphans := self.children_of(os.getpid()):
            if time.monotonic() > deadline:
                stayed += orphans
                for pid in orphans:
                    os.kill(pid, signal.SIGKILL)
            for pid in orphans:
                os.waitpid(pid, os.WNOHANG)
            time.sleep(0.001)
        self.assertEqual([], stayed, "went on running")

    def test_by_what_signal_a_run_ends(self):
        self.command("size", self.STUBBORN)
        self.command("dcopy", self.STUBBORN)
        for arguments, profile in (
            (("-ov", "run1"), objects("lib")),
            (("-ov", "run1"), objects("lib", "a", "b")),
            (("-kscript", "run1"), PROFILE),
            (("-kscript", "run1"), MUCH_INPUT),
        ):
            self.write("run1", profile)
            for number in self.SIGNALS:
                with self.subTest(arguments=arguments, bytes=len(profile), signal=number):
                    process = self.start(*arguments)
                    self.assertIn(b"\n", self.read("started"))
                    self.check_ends(process, number)

    def test_by_what_signal_a_run_ends_whose_script_nobody_reads(self):
        for profile in (PROFILE, MUCH_INPUT):
            self.write("run1", profile)
            for number in self.SIGNALS:
                with self.subTest(bytes=len(profile), signal=number):
                    process = self.start("-kkeys", "run1")
                    while not self.children_of(process.pid):
                        pass
                    self.check_ends(process, number)

    @staticmethod
    def children_of(pid):
        with open(f"/proc/{pid}/task/{pid}/children", encoding="ascii") as file:
            return [int(child) for child in file.read().split()]


if __name__ == "__main__":
    unittest.main()
