"""What the program does when its streams are not what it would like them to be."""

import os
import subprocess
import unittest

from support.program import PTICK, ProgramTest, clean_environment


class StreamsTest(ProgramTest):
    def shell(self, command):
        """Runs a bash command in the folder, with the program as $PTICK."""
        return subprocess.run(
            ["bash", "-c", command],
            cwd=self.folder,
            env=clean_environment(PTICK=os.path.abspath(PTICK)),
            capture_output=True,
            timeout=60,
            check=False,
        )

    def setUp(self):
        super().setUp()
        rows = "".join(f"PROFILE:trace\tA\t{n}\t1\n" for n in range(20000))
        self.write("run", "PROFILE:ticks\t20000\n" + rows)

    def test_a_full_disk_is_an_error(self):
        for command in ('"$PTICK" run >/dev/full', '"$PTICK" -a run >/dev/full'):
            result = self.shell(command)
            with self.subTest(command=command):
                self.assertEqual(b"ptick: cannot write: No space left on device\n", result.stderr)
                self.assertEqual(1, result.returncode)

    def test_a_closed_standard_output_is_an_error(self):
        result = self.shell('"$PTICK" run >&-')
        self.assertEqual(b"ptick: cannot write: Bad file descriptor\n", result.stderr)
        self.assertEqual(1, result.returncode)

    def test_closed_streams_do_no_harm(self):
        for command in ('"$PTICK" run <&- 2>&- | wc -l', '"$PTICK" run 2>&- <&- | wc -l'):
            with self.subTest(command=command):
                self.assertEqual(b"20002\n", self.shell(command).stdout)

    def test_a_reader_that_leaves_early_ends_the_run_quietly(self):
        result = self.shell('"$PTICK" run | head -n 3; echo "${PIPESTATUS[0]}"')
        self.assertEqual(b"", result.stderr)
        self.assertEqual(b"0", result.stdout.splitlines()[-1])

    def run_unread(self, *arguments):
        """A run whose output goes to a pipe that nobody reads from any more."""
        reading, writing = os.pipe()
        os.close(reading)
        process = subprocess.run(
            [os.path.abspath(PTICK), *arguments],
            cwd=self.folder,
            env=clean_environment(MAVRO_RUNTIME_DIR=os.path.join(self.folder, "none")),
            stdin=subprocess.DEVNULL,
            stdout=writing,
            stderr=subprocess.PIPE,
            timeout=60,
            check=False,
        )
        os.close(writing)
        return process.stderr, process.returncode

    def test_a_good_run_that_nobody_reads_ends_quietly(self):
        for arguments in (("run",), ("-a", "run"), ("-A", "run"), ("5", "STOP"), ("5-7",)):
            with self.subTest(arguments=arguments):
                self.assertEqual((b"", 0), self.run_unread(*arguments))

    def test_a_failing_run_that_nobody_reads_keeps_its_message_and_status(self):
        self.write("bad", "PROFILE:ticks\t1\nPROFILE:bogus\t1\n")
        self.write("unclocked", "PROFILE:perform\tcmd\tLIST\n")
        no_hertz = b"Error! No 'hertz' is available in the profile output\n"
        for arguments, err, status in (
            (("-j", "OFF", "5"), b"", 2),  # its message goes where nobody reads
            (("-Av", "unclocked"), no_hertz, 2),
            (("-pv", "unclocked"), no_hertz, 2),
            (("-j", "MAYBE", "5"), b"Invalid 'type' specified, should be ON or OFF\n", 2),
            (("bad",), b"Invalid format in profile file at line 2\n\tbogus\t1\n", 2),
        ):
            with self.subTest(arguments=arguments):
                self.assertEqual((err, status), self.run_unread(*arguments))

    def test_a_profile_may_come_from_a_process_substitution(self):
        direct = self.shell('"$PTICK" run')
        substituted = self.shell('"$PTICK" <(cat run)')
        self.assertEqual(b"", substituted.stderr)
        self.assertEqual(direct.stdout.splitlines()[1:], substituted.stdout.splitlines()[1:])
        merged = self.shell('"$PTICK" -a run <(cat run)')
        self.assertIn(b"Profile ticks : 40,000\n", merged.stdout)

    def test_a_directory_is_no_record(self):
        os.mkdir(os.path.join(self.folder, "folder"))
        result = self.run_ptick("folder")
        self.assertEqual(b"ptick: [202] cannot read record 'folder' in '.': Is a directory\n", result.err)
        self.assertEqual(1, result.status)

    def test_output_and_diagnostics_keep_their_order(self):
        result = self.shell('"$PTICK" -n -fmissing run missing 2>&1')
        lines = result.stdout.splitlines()
        self.assertEqual(b"ptick: [201] cannot open file 'missing': No such file or directory", lines[0])
        self.assertEqual(
            b"ptick: [202] cannot read record 'missing' in '.': No such file or directory", lines[1])
        self.assertTrue(lines[2].startswith(b"Profile of program (unknown) from profile run ..."))


if __name__ == "__main__":
    unittest.main()
