"""The completions of ptick in bash, zsh and fish: what real shells make of typed keys and what they
offer, and that they say what the usage says."""

import os
import re
import unittest

from support import completions
from support.program import SOURCE_DIR
from support.shells import Shell

LETTERS = "ajfFiknopstuvA"
OPTIONS = sorted(f"-{letter}" for letter in LETTERS + "h")

# Keys typed, and the arguments that come of them. A directory gets its slash and no blank, so that
# the next key goes on in it.
TYPED = [
    ("ptick ru\t1", ["run1"]),
    ("ptick ex\to\ts\t", ["examples/orders/s"]),
    ("ptick -nu ex\to\tso\t", ["-nu", "examples/orders/sources"]),
    ("ptick -f ex\to\tsr\t", ["-f", "examples/orders/src/"]),
    ("ptick -fexamples/o\tsr\t", ["-fexamples/orders/src/"]),
    ("ptick -fexamples/o\tsr\t run2", ["-fexamples/orders/src/", "run2"]),
    ("ptick -nufex\to\tsr\t", ["-nufexamples/orders/src/"]),
    ("ptick -F ex\to\tso\trun\t1", ["-F", "examples/orders/sources", "run1"]),
    ("ptick -Fexamples/o\tso\trun\t1", ["-Fexamples/orders/sources", "run1"]),
    ("ptick -k ex\to\tso\trun\t1", ["-k", "examples/orders/sources", "run1"]),
    ("ptick -kexamples/o\tso\trun\t1", ["-kexamples/orders/sources", "run1"]),
    ("ptick -tkke\trun\t1", ["-tkkeys.txt", "run1"]),
    # Blanks in names, half of them typed already, in all ways to quote.
    ("ptick my\tf\t", ["my dir/file one"]),
    ("ptick my\\ d\tf\t", ["my dir/file one"]),
    ("ptick 'my d\tf\t", ["my dir/file one"]),
    ("ptick -F my\tf\t", ["-F", "my dir/file one"]),
    ("ptick -Fmy\tf\t", ["-Fmy dir/file one"]),
    ("ptick -nFmy\\ d\tf\t", ["-nFmy dir/file one"]),
    ("ptick -F'my d\tf\t", ["-Fmy dir/file one"]),
    ('ptick -F"my d\tf\t', ["-Fmy dir/file one"]),
    # The monitor.
    ("ptick -j O\tN % ke\t all", ["-j", "ON", "%", "keys.txt", "all"]),
]

# Lines, and all that is offered for their last word.
OFFERED = [
    ("ptick ", ["examples", "keys.txt", "my dir", "run1", "run2"]),
    ("ptick ru", ["run1", "run2"]),
    ("ptick -n run", ["run1", "run2"]),
    ("ptick -f examples/orders/", ["examples/orders/lib", "examples/orders/src"]),
    ("ptick -fexamples/orders/", ["-fexamples/orders/lib", "-fexamples/orders/src"]),
    ("ptick -nfexamples/orders/", ["-nfexamples/orders/lib", "-nfexamples/orders/src"]),
    ("ptick -F examples/orders/s", ["examples/orders/sources", "examples/orders/src"]),
    ("ptick -Fexamples/orders/s", ["-Fexamples/orders/sources", "-Fexamples/orders/src"]),
    ("ptick -fexamples/orders/src r", ["run1", "run2"]),
    ("ptick -j ", ["OFF", "ON"]),
    ("ptick -vj O", ["OFF", "ON"]),
    ("ptick -j ON ", ["%"]),
    ("ptick -j ON 5 k", ["keys.txt"]),
    # These letters are a name; -j must be in the first argument.
    ("ptick -fj r", ["run1", "run2"]),
    ("ptick -n -j r", ["run1", "run2"]),
    # Commands follow a port, and nobody knows them.
    ("ptick 5 r", []),
    ("ptick 3-9 r", []),
    ("ptick 5a r", ["run1", "run2"]),
    ("ptick -", OPTIONS),
    ("ptick run1 -", OPTIONS),
]

# The name of -k may look like an option; what follows it is a profile again. fish does not see that.
OFFERED_BUT_BY_FISH = [("ptick -k -f ru", ["run1", "run2"])]


def meanings(name, pattern):
    """The (option letter, meaning) pairs that a completion holds."""
    with open(os.path.join(SOURCE_DIR, "completions", name), encoding="utf-8") as file:
        return dict(re.findall(pattern, file.read(), re.MULTILINE))


class PtickCompletionsTest(completions.CompletionsTest):
    files = ("run1", "run2", "keys.txt", "examples/orders/sources", "my dir/file one")

    def setUp(self):
        super().setUp()
        for name in ("src", "lib"):
            os.mkdir(os.path.join(self.folder, "work/examples/orders", name))

    def check(self, name):
        shell = Shell(name, self.folder)
        typed = [(keys, shell.arguments(keys)) for keys, _ in TYPED]
        rows = OFFERED + ([] if name == "fish" else OFFERED_BUT_BY_FISH)
        offered = [(line, shell.offered(line)) for line, _ in rows]
        self.assertEqual(0, shell.close())
        self.assertEqual(TYPED, typed)
        self.assertEqual(rows, offered)

    def test_meanings_are_those_of_the_usage(self):
        text = self.run_ptick("-h").err.decode()
        pattern = r"^     -(\w)\w* +(.*)$"
        usage = dict(re.findall(pattern, text.partition("Where :\n")[2], re.MULTILINE))
        self.assertEqual(sorted(LETTERS), sorted(usage))
        usage["h"] = "Print the usage"
        self.assertEqual(usage, meanings("_ptick", r'^  "\*?-(\w)\+?\[(.*)\]'))
        self.assertEqual(usage, meanings("ptick.fish", r'^complete -c ptick -s (\w) .*-d "(.*)"$'))


if __name__ == "__main__":
    unittest.main()
