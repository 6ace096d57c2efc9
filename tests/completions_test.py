"""The completions for bash, zsh and fish: what they offer, and that they say what the usage says.

Those for zsh and fish are looked at with these shells only where they are installed.
"""

import os
import re
import shutil
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from support.program import SOURCE_DIR, ProgramTest, clean_environment  # noqa: E402

COMPLETIONS = os.path.join(SOURCE_DIR, "completions")
LETTERS = "ajfFiknopstuvA"
OPTIONS = sorted(f"-{letter}" for letter in LETTERS + "h")

# The words typed behind ptick, the last of them being completed, and what is offered for it.
ROWS = [
    ([""], ["examples", "keys.txt", "run1", "run2"]),
    (["ru"], ["run1", "run2"]),
    (["run1", "ex"], ["examples"]),
    (["-n", "run"], ["run1", "run2"]),
    (["-"], OPTIONS),
    (["run1", "-"], OPTIONS),
    (["-nu"], ["-nu"]),
    (["-f", ""], ["examples"]),
    (["-f", "examples/"], ["examples/lib", "examples/src"]),
    (["-fexamples/"], ["-fexamples/lib", "-fexamples/src"]),
    (["-nfexamples/s"], ["-nfexamples/src"]),
    (["-fexamples/src", "r"], ["run1", "run2"]),
    (["-F", "examples/"], ["examples/lib", "examples/sources", "examples/src"]),
    (["-Fexamples/so"], ["-Fexamples/sources"]),
    (["-k", "k"], ["keys.txt"]),
    (["-tkk"], ["-tkkeys.txt"]),
    # The name of -k may look like an option; what follows it is a profile again.
    (["-k", "-f", ""], ["examples", "keys.txt", "run1", "run2"]),
    (["-j", ""], ["OFF", "ON"]),
    (["-vj", "OF"], ["OFF"]),
    (["-j", "ON", ""], ["%"]),
    (["-j", "ON", "5", "k"], ["keys.txt"]),
    (["-j", "ON", "5", "keys.txt", ""], []),
    # These letters are a name; -j must stand in the first argument.
    (["-fj", "r"], ["run1", "run2"]),
    (["-n", "-j", "r"], ["run1", "run2"]),
    (["5", ""], []),
    (["3-9", "r"], []),
    (["5a", "r"], ["run1", "run2"]),
]


def offered_by_bash(words, folder):
    """What bash would offer for the last of the words."""
    script = (
        'source "$1" && shift && COMP_WORDS=(ptick "$@") COMP_CWORD=$#\n'
        '_ptick 2>&1 && printf "%s\\n" "${COMPREPLY[@]}"'
    )
    path = os.path.join(COMPLETIONS, "ptick.bash")
    process = subprocess.run(
        ["bash", "-c", script, "bash", path, *words],
        cwd=folder,
        env=clean_environment(),
        stdin=subprocess.DEVNULL,
        capture_output=True,
        timeout=60,
        check=True,
    )
    return sorted(filter(None, process.stdout.decode().splitlines()))


def offered_by_fish(line, folder):
    """The options and words that fish would offer at the end of a command line, without meanings."""
    script = f"source {COMPLETIONS}/ptick.fish; complete -C '{line}'"
    process = subprocess.run(
        ["fish", "--no-config", "-c", script],
        cwd=folder,
        env=clean_environment(HOME=folder),
        stdin=subprocess.DEVNULL,
        capture_output=True,
        timeout=60,
        check=True,
    )
    return sorted(text.split("\t")[0] for text in process.stdout.decode().splitlines())


def meanings(name, pattern):
    """The (option letter, meaning) pairs that a completion holds."""
    with open(os.path.join(COMPLETIONS, name), encoding="utf-8") as file:
        return dict(re.findall(pattern, file.read(), re.MULTILINE))


class CompletionsTest(ProgramTest):
    def setUp(self):
        super().setUp()
        for name in ("run1", "run2", "keys.txt", "examples/sources", "examples/src/A"):
            self.write(name, "")
        os.mkdir(os.path.join(self.folder, "examples", "lib"))

    def usage(self):
        """The (option letter, meaning) pairs of the usage text."""
        text = self.run_ptick("-h").err.decode()
        return dict(re.findall(r"^     -(\w)\w* +(.*)$", text.partition("Where :\n")[2], re.MULTILINE))

    def test_bash_offers_options_and_files(self):
        for words, want in ROWS:
            with self.subTest(words=words):
                self.assertEqual(want, offered_by_bash(words, self.folder))

    def test_meanings_are_those_of_the_usage(self):
        usage = self.usage()
        self.assertEqual(sorted(LETTERS), sorted(usage))
        usage["h"] = "Print the usage"
        self.assertEqual(usage, meanings("_ptick", r'^  "\*?-(\w)\+?\[(.*)\]'))
        self.assertEqual(usage, meanings("ptick.fish", r'^complete -c ptick -s (\w) .*-d "(.*)"$'))

    def test_shells_that_are_installed_can_read_them(self):
        for shell, name in (("bash", "ptick.bash"), ("zsh", "_ptick"), ("fish", "ptick.fish")):
            if shutil.which(shell) is None:
                continue
            with self.subTest(shell=shell):
                subprocess.run(
                    [shell, "-n", os.path.join(COMPLETIONS, name)],
                    env=clean_environment(HOME=self.folder),
                    timeout=60,
                    check=True,
                )

    @unittest.skipIf(shutil.which("fish") is None, "fish is not installed")
    def test_fish_offers_options_and_files(self):
        for line, want in (
            ("ptick -j ", ["OFF", "ON"]),
            ("ptick -j ON ", ["%"]),
            ("ptick -j ON 5 k", ["keys.txt"]),
            ("ptick 5 ", []),
            ("ptick ru", ["run1", "run2"]),
            ("ptick -f ex", ["examples/"]),
            ("ptick -F examples/so", ["examples/sources"]),
            ("ptick -", OPTIONS),
        ):
            with self.subTest(line=line):
                self.assertEqual(want, offered_by_fish(line, self.folder))


if __name__ == "__main__":
    unittest.main()
