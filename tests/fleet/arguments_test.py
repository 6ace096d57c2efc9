"""The command line of ptick-fleet."""

import unittest

from ptick_fleet.arguments import Option, help_text, parse
from ptick_fleet.options import parse_merge
from ptick_fleet.problems import UsageError

OPTIONS = (
    Option("o", "output", "FILE", "where to"),
    Option("q", "quiet", "", "say nothing"),
    Option("", "one", "", "one"),
    Option("", "once", "N", "once"),
)

# Words, and the options and operands that come of them.
TAKEN = [
    ([], [], []),
    (["a", "-q", "b"], [("quiet", "")], ["a", "b"]),
    (["-qo", "f", "a"], [("quiet", ""), ("output", "f")], ["a"]),
    (["-of"], [("output", "f")], []),
    (["-o=f"], [("output", "=f")], []),
    (["--output=f", "--output", "-q"], [("output", "f"), ("output", "-q")], []),
    (["--output="], [("output", "")], []),
    (["--one"], [("one", "")], []),
    (["--", "-q", "--one"], [], ["-q", "--one"]),
    (["-", "-q"], [("quiet", "")], ["-"]),
    (["-o", "--"], [("output", "--")], []),
]

REFUSED = [
    (["-x"], "unknown option '-x'"),
    (["-qx"], "unknown option '-x'"),
    (["-q-"], "unknown option '--'"),
    (["--non"], "unknown option '--non'"),
    (["--on"], "unknown option '--on' (did you mean '--one' or '--once'?)"),
    (["--quiet=1"], "option '--quiet' takes no value"),
    (["-o"], "option '--output' needs a value"),
    (["--output"], "option '--output' needs a value"),
]

# The same of the program.
WRONG = [
    ([], "missing command: merge"),
    (["-q"], "missing command: merge"),
    (["split", "a"], "unknown command 'split'"),
    (["merge"], "missing operand"),
    (["merge", "--files-from=a", "--files0-from=b"], "there can be only one list of profiles"),
    (["merge", "--files-from=a", "--files-from=a"], "there can be only one list of profiles"),
    (["merge", "--files-from=a", "b"], "profiles are named by a list or as operands, not both"),
    (["merge", "--color=red", "a"], "option '--color': 'red' is not auto, always or never"),
    (["merge", "--workers=0", "a"],
     "option '--workers': '0' is not a whole number from 1 to 999999999"),
    (["merge", "--workers=1x", "a"],
     "option '--workers': '1x' is not a whole number from 1 to 999999999"),
    (["merge", "--fan-in=1", "a"],
     "option '--fan-in': '1' is not a whole number from 2 to 999999999"),
    (["merge", "--group-bytes=1K", "a"],
     "option '--group-bytes': '1K' is not a size such as 500k, 64M or 2G"),
    (["merge", "--group-bytes=0", "a"],
     "option '--group-bytes': '0' is not a size such as 500k, 64M or 2G"),
    (["merge", "--scheduler=x", "--workers=2", "a"],
     "--workers is for this machine; the cluster of a scheduler has its own"),
]  # fmt: skip


class ArgumentsTest(unittest.TestCase):
    def test_words_are_taken(self):
        for words, options, operands in TAKEN:
            with self.subTest(words=words):
                parsed = parse(OPTIONS, words)
                self.assertEqual(
                    (options, operands),
                    ([(option.long, value) for option, value in parsed.options], parsed.operands),
                )

    def test_words_are_refused(self):
        for words, message in REFUSED:
            with self.subTest(words=words), self.assertRaises(UsageError) as raised:
                parse(OPTIONS, words)
            self.assertEqual(message, str(raised.exception))

    def test_wrong_uses_are_refused(self):
        for words, message in WRONG:
            with self.subTest(words=words), self.assertRaises(UsageError) as raised:
                parse_merge(words)
            self.assertEqual(message, str(raised.exception))

    def test_options_may_be_anywhere(self):
        options = parse_merge(["-k", "merge", "-o", "x", "a", "--scheduler", "s", "b", "--", "-c"])
        self.assertEqual([b"a", b"b", b"-c"], options.source.operands)
        self.assertEqual((True, "x", "s"), (options.keeps_going, options.output, options.scheduler))

    def test_sizes_have_units(self):
        for text, want in (("7", 7), ("500k", 500_000), ("64M", 64 * 10**6), ("2G", 2 * 10**9)):
            options = parse_merge(["merge", "--group-bytes", text, "a"])
            self.assertEqual(want, options.group_bytes, text)

    def test_help_and_version_win(self):
        for words, want in ((["--help"], "help"), (["merge", "-hV"], "help"), (["-V"], "version")):
            self.assertEqual(want, parse_merge(words))

    def test_help_is_wrapped(self):
        text = help_text(["p [OPTION]"], "word " * 20 + "end", OPTIONS)
        self.assertLess(max(len(line) for line in text.splitlines()), 80)
        self.assertIn("\n  -o, --output=FILE         where to\n", text)
        self.assertIn("\n      --one                 one\n", text)


if __name__ == "__main__":
    unittest.main()
