"""File systems of the tests' own, which disappear with the test, or at the latest with its process.

What is mounted is seen by this process and its children only. An image lies in a file.
"""

import ctypes
import functools
import os
import shutil
import subprocess
import time
from pathlib import Path

import pytest

CLONE_NEWNS = 0x20000
_libc = ctypes.CDLL(None, use_errno=True)


@functools.cache
def reason_against_mounting():
    """Moves this process into a mount namespace of its own; why that cannot be, or None."""
    if os.geteuid() != 0:
        return "only root may mount"
    if _libc.unshare(CLONE_NEWNS) != 0:
        return f"no mount namespace of our own: {os.strerror(ctypes.get_errno())}"
    made = subprocess.run(["mount", "--make-rprivate", "/"], capture_output=True, text=True)
    return made.stderr.strip() or "mounts cannot be made private" if made.returncode else None


class Mounts:
    """Mounts below one folder; a context manager that unmounts all of them, the last one first.

    Where something cannot be mounted here, the test is skipped with the reason.
    """

    def __init__(self, base: Path):
        self._base = base
        self._mounted = []
        self._programs = []

    def __enter__(self):
        reason = reason_against_mounting()
        if reason:
            pytest.skip(reason)
        return self

    def __exit__(self, *_):
        problems = [problem for path in reversed(self._mounted) for problem in _unmount(path)]
        problems += [problem for program in self._programs for problem in _end(program)]
        assert not problems, problems

    def folder(self, name: str) -> Path:
        path = self._base / name
        path.mkdir(parents=True)
        return path

    def mount(self, kind: str, source, at: Path, options: str = "") -> Path:
        """Mounts a file system that this kernel must know."""
        command = ["mount", "-t", kind, *(["-o", options] if options else []), os.fspath(source), os.fspath(at)]
        done = subprocess.run(command, capture_output=True, text=True)
        if done.returncode:
            pytest.skip(f"{kind} cannot be mounted here: {done.stderr.strip()}")
        self._mounted.append(at)
        return at

    def tmpfs(self, name="tmpfs") -> Path:
        return self.mount("tmpfs", "tmpfs", self.folder(name), "size=512m")

    def image(self, kind: str, maker: list, package: str, size: str, name=None, options="") -> Path:
        """A file system made by `maker` in a sparse file of this size."""
        if not shutil.which(maker[0]):
            pytest.skip(f"{maker[0]} is missing: install {package}")
        image = self._base / f"{name or kind}.image"
        subprocess.run(["truncate", "-s", size, image], check=True)
        made = subprocess.run([*maker, image], capture_output=True, text=True)
        assert made.returncode == 0, made.stderr
        return self.mount(kind, image, self.folder(name or kind), ",".join(filter(None, ["loop", options])))

    def overlay(self, upper_on: Path, lowers: list, name="overlay") -> Path:
        """The lower folders, the first one on top, under an upper one that lies below `upper_on`."""
        upper, work = upper_on / f"{name}-upper", upper_on / f"{name}-work"
        upper.mkdir()
        work.mkdir()
        layers = ":".join(os.fspath(lower) for lower in lowers)
        options = f"lowerdir={layers},upperdir={upper},workdir={work}"
        return self.mount("overlay", "overlay", self.folder(name), options)

    def by_program(self, command: list, package: str, at: Path, log: Path):
        """Mounts by a FUSE program, given the whole command, which stays in the foreground."""
        if not os.path.exists("/dev/fuse"):
            pytest.skip("this kernel has no FUSE: /dev/fuse is missing")
        if not shutil.which(command[0]):
            pytest.skip(f"{command[0]} is missing: install {package}")
        with open(log, "wb") as output:
            program = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=output)
        self._programs.append(program)
        deadline = time.monotonic() + 20
        while not os.path.ismount(at):
            if program.poll() is not None or time.monotonic() > deadline:
                pytest.fail(f"{command[0]} did not mount: {log.read_text(errors='replace')}", pytrace=False)
            time.sleep(0.01)
        self._mounted.append(at)
        return at


def _unmount(path: Path):
    """Yields what went wrong."""
    done = subprocess.run(["umount", path], capture_output=True, text=True)
    if done.returncode:
        yield done.stderr.strip()
        subprocess.run(["umount", "--lazy", path], capture_output=True)


def _end(program):
    """A FUSE program ends by itself once it is unmounted; yields what went wrong."""
    try:
        program.wait(10)
    except subprocess.TimeoutExpired:
        program.kill()
        program.wait()
        yield f"{program.args[0]} did not end"
