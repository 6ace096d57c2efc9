"""Source records that are not what one would like them to be."""

import os
import socket
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
from support.program import ProgramTest  # noqa: E402


class SourcesTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("run", "PROFILE:ticks\t1\nPROFILE:trace\tPROG\t1\t1\n")
        self.write("good/PROG", "\tGOOD  LINE\n")
        os.mkdir(self.path("bad"))

    def path(self, name):
        return os.path.join(self.folder, name)

    def source_text(self, *arguments):
        """The source column of the only row."""
        result = self.run_ptick(*arguments, "run")
        self.assertEqual((0, b""), (result.status, result.err))
        return result.out.splitlines()[2][44:]

    def test_only_a_regular_file_is_a_source(self):
        def make_socket(path):
            with socket.socket(socket.AF_UNIX) as server:
                server.bind(path)

        makers = {
            "pipe": os.mkfifo,
            "socket": make_socket,
            "folder": os.mkdir,
            "device without an end": lambda path: os.symlink("/dev/zero", path),
            "terminal": lambda path: os.symlink("/dev/tty", path),
            "link to a pipe": lambda path: (os.mkfifo(path + ".to"), os.symlink("PROG.to", path)),
            "dangling link": lambda path: os.symlink("nowhere", path),
        }
        for kind, make in makers.items():
            with self.subTest(kind=kind):
                make(self.path("bad/PROG"))
                self.assertEqual(b"??", self.source_text("-fbad"))
                self.assertEqual(b"GOOD LINE", self.source_text("-fbad", "-fgood"))
                (os.rmdir if kind == "folder" else os.remove)(self.path("bad/PROG"))

    def test_links_to_sources_are_followed(self):
        os.symlink("../good/PROG", self.path("bad/PROG"))
        self.assertEqual(b"GOOD LINE", self.source_text("-fbad"))

    def test_a_writer_that_waits_at_a_pipe_goes_on_waiting(self):
        os.mkfifo(self.path("bad/PROG"))
        with subprocess.Popen(["dd", "if=/dev/zero", "of=bad/PROG", "count=1"], cwd=self.folder,
                              stderr=subprocess.DEVNULL) as writer:
            for _ in range(20):
                self.assertEqual(b"??", self.source_text("-fbad"))
            self.assertIsNone(writer.poll())
            writer.kill()


if __name__ == "__main__":
    unittest.main()
