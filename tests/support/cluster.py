"""A Dask cluster of real processes on this machine: a scheduler, and workers that can be killed."""

import os
import signal
import subprocess
import tempfile
import time

from support.program import clean_environment

PATIENCE = 60  # seconds after which a test gives up; none waits for it when all is well


def wait_until(holds, what):
    deadline = time.monotonic() + PATIENCE
    while not holds():
        if time.monotonic() > deadline:
            raise AssertionError(f"in vain: {what}")
        time.sleep(0.02)


class Cluster:
    """Its processes listen on this machine only, and leave everything in a folder of their own."""

    def __init__(self, workers=0, path=None, **environment):
        self._folder = tempfile.TemporaryDirectory(prefix="ptick-cluster-")
        self.folder = self._folder.name
        self.environment = clean_environment(
            PATH=path or os.environ["PATH"],
            HOME=self.folder,
            DASK_DISTRIBUTED__WORKER__PROFILE__ENABLED="false",
            **environment,
        )
        self.workers = []
        self._files = 0
        try:
            self._start_scheduler()
            for _ in range(workers):
                self.start_worker()
            for at in range(workers):
                self.wait_for_worker(at)
        except BaseException:
            self.close()
            raise

    def _start(self, *words):
        self._files += 1
        log = os.path.join(self.folder, f"log-{self._files}")
        with open(log, "wb") as file:
            process = subprocess.Popen(
                words,
                cwd=self.folder,
                env=self.environment,
                stdin=subprocess.DEVNULL,
                stdout=file,
                stderr=file,
                start_new_session=True,
            )
        process.log = log
        return process

    def _logged(self, process, text):
        with open(process.log, "rb") as file:
            log = file.read()
        if process.poll() is not None:
            raise AssertionError(f"a process of the cluster has ended: {log.decode()}")
        return text.encode() in log

    def _start_scheduler(self):
        self.scheduler = self._start(
            "/usr/bin/dask-scheduler", "--host", "127.0.0.1", "--port", "0",
            "--dashboard-address", "127.0.0.1:0", "--scheduler-file", "scheduler.json",
        )  # fmt: skip
        wait_until(lambda: self._logged(self.scheduler, "Scheduler at:"), "the scheduler")
        with open(self.scheduler.log, encoding="utf-8") as file:
            [line] = [line for line in file if "Scheduler at:" in line]
        self.address = line.split()[-1]

    def start_worker(self):
        """A worker without a nanny: where it is killed none takes its place."""
        self.workers.append(
            self._start(
                "/usr/bin/dask-worker", self.address, "--no-nanny", "--nthreads", "1",
                "--memory-limit", "0", "--host", "127.0.0.1", "--dashboard-address", "127.0.0.1:0",
                "--local-directory", os.path.join(self.folder, f"worker-{self._files}"),
            )  # fmt: skip
        )

    def wait_for_worker(self, at):
        worker = self.workers[at]
        wait_until(lambda: self._logged(worker, "Registered to:"), "a worker")

    def kill_worker(self, at):
        self.workers[at].kill()
        self.workers[at].wait()

    def hold_worker(self, at):
        """It hangs: keeps its connections, and does nothing."""
        self.workers[at].send_signal(signal.SIGSTOP)

    def release_worker(self, at):
        self.workers[at].send_signal(signal.SIGCONT)

    def children(self, at):
        """The processes that a worker has started, as their command lines."""
        return children_of(self.workers[at].pid)

    def close(self):
        for process in [*self.workers, getattr(self, "scheduler", None)]:
            if process is not None:
                process.kill()
                process.wait()
        self._folder.cleanup()


def children_of(pid):
    found = []
    try:
        threads = os.listdir(f"/proc/{pid}/task")
        for thread in threads:
            with open(f"/proc/{pid}/task/{thread}/children", encoding="ascii") as file:
                found += file.read().split()
        return [command_of(child) for child in found]
    except OSError:
        return []


def command_of(pid):
    try:
        with open(f"/proc/{pid}/cmdline", "rb") as file:
            return file.read().replace(b"\0", b" ").decode(errors="replace")
    except OSError:
        return ""


def processes_with(text):
    """The command lines of all processes that hold a text."""
    commands = (command_of(pid) for pid in os.listdir("/proc") if pid.isdigit())
    return [command for command in commands if text in command]
