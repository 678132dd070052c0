"""The programs on a desktop: started as its user, logged, and ended by their own process group."""

import ctypes
import os
import signal
import subprocess
from pathlib import Path

from .account import Account
from .waiting import wait_until

PR_SET_PDEATHSIG = 1
_libc = ctypes.CDLL(None)


def _die_with_parent():
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)
    # Tests that run in the background have it ignored, and pass that on.
    signal.signal(signal.SIGINT, signal.SIG_DFL)


class Child:
    """One running program. What it writes is in `stdout_path` and `stderr_path`."""

    def __init__(self, name: str, process: subprocess.Popen, stdout_path: Path, stderr_path: Path):
        self.name = name
        self.stdout_path = stdout_path
        self.stderr_path = stderr_path
        self._process = process

    @property
    def pid(self) -> int:
        return self._process.pid

    def is_running(self) -> bool:
        return self._process.poll() is None

    def stdout(self) -> str:
        return self.stdout_path.read_text(errors="replace")

    def stderr(self) -> str:
        return self.stderr_path.read_text(errors="replace")

    def send(self, signal_number: int):
        self._process.send_signal(signal_number)

    def wait(self, timeout: float) -> int:
        """The exit code; a WaitedTooLong if the program is still there after `timeout` seconds."""
        wait_until(lambda: not self.is_running(), f"{self.name} ended", timeout)
        return self._process.returncode

    def stop(self):
        """Ends the program and what it started itself: politely, then by force."""
        for signal_number, patience in ((signal.SIGTERM, 3), (signal.SIGKILL, 5)):
            try:
                os.killpg(self.pid, signal_number)
            except ProcessLookupError:
                break
            try:
                self._process.wait(patience)
            except subprocess.TimeoutExpired:
                continue
        self._process.poll()


class Children:
    """Starts programs as the account's user and ends them in reverse order."""

    def __init__(self, account: Account):
        self.environment = account.environment()
        self._account = account
        self._children = []

    def start(self, name, arguments, environment=None, **options) -> Child:
        """Runs a program in the background; `environment` adds to the desktop's, None as a value removes."""
        number = len(self._children)
        stdout_path = self._account.logs / f"{number:02}-{name}.out"
        stderr_path = self._account.logs / f"{number:02}-{name}.err"
        with open(stdout_path, "wb") as out, open(stderr_path, "wb") as err:
            process = subprocess.Popen(
                [os.fspath(argument) for argument in arguments],
                stdin=subprocess.DEVNULL,
                stdout=out,
                stderr=err,
                env=self._merged(environment),
                cwd=self._account.home,
                start_new_session=True,
                preexec_fn=_die_with_parent,
                **self._account.credentials(),
                **options,
            )
        child = Child(name, process, stdout_path, stderr_path)
        self._children.append(child)
        return child

    def run(self, arguments, timeout=10.0, environment=None, **options) -> subprocess.CompletedProcess:
        """Runs a short program to its end and returns what it wrote, as bytes."""
        return subprocess.run(
            [os.fspath(argument) for argument in arguments],
            stdin=options.pop("stdin", subprocess.DEVNULL),
            capture_output=True,
            env=self._merged(environment),
            cwd=self._account.home,
            timeout=timeout,
            **self._account.credentials(),
            **options,
        )

    def open(self, arguments, environment=None, **options) -> subprocess.Popen:
        """Starts a program that the caller talks to and ends."""
        return subprocess.Popen(
            [os.fspath(argument) for argument in arguments],
            stdin=subprocess.DEVNULL,
            env=self._merged(environment),
            cwd=self._account.home,
            preexec_fn=_die_with_parent,
            **self._account.credentials(),
            **options,
        )

    def stop_all(self):
        for child in reversed(self._children):
            child.stop()

    def _merged(self, environment):
        merged = {**self.environment, **(environment or {})}
        return {key: value for key, value in merged.items() if value is not None}
