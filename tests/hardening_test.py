"""The programs of the release build are hardened, and need nothing but the kernel."""

import json
import os
import re
import subprocess
import unittest

PROGRAMS = os.environ["PTICK_PROGRAMS"].split(":")
COMPILE_COMMANDS = os.path.join(os.environ["PTICK_BUILD_DIR"], "compile_commands.json")
FLAGS = ("-fPIE", "-fstack-protector-strong", "-D_FORTIFY_SOURCE=2")


def readelf(option, program):
    return subprocess.run(
        ["readelf", "-W", option, program], capture_output=True, check=True, text=True
    ).stdout


class HardeningTest(unittest.TestCase):
    def test_programs_are_hardened_and_static(self):
        for program in PROGRAMS:
            with self.subTest(program=program):
                self.assertRegex(readelf("-h", program), r"Type: +DYN ")
                segments = readelf("-l", program)
                self.assertNotIn("INTERP", segments)
                self.assertIn("GNU_RELRO", segments)
                self.assertRegex(segments, r"GNU_STACK .* RW +0x")
                dynamic = readelf("-d", program)
                self.assertNotIn("NEEDED", dynamic)
                self.assertRegex(dynamic, r"FLAGS_1\).* NOW PIE")

    def test_all_code_is_compiled_with_the_flags(self):
        with open(COMPILE_COMMANDS, encoding="utf-8") as file:
            commands = {row["file"]: row["command"] for row in json.load(file)}
        own = [file for file in commands if re.search(r"/src/.*\.cpp$", file)]
        self.assertGreater(len(own), 50)
        for file in own:
            self.assertEqual(FLAGS, tuple(flag for flag in FLAGS if f" {flag} " in commands[file]), file)


if __name__ == "__main__":
    unittest.main()
