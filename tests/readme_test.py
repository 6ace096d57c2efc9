"""Runs every command that the README shows, from top to bottom in one shell as after ./quickstart, and
compares what it prints."""

import os
import unittest

from support.documents import (
    blocks,
    check_commands,
    commands_shown,
    in_repository,
    links,
    pattern,
    read,
)
from support.program import PTICK, SOURCE_DIR, ProgramTest, clean_environment

# These build the programs: tests/quickstart runs the first, the second runs this.
SET_UP = (
    "./quickstart",
    "./test",
    "tools/install_packages companions",
    "cmake --preset release -DPTICK_COMPANIONS=ON && cmake --build --preset release",
)


class ReadmeTest(ProgramTest):
    def setUp(self):
        super().setUp()
        os.makedirs(os.path.join(self.folder, "build"))
        self.link(os.path.dirname(os.path.abspath(PTICK)), "build/release")
        self.link(os.path.join(SOURCE_DIR, "examples"), "examples")

    def link(self, target, name):
        os.symlink(target, os.path.join(self.folder, name))

    def check(self, document, **environment):
        """Runs the commands of a document and returns how many there are."""
        text = in_repository(read(document))
        shown = [pair for pair in commands_shown(text) if pair[0] not in SET_UP]
        environment["MAVRO_RUNTIME_DIR"] = os.path.join(self.folder, "ports")
        check_commands(self, shown, self.folder, clean_environment(**environment))
        return len(shown)

    def test_every_command_prints_what_is_shown(self):
        self.assertGreater(self.check("README.md"), 10)

    def test_the_commands_of_the_examples_do(self):
        path = os.path.join(self.folder, "build/release") + os.pathsep + os.environ["PATH"]
        self.assertGreater(self.check("examples/orders/README.md", PATH=path), 1)

    def test_the_commands_of_documents_do(self):
        path = os.path.join(self.folder, "build/release") + os.pathsep + os.environ["PATH"]
        self.assertGreater(self.check("docs/comparing.md", PATH=path), 9)
        self.assertGreater(self.check("docs/view.md", PATH=path), 1)
        self.assertGreater(self.check("docs/viewers.md", PATH=path), 5)

    def test_links_lead_to_files(self):
        found = 0
        for folder, _, names in os.walk(os.path.join(SOURCE_DIR, "docs")):
            for name in names:
                if name.endswith(".md"):
                    found += self.check_links(os.path.join(folder, name))
        for name in ("README.md", "ARCHITECTURE.md", "CONTRIBUTING.md", "CHANGELOG.md"):
            found += self.check_links(os.path.join(SOURCE_DIR, name))
        self.assertGreater(found, 10)

    def check_links(self, document):
        targets = links(in_repository(read(document)))
        for target in targets:
            with self.subTest(document=document, target=target):
                place = os.path.join(os.path.dirname(document), target)
                self.assertTrue(os.path.exists(place) or target.startswith("http"))
        return len(targets)

    def test_the_first_report_is_that_of_the_sample(self):
        [report] = blocks(read("README.md"), "report")
        result = self.run_ptick("-Fexamples/orders/sources", "examples/orders/run1")
        self.assertRegex(result.out.decode(), pattern(report))


if __name__ == "__main__":
    unittest.main()
