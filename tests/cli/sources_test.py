"""Source records and lists of source files that are not what one would like them to be."""

import os
import socket
import subprocess
import unittest

from support.program import PTICK, ProgramTest, clean_environment


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

    def test_a_list_of_source_files_may_come_from_a_pipe(self):
        self.assertEqual(b"GOOD LINE", self.shell_text("-F <(echo bad; echo good) run"))

    def shell(self, arguments):
        return subprocess.run(
            ["bash", "-c", f'"$PTICK" {arguments}'], cwd=self.folder, timeout=60, check=False,
            env=clean_environment(PTICK=os.path.abspath(PTICK)), capture_output=True)

    def shell_text(self, arguments):
        return self.shell(arguments).stdout.splitlines()[2][44:]

    def test_a_list_without_an_end_is_no_list(self):
        result = self.shell("-F <(yes good) run")
        self.assertEqual((1, b""), (result.returncode, result.stdout))
        self.assertTrue(result.stderr.startswith(b"Too many files specified in file /dev/fd/"))
        result = self.run_ptick("-F/dev/zero", "run")
        self.assertEqual((1, b""), (result.status, result.out))
        self.assertTrue(result.err.startswith(b"ptick: [202] cannot read record 'zero'"), result.err)

    def test_a_list_of_nothing_names_nothing(self):
        for text in ("", "\n"):
            self.write("list", text)
            self.assertEqual(b"GOOD LINE", self.source_text("-Flist", "-fgood"))


if __name__ == "__main__":
    unittest.main()
