"""Power cuts: the target lies on a disk of its own, of which only what the driver had flushed is left."""

import contextlib
import itertools
import subprocess
from pathlib import Path

from faults import CHANGING, Fault, calls_of_clean_run, run_with
from mounts import Mounts
from scenarios import Scenario
from verdict import verdict_before_and_after_recovery

DISK = (["mkfs.ext4", "-q", "-F"], "e2fsprogs", "32M")


class Nobody:
    """No other program did anything meanwhile."""

    made, edited = {}, {}


class Disk:
    """A world whose target is on a disk in a file, which can be cut off its power. A context manager."""

    def __init__(self, scenario: Scenario, base: Path):
        self._stack = contextlib.ExitStack()
        self._base = base
        self._scenario = scenario

    def __enter__(self):
        with self._stack as stack:
            self._build(stack.enter_context(Mounts(self._base)))
            self._stack = stack.pop_all()
        return self

    def _build(self, mounts):
        self._mounts = mounts
        sides = (self._mounts.tmpfs("source-side"), self._mounts.image("ext4", *DISK, name="disk"))
        for folder in (self._base, *sides):
            folder.chmod(0o755)
        self.world = self._scenario.build(*sides)
        subprocess.run(["sync", "-f", self.world.target], check=True)

    def __exit__(self, *failure):
        self._stack.close()
        for image in self._base.glob("*.image"):
            image.unlink()

    def cut(self):
        """Puts the disk in the state in which the next start of the machine finds it; that of the source is taken to
        have been flushed."""
        image = self._base / "after.image"
        subprocess.run(["cp", "--sparse=always", self._base / "disk.image", image], check=True)
        # Over the disk as it was.
        self._mounts.mount("ext4", image, self._base / "disk", "loop")


def faults_of(scenario: Scenario, base: Path, driver: Path) -> list:
    """The driver is killed at every call that changes something, and at its very end."""
    with Disk(scenario, base) as disk:
        log = disk.world.home / "calls"
        calls = calls_of_clean_run(scenario.command(driver, disk.world), log, disk.world.folders)
    return [Fault(call, number, "KILL") for call, number in calls if call in CHANGING] + [Fault("exit_group", 1, "KILL")]


def cut_once(scenario: Scenario, fault: Fault, base: Path, driver: Path) -> dict:
    """The defects of one run in a new world."""
    with Disk(scenario, base) as disk:
        run = run_with(fault, scenario.command(driver, disk.world), None)
        disk.cut()
        return verdict_before_and_after_recovery(scenario, disk.world, fault, run, Nobody(), driver)


def sweep_power(scenario: Scenario, base: Path, driver: Path, sample=None, chance=None):
    """Yields (fault, defects) for every power cut, or for a sample of so many."""
    numbers = itertools.count()
    faults = faults_of(scenario, base / "calls", driver)
    if sample is not None and sample < len(faults):
        faults = chance.sample(faults, sample)
    for fault in faults:
        yield fault, cut_once(scenario, fault, base / str(next(numbers)), driver)

