"""An installation is complete: its README's commands work where it is, and none of its documents names
a file that did not come along. PTICK_INSTALLED is one to look at; without it a fresh one is made."""

import os
import re
import subprocess
import unittest

from support.documents import check_commands, commands_shown, links
from support.program import ProgramTest, clean_environment


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


class InstalledTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.prefix = os.environ.get("PTICK_INSTALLED")
        if not self.prefix:
            self.prefix = os.path.join(self.folder, "installed")
            build = os.environ["PTICK_BUILD_DIR"]
            subprocess.run(
                ["cmake", "--install", build, "--prefix", self.prefix],
                stdout=subprocess.DEVNULL,
                umask=0o022,
                check=True,
            )
        self.documents = os.path.join(self.prefix, "share", "doc", "ptick")

    def test_the_readme_prints_what_it_shows(self):
        text = read(os.path.join(self.documents, "README.md"))
        commands = commands_shown(text.replace("$ prefix=/usr\n", f"$ prefix='{self.prefix}'\n"))
        self.assertNotIn("<!--", text)
        self.assertIn((f"prefix='{self.prefix}'", ""), commands)
        self.assertGreater(len(commands), 10)
        empty = os.path.join(self.folder, "empty")
        os.mkdir(empty)
        environment = clean_environment(MAVRO_RUNTIME_DIR=os.path.join(self.folder, "ports"))
        check_commands(self, commands, empty, environment)

    def test_documents_name_only_what_came_along(self):
        # A path in a text: one that begins like a file of the repository.
        named = re.compile(r"\b((?:\./)?(?:bench|build|cmake|docs|examples|fuzz|src|tests|tools)/[\w./-]*\w)")
        found = 0
        for folder, _, names in os.walk(self.documents):
            for name in (name for name in names if name.endswith(".md")):
                document = os.path.join(folder, name)
                text = read(document)
                for place, target in [(folder, target) for target in links(text)] + [
                    (self.documents, target) for target in named.findall(text)
                ]:
                    found += 1
                    with self.subTest(document=document, target=target):
                        self.assertTrue(os.path.exists(os.path.join(place, target)))
        self.assertGreater(found, 10)

    def test_all_can_be_read_and_programs_be_run(self):
        for folder, _, names in os.walk(self.prefix):
            for path in [folder] + [os.path.join(folder, name) for name in names]:
                mode = os.stat(path).st_mode & 0o777
                program = os.path.isdir(path) or re.search(r"/(bin|libexec/ptick)/", path)
                with self.subTest(path=path):
                    self.assertEqual(oct(0o755 if program else 0o644), oct(mode))


if __name__ == "__main__":
    unittest.main()
