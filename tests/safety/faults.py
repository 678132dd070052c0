"""Faults at chosen system calls of the driver, brought about by strace."""

import collections
import os
import re
import signal
import subprocess
import threading
from dataclasses import dataclass
from pathlib import Path

from world import USER

# What reaches the disk; everything else of these files is looking.
CHANGING = (
    "mkdirat", "mkdir", "unlinkat", "unlink", "rmdir", "renameat2", "renameat", "rename", "linkat", "symlinkat",
    "openat", "write", "pwrite64", "copy_file_range", "ftruncate", "fallocate", "fchmod", "fchmodat", "fchown",
    "fchownat", "fsetxattr", "fremovexattr", "utimensat", "fsync", "fdatasync", "syncfs",
)  # fmt: skip
LOOKING = (
    "newfstatat", "fstat", "statx", "faccessat2", "faccessat", "readlinkat", "getdents64", "lseek", "pread64", "read",
    "flistxattr", "fgetxattr", "fstatfs", "statfs", "fcntl", "ioctl", "close",
)  # fmt: skip
LOOKING_AT_NAMES = ("newfstatat", "statx", "faccessat2", "faccessat", "readlinkat")
# Of files and descriptors too, but none that could harm a file.
HARMLESS = ("mmap", "fadvise64", "sync_file_range", "dup", "dup2", "execve", "readlink", "access", "getcwd", "epoll_create1")
ERRORS = {
    "renameat2": ("EIO", "EACCES", "EINVAL", "EXDEV", "EROFS"),
    "linkat": ("EIO", "EPERM", "EMLINK"),
    "openat": ("EIO", "EACCES", "EMFILE", "ENOSPC"),
    "mkdirat": ("EIO", "ENOSPC"),
    "write": ("EIO", "ENOSPC"),
    "pwrite64": ("EIO", "ENOSPC"),
    "copy_file_range": ("EIO", "ENOSPC", "EXDEV"),
    "ftruncate": ("EIO", "ENOSPC"),
    "fsync": ("EIO", "ENOSPC"),
    "syncfs": ("EIO", "ENOSPC"),
    "fsetxattr": ("EIO", "ENOSPC"),
    "unlinkat": ("EIO", "EACCES"),
    "fchown": ("EPERM", "EIO"),
    "ioctl": ("EIO",),
}
RUN_TIMEOUT = 20
AS_USER = {"user": USER, "group": USER, "extra_groups": []}


@dataclass(frozen=True)
class Fault:
    """At the n-th such call: `kind` is the name of an error, with a "+" for this call and all later ones; KILL; RACE
    for another program that takes every name of the target folder right after the call, EDIT for one that writes to
    the first item then."""

    call: str
    number: int
    kind: str

    def __str__(self):
        return f"{self.call}:{self.number}:{self.kind}"

    @property
    def stops(self) -> bool:
        return self.kind in ("RACE", "EDIT")

    @property
    def lasts(self) -> bool:
        return self.kind.endswith("+")

    def injection(self) -> str:
        if self.kind == "KILL":
            return f"inject={self.call}:signal=KILL:when={self.number}"
        if self.stops:
            return f"inject={self.call}:signal=STOP:when={self.number}"
        when = f"{self.number}+" if self.lasts else f"{self.number}"
        return f"inject={self.call}:error={self.kind.rstrip('+')}:when={when}"


@dataclass
class Run:
    code: int
    told: str
    hung: bool = False
    # Whether the fault came about.
    met: bool = True


def calls_of_clean_run(command: list, log: Path, folders: tuple) -> list:
    """Each call from the first one that names one of the folders on, as (call, its number among those of its kind)."""
    traced = ["strace", "-f", "-qq", "-e", "trace=%file,%desc", "-o", log, *command]
    done = subprocess.run(traced, capture_output=True, text=True, errors="replace", timeout=RUN_TIMEOUT, **AS_USER)
    assert done.returncode == 0, f"without a fault it fails: {done.stderr}"
    numbers, calls, begun = collections.Counter(), [], False
    unknown = set()
    for line in log.read_text(errors="replace").splitlines():
        found = re.match(r"(?:\d+ +)?(\w+)\(", line)
        if not found or " resumed>" in line:
            continue
        numbers[found[1]] += 1
        begun = begun or any(f"{folder}" in line for folder in folders)
        if begun and found[1] in (*CHANGING, *LOOKING):
            calls.append((found[1], numbers[found[1]]))
        elif begun and found[1] not in HARMLESS:
            unknown.add(found[1])
    assert calls and not unknown, f"calls that the sweep does not know: {unknown}"
    return calls


def faults_at(calls: list) -> list:
    """Every fault that a run of these calls can meet."""
    faults = []
    for call, number in calls:
        for error in ERRORS.get(call, ("EIO",)):
            faults.append(Fault(call, number, error))
        if "ENOSPC" in ERRORS.get(call, ()):
            faults.append(Fault(call, number, "ENOSPC+"))
        if call in CHANGING:
            faults += [Fault(call, number, kind) for kind in ("EIO+", "KILL", "RACE", "EDIT")]
        if call in LOOKING_AT_NAMES:
            faults += [Fault(call, number, kind) for kind in ("RACE", "EDIT")]
    return faults


def run_with(fault: Fault, command: list, meanwhile) -> Run:
    """Runs the command into the fault; `meanwhile` is called while it stands still, for those that stop it."""
    reading, writing = os.pipe()
    os.fchown(writing, USER, USER)
    tracing = ["-o", f"/dev/fd/{writing}", "-e", f"trace={fault.call}", "-e", fault.injection()]
    process = subprocess.Popen(
        ["strace", "-f", "-qq", *tracing, *command],
        stdout=subprocess.DEVNULL,
        stderr=subprocess.PIPE,
        errors="surrogateescape",
        pass_fds=(writing,),
        start_new_session=True,
        **AS_USER,
    )
    os.close(writing)
    timer = threading.Timer(RUN_TIMEOUT, os.killpg, (process.pid, signal.SIGKILL))
    timer.start()
    with open(reading, errors="replace") as trace:
        met = _follow(trace, meanwhile)
    told = process.communicate()[1]
    hung = not timer.is_alive()
    timer.cancel()
    return Run(process.returncode, told, hung, met)


def recover(driver: Path, home: Path) -> str:
    """What the next start of the program does with what the last one left; returns what the user is told."""
    command = [driver, "--home", home, "recover"]
    done = subprocess.run(command, capture_output=True, errors="surrogateescape", timeout=RUN_TIMEOUT, **AS_USER)
    assert done.returncode == 0, f"the recovery fails: {done.stderr}"
    return done.stderr


def _follow(trace, meanwhile) -> bool:
    """Reads what strace tells until its end, and acts where the driver was stopped; whether the fault came about."""
    met = False
    for line in trace:
        if "stopped by SIGSTOP" in line:
            if not met:
                meanwhile()
            os.kill(int(line.split()[0]), signal.SIGCONT)
        met = met or any(sign in line for sign in ("(INJECTED)", "killed by SIGKILL", "stopped by SIGSTOP"))
    return met
