"""Runs ptick-fleet on fleets of profiles, and compares with ptick-merge."""

import os
import random
import subprocess
import time

from companion.random_profiles import RandomProfile
from support.program import PTICK, ProgramTest, clean_environment

BUILD_DIR = os.environ.get("PTICK_BUILD_DIR", "build/dev")
FLEET = os.path.abspath(os.path.join(BUILD_DIR, "ptick-fleet"))
PROGRAMS = os.path.dirname(os.path.abspath(PTICK))
PATH = os.pathsep.join([PROGRAMS, "/usr/bin", "/bin"])


class FleetTest(ProgramTest):
    """A test with profiles, and folders that must be clean at its end."""

    def setUp(self):
        super().setUp()
        self.work = os.path.join(self.folder, "work folder")
        os.mkdir(self.work)

    def make_fleet(self, count, seed):
        source = random.Random(seed)
        names = [f"day {source.randrange(3)}/{at:04}" for at in range(count)]
        for at, name in enumerate(names):
            profile = RandomProfile(f"{seed} {at}", is_tame=True)
            self.write(name, profile.text() if source.random() < 0.9 else "")
        return names

    def list_of(self, names, name="list"):
        self.write(name, "".join(name + "\0" for name in names))
        return "--files0-from=" + name

    def merged(self, *arguments):
        """What ptick-merge says, for comparison."""
        return self.run_program(os.path.join(PROGRAMS, "ptick-merge"), *arguments, PATH=PATH)

    def fleet(self, *arguments, **settings):
        settings.setdefault("PATH", PATH)
        settings.setdefault("TMPDIR", self.work)
        return self.run_program(FLEET, "merge", *arguments, **settings)

    def start_fleet(self, *arguments, path=PATH):
        """A run that the test disturbs."""
        process = subprocess.Popen(
            [FLEET, "merge", *arguments],
            cwd=self.folder,
            env=clean_environment(PATH=path, TMPDIR=self.work),
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
        )

        def end():
            process.kill()
            process.communicate()

        self.addCleanup(end)
        return process

    def slow_merge(self, seconds):
        """A program that takes so long and then is ptick-merge; counts its runs in a folder."""
        runs = os.path.join(self.folder, "runs")
        os.makedirs(runs, exist_ok=True)
        # Nobody writes into the pipe; the shell itself waits, so that nothing outlives it.
        program = self.write(
            "slow-merge",
            f'#!/bin/bash\n: >"{runs}/$$"\n[ -p "{runs}.pipe" ] || mkfifo "{runs}.pipe" 2>/dev/null\n'
            f'exec 3<>"{runs}.pipe"\nread -r -t {seconds} -u 3\nexec 3>&-\n'
            f'exec "{PROGRAMS}/ptick-merge" "$@"\n',
        )
        os.chmod(program, 0o755)
        return "--ptick-merge=" + program

    def runs(self):
        return len(os.listdir(os.path.join(self.folder, "runs")))

    def check_clean(self):
        """Nothing is left of a run, neither files nor processes."""
        self.assertEqual([], os.listdir(self.work))
        self.assertEqual([], [name for name in os.listdir(self.folder) if name.startswith(".")])

    def check_merged(self, result, want):
        self.assertEqual((want.out, 0), (result.out, result.status), result.err)


def last_line(text):
    return text.decode().strip().rpartition("\n")[2]


def seconds_since(begin):
    return time.monotonic() - begin
