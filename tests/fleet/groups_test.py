"""Names of profiles, and the groups they are cut into."""

import io
import os
import socket
import sys
import unittest
import zlib
from unittest import mock

from ptick_fleet import names as names_module
from ptick_fleet.groups import cut_into_groups
from ptick_fleet.names import NameSource
from ptick_fleet.problems import Trouble
from support.program import ProgramTest

# A list, what ends its names, and the names.
LISTS = [
    (b"a\0b\0", b"\0", [b"a", b"b"]),
    (b"a\0b", b"\0", [b"a", b"b"]),
    (b"a\n\nb c\n\n", b"\n", [b"a", b"b c"]),
    (b"\n\na", b"\n", [b"a"]),
    (b"a\nb\0\xff\xfe\0", b"\0", [b"a\nb", b"\xff\xfe"]),
]

BAD_LISTS = [
    (b"", b"\0", b"LIST: names no profile\n"),
    (b"\n\n", b"\n", b"LIST: names no profile\n"),
    (b"a\0\0b\0", b"\0", b"LIST: name 2 is empty\n"),
    (b"a\nb\0c\n", b"\n", b"LIST: name 2 has a zero byte\n"),
    (b"a\0-\0", b"\0", b"standard input: is nothing that workers can read; name files\n"),
    (b"/dev/stdin\n", b"\n", b"/dev/stdin: is known to this process only; name files\n"),
    (b"/dev/fd/3\n", b"\n", b"/dev/fd/3: is known to this process only; name files\n"),
    (b"/proc/self/fd/3\n", b"\n", b"/proc/self/fd/3: is known to this process only; name files\n"),
]

# The most files and bytes of a group, and the groups of files of 5, 10, 20, 0, 40 and 5 bytes.
CUTS = [
    (1, 100, ["a", "b", "c", "d", "e", "f"]),
    (2, 100, ["ab", "cd", "ef"]),
    (4, 100, ["abcd", "ef"]),
    (9, 100, ["abcdef"]),
    (9, 35, ["abcd", "e", "f"]),
    (9, 30, ["ab", "cd", "e", "f"]),
    (9, 1, ["a", "b", "c", "d", "e", "f"]),
]


class GroupsTest(ProgramTest):
    def source(self, text, end):
        return NameSource([], os.fsencode(self.write("LIST", text)), end)

    def test_lists_are_read(self):
        for block in (1, 2, 1 << 20):
            for text, end, want in LISTS:
                with self.subTest(text=text, block=block), mock.patch.object(
                    names_module, "BLOCK", block
                ):
                    source = self.source(text, end)
                    self.assertEqual(want, list(source.names()))
                    self.assertEqual(len(text), source.length())

    def test_lists_are_refused(self):
        for text, end, message in BAD_LISTS:
            source = self.source(text, end)
            with self.subTest(text=text), self.assertRaises(Trouble) as raised:
                list(source.names())
            told = raised.exception.message().replace(os.fsencode(self.folder) + b"/", b"")
            self.assertEqual(message, told)

    def test_a_list_may_be_standard_input(self):
        with mock.patch.object(sys, "stdin", io.TextIOWrapper(io.BytesIO(b"a\0b\0"))):
            self.assertEqual([b"a", b"b"], list(NameSource([], b"-", b"\0").names()))

    def test_a_list_that_is_not_there_is_told(self):
        with self.assertRaises(Trouble) as raised:
            list(NameSource([], b"gone", b"\0").names())
        self.assertEqual(b"gone: No such file or directory\n", raised.exception.message())

    def test_operands_have_a_length(self):
        self.assertEqual(6, NameSource([b"a", b"bcd"]).length())

    def test_groups_have_bounds(self):
        for name, size in zip("abcdef", (5, 10, 20, 0, 40, 5)):
            self.write(name, "x" * size)
        names = [os.fsencode(os.path.join(self.folder, name)) for name in "abcdef"]
        for files, size, want in CUTS:
            with self.subTest(files=files, size=size):
                groups = list(cut_into_groups(names, files, size))
                texts = [zlib.decompress(group.names).split(b"\0") for group in groups]
                self.assertEqual(
                    want, [b"".join(map(os.path.basename, text)).decode() for text in texts]
                )
                self.assertEqual([len(text) - 1 for text in texts], [each.files for each in groups])
                self.assertEqual(80, sum(group.size for group in groups))
                length = sum(len(name) + 1 for name in names)
                self.assertEqual(length, sum(group.list_size for group in groups))

    def test_what_cannot_be_seen_from_here_is_left_to_workers(self):
        [group] = cut_into_groups([b"gone", b"/gone"], 9, 9)
        self.assertEqual((2, 0, b"gone", b"/gone"), (group.files, group.size, group.first, group.last))
        self.assertFalse(group.are_absolute)
        [group] = cut_into_groups([b"/gone"], 9, 9)
        self.assertTrue(group.are_absolute)

    def test_what_cannot_be_read_twice_is_refused(self):
        pipe = os.path.join(self.folder, "pipe")
        os.mkfifo(pipe)
        with socket.socket(socket.AF_UNIX) as listener:
            listener.bind(os.path.join(self.folder, "socket"))
            for name in (pipe, os.path.join(self.folder, "socket")):
                with self.assertRaises(Trouble) as raised:
                    list(cut_into_groups([os.fsencode(name)], 9, 9))
                self.assertIn(b"cannot read twice", raised.exception.message())


if __name__ == "__main__":
    unittest.main()
