"""Goldens: one readable case a folder, tests/golden/<report>/<case>/, or <companion>/<case>/.

cmd       the shell command, run in a copy of the folder that also has the examples, with ptick on
          the path
expected  what it prints: standard output, then where there are any a section for the terminal, for
          the exit status and for each file named in `shows`
shows     optional: files that the command writes and that belong to the result, a name a line

`golden_test.py --update` rewrites every `expected`; the diff is reviewed like code.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from support.program import PTICK, SOURCE_DIR, clean_environment

GOLDEN_DIR = os.path.join(SOURCE_DIR, "tests", "golden")


def cases():
    programs = os.path.dirname(os.path.abspath(PTICK))
    for report in sorted(os.listdir(GOLDEN_DIR)):
        if report.startswith("ptick-") and not os.path.exists(os.path.join(programs, report)):
            continue  # built without companions
        for case in sorted(os.listdir(os.path.join(GOLDEN_DIR, report))):
            yield f"{report}/{case}"


def read(*path):
    with open(os.path.join(*path), "rb") as file:
        return file.read()


def section(title, text):
    return b"--- " + title.encode() + b" ---\n" + text


def mask_time(script):
    """The banner of a keyboard script carries the moment of the run."""
    moment = rb"created at \d\d:\d\d:\d\d \d\d [A-Z]{3} \d{4} ,"
    return re.sub(moment, b"created at HH:MM:SS DD MON YYYY ,", script)


def outcome(case):
    with tempfile.TemporaryDirectory(prefix="ptick-golden-") as folder:
        work = os.path.join(folder, "case")
        shutil.copytree(os.path.join(GOLDEN_DIR, case), work)
        os.symlink(os.path.join(SOURCE_DIR, "examples"), os.path.join(work, "examples"))
        path = os.path.dirname(os.path.abspath(PTICK)) + os.pathsep + os.environ["PATH"]
        process = subprocess.run(
            ["sh", "-c", read(work, "cmd").decode()],
            cwd=work,
            env=clean_environment(PATH=path),
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=60,
            check=False,
        )
        text = process.stdout
        if process.stderr:
            text += section("terminal", process.stderr)
        if process.returncode:
            text += section("status", b"%d\n" % process.returncode)
        if os.path.exists(os.path.join(work, "shows")):
            for name in read(work, "shows").decode().splitlines():
                text += section(name, mask_time(read(work, name)))
        return text


class GoldenTest(unittest.TestCase):
    maxDiff = None

    def test_every_case_prints_what_it_should(self):
        ran = 0
        for case in cases():
            with self.subTest(case=case):
                expected = read(GOLDEN_DIR, case, "expected")
                self.assertEqual(expected.decode("latin-1"), outcome(case).decode("latin-1"))
            ran += 1
        self.assertGreater(ran, 0)


def update():
    for case in cases():
        with open(os.path.join(GOLDEN_DIR, case, "expected"), "wb") as file:
            file.write(outcome(case))


if __name__ == "__main__":
    if sys.argv[1:] == ["--update"]:
        update()
    else:
        unittest.main()
