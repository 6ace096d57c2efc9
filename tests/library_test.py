"""Builds the programs of examples/library against an installed copy of the library, and runs them."""

import os
import subprocess
import unittest

from support.ports import PATIENCE, PortTest
from support.program import SOURCE_DIR, clean_environment

BUILD_DIR = os.environ["PTICK_BUILD_DIR"]


def run(*words):
    result = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                            check=False)
    if result.returncode != 0:
        raise AssertionError(f"{' '.join(words)}\n{result.stdout}")
    return result.stdout


class LibraryTest(PortTest):
    def setUp(self):
        super().setUp()
        prefix = os.path.join(self.folder, "installed")
        self.build = os.path.join(self.folder, "build")
        run("cmake", "--install", BUILD_DIR, "--prefix", prefix, "--component", "development")
        run("cmake", "-S", os.path.join(SOURCE_DIR, "examples", "library"), "-B", self.build, "-G",
            "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}", "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror")
        run("cmake", "--build", self.build)
        self.headers = os.path.join(prefix, "include", "ptick")

    def test_programs_outside_the_tree_read_profiles_and_listen_on_ports(self):
        with self.subTest("ticks by program"):
            self.check_ticks_by_program()
        with self.subTest("a listener"):
            self.check_listener()
        with self.subTest("headers"):
            self.check_headers()

    def check_ticks_by_program(self):
        source = os.path.join(SOURCE_DIR, "examples", "library", "ticks_by_program.cpp")
        with open(source, encoding="utf-8") as file:
            self.assertLess(len(file.readlines()), 40)
        self.write("run1", "PROFILE:trace\tB\t1\t5\nPROFILE:trace\tA\t1\t2\nPROFILE:trace\tB\t7\t1\n")
        program = os.path.join(self.build, "ticks_by_program")
        self.assertEqual("A 2\nB 6\n", run(program, os.path.join(self.folder, "run1")))
        missing = subprocess.run([program, "/nonexistent/run"], capture_output=True, check=False)
        self.assertEqual(2, missing.returncode)

    def check_listener(self):
        environment = clean_environment(MAVRO_RUNTIME_DIR=self.runtime)
        listener = subprocess.Popen([os.path.join(self.build, "message_listener"), "7"],
                                    env=environment, stdout=subprocess.PIPE, text=True)
        self.addCleanup(listener.stdout.close)
        self.addCleanup(listener.kill)
        self.assertEqual("listening\n", listener.stdout.readline())
        for words in (("on", "flush"), ("quit",)):
            self.assertEqual(0, self.run_ptick("7", *words, MAVRO_RUNTIME_DIR=self.runtime).status)
        self.assertEqual(0, listener.wait(timeout=PATIENCE))
        self.assertEqual("TICKCTL:on flush\nTICKCTL:quit\n", listener.stdout.read())

    def check_headers(self):
        """Every installed header can be included by itself."""
        headers = sorted(os.path.relpath(os.path.join(folder, name), self.headers)
                         for folder, _, names in os.walk(self.headers) for name in names)
        self.assertGreater(len(headers), 30)
        source = self.write("all.cpp", "".join(f'#include "{header}"\n' for header in headers))
        run("c++", "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Werror", "-I", self.headers, source)


if __name__ == "__main__":
    unittest.main()
