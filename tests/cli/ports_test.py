"""Control messages and the monitor switch from outside: the real ptick and the exact bytes that a
peer gets."""

import os
import unittest

from support.ports import Peer, PortTest


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


if __name__ == "__main__":
    unittest.main()
