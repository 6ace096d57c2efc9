"""port_listener processes, the real ptick, and the peer that docs/port-protocol.md shows."""

import os
import re
import signal
import subprocess
import sys
import unittest

from support.ports import PATIENCE, PortTest
from support.program import SOURCE_DIR, clean_environment


class PortListener(PortTest):
    def test_shows_what_it_is_sent(self):
        listeners = {port: self.listener(str(port)) for port in (3, 5, 9)}
        self.check(self.ptick("5", "STOP"), out="Message sent successfully to port 5\n")
        self.check(
            self.ptick("3-9", "DUMP\tNOW\\", "\x7f"),
            out="Message sent successfully to 3 ports and failed to 4 ports\n",
        )
        self.check(self.ptick("-j", "ON", "9", "out.txt", "opts"))
        self.check(self.ptick("-j", "OFF", "9"))
        dump = "control: TICKCTL:DUMP\\x09NOW\\\\ \\x7f\n"
        want = {
            3: [dump],
            5: ["control: TICKCTL:STOP\n", dump],
            9: [dump, "monitor on: file 'out.txt' options 'opts'\n", "monitor off\n"],
        }
        for port, process in listeners.items():
            lines = [process.stdout.readline().decode() for _ in want[port]]
            self.assertEqual(lines, want[port])

    def test_answers_the_number_it_is_given(self):
        self.listener("--reply", "16", "5")
        self.check(
            self.ptick("-j", "ON", "5"),
            out="ptick: Error number 16 executing command\n",
            status=16,
        )

    def test_leaves_nothing_behind_when_it_is_told_to_end(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            process = self.listener("5")
            process.send_signal(number)
            out, err = process.communicate(timeout=PATIENCE)
            self.assertEqual((out, err, process.returncode), (b"", b"", 0))
            self.assertFalse(os.path.lexists(self.socket_path(5)))

    def test_ends_when_its_output_fails(self):
        with open("/dev/full", "wb") as full:
            for arguments in (["5"], ["--help"]):
                process = self.listener(*arguments, ready=False, stdout=full)
                _, err = process.communicate(timeout=PATIENCE)
                self.assertEqual(err, b"port_listener: cannot write: No space left on device\n")
                self.assertEqual(process.returncode, 1)
                self.assertFalse(os.path.lexists(self.socket_path(5)))

    def test_ends_when_its_output_fills_up(self):
        size = 4096
        reader, writer = os.pipe()
        os.set_blocking(writer, False)  # what a full disk does, later than at the first line
        self.addCleanup(os.close, reader)
        process = self.listener("5", ready=False, stdout=writer)
        self.assertEqual(os.read(reader, 100), b"listening on port 5\n")
        while True:
            try:
                os.write(writer, b"x" * size)
            except BlockingIOError:
                if size == 1:
                    break
                size = 1
        os.close(writer)
        self.check(
            self.ptick("-j", "ON", "5"), "ptick: Error number 104 executing command\n", status=104
        )
        _, err = process.communicate(timeout=PATIENCE)
        self.assertEqual(err, b"port_listener: cannot write: Resource temporarily unavailable\n")
        self.assertEqual(process.returncode, 1)
        self.assertFalse(os.path.lexists(self.socket_path(5)))

    def test_ends_quietly_when_nobody_reads_it_any_more(self):
        process = self.listener("5")
        process.stdout.close()
        self.assertEqual(process.wait(timeout=PATIENCE), 0)
        self.assertEqual(process.stderr.read(), b"")
        self.assertFalse(os.path.lexists(self.socket_path(5)))

    def test_takes_over_from_the_dead_only(self):
        first = self.listener("5")
        second = self.listener("5", ready=False)
        _, err = second.communicate(timeout=PATIENCE)
        self.assertEqual(second.returncode, 1)
        self.assertTrue(err.startswith(b"port_listener: cannot listen on port 5: "), err)
        first.kill()
        first.wait(timeout=PATIENCE)
        self.check(self.ptick("5", "X"), out="Error number 111 sending message to port 5\n")
        self.listener("5")
        self.check(self.ptick("5", "X"), out="Message sent successfully to port 5\n")

    def test_gets_its_messages_after_a_stop(self):
        process = self.listener("5")
        process.send_signal(signal.SIGSTOP)
        os.waitpid(process.pid, os.WUNTRACED)
        self.check(self.ptick("5", "WAIT"), out="Message sent successfully to port 5\n")
        process.send_signal(signal.SIGCONT)
        self.assertEqual(process.stdout.readline(), b"control: TICKCTL:WAIT\n")

    def test_explains_itself(self):
        def run(*arguments):
            process = self.listener(*arguments, ready=False)
            out, err = process.communicate(timeout=PATIENCE)
            return process.returncode, out.decode(), err.decode()

        status, usage, err = run("--help")
        self.assertEqual((status, err), (0, ""))
        self.assertTrue(usage.startswith("Usage: port_listener [--reply N] PORT\n"))
        for arguments in ([], ["x"], ["5x"], ["5", "6"], ["--reply", "5"], ["--reply", "x", "5"]):
            with self.subTest(arguments=arguments):
                self.assertEqual(run(*arguments), (2, "", usage))
        self.assertEqual(run("-1")[0], 1)


class Document(PortTest):
    def test_shows_a_peer_that_works(self):
        with open(os.path.join(SOURCE_DIR, "docs", "port-protocol.md"), encoding="utf-8") as file:
            program = re.search(r"```python\n(.*?)```", file.read(), re.DOTALL).group(1)
        process = subprocess.Popen(
            [sys.executable, "-c", program],
            env=clean_environment(MAVRO_RUNTIME_DIR=self.runtime),
            stdout=subprocess.PIPE,
        )

        def end():
            process.kill()
            process.communicate()

        self.addCleanup(end)
        self.assertEqual(process.stdout.readline(), b"listening\n")
        self.check(self.ptick("5", "STOP"), out="Message sent successfully to port 5\n")
        self.assertEqual(process.stdout.readline(), b"b'TICKCTL:STOP'\n")
        self.check(self.ptick("-j", "OFF", "5"))


if __name__ == "__main__":
    unittest.main()
