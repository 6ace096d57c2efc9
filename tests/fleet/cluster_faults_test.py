"""What goes wrong in a cluster: workers that are killed, hang or are not there, results that are
lost, a scheduler that dies. The bytes stay those of one machine, or a message says why there are
none."""

import glob
import os
import random
import signal
import socket
import threading
import time
import unittest

from support.cluster import Cluster, processes_with, wait_until
from support.fleet import PATH, FleetTest, last_line, seconds_since


class ClusterFaultsTest(FleetTest):
    def cluster(self, workers, **environment):
        cluster = Cluster(workers, PATH, **environment)
        self.addCleanup(cluster.close)
        return cluster

    def ended(self, process):
        """The result of a run, once it has ended."""
        out, err = process.communicate(timeout=60)
        return out, err, process.returncode

    def check_clean(self):
        super().check_clean()
        wait_until(lambda: not processes_with(self.folder + "/"), "steps that end")

    def test_killed_workers_cost_no_bytes(self):
        cluster = self.cluster(4)
        names = self.list_of(self.make_fleet(120, 1))
        want = self.merged(names)
        source = random.Random(1)
        for arguments in ([], ["--work-dir=work folder"]):
            process = self.start_fleet(
                names, "--scheduler", cluster.address, "--group-files=4", "--fan-in=3",
                self.slow_merge(0.05), *arguments,
            )  # fmt: skip
            begun = self.runs()
            for _ in range(2):
                wait_until(lambda at=begun + source.randrange(3, 20): self.runs() > at, "steps")
                cluster.kill_worker(len(cluster.workers) - 1)
                cluster.workers.pop()
                cluster.start_worker()
                cluster.workers.insert(0, cluster.workers.pop())
                begun = self.runs()
            out, err, status = self.ended(process)
            with self.subTest(arguments=arguments):
                self.assertEqual((want.out, 0), (out, status), err)
                self.check_clean()

    def test_a_worker_that_hangs_is_done_without(self):
        cluster = self.cluster(2)
        names = self.make_fleet(30, 2)
        want = self.merged(*names)
        process = self.start_fleet(
            "--scheduler", cluster.address, "--group-files=2", "--patience=1", self.slow_merge(0.1),
            "--work-dir=work folder", *names,
        )  # fmt: skip
        wait_until(lambda: self.runs() > 4, "steps")
        cluster.hold_worker(0)
        out, err, status = self.ended(process)
        self.assertEqual((want.out, 0), (out, status), err)
        self.assertIn("done again", err.decode())
        # What it had begun ends when it goes on, and leaves nothing.
        cluster.release_worker(0)
        self.check_clean()

    def test_a_worker_that_hangs_from_the_start_is_done_without(self):
        cluster = self.cluster(2)
        names = self.make_fleet(12, 10)
        want = self.merged(*names)
        cluster.hold_worker(0)
        process = self.start_fleet(
            "--scheduler", cluster.address, "--group-files=2", "--patience=1", *names
        )
        out, err, status = self.ended(process)
        self.assertEqual((want.out, 0), (out, status), err)
        cluster.release_worker(0)
        self.check_clean()

    def test_a_step_that_hangs_is_done_elsewhere(self):
        cluster = self.cluster(2)
        names = self.make_fleet(12, 3)
        want = self.merged(*names)
        program = self.write(
            "hangs-once",
            f'#!/bin/sh\nmkdir "{self.folder}/hung" 2>/dev/null && exec sleep 1000\n'
            'exec ptick-merge "$@"\n',
        )
        os.chmod(program, 0o755)
        process = self.start_fleet(
            "--scheduler", cluster.address, "--group-files=2", "--patience=1",
            "--ptick-merge=" + program, *names,
        )  # fmt: skip
        out, err, status = self.ended(process)
        self.assertEqual((want.out, 0), (out, status), err)
        self.check_clean()
        wait_until(lambda: not any(cluster.children(at) for at in range(2)), "the step to end")

    def test_a_lost_result_is_made_again(self):
        cluster = self.cluster(2)
        for at in range(4):
            rows = "".join(f"PROFILE:trace\tP{at}\t{row}\t1\n" for row in range(70_000))
            self.write(f"big{at}", rows)
        names = [f"big{at}" for at in range(4)]
        want = self.merged(*names)
        # The run of the third step takes the results of the first ones away, once.
        program = self.write(
            "loses",
            "#!/bin/sh\n"
            f'if [ -n "$(ls "{self.work}"/*/*.0.1.* 2>/dev/null)" ] &&'
            f' mkdir "{self.folder}/lost" 2>/dev/null; then rm "{self.work}"/*/*; fi\n'
            'exec ptick-merge "$@"\n',
        )
        os.chmod(program, 0o755)
        process = self.start_fleet(
            "--scheduler", cluster.address, "--group-files=1", "--fan-in=2",
            "--ptick-merge=" + program, "--work-dir=work folder", *names,
        )  # fmt: skip
        out, err, status = self.ended(process)
        self.assertTrue(os.path.exists(os.path.join(self.folder, "lost")))
        self.assertEqual(0, status, err)
        self.assertTrue(want.out == out)
        self.check_clean()

    def test_a_signal_ends_what_runs(self):
        cluster = self.cluster(2)
        names = self.make_fleet(8, 4)
        slow = self.slow_merge(100)
        for number in (signal.SIGINT, signal.SIGTERM):
            with self.subTest(number=number):
                begun = self.runs()
                process = self.start_fleet(
                    "--scheduler", cluster.address, "--group-files=1", slow,
                    "--work-dir=work folder", "-o", "result", *names,
                )  # fmt: skip
                wait_until(lambda at=begun: self.runs() >= at + 2, "steps")
                begin = time.monotonic()
                process.send_signal(number)
                self.assertEqual((b"", b"", -number), self.ended(process))
                self.assertLess(seconds_since(begin), 15)
                self.assertFalse(os.path.exists(os.path.join(self.folder, "result")))
                wait_until(lambda: not any(cluster.children(at) for at in range(2)), "the steps")
                self.check_clean()

    def test_the_steps_of_a_killed_worker_end_with_it(self):
        cluster = self.cluster(1)
        process = self.start_fleet(
            "--scheduler", cluster.address, self.slow_merge(100), "--worker-wait=2",
            *self.make_fleet(1, 5),
        )  # fmt: skip
        wait_until(lambda: self.runs() == 1, "a step")
        cluster.kill_worker(0)
        steps = self.folder + "/slow-merge --files0-from"
        wait_until(lambda: not processes_with(steps), "the step to end")
        out, err, status = self.ended(process)
        self.assertEqual((b"", 2), (out, status))
        self.assertEqual(
            f"ptick-fleet: the scheduler at {cluster.address} has had no worker for 2 s",
            last_line(err),
        )

    def test_a_step_that_ends_every_worker_ends_the_run(self):
        cluster = self.cluster(4, DASK_DISTRIBUTED__SCHEDULER__ALLOWED_FAILURES="0")
        program = self.write("deadly", "#!/bin/sh\nkill -9 $PPID\n")
        os.chmod(program, 0o755)
        [name] = self.make_fleet(1, 9)
        result = self.fleet("--scheduler", cluster.address, "--ptick-merge=" + program, name)
        self.assertEqual(
            (f"ptick-fleet: the merge of {name} failed 3 times, the last time: "
             "every worker died that was given it\n", b"", 2),
            (result.err.decode(), result.out, result.status),
        )  # fmt: skip

    def test_a_worker_may_come_late(self):
        cluster = self.cluster(0)
        names = self.make_fleet(6, 6)
        want = self.merged(*names)
        process = self.start_fleet("--scheduler", cluster.address, *names)
        threading.Timer(1.0, cluster.start_worker).start()
        out, err, status = self.ended(process)
        self.assertEqual((want.out, 0), (out, status), err)

    def test_a_scheduler_that_dies_is_told(self):
        cluster = self.cluster(1)
        process = self.start_fleet(
            "--scheduler", cluster.address, self.slow_merge(100), "--work-dir=work folder",
            *self.make_fleet(1, 7),
        )  # fmt: skip
        wait_until(lambda: self.runs() == 1, "a step")
        cluster.scheduler.kill()
        out, err, status = self.ended(process)
        self.assertEqual((b"", 2), (out, status))
        self.assertEqual(f"ptick-fleet: the scheduler at {cluster.address} is gone\n", err.decode())
        self.assertEqual([], glob.glob(self.work + "/*"))

    def test_no_scheduler_is_told_within_ten_seconds(self):
        [name] = self.make_fleet(1, 8)
        mute = socket.create_server(("127.0.0.1", 0))
        self.addCleanup(mute.close)
        mute_address = f"tcp://127.0.0.1:{mute.getsockname()[1]}"
        for address, message in (
            ("tcp://127.0.0.1:9", "no scheduler answers at tcp://127.0.0.1:9"),
            (mute_address, f"no scheduler answers at {mute_address}"),
            ("smoke://x:1", "the address 'smoke://x:1' cannot be used: unknown address scheme"),
            ("", "the address '' cannot be used: missing port number"),
        ):
            with self.subTest(address=address):
                begin = time.monotonic()
                result = self.fleet("--scheduler", address, name)
                self.assertLess(seconds_since(begin), 10)
                self.assertEqual(2, result.status)
                self.assertTrue(result.err.decode().startswith("ptick-fleet: " + message))
                self.assertEqual(1, result.err.count(b"\n"))


if __name__ == "__main__":
    unittest.main()
