"""Ports from outside: the real ptick against peers written from docs/port-protocol.md alone, and
against port_listener processes."""

import os
import queue
import re
import signal
import socket
import struct
import subprocess
import sys
import threading
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
from support.program import SOURCE_DIR, ProgramTest, clean_environment  # noqa: E402

PORT_LISTENER = os.environ.get("PORT_LISTENER", "build/dev/port_listener")
PATIENCE = 60  # seconds after which a test gives up; none waits for it when all is well


class Peer:
    """A process on a port, played by a thread: keeps the packets it gets, answers KIVA requests."""

    def __init__(self, path, reply=b"0"):
        self.reply = reply
        self.packets = queue.Queue()
        self.listener = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET)
        os.fchmod(self.listener.fileno(), 0o600)
        self.listener.bind(path)
        self.listener.listen(64)
        self.thread = threading.Thread(target=self.serve, daemon=True)
        self.thread.start()

    def serve(self):
        while True:
            try:
                connection, _ = self.listener.accept()
            except OSError:
                return
            with connection:
                credentials = connection.getsockopt(socket.SOL_SOCKET, socket.SO_PEERCRED, 12)
                user = struct.unpack("iII", credentials)[1]
                packet = connection.recv(1 << 20)
                self.packets.put(packet if user == os.geteuid() else b"of another user")
                if packet.startswith(b"KIVA:"):
                    connection.send(self.reply)

    def next(self):
        return self.packets.get(timeout=PATIENCE)

    def close(self):
        self.listener.shutdown(socket.SHUT_RDWR)
        self.thread.join()
        self.listener.close()


class PortTest(ProgramTest):
    """A test with a runtime directory of its own."""

    def setUp(self):
        super().setUp()
        self.runtime = os.path.join(self.folder, "run")
        os.mkdir(self.runtime, 0o700)

    def socket_path(self, port):
        return os.path.join(self.runtime, f"port-{port}")

    def peer(self, port, **kinds):
        peer = Peer(self.socket_path(port), **kinds)
        self.addCleanup(peer.close)
        return peer

    def ptick(self, *arguments, **environment):
        environment.setdefault("MAVRO_RUNTIME_DIR", self.runtime)
        return self.run_ptick(*arguments, **environment)

    def check(self, result, out="", err="", status=0):
        self.assertEqual(
            (result.out.decode(), result.err.decode(), result.status), (out, err, status)
        )

    def stale_socket(self, port):
        with socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET) as dead:
            dead.bind(self.socket_path(port))

    def listener(self, *arguments, ready=True):
        process = subprocess.Popen(
            [os.path.abspath(PORT_LISTENER), *arguments],
            env=clean_environment(MAVRO_RUNTIME_DIR=self.runtime),
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
        )

        def end():
            process.kill()
            process.communicate()

        self.addCleanup(end)
        if ready:
            self.assertEqual(
                process.stdout.readline().decode(), f"listening on port {arguments[-1]}\n"
            )
        return process


class ControlMessages(PortTest):
    def test_reach_a_peer_byte_for_byte(self):
        peer = self.peer(5)
        for arguments, want in [
            (["STOP"], b"TICKCTL:STOP"),
            (["DUMP", "NOW"], b"TICKCTL:DUMP NOW"),
            (["DUMP NOW", " x "], b"TICKCTL:DUMP NOW  x "),
            (["", ""], b"TICKCTL: "),
            (["-h"], b"TICKCTL:-h"),
            ([b"a\xfeb\xfdc\xff"], b"TICKCTL:a b\xfdc\xff"),
            (["tab\there\nand a line"], b"TICKCTL:tab\there\nand a line"),
            (["x" * 100000], b"TICKCTL:" + b"x" * 100000),
        ]:
            with self.subTest(arguments=arguments[0][:20]):
                result = self.ptick("5", *arguments)
                self.check(result, out="Message sent successfully to port 5\n")
                self.assertEqual(peer.next(), want)

    def test_name_the_port_as_it_was_typed(self):
        peer = self.peer(7)
        self.check(self.ptick("007", "STOP"), out="Message sent successfully to port 007\n")
        self.assertEqual(peer.next(), b"TICKCTL:STOP")
        self.check(
            self.ptick("008", "STOP"), out="Error number 2 sending message to port 008\n"
        )

    def test_say_why_they_could_not_be_sent(self):
        self.stale_socket(6)
        self.peer(5)
        for port, text, error in [
            ("4", "STOP", 2),
            ("6", "STOP", 111),
            ("2147483648", "STOP", 22),
            ("99999999999999999999", "STOP", 22),
        ]:
            with self.subTest(port=port):
                self.check(
                    self.ptick(port, text),
                    out=f"Error number {error} sending message to port {port}\n",
                )
        self.check(
            self.ptick("5", *["x" * 100000] * 3),
            out="Error number 90 sending message to port 5\n",
        )

    def test_reach_every_port_of_a_range(self):
        three, nine, ten = self.peer(3), self.peer(9), self.peer(10)
        self.stale_socket(5)
        self.check(
            self.ptick("3-9", "DUMP", "NOW"),
            out="Message sent successfully to 2 ports and failed to 5 ports\n",
        )
        self.check(
            self.ptick("010-0010"),
            out="Message sent successfully to 1 ports and failed to 0 ports\n",
        )
        self.assertEqual(three.next(), b"TICKCTL:DUMP NOW")
        self.assertEqual(nine.next(), b"TICKCTL:DUMP NOW")
        self.assertEqual(ten.next(), b"TICKCTL:", "a range takes no commands, too")
        self.assertTrue(all(peer.packets.empty() for peer in (three, nine, ten)))

    def test_count_what_they_do_not_try(self):
        for target, failed in [
            ("9-7", 0),
            ("7-7", 1),
            ("0-999999999", 1000000000),
            ("0-999999999999999999", 1000000000000000000),
            ("999999999999999998-999999999999999999", 2),
            ("2147483647-2147483648", 2),
        ]:
            with self.subTest(target=target):
                self.check(
                    self.ptick(target, "X"),
                    out=f"Message sent successfully to 0 ports and failed to {failed} ports\n",
                )

    def test_find_two_among_ten_thousand_dead(self):
        for port in range(10000):
            self.stale_socket(port * 7 + 1)
        low, high = self.peer(0), self.peer(999999999)
        self.check(
            self.ptick("0-999999999", "STOP"),
            out="Message sent successfully to 2 ports and failed to 999999998 ports\n",
        )
        self.assertEqual(low.next(), b"TICKCTL:STOP")
        self.assertEqual(high.next(), b"TICKCTL:STOP")

    def test_go_nowhere_when_the_directory_is_not_to_be_trusted(self):
        peer = self.peer(5)
        link = os.path.join(self.folder, "link")
        os.symlink(self.runtime, link)

        def check_refused(**environment):
            self.check(
                self.ptick("5", "STOP", **environment),
                out="Error number 13 sending message to port 5\n",
            )
            self.check(
                self.ptick("5-6", "STOP", **environment),
                out="Message sent successfully to 0 ports and failed to 2 ports\n",
            )
            self.check(
                self.ptick("-j", "OFF", "5", **environment),
                out="ptick: Error number 13 executing command\n",
                status=13,
            )

        check_refused(MAVRO_RUNTIME_DIR=link)
        os.chmod(self.runtime, 0o777)
        check_refused()
        os.chmod(self.runtime, 0o700)
        if os.geteuid() == 0:
            os.chown(self.runtime, 65534, 65534)
            check_refused()
        self.assertTrue(peer.packets.empty())

    def test_find_the_directory_below_that_of_the_user(self):
        os.mkdir(os.path.join(self.runtime, "mavro"), 0o700)
        peer = self.peer("5")
        below = Peer(os.path.join(self.runtime, "mavro", "port-5"))
        self.addCleanup(below.close)
        self.ptick("5", "B", MAVRO_RUNTIME_DIR=None, XDG_RUNTIME_DIR=self.runtime)
        self.ptick("5", "A", XDG_RUNTIME_DIR="/nonexistent")
        self.assertEqual(peer.next(), b"TICKCTL:A")
        self.assertEqual(below.next(), b"TICKCTL:B")


class MonitorSwitch(PortTest):
    def test_asks_a_peer_byte_for_byte(self):
        peer = self.peer(5)
        for arguments, want in [
            (["-j", "ON", "5", "out.txt", "opts"], b"KIVA:ON\tout.txt\topts"),
            (["-j", "on", "5"], b"KIVA:ON\t\t"),
            (["-vj", "On", "005", "f"], b"KIVA:ON\tf\t"),
            (["-j", "ON", "5", "", "o"], b"KIVA:ON\t\to"),
            (["-j", "ON", "5", "f", "a\tb", "more"], b"KIVA:ON\tf\ta\tb"),
            (["-j", "ON 5 f o"], b"KIVA:ON\tf\to"),
            (["-j", "ON", "%", "f"], b"KIVA:ON\tf\t"),
            (["-j", "OFF", "5", "extra", "words"], b"KIVA:OFF"),
            (["-j", "off", "%"], b"KIVA:OFF"),
        ]:
            with self.subTest(arguments=arguments):
                self.check(self.ptick(*arguments, MAVRO_PORT="5"))
                self.assertEqual(peer.next(), want)

    def test_ends_with_the_number_that_the_peer_answers(self):
        peer = self.peer(5)
        for reply, number, status in [
            (b"16", 16, 16),
            (b"255", 255, 255),
            (b"256", 256, 255),
            (b"-1", -1, 255),
            (b"2147483647", 2147483647, 255),
            (b"done", 71, 71),
            (b"", 104, 104),
        ]:
            with self.subTest(reply=reply):
                peer.reply = reply
                self.check(
                    self.ptick("-j", "ON", "5"),
                    out=f"ptick: Error number {number} executing command\n",
                    status=status,
                )
                self.assertEqual(peer.next(), b"KIVA:ON\t\t")

    def test_says_why_nobody_answers(self):
        self.stale_socket(6)
        for port, error in [("4", 2), ("6", 111), ("2147483648", 22), ("4.9", 2)]:
            with self.subTest(port=port):
                self.check(
                    self.ptick("-j", "OFF", port),
                    out=f"ptick: Error number {error} executing command\n",
                    status=error,
                )

    def test_refuses_a_bad_call_before_it_asks(self):
        peer = self.peer(5)
        no_port = "portno not set to numeric port number\n"
        for arguments, err in [
            (["-j"], no_port),
            (["-j", "ON"], no_port),
            (["-j", "ON", "five"], no_port),
            (["-v", "-j", "ON", "5"], no_port),
            (["-j", "", "5"], "The type should be ON or OFF\n"),
            (["-j", "MAYBE", "5"], "Invalid 'type' specified, should be ON or OFF\n"),
        ]:
            with self.subTest(arguments=arguments):
                self.check(self.ptick(*arguments), err=err, status=2)
        result = self.ptick("-j", "ON", "5", "-x")
        self.assertEqual((result.out, result.status), (b"", 1))
        self.assertTrue(result.err.startswith(b"Invalid argument\n"))
        self.assertEqual(self.ptick("-j", "ON", "5", "-h").status, 0)
        self.assertTrue(peer.packets.empty())


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
