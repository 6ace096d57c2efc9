"""Runs the real program in fresh folders, for the tests that look at it from outside."""

import os
import subprocess
import tempfile
import unittest

PTICK = os.environ.get("PTICK", "build/dev/ptick")
SOURCE_DIR = os.environ.get(
    "PTICK_SOURCE_DIR", os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
)


def clean_environment(**changes):
    """An environment in which output does not depend on who runs the tests."""
    environment = {
        "PATH": os.environ["PATH"],
        "HOME": "/nonexistent",
        "LC_ALL": "C",
        "TZ": "UTC0",
        "COLUMNS": "80",
        "MAVRO_ACCOUNT": "orders",
        "MAVRO_PORT": "12",
    }
    environment.update(changes)
    return {name: value for name, value in environment.items() if value is not None}


class Result:
    """What a run printed on both streams, and its exit status."""

    def __init__(self, process):
        self.out = process.stdout
        self.err = process.stderr
        self.status = process.returncode

    def out_and_status(self):
        return self.out, self.status

    def __repr__(self):
        return f"status {self.status}\nout {self.out!r}\nerr {self.err!r}"


class ProgramTest(unittest.TestCase):
    """A test with a fresh folder that programs run in."""

    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="ptick-test-")
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def write(self, name, text):
        """Writes a file below the folder; text may be bytes."""
        path = os.path.join(self.folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(text if isinstance(text, bytes) else text.encode())
        return path

    def read(self, name):
        with open(os.path.join(self.folder, name), "rb") as file:
            return file.read()

    def run_ptick(self, *arguments, **settings):
        return self.run_program(os.path.abspath(PTICK), *arguments, **settings)

    def run_program(self, *words, stdin=subprocess.DEVNULL, **environment):
        return Result(
            subprocess.run(
                words,
                cwd=self.folder,
                env=clean_environment(**environment),
                stdin=stdin,
                capture_output=True,
                timeout=60,
                check=False,
            )
        )
