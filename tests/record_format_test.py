"""Holds docs/record-format.md to the program: its types, its merge kinds, its odd input and its example."""

import os
import re
import unittest

from support.program import SOURCE_DIR, ProgramTest


def read(*path):
    with open(os.path.join(SOURCE_DIR, *path), encoding="utf-8") as file:
        return file.read()


DOCUMENT = read("docs", "record-format.md")


def documented_kinds():
    """The (type, merge kind) pairs of the table of records."""
    return dict(re.findall(r"^\| `(\w+)` \|.*\| (\w+) \|$", DOCUMENT, re.MULTILINE))


def known_kinds():
    """The same of the program's table of record types."""
    source = read("src", "profile", "tables", "record_types.cpp")
    rows = re.findall(r'RecordType\{"(\w+)", Merge::k(\w+),', source)
    return {name: kind.lower() for name, kind in rows}


class RecordFormatTest(ProgramTest):
    def test_the_document_and_the_program_have_the_same_types_and_merge_kinds(self):
        self.assertGreater(len(known_kinds()), 30)
        self.assertEqual(known_kinds(), documented_kinds())

    def test_what_is_said_of_odd_input_holds(self):
        rows = "Source name          Line#  Ticks    %      \n"
        for text, want in (
            ("\t\tPROFILE:trace\t\tA\t\t1\t2\t9\t\n", "A                    1      2        0     \n"),
            ("PROFILE:TRACE\tA\t1\t2\r\n", "A                    1      2\r       0     \n"),
            ("PROFILE:trace\tA\t1", "A                    1               0     \n"),
            ("PROFILE:trace\tA\t\t2\n", "A                    2               0     \n"),
            (b"PROFILE:trace\tA\t1\t5\xfePROFILE:trace\tB\t1\t6\n".decode("latin-1"),
             "B                    1      6        0     \n"
             "A                    1      5        0     \n"),
            ("profile:trace\tA\t1\t2\nPROFILE trace\n PROFILE:trace\tA\t1\t2\n", ""),
        ):
            self.write("x", text.encode("latin-1"))
            with self.subTest(text=text):
                result = self.run_ptick("x")
                self.assertEqual(rows + want, result.out.decode().partition("\n")[2])

    def test_performs_of_one_key_lose_their_commands(self):
        self.write("a", "PROFILE:perform\ttype\tqry\tcmd\tLIST\n")
        self.write("b", "PROFILE:perform\ttype\tqry\tcmd\tSORT\n")
        rows = self.run_ptick("-p", "a", "b").out.decode().splitlines()[2:]
        self.assertEqual(["1          0"], rows)

    def test_the_example_gives_the_reports_shown(self):
        [profile] = re.findall(r"^```profile\n(.*?)^```$", DOCUMENT, re.MULTILINE | re.DOTALL)
        self.write("run", profile.replace("→", "\t"))
        shown = re.findall(r"^```report\n\$ ptick (.*?)\n(.*?)^```$", DOCUMENT, re.MULTILINE | re.DOTALL)
        self.assertEqual(2, len(shown))
        for arguments, want in shown:
            with self.subTest(arguments=arguments):
                result = self.run_ptick(*arguments.split())
                # Trailing blanks are not shown in a document.
                self.assertEqual(want, re.sub(r" +$", "", result.out.decode(), flags=re.MULTILINE))


if __name__ == "__main__":
    unittest.main()
