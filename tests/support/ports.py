"""Processes on ports, for tests that look at the real program from outside: peers written from
docs/port-protocol.md alone, and port_listener processes."""

import os
import queue
import socket
import struct
import subprocess
import threading

from support.program import ProgramTest, clean_environment

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

    def listener(self, *arguments, ready=True, stdout=subprocess.PIPE):
        process = subprocess.Popen(
            [os.path.abspath(PORT_LISTENER), *arguments],
            env=clean_environment(MAVRO_RUNTIME_DIR=self.runtime),
            stdin=subprocess.DEVNULL,
            stdout=stdout,
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
