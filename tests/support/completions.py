"""Types into real shells what completions complete."""

from support.program import ProgramTest
from support.shells import Shell


class CompletionsTest(ProgramTest):
    """Keys typed into real shells, and the arguments that come of them: what a test of completions says."""

    files = ()
    typed = ()

    def expected(self, shell):
        """Keys and arguments, in this shell."""
        del shell
        return self.typed

    def setUp(self):
        super().setUp()
        for name in self.files:
            self.write("work/" + name, "")

    def check(self, name):
        shell = Shell(name, self.folder)
        typed = [(keys, shell.arguments(keys)) for keys, _ in self.typed]
        self.assertEqual(0, shell.close())
        self.assertEqual(list(self.expected(name)), typed)

    def test_bash(self):
        self.check("bash")

    def test_bash_without_the_package_bash_completion(self):
        self.check("bash alone")

    def test_zsh(self):
        self.check("zsh")

    def test_fish(self):
        self.check("fish")
