"""Options, help, manual page and completions of every companion say the same."""

import os
import re
import unittest

from support.companions import COMPANIONS, path_of
from support.program import SOURCE_DIR, ProgramTest

COMMON = {"--output", "--quiet", "--color", "--help", "--version"}


def from_help(text):
    """{names: meaning} of the options, names as "-o --output=FILE", a value with its name."""
    options = {}
    lines = text.partition("\nOptions:\n")[2].split("\n\n")[0]
    for entry in re.split(r"\n(?=  (?:-|    --))", lines):
        first, *rest = entry.split("\n")
        names, _, meaning = re.match(r" +(\S+(?:, \S+)*)(  +|$)(.*)", first).groups()
        meaning = " ".join([meaning, *(line.strip() for line in rest)]).strip()
        options[names.replace(",", "")] = meaning
    return options


def plain(names):
    """The names without values: ("-o", "--output")."""
    return tuple(re.sub(r"=.*", "", name) for name in names.split())


def read(*path):
    with open(os.path.join(SOURCE_DIR, *path), encoding="utf-8") as file:
        return file.read()


def from_zsh(program):
    options = {}
    pattern = r'^  "[^"\n]*"\{([^}]*)\}"\[(.*)\][^\]]*" \\$|^  "\*?(-[^"\[]*)\[(.*)\][^\]]*" \\$'
    for several, their_meaning, one, its_meaning in re.findall(
        pattern, read("completions", f"_{program}"), re.MULTILINE
    ):
        names = (several or one).split(",")
        takes_value = {name[-1] in "=+" for name in names}
        assert len(takes_value) == 1, names
        options[tuple(name.rstrip("=+") for name in names)] = (
            (their_meaning or its_meaning).replace("\\", ""), takes_value.pop())  # fmt: skip
    return options


def from_fish(program):
    options = {}
    pattern = rf'^complete -c {program} (?:-s (\w) ?)?(?:-l ([\w-]+) ?)?(.*)-d "(.*)"$'
    for short, long, rest, meaning in re.findall(
        pattern, read("completions", f"{program}.fish"), re.MULTILINE
    ):
        names = tuple(name for name in (short and f"-{short}", long and f"--{long}") if name)
        options[names] = (meaning.replace("\\", ""), bool(re.search(r"-[rx]\b", rest)))
    return options


def from_bash(program):
    [words] = re.findall(r"compgen -W '(-[^']*)'", read("completions", f"{program}.bash"))
    return sorted(words.split())


class OptionsTest(ProgramTest):
    def test_there_are_companions(self):
        self.assertIn("ptick-merge", COMPANIONS)

    def each(self):
        for program in COMPANIONS:
            result = self.run_program(path_of(program), "--help")
            self.assertEqual((b"", 0), (result.err, result.status))
            options = from_help(result.out.decode())
            self.assertLessEqual(COMMON, {name for names in options for name in plain(names)})
            yield program, options

    def test_manual_pages_explain_the_options_of_the_help(self):
        for program, options in self.each():
            page = os.path.join(os.environ["PTICK_BUILD_DIR"], f"{program}.1")
            lint = self.run_program("mandoc", "-T", "lint", "-W", "warning", page)
            self.assertEqual((b"", b"", 0), (lint.out, lint.err, lint.status), program)
            result = self.run_program("mandoc", "-T", "ascii", "-O", "width=200", page)
            text = re.sub(".\b", "", result.out.decode())
            # What is short has its meaning on the same line.
            heads = re.findall(r"^     (-\S.*?)(?: {2,}.*)?$", text, re.MULTILINE)
            explained = {re.sub(r"(?<=-\w) \w+(?=,|$)", "", head).replace(",", "") for head in heads}
            with self.subTest(program=program):
                self.assertEqual(
                    sorted(names.lower() for names in options),
                    sorted(names.lower() for names in explained),
                )

    def test_completions_offer_the_options_of_the_help(self):
        for program, options in self.each():
            want = {plain(names): (meaning, "=" in names) for names, meaning in options.items()}
            with self.subTest(program=program):
                self.assertEqual(want, from_zsh(program))
                self.assertEqual(want, from_fish(program))
                words = [
                    name + ("=" if takes_value and name.startswith("--") else "")
                    for names, (_, takes_value) in want.items()
                    for name in names
                ]
                self.assertEqual(sorted(words), from_bash(program))

    def test_versions_are_that_of_the_project(self):
        [version] = re.findall(r"^project\(ptick VERSION (\S+)", read("CMakeLists.txt"), re.MULTILINE)
        for program in COMPANIONS:
            result = self.run_program(path_of(program), "--version")
            self.assertEqual((f"{program} {version}\n".encode(), b"", 0),
                             (result.out, result.err, result.status))  # fmt: skip
            page = os.path.join(os.environ["PTICK_BUILD_DIR"], f"{program}.1")
            with open(page, encoding="utf-8") as file:
                self.assertIn(f"\n{version}.\n", file.read(), program)


if __name__ == "__main__":
    unittest.main()
