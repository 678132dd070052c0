"""Faults that a recovery meets: the driver is killed in the midst of a move, and the next start has its own faults; the
one after that must put everything right."""

import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

from faults import Fault, calls_of_clean_run, faults_at, recover, run_with
from scenarios import Scenario
from sweep import Ground, Intruder, ground, in_parallel, show
from verdict import verdict

# At these calls of the move the driver is killed: what is left then.
KILLS = {
    "a hidden copy": Fault("syncfs", 1, "KILL"),
    "a copy with its name": Fault("renameat2", 4, "KILL"),
    "a hidden source": Fault("unlinkat", 1, "KILL"),
    "half a hidden source": Fault("unlinkat", 4, "KILL"),
}
SCENARIO = Scenario("move", True, "tree")


def recovery(driver: Path, world) -> list:
    return [driver, "--home", world.home, "recover"]


@dataclass(frozen=True)
class Recovery:
    """The start after a kill."""

    left: str
    ground: Ground

    def world(self):
        """A new world in which the move was killed; a context manager."""
        return _KilledWorld(self)

    def faults(self) -> list:
        with self.world() as world:
            log = world.home / "calls"
            return faults_at(calls_of_clean_run(recovery(self.ground.driver, world), log, world.folders))

    def run_once(self, fault: Fault) -> dict:
        """The defects of a recovery that meets a fault, followed by one that meets none."""
        with self.world() as world:
            intruder = Intruder(world)
            meanwhile = intruder.take_names if fault.kind == "RACE" else intruder.edit_first
            run = run_with(fault, recovery(self.ground.driver, world), meanwhile)
            run.told += recover(self.ground.driver, world.home)
            # Whatever it answers, the user of the move was told of no success.
            run.code = 1
            # Without another program the item is at one place in the end, as after a kill.
            judged = fault if fault.stops else Fault(fault.call, fault.number, "KILL")
            found = verdict(SCENARIO, world, judged, run, intruder, recovered=True)
            # What is not known any more to be a copy is kept, and told.
            found["litter"] = [path for path in found.get("litter", ()) if f'Kept "{path}"' not in run.told]
            return {defect: what for defect, what in found.items() if what}


class _KilledWorld:
    def __init__(self, killed: Recovery):
        self._killed = killed
        self._world = killed.ground.world(SCENARIO)

    def __enter__(self):
        world = self._world.__enter__()
        driver = self._killed.ground.driver
        run = run_with(KILLS[self._killed.left], SCENARIO.command(driver, world), None)
        both_have_names = (world.source / "tree").exists() and (world.target / "tree(1)").exists()
        as_told = both_have_names if self._killed.left == "a copy with its name" else bool(world.hidden())
        assert run.met and as_told, f"{self._killed.left}: {run}"
        return world

    def __exit__(self, *failure):
        return self._world.__exit__(*failure)


def sweep_recovery(left: str, ground: Ground, sample=None, chance=None):
    """Yields (fault, defects) for every fault, or for a sample of so many."""
    killed = Recovery(left, ground)
    faults = killed.faults()
    if sample is not None and sample < len(faults):
        faults = chance.sample(faults, sample)
    yield from in_parallel(killed.run_once, faults)


def main():
    failed = False
    with tempfile.TemporaryDirectory(prefix="brimwick-safety-") as base:
        Path(base).chmod(0o755)
        with ground(True, Path(base) / "ground") as here:
            for left in KILLS:
                failed |= show(f"recovery of {left}", sweep_recovery(left, here))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
