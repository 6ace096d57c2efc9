"""Random fleets of profiles on clusters of one to eight workers that are killed, held and replaced at
random moments: the bytes of one machine, every time, and nothing left. No test of ./test, for it takes
its time: `tools/try_fleet ROUNDS`."""

import os
import random
import threading
import unittest

from support.cluster import Cluster, processes_with, wait_until
from support.fleet import PATH, FleetTest

ROUNDS = int(os.environ.get("FLEET_ROUNDS", "5"))
SEED = int(os.environ.get("FLEET_SEED", random.randrange(10**6)))


class Disturber:
    """Does harm to a cluster until it is told to stop; never leaves it without a worker for long."""

    def __init__(self, cluster, source):
        self.cluster = cluster
        self.source = source
        self.done = threading.Event()
        self.harm = []
        self.held = []
        self.thread = threading.Thread(target=self.run)
        self.thread.start()

    def run(self):
        while not self.done.wait(self.source.random() * 1.5):
            at = self.source.randrange(len(self.cluster.workers))
            if self.source.random() < 0.25 and len(self.held) < 2:
                self.harm.append("held")
                self.held.append(self.cluster.workers[at])
                self.cluster.hold_worker(at)
            else:
                self.harm.append("killed")
                self.cluster.kill_worker(at)
                self.cluster.workers.pop(at)
            self.cluster.start_worker()

    def stop(self):
        self.done.set()
        self.thread.join()
        for at in range(len(self.cluster.workers)):
            self.cluster.release_worker(at)


class RandomFaults(FleetTest):
    def check_round(self, seed):
        source = random.Random(seed)
        names = self.make_fleet(source.randrange(2, 400), seed)
        bad = source.sample(range(len(names)), 2) if source.random() < 0.3 else []
        for at in bad:
            self.write(names[at], "PROFILE:ticks\t1\nPROFILE:tciks\t1\n")
        listed = self.list_of(names)
        want = self.merged(listed, *(["-k"] if bad else []))
        workers = source.randrange(1, 9)
        arguments = [
            listed, f"--group-files={source.randrange(1, 30)}", f"--fan-in={source.randrange(2, 17)}",
            "--patience=2", self.slow_merge(source.choice((0, 0.05, 0.3))), "-o", f"result {seed}",
            *(["-k"] if bad else []),
            *(["--work-dir=work folder"] if source.random() < 0.5 else []),
        ]  # fmt: skip
        cluster = Cluster(workers, PATH)
        try:
            disturber = Disturber(cluster, source)
            try:
                process = self.start_fleet("--scheduler", cluster.address, *arguments)
                out, err = process.communicate(timeout=240)
            finally:
                disturber.stop()
            about = (seed, workers, arguments, disturber.harm, err.decode())
            self.assertEqual((b"", want.status), (out, process.returncode), about)
            self.assertTrue(want.out == self.read(f"result {seed}"), about)
            wait_until(lambda: not processes_with(self.folder + "/slow-merge"), f"steps that end {about}")
            self.check_clean()
        finally:
            cluster.close()
        again = [line for line in err.decode().splitlines() if line.endswith("done again")]
        print(f"seed {seed}: {len(names)} profiles, {workers} workers, {len(disturber.harm)} harmed", *again)

    def test_rounds(self):
        for seed in range(SEED, SEED + ROUNDS):
            self.check_round(seed)


if __name__ == "__main__":
    unittest.main()
