"""The Python of ptick-fleet is typed throughout, and clean."""

import os
import subprocess
import unittest

from fleet.modules import BUILD_DIR, MODULES
from support.program import SOURCE_DIR

CONFIGURATION = os.path.join(SOURCE_DIR, "fleet", "setup.cfg")
MOST_LINES = 300


class StyleTest(unittest.TestCase):
    def check(self, *command):
        process = subprocess.run(
            ["/usr/bin/python3", "-m", *command], capture_output=True, text=True, check=False
        )
        self.assertEqual((0, ""), (process.returncode, process.stderr), process.stdout)
        return process.stdout

    def test_types_are_checked(self):
        printed = self.check(
            "mypy", "--config-file", CONFIGURATION, "--cache-dir", os.devnull,
            os.path.join(MODULES, "ptick_fleet"),
        )  # fmt: skip
        self.assertIn("no issues found in 2", printed)  # twenty-odd files

    def test_the_linter_finds_nothing(self):
        program = os.path.join(BUILD_DIR, "ptick-fleet")
        model = os.path.join(SOURCE_DIR, "bench", "fleet_model")
        self.check("flake8", "--config", CONFIGURATION, MODULES, program, model)

    def test_files_are_short(self):
        folder = os.path.join(MODULES, "ptick_fleet")
        for name in os.listdir(folder):
            with open(os.path.join(folder, name), encoding="utf-8") as file:
                self.assertLessEqual(len(file.readlines()), MOST_LINES, name)


if __name__ == "__main__":
    unittest.main()
