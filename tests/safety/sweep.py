"""Has the driver meet every fault in every scenario, and judges what is left each time."""

import argparse
import collections
import concurrent.futures
import contextlib
import itertools
import os
import random
import shutil
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

from faults import Fault, calls_of_clean_run, faults_at, run_with
from mounts import Mounts
from power import sweep_power
from scenarios import SCENARIOS, Scenario
from snapshot import snapshot
from verdict import DEFECTS, NUMBER, verdict_before_and_after_recovery
from world import World, give

BUILT_DRIVER = Path(__file__).resolve().parents[2] / "build/release/tests/file-action-driver"
CANDIDATES_TAKEN = 3


@dataclass(frozen=True)
class Ground:
    """Where a scenario runs: two folders, on two file systems when it crosses them, and a driver that the user may
    run."""

    sides: tuple
    driver: Path

    @contextlib.contextmanager
    def world(self, scenario: Scenario):
        """A new world, gone in the end."""
        with contextlib.ExitStack() as stack:
            places = [Path(stack.enter_context(tempfile.TemporaryDirectory(dir=side))) for side in self.sides]
            for place in places:
                give(place)
            world = scenario.build(*places)
            yield world
            world.remove()


@contextlib.contextmanager
def ground(crossing: bool, base: Path, program=None):
    """The driver is `program`, or FILE_ACTION_DRIVER, or that of the release build."""
    with Mounts(base) as mounts:
        one = mounts.tmpfs("one")
        two = mounts.tmpfs("two") if crossing else one
        for folder in (base, one, two):
            folder.chmod(0o755)
        # The checkout may lie where only its owner may look.
        driver = base / "file-action-driver"
        shutil.copy(program or os.environ.get("FILE_ACTION_DRIVER") or BUILT_DRIVER, driver)
        driver.chmod(0o755)
        yield Ground((one, two), driver)


class Intruder:
    """Another program, which acts while the driver stands still."""

    def __init__(self, world: World):
        self._world = world
        # Snapshots by path of what it made, and names of items by snapshots of what it wrote to.
        self.made, self.edited = {}, {}

    def take_names(self):
        """Every name that an item could get, in every folder."""
        for folder, item in itertools.product(self._world.folders, self._world.items):
            numbered = (f"{item.stem}({number}){item.suffix}" for number in range(1, CANDIDATES_TAKEN + 1))
            for path in (folder / name for name in (item.name, *numbered)):
                with contextlib.suppress(FileExistsError):
                    with path.open("xb") as file:
                        file.write(b"another program's")
                    self.made[path] = snapshot(path)

    def edit_first(self):
        """In place, wherever the first item lies under a name of its own."""
        first = self._world.items[0]
        for folder in self._world.folders:
            for path in self._world.visible(folder):
                if NUMBER.sub("", path.name) != first.name or path in self._world.bystanders:
                    continue
                file = path / "first" if path.is_dir() else path
                if file.is_file() and not file.is_symlink():
                    file.write_bytes(b"a late edit")
                    self.edited[snapshot(path)] = first.name
                    return


def run_once(scenario: Scenario, fault: Fault, ground: Ground) -> dict:
    """The defects of one run in a new world."""
    with ground.world(scenario) as world:
        intruder = Intruder(world)
        meanwhile = intruder.take_names if fault.kind == "RACE" else intruder.edit_first
        run = run_with(fault, scenario.command(ground.driver, world), meanwhile)
        return verdict_before_and_after_recovery(scenario, world, fault, run, intruder, ground.driver)


def faults_of(scenario: Scenario, ground: Ground) -> list:
    with ground.world(scenario) as world:
        log = world.home / "calls"
        return faults_at(calls_of_clean_run(scenario.command(ground.driver, world), log, world.folders))


def sweep(scenario: Scenario, ground: Ground, sample=None, chance=None):
    """Yields (fault, defects) for every fault, or for a sample of so many."""
    faults = faults_of(scenario, ground)
    if sample is not None and sample < len(faults):
        faults = (chance or random).sample(faults, sample)
    yield from in_parallel(lambda fault: run_once(scenario, fault, ground), faults)


def in_parallel(run, faults: list):
    """Yields (fault, what the run with it returned)."""
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count() or 2) as pool:
        yield from zip(faults, pool.map(run, faults), strict=True)


def show(name: str, results) -> bool:
    """Prints a line of the table, and below it what was wrong; whether anything was."""
    counts, shown = collections.Counter(), []
    for fault, defects in results:
        counts["runs"] += 1
        counts.update(defects.keys())
        shown += [f"    {fault}: {defect}: {'; '.join(what)}" for defect, what in defects.items()]
    print(f"{name:28} {counts['runs']:6}", *(f"{counts[defect]:12}" for defect in DEFECTS), flush=True)
    print(*shown, sep="\n", end="\n" if shown else "", flush=True)
    return bool(shown)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--only", default="", help="the scenarios whose name contains this")
    parser.add_argument("--fault", help="one fault, such as unlinkat:2:EIO, and all that it does")
    arguments = parser.parse_args()
    if not any(arguments.only in scenario.name for scenario in SCENARIOS):
        parser.error(f"no scenario has {arguments.only} in its name")
    failed = False
    print(f"{'scenario':28} {'runs':>6}", *(f"{defect:>12}" for defect in DEFECTS))
    with tempfile.TemporaryDirectory(prefix="brimwick-safety-") as base:
        Path(base).chmod(0o755)
        for scenario in SCENARIOS:
            if arguments.only not in scenario.name:
                continue
            with ground(scenario.crossing, Path(base) / scenario.name) as here:
                if arguments.fault:
                    call, number, kind = arguments.fault.split(":")
                    fault = Fault(call, int(number), kind)
                    failed |= show(scenario.name, [(fault, run_once(scenario, fault, here))])
                    continue
                failed |= show(scenario.name, sweep(scenario, here))
                if scenario.crossing and not scenario.chain:
                    power = Path(base) / scenario.name / "power"
                    failed |= show(scenario.name + "-power", sweep_power(scenario, power, here.driver))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
